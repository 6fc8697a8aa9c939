// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/input/Calculators.h"

#include "apps/cli/input/Assignments.h"
#include "apps/cli/input/Checks.h"
#include "apps/cli/input/InputFile.h"
#include "host/network_core/TopologyMultiStorage.h"
#include "host/sewage_core/FlowCalculatorManager.h"
#include "host/sewage_core/LastForms.h"
#include "reports/ReadyListing.h"
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

std::vector<CFormValue> GetLastValues(std::string_view calculator, const std::string& project) {
    std::vector<CFormValue> values;
    if (const auto* const form = OLMGis::Sewage::CLastForms::Instance()->Find(calculator))
        for (const auto& value : *form)
            if (value.m_value.IsNotNull())
                values.push_back({value.m_tag,
                                  value.m_value.AsText(),
                                  fmt::format("{}: last run of {}", project, calculator),
                                  {},
                                  true});
    return values;
}

std::string GetFormCommand(std::string_view calculator, const std::string& project) {
    return fmt::format("drenova form {} {}", project, calculator);
}

Result<OLMGis::Sewage::CPlannedRun> PlanRun(const boost::shared_ptr<IFlowCalculator>& calculator,
                                            std::vector<CFormValue> values, const std::string& project,
                                            const CFileCheck& checkFile, CTerminal& terminal) {
    using OLMGis::Topology::CTopologyMultiStorage;
    CArgumentFormEditor editor(std::move(values));
    editor.SetFileCheck(checkFile);
    editor.SetListing(GetFormCommand(calculator->GetKey(), project));
    const OLMGis::Topology::CFormEditorScope scope(editor);
    const auto parameters = calculator->CreateParameters();
    calculator->InputParameters(CTopologyMultiStorage::Instance()->GetActiveTopology()->GetSections(), parameters.get(),
                                0, nullptr);
    if (editor.GetError())
        return *editor.GetError();
    for (const std::string& tag : editor.GetOutOfForce())
        terminal.Note(fmt::format("{}: {} has no effect with the other values of the form", calculator->GetKey(), tag));
    return OLMGis::Sewage::CPlannedRun{calculator, parameters};
}

Status CheckEnd(const CCalculationOutcome& outcome, const CArgumentFormEditor& editor, const CRunNames& names,
                CTerminal& terminal) {
    switch (outcome.m_end) {
    case enmRunEnd::GivenUp:
        return editor.GetError().value_or(BadArguments("the form was not confirmed"));
    case enmRunEnd::Alerted:
        for (const std::string& line : Reports::SummariseLacks(outcome.m_lacks, names.m_project, names.m_calculator))
            terminal.Alert(line);
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
