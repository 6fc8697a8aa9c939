// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/Calculators.h"

#include "apps/cli/Assignments.h"
#include "apps/cli/ShownText.h"
#include "host/sewage_core/FlowCalculatorManager.h"

#include <fmt/format.h>

namespace Cli {

using OLMGis::Sewage::CFlowCalculatorManager;
using OLMGis::Sewage::IFlowCalculator;
using OLMGis::Utility::BadWords;
using OLMGis::Utility::Result;

std::vector<std::string> GetCalculatorKeys() {
    std::vector<std::string> keys;
    for (const auto& calculator : CFlowCalculatorManager::Instance()->GetCalculators())
        keys.push_back(calculator->GetKey());
    return keys;
}

Result<boost::shared_ptr<IFlowCalculator>> FindCalculator(std::string_view key) {
    if (auto calculator = CFlowCalculatorManager::Instance()->GetCalculator(key))
        return calculator;
    return BadWords(fmt::format("found the calculator \"{}\", expected one that \"drenova calculators\" lists{}",
                                OnOneLine(key), Suggest(key, GetCalculatorKeys())));
}

Result<std::vector<CFormWord>> ReadFormWords(const std::vector<std::string>& words) {
    auto assignments = SplitAssignments(words, "TAG=VALUE");
    if (!assignments)
        return assignments.GetError();
    std::vector<CFormWord> typed;
    for (CAssignment& assignment : assignments.Value())
        typed.push_back({std::move(assignment.m_key), std::move(assignment.m_value), {}, {}});
    return typed;
}

} // namespace Cli
