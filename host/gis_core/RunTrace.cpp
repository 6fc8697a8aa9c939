// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/gis_core/RunTrace.h"

#include <algorithm>

namespace OLMGis::Utility {

namespace {

CRunTrace*& Open() {
    static CRunTrace* open = nullptr;
    return open;
}

} // namespace

CRunTrace* CRunTrace::Active() {
    return Open();
}

CTraceTable& CRunTrace::GetTable(std::string_view name, const std::vector<CTraceColumn>& columns) {
    const auto found = std::find_if(m_tables.begin(), m_tables.end(), [&](const auto& t) { return t.m_name == name; });
    if (found != m_tables.end())
        return *found;
    return m_tables.emplace_back(CTraceTable{std::string(name), columns, {}});
}

const CTraceTable* CRunTrace::FindTable(std::string_view name) const {
    const auto found = std::find_if(m_tables.begin(), m_tables.end(), [&](const auto& t) { return t.m_name == name; });
    return found == m_tables.end() ? nullptr : &*found;
}

CRunTraceScope::CRunTraceScope(CRunTrace& trace) : m_former(Open()) {
    Open() = &trace;
}

CRunTraceScope::~CRunTraceScope() {
    Open() = m_former;
}

} // namespace OLMGis::Utility
