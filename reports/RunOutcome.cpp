// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "reports/RunOutcome.h"

#include "reports/ShownText.h"

#include <fmt/format.h>

namespace Reports {

using OLMGis::Data::CDataBox;
using OLMGis::Sewage::CCalculationOutcome;
using OLMGis::Sewage::CStoredResult;
using OLMGis::Sewage::IFlowCalculator;

CListing MakeOutcomeListing(IFlowCalculator& calculator, const CCalculationOutcome& outcome) {
    CTable table({TextColumn("key", "key"), NumberColumn("stored", "stored"), NumberColumn("least", "least"),
                  NumberColumn("greatest", "greatest"), NumberColumn("sum", "sum"), TextColumn("unit", "unit")});
    for (const CStoredResult& result : outcome.m_results) {
        // Each key has decimals of its own, so people get texts.
        const auto show = [&result](double value) {
            return result.m_finiteCount == 0 ? CDataBox() : CDataBox(ShowValue(value, result.m_definition->m_decimals));
        };
        table.AddRow({result.m_definition->m_id, result.m_count, show(result.m_minimum), show(result.m_maximum),
                      show(result.m_sum), result.m_definition->m_unit});
    }
    CTable numbers({TextColumn("key", "key"), NumberColumn("stored", "stored"), NumberColumn("least", "least"),
                    NumberColumn("greatest", "greatest"), NumberColumn("sum", "sum"), TextColumn("unit", "unit")});
    for (const CStoredResult& result : outcome.m_results) {
        const auto number = [&result](double value) {
            return result.m_finiteCount == 0 ? CDataBox() : CDataBox(value);
        };
        numbers.AddRow({result.m_definition->m_id, result.m_count, number(result.m_minimum), number(result.m_maximum),
                        number(result.m_sum), result.m_definition->m_unit});
    }
    CListing listing;
    listing.m_table = std::move(numbers);
    listing.m_blocks.push_back(
        {fmt::format("{}  {}: {}", calculator.GetKey(), OnOneLine(calculator.GetCalculatorName()),
                     Count(static_cast<std::size_t>(outcome.m_sectionCount), "section")),
         std::move(table)});
    return listing;
}

CTable MakePreviewTable(const OLMGis::Sewage::CReport& report) {
    CTable table({TextColumn("label", ""), NumberColumn("value", "")});
    for (const auto& [label, value] : report)
        table.AddRow({value.empty() ? label : label + ":", value});
    return table;
}

} // namespace Reports
