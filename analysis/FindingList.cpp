// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "analysis/FindingList.h"

#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/Utility.h"
#include "host/network_core/Finding.h"

#include <boost/make_shared.hpp>

#include <string>

namespace Analysis {

using OLMGis::Data::enmEntityKind;
using OLMGis::Topology::CFAMsg;
using OLMGis::Topology::CFindingNotes;
using OLMGis::Utility::CRunTrace;
using OLMGis::Utility::CTraceTable;
using OLMGis::Utility::CUtility;
using OLMGis::Utility::Msg;
namespace FindingTrace = OLMGis::Topology::FindingTrace;

namespace {

CTraceTable* OpenTable() {
    CRunTrace* const trace = CRunTrace::Active();
    return trace == nullptr
               ? nullptr
               : &trace->GetTable(FindingTrace::Table,
                                  {{"item", ""}, {"kind", ""}, {"value", "unit"}, {"limit", "unit"}, {"unit", ""}});
}

} // namespace

CFindingList::CFindingList(std::string_view item, CMessages& messages)
    : m_item(item), m_messages(messages), m_notes(CFindingNotes::Active()), m_trace(OpenTable()) {}

void CFindingList::Add(const CEntity& culprit, int message, const CMeasured& measured) {
    Append(culprit, CUtility::Format("%s", Msg(message)), measured);
}

void CFindingList::AddWithValue(const CEntity& culprit, int message, const CMeasured& measured) {
    Append(culprit, CUtility::Format("%s (%.2f)", Msg(message), measured.m_value), measured);
}

void CFindingList::Append(const CEntity& culprit, std::string text, const CMeasured& measured) {
    const auto finding = boost::make_shared<CFAMsg>();
    finding->m_guid = culprit.GetGuid();
    finding->m_text = std::move(text);
    m_messages.push_back(finding);
    if (m_notes != nullptr)
        m_notes->Add({&culprit, measured.m_value, measured.m_limit, measured.m_unit});
    if (m_trace != nullptr)
        Trace(culprit, measured);
}

void CFindingList::Trace(const CEntity& culprit, const CMeasured& measured) const {
    const bool isNode = culprit.GetEntityKind() == enmEntityKind::Node;
    CTraceTable::CRow& row = m_trace->m_rows.emplace_back();
    row.m_guid = culprit.GetGuid();
    row.m_name = culprit.GetName();
    row.m_values.resize(FindingTrace::ColumnCount);
    row.m_values[FindingTrace::Item].SetText(m_item);
    row.m_values[FindingTrace::Kind].SetText(isNode ? FindingTrace::NodeKind : FindingTrace::SectionKind);
    row.m_values[FindingTrace::Value].SetDouble(measured.m_value);
    row.m_values[FindingTrace::Limit].SetDouble(measured.m_limit);
    row.m_values[FindingTrace::Unit].SetText(measured.m_unit);
}

} // namespace Analysis
