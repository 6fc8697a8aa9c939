// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/input/Calculators.h"
#include "apps/cli/input/Checks.h"
#include "apps/cli/input/OutdatedReading.h"
#include "apps/cli/input/Project.h"
#include "apps/cli/shell/TerminalDirectionEditor.h"
#include "apps/cli/verbs/Verbs.h"
#include "host/gis_core/RunTrace.h"
#include "host/sewage_calculations/CalculationRun.h"
#include "reports/FindingListing.h"
#include "reports/HydraulicsListing.h"
#include "reports/OutdatedListing.h"
#include "reports/RainListing.h"
#include "reports/RunOutcome.h"
#include "reports/RunWarnings.h"

#include <fmt/format.h>

#include <algorithm>
#include <memory>
#include <optional>

namespace Cli {

using OLMGis::Sewage::CCalculationOutcome;
using OLMGis::Utility::BadInput;
using OLMGis::Utility::Error;
using OLMGis::Utility::Result;
using OLMGis::Utility::Status;
using Reports::CParameterFile;
using Reports::enmFormat;
using Reports::RainCalculator;

namespace {

struct COptions {
    std::string m_project;
    std::string m_parameterFile;
    std::string m_output;
    bool m_isStrict = false;
};

constexpr double WaterViscosity = 1e-6; ///< m²/s, the default of "hydraulics"

/// Runs one calculator with the values of the parameter file and prints what it stored.
Result<CCalculationOutcome> RunOne(const std::string& key, const std::vector<CFormValue>& values, CTerminal& terminal,
                                   std::ostream& results) {
    const auto calculator = FindCalculator(key);
    if (!calculator)
        return calculator.GetError();
    CArgumentFormEditor editor(values);
    const OLMGis::Topology::CFormEditorScope formScope(editor);
    OLMGis::Utility::CRunTrace trace;
    std::optional<OLMGis::Utility::CRunTraceScope> traceScope;
    if (key == RainCalculator)
        traceScope.emplace(trace);
    auto outcome = OLMGis::Sewage::RunCalculation({key, {}, {}});
    traceScope.reset();
    terminal.Show(Reports::GetRainRemarks(trace));
    if (!outcome)
        return outcome.GetError();
    if (const Status ended = CheckEnd(outcome.Value(), editor); !ended)
        return Error{ended.GetError().kind, fmt::format("{}: {}", key, ended.GetError().message)};
    terminal.Show(Reports::MakeOutdatedRemarks(outcome->m_outdated));
    terminal.Show(Reports::MakeRunWarnings(key, outcome.Value()));
    for (const std::string& tag : editor.GetOutOfForce())
        terminal.Note(fmt::format("{}: {} has no effect with the other values of the form", key, tag));
    if (outcome->HasStored()) {
        Print(results, Reports::MakeOutcomeListing(*calculator.Value(), outcome.Value()), enmFormat::Text);
        results << '\n';
    } else {
        terminal.Note(fmt::format("{}: nothing was stored", key));
    }
    return outcome;
}

/// All checks in ascending order of key, with the values of the file for those that it names.
Result<std::vector<CCheckRequest>> PlanChecks(const CParameterFile& file) {
    std::vector<std::string> keys = GetCheckKeys();
    std::sort(keys.begin(), keys.end());
    std::vector<CCheckRequest> requests;
    for (const std::string& key : keys) {
        const auto* values = file.FindCheckValues(key);
        auto request = MakeCheckRequest(key, values == nullptr ? std::vector<CFormValue>() : *values);
        if (!request)
            return request.GetError();
        requests.push_back(std::move(request.Value()));
    }
    return requests;
}

/// Hydraulics, number of findings of each check, and the findings themselves unless they are many.
void PrintSummary(std::ostream& results, const Reports::CNetworkHydraulics& hydraulics) {
    constexpr std::size_t MostFindings = 50;
    const auto& findings = *OLMGis::Topology::CFunctionalAnalysisManager::Instance()->GetFindings();
    Reports::CListing summary = Reports::MakeHydraulicsSummary(hydraulics.m_rows);
    summary.m_blocks.push_back({{}, Reports::MakeFindingCountTable(findings)});
    if (Reports::CountFindings(findings) <= MostFindings)
        summary.m_blocks.push_back({{}, Reports::MakeFindingTable(findings)});
    Print(results, summary, enmFormat::Text);
    results.flush();
}

/// What the calculators of a design did together.
struct CRunSummary {
    int m_count = 0;
    bool m_hasStored = false;
    bool m_hasChanges = false;
    bool m_hasReadOutdated = false;
    bool m_isStoppedByRain = false; ///< no rain result: what follows would use the result of an earlier run
};

Result<CRunSummary> RunCalculators(const CParameterFile& file, CTerminal& terminal, std::ostream& results) {
    CRunSummary summary;
    for (const std::string& key : GetCalculatorKeys()) {
        const auto* values = file.FindValues(key);
        if (values == nullptr)
            continue;
        const auto outcome = RunOne(key, *values, terminal, results);
        if (!outcome)
            return outcome.GetError();
        if (key == RainCalculator && outcome->m_result == 0) {
            terminal.Note(fmt::format("{}: no result; the design ends here and nothing of it is stored", key));
            summary.m_isStoppedByRain = true;
            return summary;
        }
        summary.m_hasReadOutdated = summary.m_hasReadOutdated || !outcome->m_outdated.empty();
        summary.m_hasStored = summary.m_hasStored || outcome->HasStored();
        summary.m_hasChanges = summary.m_hasChanges || outcome->m_hasChanges;
        ++summary.m_count;
    }
    return summary;
}

/// The project is saved once, at the end: a calculation or check that stops, or is interrupted, leaves it unchanged.
CVerbResult RunDesign(const COptions& options, CTerminal& terminal, std::ostream& results) {
    const auto project = CProject::Open(options.m_project, terminal);
    if (!project)
        return project.GetError();
    if (const Status loaded = project.Value()->LoadModule(); !loaded)
        return loaded.GetError();
    const auto file = ReadParameterFile(options.m_parameterFile);
    if (!file)
        return file.GetError();
    const auto checks = PlanChecks(file.Value());
    if (!checks)
        return checks.GetError();
    CTerminalDirectionEditor directions(terminal);
    const OLMGis::Sewage::CDirectionEditorScope directionScope(directions);
    const auto runs = RunCalculators(file.Value(), terminal, results);
    if (!runs)
        return runs.GetError();
    if (runs->m_isStoppedByRain || (options.m_isStrict && runs->m_hasReadOutdated))
        return enmExitCode::NothingStored;
    if (runs->m_count == 0)
        return BadInput(fmt::format("{}: found no calculator, expected one or more", options.m_parameterFile));
    const Reports::CNetworkHydraulics hydraulics = Reports::CalculateNetworkHydraulics(WaterViscosity);
    terminal.Show(Reports::MakeOutdatedRemarks(hydraulics.m_outdated));
    terminal.Show(hydraulics.m_remarks);
    if (const Status checked = RunChecks(checks.Value(), terminal); !checked)
        return checked.GetError();
    PrintSummary(results, hydraulics);
    if (runs->m_hasChanges || hydraulics.m_hasStored) {
        if (const Status saved = project.Value()->Save(options.m_output); !saved)
            return saved.GetError();
        terminal.Print(fmt::format("{}: saved", project.Value()->GetTarget(options.m_output)));
    }
    return runs->m_hasStored || hydraulics.m_hasStored ? enmExitCode::Done : enmExitCode::NothingStored;
}

} // namespace

CVerb MakeDesign() {
    const auto options = std::make_shared<COptions>();
    return CVerb("design", "PROJECT --params FILE.json [options]", "Run every calculator that a parameter file names")
        .Project(options->m_project)
        .RequiredOption("--params", options->m_parameterFile, "FILE.json", "Calculators and their values")
        .Flag("--strict", options->m_isStrict, StrictHelp)
        .SaveAs(options->m_output)
        .Examples({"drenova design town.gpkg --params design.json -o designed.gpkg"})
        .Notes("Calculators run in ascending order of key, then the hydraulics of all pipes are calculated and all\n"
               "checks run with the limits of the file. If one stops, the project is unchanged.")
        .Runs([options](CTerminal& terminal, std::ostream& results) { return RunDesign(*options, terminal, results); });
}

} // namespace Cli
