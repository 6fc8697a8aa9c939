// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"

#include <cstdint>
#include <istream>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace OLMGis::ProjectIo {

/// The headings of the storm-water format whose lines are read. Lines of Other are counted and skipped.
enum class enmInpSection : std::uint8_t {
    Other,
    Options,
    Junctions,
    Outfalls,
    Dividers,
    Storage,
    Conduits,
    Pumps,
    Orifices,
    Weirs,
    Outlets,
    CrossSections,
    Transects,
    Curves,
    Subcatchments,
    Coordinates,
    Vertices,
    Polygons,
};

/// A number of the format: its name in messages and its possible range, in the units of the file and wide enough for
/// both unit systems.
struct CInpQuantity {
    std::string_view m_name;
    double m_least = 0.0;
    double m_greatest = 0.0;
};

/// Reads a storm-water file line by line with one block of it in memory. Skips comments and empty lines, and counts the
/// lines of headings that are not read.
class CInpReader {
public:
    /// The format allows 1024 characters; a longer line than this means another kind of file.
    static constexpr std::size_t LongestLine = std::size_t{64} * 1024;

    /// The stream is borrowed; name: name of the file in messages.
    CInpReader(std::istream& stream, std::string name);

    /// Reads the next line with data; false at the end of the file and after an error.
    bool Next();

    /// Tokens of the current line without quotation marks; at least one, valid until the next call of Next.
    enmInpSection GetSection() const { return m_section; }
    std::size_t GetLineNumber() const { return m_lineNumber; }
    const std::vector<std::string_view>& GetTokens() const { return m_tokens; }

    /// The token of that place, empty when the line is shorter.
    std::string_view GetToken(std::size_t place) const {
        return place < m_tokens.size() ? m_tokens[place] : std::string_view();
    }

    /// The number at a place of the line. False, with the error noted, when it is not there, not a number or outside
    /// the range.
    bool ReadNumber(std::size_t place, const CInpQuantity& quantity, double& value);

    /// The same for a place that the line may not have: value then stays as it is.
    bool ReadOptionalNumber(std::size_t place, const CInpQuantity& quantity, double& value);

    /// Notes an error at a line; always false. An error noted earlier stays.
    bool Fail(std::string_view found, std::string_view expected) { return FailAt(m_lineNumber, found, expected); }
    bool FailAt(std::size_t line, std::string_view found, std::string_view expected);

    /// Nothing while there is no error.
    const std::optional<Utility::Error>& GetError() const { return m_error; }

    /// Counts the current line as not read.
    void CountUnread();

    /// Number of lines that were not read, by heading.
    const std::map<std::string, std::size_t, std::less<>>& GetUnreadLines() const { return m_unread; }

    /// Whether any section heading of the format was seen.
    bool HasKnownSection() const { return m_hasKnownSection; }

private:
    bool NextRawLine(std::string_view& line);
    bool Refill();
    void EnterSection(std::string_view heading);
    void SplitTokens(std::string_view line);

    std::istream& m_stream;
    std::string m_name;
    std::string m_block;
    std::size_t m_place = 0; ///< of the next line in the block
    bool m_isAtEnd = false;
    std::size_t m_lineNumber = 0;
    enmInpSection m_section = enmInpSection::Other;
    std::map<std::string, std::size_t, std::less<>> m_unread;
    std::map<std::string, std::size_t, std::less<>>::iterator m_unreadOfSection; ///< end while it has none
    std::string m_sectionName;
    std::vector<std::string_view> m_tokens;
    std::optional<Utility::Error> m_error;
    bool m_hasKnownSection = false;
};

} // namespace OLMGis::ProjectIo
