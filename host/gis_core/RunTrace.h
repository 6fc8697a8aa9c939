// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/DataBox.h"

#include <algorithm>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace OLMGis::Utility {

/// One column of a trace table.
struct CTraceColumn {
    std::string m_name;
    std::string m_unit; ///< empty for texts and codes
};

/// Rows of entity with one value a column.
struct CTraceTable {
    struct CRow {
        std::string m_guid; ///< of the entity that the row is about, may be empty
        std::string m_name;
        std::vector<Data::CDataBox> m_values; ///< as many as columns; null where there is nothing to show
    };

    std::string m_name;
    std::vector<CTraceColumn> m_columns;
    std::vector<CRow> m_rows;
};

/// A neutral sink for what a calculator or check knows beside its results: chosen pipes, passes of an explanation. A
/// host opens it; while none is open, Active() is null and costs the caller one branch.
class CRunTrace {
public:
    /// The open trace, or null.
    static CRunTrace* Active();

    /// The table of that name, made with these columns when it isn't there yet. Stable address.
    CTraceTable& GetTable(std::string_view name, const std::vector<CTraceColumn>& columns);

    /// The table of that name, null when nothing was noted under it.
    const CTraceTable* FindTable(std::string_view name) const;
    const std::deque<CTraceTable>& GetTables() const { return m_tables; }

    /// GUID of the entity that the host wants in detail; empty for none.
    void SetDetailOf(std::string_view guid) { m_detailOf = guid; }
    const std::string& GetDetailOf() const { return m_detailOf; }

    /// Asks the run for something beside its tables, by a name that the calculator gives, such as a report file.
    void Request(std::string_view extra) { m_requests.emplace_back(extra); }
    bool IsRequested(std::string_view extra) const {
        return std::find(m_requests.begin(), m_requests.end(), extra) != m_requests.end();
    }

private:
    std::deque<CTraceTable> m_tables;
    std::string m_detailOf;
    std::vector<std::string> m_requests;
};

/// Opens a trace for its own lifetime.
class CRunTraceScope {
public:
    explicit CRunTraceScope(CRunTrace& trace);
    ~CRunTraceScope();
    CRunTraceScope(const CRunTraceScope&) = delete;
    CRunTraceScope& operator=(const CRunTraceScope&) = delete;

private:
    CRunTrace* m_former;
};

} // namespace OLMGis::Utility
