// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/tables/TableText.h"

#include "host/gis_core/Utility.h"
#include "host/project_io/base/Failure.h"
#include "host/project_io/tables/CsvReader.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <iconv.h>

namespace OLMGis::ProjectIo {

using Utility::BadInput;
using Utility::CUtility;
using Utility::Result;

namespace {

/// From Windows-1250.
Result<std::string> Decode(std::string& bytes, const std::string& name) {
    constexpr std::size_t longestCharacter = 3; // bytes of UTF-8 for one of Windows-1250
    const iconv_t converter = iconv_open("UTF-8", "CP1250");
    // iconv_open's own answer for a failure
    if (converter == reinterpret_cast<iconv_t>(-1)) // NOLINT(performance-no-int-to-ptr)
        return BadInput(name + ": found bytes that are not UTF-8, expected a text in UTF-8 (this system cannot convert "
                               "from Windows-1250)");
    std::string text(bytes.size() * longestCharacter, '\0');
    char* from = bytes.data();
    char* to = text.data();
    std::size_t fromLeft = bytes.size();
    std::size_t toLeft = text.size();
    const bool isGood = iconv(converter, &from, &fromLeft, &to, &toLeft) != static_cast<std::size_t>(-1);
    iconv_close(converter);
    if (!isGood)
        return BadInput(fmt::format("{}: line {}: found the byte {:02X}, expected a text in UTF-8 or Windows-1250",
                                    name, 1 + std::count(bytes.data(), from, '\n'),
                                    static_cast<unsigned>(static_cast<unsigned char>(*from))));
    text.resize(text.size() - toLeft);
    return text;
}

/// Reads a file; of one without lines, which is no table and may have no end, only as much as the reader of rows needs
/// to see that.
Result<std::string> ReadBytes(std::istream& stream, const std::string& name) {
    constexpr std::size_t longestLine = CCsvReader::LongestRow;
    constexpr std::size_t mostBytes = std::size_t{1} << 30;
    std::string bytes;
    std::string part(std::size_t{1} << 16, '\0');
    std::size_t lineBytes = 0; // of the last line so far
    while (lineBytes <= longestLine) {
        const auto count =
            static_cast<std::size_t>(stream.rdbuf()->sgetn(part.data(), static_cast<std::streamsize>(part.size())));
        if (count == 0)
            break;
        bytes.append(part, 0, count);
        const std::size_t end = std::string_view(part).substr(0, count).rfind('\n');
        lineBytes = end == std::string_view::npos ? lineBytes + count : count - end - 1;
        if (bytes.size() > mostBytes)
            return BadInput(name + ": found more than 1 GiB, expected a table of at most that");
    }
    return bytes;
}

struct CPlainLetter {
    std::string_view m_accented; ///< characters of two bytes each
    char m_plain;
};
constexpr std::array PlainLetters = {
    CPlainLetter{"ÀÁÂÃÄÅàáâãäåĀāĂăĄą", 'a'},
    CPlainLetter{"ÇçĆćĈĉĊċČč", 'c'},
    CPlainLetter{"ĎďĐđÐð", 'd'},
    CPlainLetter{"ÈÉÊËèéêëĒēĔĕĖėĘęĚě", 'e'},
    CPlainLetter{"ĜĝĞğĠġĢģ", 'g'},
    CPlainLetter{"ÌÍÎÏìíîïĨĩĪīĬĭĮįİı", 'i'},
    CPlainLetter{"Ķķĸ", 'k'},
    CPlainLetter{"ĹĺĻļĽľŁł", 'l'},
    CPlainLetter{"ÑñŃńŅņŇň", 'n'},
    CPlainLetter{"ÒÓÔÕÖØòóôõöøŌōŎŏŐő", 'o'},
    CPlainLetter{"ŔŕŖŗŘř", 'r'},
    CPlainLetter{"ŚśŜŝŞşŠšȘș", 's'},
    CPlainLetter{"ŢţŤťȚț", 't'},
    CPlainLetter{"ÙÚÛÜùúûüŨũŪūŬŭŮůŰű", 'u'},
    CPlainLetter{"ÝýÿŸ", 'y'},
    CPlainLetter{"ŹźŻżŽž", 'z'},
};

/// The plain letter of a character of two bytes; 0 for none.
char PlainLetterOf(std::string_view character) {
    for (const CPlainLetter& each : PlainLetters)
        for (std::size_t i = 0; i < each.m_accented.size(); i += 2)
            if (each.m_accented.substr(i, 2) == character)
                return each.m_plain;
    return 0;
}

/// Appends a Cyrillic letter as a small one, another character as it is.
void AppendSmall(std::string& text, std::string_view character) {
    constexpr unsigned lead = 0xD0; // of U+0400 to U+043F
    const auto first = static_cast<unsigned char>(character[0]);
    const auto second = static_cast<unsigned char>(character[1]);
    if (first == lead && second >= 0x90 && second <= 0x9F) { // U+0410 to U+041F
        text += character[0];
        text += static_cast<char>(second + 0x20U);
    } else if (first == lead && second >= 0xA0 && second <= 0xAF) { // U+0420 to U+042F
        text += static_cast<char>(first + 1U);
        text += static_cast<char>(second - 0x20U);
    } else {
        text += character;
    }
}

} // namespace

Result<CTableText> ReadTableText(std::istream& stream, const std::string& name) {
    try {
        auto bytes = ReadBytes(stream, name);
        if (!bytes)
            return bytes.GetError();
        CTableText table;
        table.m_text = std::move(bytes.Value());
        table.m_isWindows1250 = !CUtility::IsUtf8(table.m_text);
        if (table.m_isWindows1250) {
            auto decoded = Decode(table.m_text, name);
            if (!decoded)
                return decoded.GetError();
            table.m_text = std::move(decoded.Value());
        }
        return table;
    } catch (const std::exception& error) {
        return ReadError(name, error);
    }
}

std::string FoldText(std::string_view text) {
    constexpr unsigned firstOfTwo = 0xC2;
    constexpr unsigned lastOfTwo = 0xDF;
    std::string folded;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if (byte >= firstOfTwo && byte <= lastOfTwo && i + 1 < text.size()) {
            const std::string_view character = text.substr(i++, 2);
            if (const char plain = PlainLetterOf(character); plain != 0)
                folded += plain;
            else
                AppendSmall(folded, character);
        } else if (byte == ' ' || byte == '\t' || byte == '\n' || byte == '\r' || byte == '_' || byte == '-') {
            if (!folded.empty() && folded.back() != ' ')
                folded += ' ';
        } else {
            folded += byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte + ('a' - 'A')) : text[i];
        }
    }
    if (!folded.empty() && folded.back() == ' ')
        folded.pop_back();
    return folded;
}

} // namespace OLMGis::ProjectIo
