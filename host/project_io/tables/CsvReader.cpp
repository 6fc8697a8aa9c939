// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/tables/CsvReader.h"

#include "host/gis_core/Utility.h"
#include "host/project_io/base/AttributeText.h"
#include "host/project_io/base/Failure.h"
#include "host/project_io/tables/FormulaGuard.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

namespace OLMGis::ProjectIo {

using Utility::BadInput;
using Utility::CUtility;
using Utility::Done;
using Utility::Error;
using Utility::Result;
using Utility::Status;

namespace {

constexpr int EndOfFile = std::istream::traits_type::eof();

} // namespace

Error CCsvReader::Fault(std::string_view text) const {
    return BadInput(fmt::format("{}: line {}: {}", m_name, m_rowLine, text));
}

Error CCsvReader::Fault(std::string_view column, std::string_view text) const {
    const auto place = FindColumn(column);
    return BadInput(fmt::format("{}: line {}, column {}: {}", m_name, m_rowLine,
                                place ? std::string_view(m_heads[*place]) : column, text));
}

int CCsvReader::Peek() {
    if (m_headAt < m_headLine.size())
        return static_cast<unsigned char>(m_headLine[m_headAt]);
    return m_stream.rdbuf()->sgetc();
}

int CCsvReader::Take() {
    if (m_headAt < m_headLine.size())
        return static_cast<unsigned char>(m_headLine[m_headAt++]);
    return m_stream.rdbuf()->sbumpc();
}

bool CCsvReader::EndsField(int byte) const {
    return byte == m_separator || byte == '\n' || byte == '\r' || byte == EndOfFile;
}

Status CCsvReader::Append(std::string& field, int byte) {
    if (byte == 0)
        return Fault("found a character of code 0, expected text");
    if (field.size() == LongestField)
        return Fault(fmt::format("found a field of more than {} bytes, expected a shorter one (is a quotation mark "
                                 "left open?)",
                                 LongestField));
    if (++m_rowBytes > LongestRow)
        return Fault(fmt::format("found a row of more than {} bytes, expected a shorter one", LongestRow));
    if (byte == '\n')
        ++m_line;
    field += static_cast<char>(byte);
    return Done();
}

Status CCsvReader::ReadField(std::string& field) {
    field.clear();
    if (Peek() != '"') {
        while (!EndsField(Peek()))
            if (Status status = Append(field, Take()); !status)
                return status;
    } else {
        Take();
        for (int byte = Take(); byte != '"' || Peek() == '"'; byte = Take()) {
            if (byte == EndOfFile)
                return Fault("found a quotation mark that is never closed, expected its partner");
            if (byte == '"')
                Take();
            if (Status status = Append(field, byte); !status)
                return status;
        }
        if (!EndsField(Peek()))
            return Fault(
                fmt::format("found text after the closing quotation mark of {}, expected a separator", Quote(field)));
    }
    if (field.starts_with('\''))
        field.erase(0, field.size() - WithoutGuard(field).size());
    if (!CUtility::IsUtf8(field))
        return Fault(fmt::format("found bytes that are not UTF-8 in {}, expected a text in UTF-8", Quote(field)));
    return Done();
}

Result<bool> CCsvReader::ReadRecord() {
    bool isEmptyLine = false;
    do {
        if (Peek() == EndOfFile)
            return false;
        m_rowLine = m_line;
        m_fieldCount = 0;
        m_rowBytes = 0;
        isEmptyLine = Peek() == '\n' || Peek() == '\r';
        bool hasMore = true;
        while (hasMore) {
            if (m_fieldCount == MostColumns)
                return Fault(fmt::format("found more than {} fields, expected fewer", MostColumns));
            if (m_fieldCount == m_fields.size())
                m_fields.emplace_back();
            if (const Status status = ReadField(m_fields[m_fieldCount++]); !status)
                return status.GetError();
            const int end = Take();
            hasMore = end == m_separator;
            if (end == '\r' && Peek() == '\n')
                Take();
            if (end == '\r' || end == '\n')
                ++m_line;
        }
    } while (isEmptyLine);
    return true;
}

void CCsvReader::ReadHeadLine() {
    constexpr std::string_view separators = "\t;,";
    std::array<std::size_t, separators.size()> counts{};
    bool isQuoted = false;
    bool hasText = false;
    for (int byte = Take(); byte != EndOfFile; byte = Take()) {
        m_headLine += static_cast<char>(byte);
        m_headAt = m_headLine.size();
        isQuoted = isQuoted != (byte == '"');
        if (const std::size_t kind = separators.find(static_cast<char>(byte)); !isQuoted && kind != separators.npos)
            ++counts[kind];
        hasText = hasText || (byte != '\n' && byte != '\r');
        if ((byte == '\n' && !isQuoted && hasText) || m_headLine.size() == LongestField)
            break;
    }
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    m_headAt = m_headLine.starts_with(byteOrderMark) ? byteOrderMark.size() : 0;
    const auto most = std::max_element(counts.begin(), counts.end());
    m_separator = *most == 0 ? ',' : separators[static_cast<std::size_t>(most - counts.begin())];
}

bool CCsvReader::TakeSeparatorLine() {
    constexpr std::string_view beginning = "sep=";
    const std::string_view line = CUtility::Trim(std::string_view(m_headLine).substr(m_headAt));
    if (line.size() != beginning.size() + 1 || !line.starts_with(beginning))
        return false;
    m_separator = line.back();
    m_headLine.clear();
    m_headAt = 0;
    ++m_line;
    return true;
}

Status CCsvReader::ReadHead() {
    try {
        ReadHeadLine();
        (void)TakeSeparatorLine();
        const auto head = ReadRecord();
        if (!head)
            return head.GetError();
        if (!head.Value())
            return BadInput(m_name + ": the file is empty, expected a head line with the names of columns");
    } catch (const std::exception& error) {
        return ReadError(m_name, error);
    }
    for (std::size_t i = 0; i < m_fieldCount; ++i) {
        m_columns.emplace_back(CUtility::Trim(m_fields[i]));
        m_heads.push_back(m_columns.back());
        if (m_columns.back().empty())
            return Fault(fmt::format("found no name for column {}, expected one", i + 1));
        if (std::find(m_columns.begin(), m_columns.end() - 1, m_columns.back()) != m_columns.end() - 1)
            return Fault(m_columns.back(), "found the column twice, expected it once");
    }
    return Done();
}

Result<bool> CCsvReader::Next() {
    try {
        auto row = ReadRecord();
        m_canGoOn = static_cast<bool>(row);
        if (row && row.Value() && m_fieldCount != m_columns.size())
            return Fault(fmt::format("found {} fields, expected {} as in the head line{}", m_fieldCount,
                                     m_columns.size(),
                                     m_separator == ',' && m_fieldCount > m_columns.size()
                                         ? " (numbers with a decimal comma need quotation marks, or another separator)"
                                         : ""));
        return row;
    } catch (const std::exception& error) {
        return ReadError(m_name, error);
    }
}

bool CCsvReader::IsRowEmpty() const {
    return std::all_of(m_fields.begin(), m_fields.begin() + static_cast<std::ptrdiff_t>(m_fieldCount),
                       [](const std::string& field) { return field.empty(); });
}

std::optional<std::size_t> CCsvReader::FindColumn(std::string_view column) const {
    const auto found = std::find(m_columns.begin(), m_columns.end(), column);
    if (found == m_columns.end())
        return std::nullopt;
    return static_cast<std::size_t>(found - m_columns.begin());
}

} // namespace OLMGis::ProjectIo
