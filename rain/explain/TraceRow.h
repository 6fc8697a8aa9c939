// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/RunTrace.h"
#include "host/network_core/Section.h"
#include "rain/curves/Explained.h"

#include <vector>

namespace RainTrace {

/// One row of a trace table, written column by column: the first row of a table names its columns, and all rows of it
/// are written in the same order.
class CTraceRow {
public:
    CTraceRow(OLMGis::Utility::CTraceTable& table, const OLMGis::Topology::CSection& section)
        : CTraceRow(table, section.GetGuid(), section.GetName()) {}
    CTraceRow(OLMGis::Utility::CTraceTable& table, std::string_view guid, std::string_view name)
        : m_table(table), m_row(table.m_rows.emplace_back()), m_isFirst(table.m_rows.size() == 1) {
        m_row.m_guid = guid;
        m_row.m_name = name;
        m_row.m_values.reserve(table.m_columns.size());
    }

    /// unit: empty for texts and codes.
    void Add(const char* name, const char* unit, OLMGis::Data::CDataBox value) {
        if (m_isFirst)
            m_table.m_columns.push_back({name, unit});
        m_row.m_values.push_back(std::move(value));
    }

    /// Null where the value does not apply.
    void AddIf(bool applies, const char* name, const char* unit, OLMGis::Data::CDataBox value) {
        Add(name, unit, applies ? std::move(value) : OLMGis::Data::CDataBox());
    }

    void Add(const std::vector<Rain::CExplained>& values, bool apply) {
        for (const Rain::CExplained& value : values)
            AddIf(apply, value.m_name, value.m_unit, value.m_value);
    }

private:
    OLMGis::Utility::CTraceTable& m_table;
    OLMGis::Utility::CTraceTable::CRow& m_row;
    bool m_isFirst;
};

} // namespace RainTrace
