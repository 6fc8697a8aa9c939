// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/inp/InpReader.h"

#include "host/gis_core/Utility.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstring>

namespace OLMGis::ProjectIo {

using Utility::CUtility;

namespace {

constexpr std::size_t BlockSize = std::size_t{1} << 20;

/// Unknown headings are counted one by one up to this number, so that a file of nothing but headings cannot fill a
/// report.
constexpr std::size_t MostSectionsOneByOne = 60;

struct CHeading {
    std::string_view m_start; ///< a heading begins with it: the format allows shortened headings
    std::string_view m_name;
    enmInpSection m_section = enmInpSection::Other;
};

/// Every heading of the format. Of two that begin alike the longer one comes first.
constexpr CHeading Headings[] = {
    {"TITLE", "TITLE"},
    {"OPTION", "OPTIONS", enmInpSection::Options},
    {"FILE", "FILES"},
    {"RAINGAGE", "RAINGAGES"},
    {"EVAP", "EVAPORATION"},
    {"TEMPERATURE", "TEMPERATURE"},
    {"ADJUSTMENT", "ADJUSTMENTS"},
    {"SUBCATCH", "SUBCATCHMENTS", enmInpSection::Subcatchments},
    {"SUBAREA", "SUBAREAS"},
    {"INFIL", "INFILTRATION"},
    {"LID_CONTROL", "LID_CONTROLS"},
    {"LID_USAGE", "LID_USAGE"},
    {"AQUIFER", "AQUIFERS"},
    {"GROUNDWATER", "GROUNDWATER"},
    {"GWF", "GWF"},
    {"SNOWPACK", "SNOWPACKS"},
    {"JUNC", "JUNCTIONS", enmInpSection::Junctions},
    {"OUTFALL", "OUTFALLS", enmInpSection::Outfalls},
    {"DIVIDER", "DIVIDERS", enmInpSection::Dividers},
    {"STORAGE", "STORAGE", enmInpSection::Storage},
    {"CONDUIT", "CONDUITS", enmInpSection::Conduits},
    {"PUMP", "PUMPS", enmInpSection::Pumps},
    {"ORIFICE", "ORIFICES", enmInpSection::Orifices},
    {"WEIR", "WEIRS", enmInpSection::Weirs},
    {"OUTLET", "OUTLETS", enmInpSection::Outlets},
    {"XSECT", "XSECTIONS", enmInpSection::CrossSections},
    {"TRANSECT", "TRANSECTS", enmInpSection::Transects},
    {"STREET", "STREETS"},
    {"INLET_USAGE", "INLET_USAGE"},
    {"INLET", "INLETS"},
    {"LOSS", "LOSSES"},
    {"CONTROL", "CONTROLS"},
    {"EVENT", "EVENTS"},
    {"POLLUT", "POLLUTANTS"},
    {"LANDUSE", "LANDUSES"},
    {"COVERAGE", "COVERAGES"},
    {"BUILDUP", "BUILDUP"},
    {"WASHOFF", "WASHOFF"},
    {"TREATMENT", "TREATMENT"},
    {"INFLOW", "INFLOWS"},
    {"DWF", "DWF"},
    {"RDII", "RDII"},
    {"HYDROGRAPH", "HYDROGRAPHS"},
    {"LOADING", "LOADINGS"},
    {"CURVE", "CURVES", enmInpSection::Curves},
    {"TIMESERIES", "TIMESERIES"},
    {"PATTERN", "PATTERNS"},
    {"REPORT", "REPORT"},
    {"TAG", "TAGS"},
    {"MAP", "MAP"},
    {"COORDINATE", "COORDINATES", enmInpSection::Coordinates},
    {"VERTICES", "VERTICES", enmInpSection::Vertices},
    {"POLYGON", "POLYGONS", enmInpSection::Polygons},
    {"SYMBOL", "SYMBOLS"},
    {"LABEL", "LABELS"},
    {"BACKDROP", "BACKDROP"},
    {"PROFILE", "PROFILES"},
};

bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r';
}

bool IsAscii(std::string_view text) {
    return std::none_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
}

/// A piece of the file as a message shows it: short and without control characters.
std::string Quote(std::string_view text) {
    constexpr std::size_t Longest = 40;
    std::size_t length = std::min(text.size(), Longest);
    const bool isText = CUtility::IsUtf8(text);
    while (isText && length < text.size() && (static_cast<unsigned char>(text[length]) & 0xC0U) == 0x80U)
        --length;
    std::string shown(text.substr(0, length));
    for (char& c : shown)
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F || (!isText && static_cast<unsigned char>(c) > 0x7F))
            c = '?';
    return fmt::format("\"{}{}\"", shown, length < text.size() ? "..." : "");
}

} // namespace

CInpReader::CInpReader(std::istream& stream, std::string name)
    : m_stream(stream), m_name(std::move(name)), m_unreadOfSection(m_unread.end()),
      m_sectionName("(before the first section)") {}

bool CInpReader::FailAt(std::size_t line, std::string_view found, std::string_view expected) {
    if (!m_error)
        m_error = Utility::BadInput(fmt::format("{}, line {}: found {}, expected {}", m_name, line, found, expected));
    return false;
}

bool CInpReader::Refill() {
    m_block.erase(0, m_place);
    m_place = 0;
    const std::size_t kept = m_block.size();
    m_block.resize(kept + BlockSize);
    m_stream.read(m_block.data() + kept, static_cast<std::streamsize>(BlockSize));
    const auto count = static_cast<std::size_t>(m_stream.gcount());
    m_block.resize(kept + count);
    if (m_stream.bad() && !m_error)
        m_error = Utility::Refused(fmt::format("{}: reading failed after line {}", m_name, m_lineNumber));
    m_isAtEnd = count == 0;
    return count > 0 && !m_error;
}

bool CInpReader::NextRawLine(std::string_view& line) {
    std::size_t end = m_block.find('\n', m_place);
    while (end == std::string::npos && m_block.size() - m_place <= LongestLine && !m_isAtEnd) {
        const std::size_t searched = m_block.size() - m_place;
        if (!Refill() && m_error)
            return false;
        end = m_block.find('\n', m_place + searched);
    }
    if (end == std::string::npos)
        end = m_block.size();
    if (m_isAtEnd && m_place == m_block.size())
        return false;
    line = std::string_view(m_block).substr(m_place, end - m_place);
    m_place = std::min(end + 1, m_block.size());
    ++m_lineNumber;
    if (line.size() > LongestLine)
        return Fail("a line of more than 65536 characters", "lines of text of at most 1024 characters");
    if (std::memchr(line.data(), '\0', line.size()) != nullptr)
        return Fail("a zero byte (a binary file or UTF-16)", "text in UTF-8");
    constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";
    if (m_lineNumber == 1 && line.starts_with(ByteOrderMark))
        line.remove_prefix(ByteOrderMark.size());
    return true;
}

bool CInpReader::Next() {
    std::string_view line;
    while (!m_error && NextRawLine(line)) {
        line = CUtility::Trim(line.substr(0, line.find(';')));
        if (line.empty())
            continue;
        if (line.front() == '[') {
            EnterSection(line.substr(1));
            continue;
        }
        if (m_section == enmInpSection::Other) {
            CountUnread();
            continue;
        }
        if (!IsAscii(line) && !CUtility::IsUtf8(line))
            return Fail(fmt::format("the bytes {}, which are not UTF-8", Quote(line)),
                        "text in UTF-8 (older programs write Windows-1252: save the file as UTF-8)");
        SplitTokens(line);
        if (m_tokens.empty() || m_tokens.front().empty())
            return Fail("an empty name", "a name or keyword at the start of the line");
        return true;
    }
    return false;
}

void CInpReader::EnterSection(std::string_view heading) {
    const std::string given = CUtility::ToUpper(CUtility::Trim(heading.substr(0, heading.find(']'))));
    const auto found = std::find_if(std::begin(Headings), std::end(Headings),
                                    [&](const CHeading& known) { return given.starts_with(known.m_start); });
    if (found != std::end(Headings)) {
        m_section = found->m_section;
        m_sectionName = found->m_name;
        m_hasKnownSection = true;
    } else {
        m_section = enmInpSection::Other;
        const std::string quoted = Quote(given);
        const bool isOneByOne = m_unread.size() < MostSectionsOneByOne || m_unread.find(quoted) != m_unread.end();
        m_sectionName = isOneByOne ? quoted : "(other unknown sections)";
    }
    m_unreadOfSection = m_unread.end();
}

void CInpReader::CountUnread() {
    if (m_unreadOfSection == m_unread.end())
        m_unreadOfSection = m_unread.try_emplace(m_sectionName, 0).first;
    ++m_unreadOfSection->second;
}

void CInpReader::SplitTokens(std::string_view line) {
    m_tokens.clear();
    std::size_t place = 0;
    while (true) {
        while (place < line.size() && IsBlank(line[place]))
            ++place;
        if (place == line.size())
            return;
        if (line[place] == '"') {
            const std::size_t end = std::min(line.find('"', place + 1), line.size());
            m_tokens.push_back(line.substr(place + 1, end - place - 1));
            place = std::min(end + 1, line.size());
            continue;
        }
        const std::size_t start = place;
        while (place < line.size() && !IsBlank(line[place]))
            ++place;
        m_tokens.push_back(line.substr(start, place - start));
    }
}

bool CInpReader::ReadNumber(std::size_t place, const CInpQuantity& quantity, double& value) {
    if (place >= m_tokens.size())
        return Fail(fmt::format("no {} of {} (the line ends early)", quantity.m_name, Quote(m_tokens.front())),
                    fmt::format("a number in column {}", place + 1));
    const std::optional<double> number = CUtility::ParseDouble(m_tokens[place]);
    if (!number || *number < quantity.m_least || *number > quantity.m_greatest)
        return Fail(fmt::format("{} as {} of {}", Quote(m_tokens[place]), quantity.m_name, Quote(m_tokens.front())),
                    fmt::format("a number from {} to {}", quantity.m_least, quantity.m_greatest));
    value = *number;
    return true;
}

bool CInpReader::ReadOptionalNumber(std::size_t place, const CInpQuantity& quantity, double& value) {
    return place >= m_tokens.size() || ReadNumber(place, quantity, value);
}

} // namespace OLMGis::ProjectIo
