// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/DataBox.h"
#include "host/gis_core/Result.h"
#include "host/project_io/base/ValueFaults.h"
#include "host/project_io/tables/CsvReader.h"
#include "host/project_io/tables/DecimalSign.h"
#include "host/project_io/tables/TableColumns.h"

#include <istream>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace OLMGis::ProjectIo {

/// What is wrong with tables: all of it for one message, the first places with their number.
class CTableFaults {
public:
    /// place: complete text, "t.csv: line 3, column x: found ..., expected ...".
    void Add(std::string place) {
        m_hasOthers = true;
        m_list.Add(std::move(place));
    }

    /// For impossible values.
    CValueFaults& GetValues() { return m_list; }
    std::size_t GetCount() const { return m_list.GetCount(); }

    /// Done without faults; else BadInput: a single one that is no impossible value alone, else a list.
    Utility::Status ToStatus(const std::string& fileName, std::string_view advice) const;

private:
    CValueFaults m_list;
    bool m_hasOthers = false; ///< beside impossible values
};

/// Reads a table as spreadsheets write it: separator, decimal sign, encoding, meaning and units of the columns are
/// found out and can be reported. The file is in memory; linear.
class CTableReader {
public:
    explicit CTableReader(std::string name) : m_name(std::move(name)) {}

    /// Reads the file and its head line. map: null for none. BadInput for what is no table and for columns that mean
    /// nothing, all of them; Refused when the file cannot be read.
    Utility::Status Open(std::istream& stream, Data::enmEntityKind kind, enmTableUse use, const CColumnMap* map);

    /// Goes to the next row that is not empty; false at the end. BadInput for a bad row; CanGoOn of the rows says
    /// whether those below it can be read.
    Utility::Result<bool> Next();

    /// Valid after Open; columns go by their keys, those that are left out have no name.
    const CCsvReader& GetRows() const { return *m_rows; }
    const std::vector<CTableColumn>& GetColumns() const { return m_columns; }
    const std::string& GetName() const { return m_name; }

    /// Text of the current row without blanks around it; empty where there is no such column.
    std::string_view GetText(std::string_view key) const;

    /// Number of the current row in a column that is no attribute; nothing for an empty cell. BadInput naming line and
    /// column.
    Utility::Result<std::optional<double>> GetNumber(std::string_view key);

    /// Value of the current row in the column of an attribute, in the unit of the attribute; null for an empty cell.
    /// Not judged by its range. BadInput naming line and column.
    Utility::Result<Data::CDataBox> GetValue(std::size_t column);

    /// A fault of the current row in the column of an attribute; a message that begins with its key goes on without it.
    Utility::Error ColumnFault(std::size_t column, std::string_view message) const;

    /// One sentence: separator, decimal sign, encoding, columns known by other names, units that were converted.
    std::string Describe() const;

private:
    int KindsOf(std::string_view text);

    std::string m_name;
    std::istringstream m_text;
    std::unique_ptr<CCsvReader> m_rows;
    std::vector<CTableColumn> m_columns;
    std::optional<CKindLabels> m_kindLabels; ///< read for the first text that needs them
    CDecimalSign m_decimalSign;
    bool m_isWindows1250 = false;
};

} // namespace OLMGis::ProjectIo
