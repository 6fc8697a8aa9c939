// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/input/Calculators.h"
#include "apps/cli/input/Project.h"
#include "apps/cli/input/RegistryHelp.h"
#include "apps/cli/verbs/Verbs.h"
#include "host/network_core/TopologyMultiStorage.h"
#include "host/sewage_core/FlowCalculatorParameters.h"
#include "reports/CalculatorListing.h"

#include <fmt/format.h>

#include <memory>

namespace Cli {

namespace {

struct COptions {
    std::string m_project;
    std::string m_calculator;
    std::vector<std::string> m_values; ///< TAG=VALUE
    CFormatOption m_format;
};

CVerbResult ShowForm(const COptions& options, CTerminal& terminal, std::ostream& results) {
    using OLMGis::Topology::CTopologyMultiStorage;
    auto values = ReadFormArguments(options.m_values);
    if (!values)
        return values.GetError();
    const auto project = CProject::Open(options.m_project, terminal);
    if (!project)
        return project.GetError();
    if (const auto loaded = project.Value()->LoadModule(); !loaded)
        return loaded.GetError();
    const auto calculator = FindCalculator(options.m_calculator);
    if (!calculator)
        return calculator.GetError();
    CArgumentFormEditor editor(std::move(values.Value()));
    const auto parameters = calculator.Value()->CreateParameters();
    {
        const OLMGis::Topology::CFormEditorScope scope(editor);
        calculator.Value()->InputParameters(CTopologyMultiStorage::Instance()->GetActiveTopology()->GetSections(),
                                            parameters.get(), 0, nullptr);
    }
    if (editor.GetError())
        return *editor.GetError();
    const OLMGis::Topology::CPropertiesEx none;
    Print(results,
          Reports::MakeFormListing(
              fmt::format("{}  {}", calculator.Value()->GetKey(), calculator.Value()->GetCalculatorName()),
              parameters->m_properties ? *parameters->m_properties : none),
          options.m_format.Get());
    return enmExitCode::Done;
}

} // namespace

CVerb MakeForm() {
    const auto options = std::make_shared<COptions>();
    return CVerb("form", "PROJECT CALCULATOR [TAG=VALUE...] [options]", "Show the input form of a calculator")
        .Project(options->m_project)
        .Argument("CALCULATOR", options->m_calculator, "Key of the calculator")
        .OptionalArguments("TAG=VALUE", options->m_values, "Values to enter before the form is shown")
        .Formats(options->m_format, {"table", "json"}, "Default: table")
        .Examples({"drenova form town.gpkg 01_WASTE_PERCENT PERIOD=25"})
        .NotesFrom([] { return ListCalculatorsForHelp(); })
        .Runs([options](CTerminal& terminal, std::ostream& results) { return ShowForm(*options, terminal, results); });
}

} // namespace Cli
