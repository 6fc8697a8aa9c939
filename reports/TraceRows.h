// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/RunTrace.h"

#include <string_view>

namespace Reports {

/// One row of a trace table with its values by the names of columns. Borrows table and row.
class CTraceValues {
public:
    CTraceValues(const OLMGis::Utility::CTraceTable& table, const OLMGis::Utility::CTraceTable::CRow& row)
        : m_table(&table), m_row(&row) {}

    /// Null for an unknown column. Cost: the columns.
    const OLMGis::Data::CDataBox& operator[](std::string_view column) const {
        static const OLMGis::Data::CDataBox null{};
        for (std::size_t i = 0; i < m_table->m_columns.size() && i < m_row->m_values.size(); ++i)
            if (m_table->m_columns[i].m_name == column)
                return m_row->m_values[i];
        return null;
    }
    double Number(std::string_view column) const { return (*this)[column].AsDouble(); }
    int Code(std::string_view column) const { return (*this)[column].AsInt(); }
    std::string_view Text(std::string_view column) const { return (*this)[column].TextView(); }
    bool Has(std::string_view column) const { return (*this)[column].IsNotNull(); }

    const OLMGis::Utility::CTraceTable& GetTable() const { return *m_table; }
    const OLMGis::Utility::CTraceTable::CRow& GetRow() const { return *m_row; }

private:
    const OLMGis::Utility::CTraceTable* m_table;
    const OLMGis::Utility::CTraceTable::CRow* m_row;
};

} // namespace Reports
