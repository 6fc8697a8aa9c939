// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/input/Calculators.h"

#include "apps/cli/input/Assignments.h"
#include "apps/cli/input/Checks.h"
#include "apps/cli/input/InputFile.h"
#include "host/sewage_core/FlowCalculatorManager.h"
#include "reports/ShownText.h"

#include <fmt/format.h>

namespace Cli {

using OLMGis::Sewage::CCalculationOutcome;
using OLMGis::Sewage::CFlowCalculatorManager;
using OLMGis::Sewage::enmRunEnd;
using OLMGis::Sewage::IFlowCalculator;
using OLMGis::Utility::BadArguments;
using OLMGis::Utility::Done;
using OLMGis::Utility::enmErrorKind;
using OLMGis::Utility::Error;
using OLMGis::Utility::Result;
using OLMGis::Utility::Status;

std::vector<std::string> GetCalculatorKeys() {
    std::vector<std::string> keys;
    for (const auto& calculator : CFlowCalculatorManager::Instance()->GetCalculators())
        keys.push_back(calculator->GetKey());
    return keys;
}

Result<boost::shared_ptr<IFlowCalculator>> FindCalculator(std::string_view key) {
    if (auto calculator = CFlowCalculatorManager::Instance()->GetCalculator(key))
        return calculator;
    return BadArguments(fmt::format("found the calculator \"{}\", expected a key that \"drenova calculators\" lists{}",
                                    Reports::OnOneLine(key), Reports::Suggest(key, GetCalculatorKeys())));
}

Result<std::vector<CFormValue>> ReadFormArguments(const std::vector<std::string>& arguments) {
    auto assignments = SplitAssignments(arguments, "TAG=VALUE");
    if (!assignments)
        return assignments.GetError();
    std::vector<CFormValue> values;
    for (CAssignment& assignment : assignments.Value())
        values.push_back({std::move(assignment.m_key), std::move(assignment.m_value), {}, {}});
    return values;
}

Result<Reports::CParameterFile> ReadParameterFile(const std::string& path) {
    auto file = CInputFile::Open(path);
    if (!file)
        return file.GetError();
    return Reports::CParameterFile::Read(file->GetStream(), file->GetName(), GetCalculatorKeys(), GetCheckKeys());
}

Status CheckEnd(const CCalculationOutcome& outcome, const CArgumentFormEditor& editor) {
    switch (outcome.m_end) {
    case enmRunEnd::GivenUp:
        return editor.GetError().value_or(BadArguments("the form was not confirmed"));
    case enmRunEnd::Alerted:
        return Error{enmErrorKind::Stopped, "the calculation stopped; nothing was stored"};
    case enmRunEnd::Cancelled:
        return Error{enmErrorKind::Cancelled, "interrupted; the project is unchanged"};
    case enmRunEnd::Finished:
    case enmRunEnd::Previewed:
        break;
    }
    return Done{};
}

} // namespace Cli
