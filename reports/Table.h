// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/DataBox.h"
#include "host/network_core/Geometry.h"

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace Reports {

enum class enmAlign { Left, Right };

/// Who gets a column: people read text and windows, programs read CSV and JSON.
enum class enmReader { All, People, Programs };

/// Describes the values of one column.
struct CColumn {
    static constexpr int InFull = -1; ///< as many decimals as the number has

    std::string m_key;       ///< CSV head and JSON key; scripts rely on it. Unused in a column for people only
    std::string m_label;     ///< head for people, may be empty
    std::string m_unit{};    ///< shown below the label; empty for none
    int m_decimals = InFull; ///< of numbers, for people; programs get numbers in full
    enmAlign m_align = enmAlign::Left;
    enmReader m_reader = enmReader::All;
    bool m_isFlag = false; ///< 1 and 0 are true and false in JSON

    /// What people read in place of the value, where it is a code; null for the value itself.
    std::string (*m_show)(const OLMGis::Data::CDataBox& value) = nullptr;
};

CColumn TextColumn(std::string key, std::string label, enmReader reader = enmReader::All);
CColumn NumberColumn(std::string key, std::string label, std::string unit = {}, int decimals = CColumn::InFull,
                     enmReader reader = enmReader::All);
/// People read yes or no.
CColumn FlagColumn(std::string key, std::string label);

/// A table as data: columns, and rows of as many values, null where there is none. Rows are stored, or read one by one
/// from where they come from, so that the table of a million sections costs no memory.
class CTable {
public:
    using CRow = std::vector<OLMGis::Data::CDataBox>;

    /// Fills the values of a row; they are null, and as many as the columns, when it is called.
    using CReadRow = std::function<void(std::size_t row, CRow& values)>;

    /// Where a row is on the map (project coordinates); a point without coordinates (NaN) for nowhere.
    using CReadPoint = std::function<OLMGis::Topology::CPoint(std::size_t row)>;

    CTable() = default;
    explicit CTable(std::vector<CColumn> columns) : m_columns(std::move(columns)) {}

    void AddColumn(CColumn column) { m_columns.push_back(std::move(column)); }

    /// As many values as columns.
    void AddRow(CRow values);

    /// Rows that are read when they are printed; what they are read from outlives the table. In place of AddRow.
    void SetRows(std::size_t count, CReadRow read);
    void SetPoints(CReadPoint read) { m_readPoint = std::move(read); }

    const std::vector<CColumn>& GetColumns() const { return m_columns; }
    std::size_t GetRowCount() const { return m_readRow ? m_count : m_rows.size(); }
    bool IsEmpty() const { return GetRowCount() == 0; }

    /// The values of a row (0 to GetRowCount() - 1).
    void ReadRow(std::size_t row, CRow& values) const;

    /// NaN coordinates in a table without points.
    OLMGis::Topology::CPoint ReadPoint(std::size_t row) const;

private:
    std::vector<CColumn> m_columns;
    std::vector<CRow> m_rows;
    std::size_t m_count = 0;
    CReadRow m_readRow;
    CReadPoint m_readPoint;
};

} // namespace Reports
