// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/RunOutcome.h"

#include "apps/cli/ShownText.h"
#include "apps/cli/Table.h"

#include <fmt/format.h>

namespace Cli {

using OLMGis::Data::CDataBox;
using OLMGis::Sewage::CCalculationOutcome;
using OLMGis::Sewage::CStoredResult;
using OLMGis::Sewage::enmRunEnd;
using OLMGis::Sewage::IFlowCalculator;
using OLMGis::Utility::BadWords;
using OLMGis::Utility::Done;
using OLMGis::Utility::Error;
using OLMGis::Utility::Status;

namespace {

std::string ShowStatistic(const CStoredResult& result, double value) {
    return result.m_finiteCount == 0 ? std::string() : ShowValue(CDataBox(value), result.m_definition->m_decimals);
}

} // namespace

void PrintOutcome(std::ostream& results, IFlowCalculator& calculator, const CCalculationOutcome& outcome) {
    results << fmt::format("{}  {}: {}\n", calculator.GetKey(), OnOneLine(calculator.GetCalculatorName()),
                           Count(static_cast<std::size_t>(outcome.m_sectionCount), "section"));
    CTable table;
    table.AddColumn("key");
    table.AddColumn("stored", CTable::enmAlign::Right);
    for (const char* head : {"least", "greatest", "sum"})
        table.AddColumn(head, CTable::enmAlign::Right);
    table.AddColumn("unit");
    for (const CStoredResult& result : outcome.m_results)
        table.AddRow({result.m_definition->m_id, fmt::format("{}", result.m_count),
                      ShowStatistic(result, result.m_minimum), ShowStatistic(result, result.m_maximum),
                      ShowStatistic(result, result.m_sum), result.m_definition->m_unit});
    table.Print(results);
}

Status CheckEnd(const CCalculationOutcome& outcome, const CWordFormEditor& editor) {
    using OLMGis::Utility::enmErrorKind;
    switch (outcome.m_end) {
    case enmRunEnd::GivenUp:
        return editor.GetError().value_or(BadWords("the form was given up"));
    case enmRunEnd::Alerted:
        return Error{enmErrorKind::Stopped, "the calculation stopped; nothing was stored"};
    case enmRunEnd::Cancelled:
        return Error{enmErrorKind::Cancelled, "interrupted; the project is as it was"};
    case enmRunEnd::Finished:
    case enmRunEnd::Previewed:
        break;
    }
    return Done{};
}

} // namespace Cli
