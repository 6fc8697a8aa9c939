// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "reports/Table.h"

#include <cassert>

namespace Reports {

CColumn TextColumn(std::string key, std::string label, enmReader reader) {
    CColumn column{std::move(key), std::move(label)};
    column.m_reader = reader;
    return column;
}

CColumn NumberColumn(std::string key, std::string label, std::string unit, int decimals, enmReader reader) {
    CColumn column{std::move(key), std::move(label), std::move(unit), decimals, enmAlign::Right};
    column.m_reader = reader;
    return column;
}

CColumn FlagColumn(std::string key, std::string label) {
    CColumn column{std::move(key), std::move(label)};
    column.m_isFlag = true;
    column.m_show = [](const OLMGis::Data::CDataBox& value) {
        return std::string(value.AsInt() != 0 ? "yes" : value.IsNotNull() ? "no" : "");
    };
    return column;
}

void CTable::AddRow(CRow values) {
    assert(values.size() == m_columns.size() && !m_readRow);
    m_rows.push_back(std::move(values));
}

void CTable::SetRows(std::size_t count, CReadRow read) {
    assert(m_rows.empty());
    m_count = count;
    m_readRow = std::move(read);
}

void CTable::ReadRow(std::size_t row, CRow& values) const {
    if (!m_readRow) {
        values = m_rows[row];
        return;
    }
    values.resize(m_columns.size());
    for (auto& value : values)
        value.Clear();
    m_readRow(row, values);
}

OLMGis::Topology::CPoint CTable::ReadPoint(std::size_t row) const {
    return m_readPoint ? m_readPoint(row) : OLMGis::Topology::CPoint();
}

} // namespace Reports
