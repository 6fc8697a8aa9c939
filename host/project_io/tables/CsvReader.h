// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"

#include <cstddef>
#include <istream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace OLMGis::ProjectIo {

/// Reads a table of comma-separated values (RFC 4180) with a head line, one row in memory at a time. Quoted fields may
/// contain separators, line ends and doubled quotation marks; lines end in LF or CR LF; a UTF-8 byte order mark and
/// empty lines are skipped. The apostrophe before a text that looks like a formula is left out, see FormulaGuard.h. The
/// separator is the tab, semicolon or comma that the head line has most of (in this order where it has as many), or
/// that a first line "sep=;" names, as spreadsheets write it. Texts are UTF-8. Linear.
class CCsvReader {
public:
    static constexpr std::size_t LongestField = std::size_t{1}
                                                << 20; ///< bytes; a longer field means another kind of file
    static constexpr std::size_t LongestRow = 16 * LongestField;
    static constexpr std::size_t MostColumns = 1000;

    /// The stream is borrowed; name: name of the file in messages.
    CCsvReader(std::istream& stream, std::string name) : m_stream(stream), m_name(std::move(name)) {}

    /// Reads the head line. BadInput for a file without one, for an empty or a repeated column name; Refused when the
    /// file cannot be read.
    Utility::Status ReadHead();

    /// Goes to the next row; false at the end. BadInput, naming the line, for a row with more or fewer fields than the
    /// head line and for text that is not a table.
    Utility::Result<bool> Next();

    /// After an error of Next: whether the rows below can be read, as after a row with too many or too few fields.
    bool CanGoOn() const { return m_canGoOn; }

    char GetSeparator() const { return m_separator; }

    /// Gives the columns other names, one for each, empty ones for columns that nobody looks for. Messages go on to
    /// call them as the file does.
    void RenameColumns(std::vector<std::string> names) { m_columns = std::move(names); }

    /// Names of the columns, without blanks around them; no empty ones, none twice.
    const std::vector<std::string>& GetColumns() const { return m_columns; }

    /// Whether all fields of the current row are empty, as in rows that a spreadsheet has below its last one.
    bool IsRowEmpty() const;

    /// Place of a column, nothing when there is none of that name (plain characters).
    std::optional<std::size_t> FindColumn(std::string_view column) const;

    /// The field of the current row at the place of a column; empty for no column.
    std::string_view GetField(std::optional<std::size_t> column) const {
        return column ? std::string_view(m_fields[*column]) : std::string_view();
    }

    /// The line on which the current row begins, from 1.
    std::size_t GetLine() const { return m_rowLine; }

    /// An error of the current row: "name: line 3: text", or with a column "name: line 3, column area: text"; column:
    /// as GetColumns or, where that does not have it, as it is to be shown.
    Utility::Error Fault(std::string_view text) const;
    Utility::Error Fault(std::string_view column, std::string_view text) const;

private:
    Utility::Result<bool> ReadRecord();
    Utility::Status ReadField(std::string& field);
    Utility::Status Append(std::string& field, int byte);
    void ReadHeadLine();
    bool TakeSeparatorLine();
    int Peek();
    int Take();
    bool EndsField(int byte) const;

    std::istream& m_stream;
    std::string m_name;
    std::vector<std::string> m_heads; ///< names of the columns in the file
    std::vector<std::string> m_columns;
    std::vector<std::string> m_fields; ///< never shrinks, so that its texts keep their memory
    std::size_t m_fieldCount = 0;
    std::size_t m_rowBytes = 0; ///< in the fields so far
    std::string m_headLine;     ///< as in the file, read ahead to find the separator
    std::size_t m_headAt = 0;   ///< place of the next byte in it
    std::size_t m_line = 1;
    std::size_t m_rowLine = 1;
    char m_separator = ',';
    bool m_canGoOn = false;
};

} // namespace OLMGis::ProjectIo
