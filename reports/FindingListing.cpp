// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "reports/FindingListing.h"

#include "host/network_core/FunctionalAnalysisManager.h"

#include <optional>

namespace Reports {

using OLMGis::Data::CDataBox;
using OLMGis::Topology::CFinding;
using OLMGis::Topology::CItemFindings;

namespace {

struct CPlacedFinding {
    const CItemFindings* m_item;
    const CFinding* m_finding;
};

void SetNumber(CDataBox& box, const std::optional<double>& number) {
    if (number)
        box.SetDouble(*number);
}

} // namespace

std::size_t CountFindings(const CFindingsByItem& items) {
    std::size_t count = 0;
    for (const CItemFindings& item : items)
        count += item.m_findings.size();
    return count;
}

CTable MakeFindingTable(const CFindingsByItem& items) {
    constexpr int Decimals = 3;
    std::vector<CPlacedFinding> findings;
    findings.reserve(CountFindings(items));
    for (const CItemFindings& item : items)
        for (const CFinding& finding : item.m_findings)
            findings.push_back({&item, &finding});
    CTable table({TextColumn("item", "check"), TextColumn("guid", "", enmReader::Programs),
                  TextColumn("name", "", enmReader::Programs), TextColumn("", "name", enmReader::People),
                  TextColumn("text", "finding"), NumberColumn("value", "value", "", Decimals),
                  NumberColumn("limit", "limit", "", Decimals), TextColumn("unit", "unit")});
    const std::size_t count = findings.size();
    table.SetPoints([findings](std::size_t row) { return findings[row].m_finding->m_point; });
    table.SetRows(count, [findings = std::move(findings)](std::size_t row, CTable::CRow& values) {
        const CFinding& finding = *findings[row].m_finding;
        values[0].SetText(findings[row].m_item->m_item);
        values[1].SetText(finding.m_guid);
        values[2].SetText(finding.m_name);
        values[3].SetText(finding.m_name.empty() ? finding.m_guid : finding.m_name);
        values[4].SetText(finding.m_text);
        SetNumber(values[5], finding.m_value);
        SetNumber(values[6], finding.m_limit);
        if (!finding.m_unit.empty())
            values[7].SetText(finding.m_unit);
    });
    return table;
}

CTable MakeFindingCountTable(const CFindingsByItem& items) {
    CTable table({TextColumn("item", "check"), NumberColumn("findings", "findings"), TextColumn("name", "")});
    const auto* const manager = OLMGis::Topology::CFunctionalAnalysisManager::Instance();
    for (const CItemFindings& item : items)
        table.AddRow(
            {item.m_item, static_cast<int>(item.m_findings.size()), manager->GetItem(item.m_item)->GetItemName()});
    return table;
}

} // namespace Reports
