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
#include "host/sewage_calculations/NetworkChecks.h"
#include "host/sewage_core/LastForms.h"
#include "reports/FindingListing.h"
#include "reports/HydraulicsListing.h"
#include "reports/OutdatedListing.h"
#include "reports/RainListing.h"
#include "reports/RunOutcome.h"
#include "reports/RunWarnings.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <memory>
#include <optional>

namespace Cli {

using OLMGis::Sewage::CCalculationOutcome;
using OLMGis::Utility::BadArguments;
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
    std::string m_parameterFile; ///< empty for the last runs
    COutputOption m_output;
    bool m_isStrict = false;
};

constexpr double WaterViscosity = 1e-6; ///< m²/s, the default of "hydraulics"

/// Runs one calculator with the values of the parameter file and prints what it stored.
Result<CCalculationOutcome> RunOne(const std::string& key, const std::vector<CFormValue>& values,
                                   const std::string& project, const CFileCheck& checkFile, CTerminal& terminal,
                                   std::ostream& results) {
    const auto calculator = FindCalculator(key);
    if (!calculator)
        return calculator.GetError();
    CArgumentFormEditor editor(values);
    editor.SetFileCheck(checkFile);
    editor.SetListing(GetFormCommand(key, project));
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
    if (editor.GetError()) // names the file and the calculator itself
        return *editor.GetError();
    if (const Status ended = CheckEnd(outcome.Value(), editor, {project, key}, terminal); !ended)
        return Error{ended.GetError().kind, fmt::format("{}: {}", key, ended.GetError().message)};
    terminal.Show(Reports::MakeOutdatedRemarks(outcome->m_outdated, project));
    terminal.Show(Reports::MakeRunWarnings(key, outcome.Value(), project));
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

/// What a design runs: calculators by key, with their values, and checks.
struct CDesignPlan {
    std::map<std::string, std::vector<CFormValue>> m_calculators;
    std::vector<CCheckRequest> m_checks;
};

/// The checks of the module in ascending order of key, then those of our own that the file names; with its values.
Result<std::vector<CCheckRequest>> PlanChecks(const CParameterFile& file) {
    std::vector<std::string> keys = GetModuleCheckKeys();
    std::sort(keys.begin(), keys.end());
    for (const std::string& key : GetCheckKeys())
        if (OLMGis::Sewage::CNetworkChecks::Has(key) && file.FindCheckValues(key) != nullptr)
            keys.push_back(key);
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
    bool m_hasStored = false;
    bool m_hasChanges = false;
    bool m_hasReadOutdated = false;
    bool m_isStoppedByRain = false; ///< no rain result: what follows would use the result of an earlier run
};

/// The calculators of the parameter file, without one those of the last runs.
Result<CDesignPlan> MakePlan(const COptions& options) {
    CDesignPlan plan;
    CParameterFile file;
    if (!options.m_parameterFile.empty()) {
        auto read = ReadParameterFile(options.m_parameterFile);
        if (!read)
            return read.GetError();
        file = std::move(read.Value());
    }
    for (const std::string& key : GetCalculatorKeys()) {
        if (const auto* const values = file.FindValues(key))
            plan.m_calculators.emplace(key, *values);
        else if (options.m_parameterFile.empty() && OLMGis::Sewage::CLastForms::Instance()->Find(key) != nullptr)
            plan.m_calculators.emplace(key, GetLastValues(key, options.m_project));
    }
    if (plan.m_calculators.empty())
        return options.m_parameterFile.empty()
                   ? BadArguments(
                         fmt::format("found no --params, and in {} no run that stored results, expected one of "
                                     "them: which calculators to run",
                                     options.m_project))
                   : BadInput(fmt::format("{}: found no calculator, expected one or more", options.m_parameterFile));
    auto checks = PlanChecks(file);
    if (!checks)
        return checks.GetError();
    plan.m_checks = std::move(checks.Value());
    return plan;
}

Result<CRunSummary> RunCalculators(const CDesignPlan& plan, const std::string& project, const CFileCheck& checkFile,
                                   CTerminal& terminal, std::ostream& results) {
    CRunSummary summary;
    for (const auto& [key, values] : plan.m_calculators) {
        const auto outcome = RunOne(key, values, project, checkFile, terminal, results);
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
    }
    return summary;
}

/// The project is saved once, at the end: a calculation or check that stops, or is interrupted, leaves it unchanged.
CVerbResult RunDesign(const COptions& options, CTerminal& terminal, std::ostream& results) {
    const auto project = CProject::Open(options.m_project, terminal);
    if (!project)
        return project.GetError();
    if (!options.m_parameterFile.empty())
        project.Value()->Reads(options.m_parameterFile);
    if (const auto isFree = project.Value()->CheckOutput(options.m_output); !isFree)
        return isFree.GetError();
    if (const Status loaded = project.Value()->LoadModule(); !loaded)
        return loaded.GetError();
    const auto plan = MakePlan(options);
    if (!plan)
        return plan.GetError();
    CTerminalDirectionEditor directions(terminal);
    const OLMGis::Sewage::CDirectionEditorScope directionScope(directions);
    const auto checkFile = [&](const std::string& read) {
        project.Value()->Reads(read);
        return project.Value()->CheckOutput(options.m_output);
    };
    const auto runs = RunCalculators(plan.Value(), options.m_project, checkFile, terminal, results);
    if (!runs)
        return runs.GetError();
    if (runs->m_isStoppedByRain || (options.m_isStrict && runs->m_hasReadOutdated))
        return enmExitCode::NothingStored;
    const Reports::CNetworkHydraulics hydraulics = Reports::CalculateNetworkHydraulics(WaterViscosity);
    terminal.Show(Reports::MakeOutdatedRemarks(hydraulics.m_outdated, options.m_project));
    terminal.Show(hydraulics.m_remarks);
    COutdatedReading reading(options.m_project);
    const Status checked = RunChecks(plan->m_checks, terminal);
    const bool isOutdated = reading.Report(terminal) || !hydraulics.m_outdated.empty();
    if (!checked)
        return checked.GetError();
    if (options.m_isStrict && isOutdated)
        return enmExitCode::NothingStored;
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
    return CVerb("design", "PROJECT [options]", "Run the calculators of a parameter file, or run the last ones again")
        .Project(options->m_project)
        .Option("--params", options->m_parameterFile, "FILE.json",
                "Calculators and their values; default: each calculator\nwith the values of its last run")
        .Flag("--strict", options->m_isStrict, StrictHelp)
        .SaveAs(options->m_output)
        .Examples({"drenova design town.gpkg --params design.json -o designed.gpkg", "drenova design town.gpkg"})
        .Notes(
            "Calculators run in ascending order of key, then the hydraulics of all pipes are calculated, then the\n"
            "checks run: those of the module, and any other that the file names under \"checks\". If one stops, the\n"
            "project is unchanged.")
        .Runs([options](CTerminal& terminal, std::ostream& results) { return RunDesign(*options, terminal, results); });
}

} // namespace Cli
