// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/CommandDesign.h"

#include "apps/cli/Calculators.h"
#include "apps/cli/Checks.h"
#include "apps/cli/DesignSummary.h"
#include "apps/cli/FindingListing.h"
#include "apps/cli/NetworkHydraulics.h"
#include "apps/cli/ParameterFile.h"
#include "apps/cli/Project.h"
#include "apps/cli/RainListing.h"
#include "apps/cli/RunOutcome.h"
#include "apps/cli/ShownText.h"
#include "apps/cli/Table.h"
#include "apps/cli/TerminalDirectionEditor.h"
#include "host/gis_core/RunTrace.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>

namespace Cli {

using OLMGis::Topology::CFunctionalAnalysisManager;

using OLMGis::Sewage::CCalculationOutcome;
using OLMGis::Utility::BadInput;
using OLMGis::Utility::Error;
using OLMGis::Utility::Result;
using OLMGis::Utility::Status;

namespace {

constexpr double WaterViscosity = 1e-6; ///< m²/s, as "hydraulics" takes it

/// One calculator with the values of the parameter file; what it stored is printed.
Result<CCalculationOutcome> RunOne(const std::string& key, const std::vector<CFormWord>& words, CTerminal& terminal,
                                   std::ostream& results) {
    const auto calculator = FindCalculator(key);
    if (!calculator)
        return calculator.GetError();
    CWordFormEditor editor(words);
    const OLMGis::Topology::CFormEditorScope formScope(editor);
    OLMGis::Utility::CRunTrace trace;
    std::optional<OLMGis::Utility::CRunTraceScope> traceScope;
    if (key == RainCalculator)
        traceScope.emplace(trace);
    auto outcome = OLMGis::Sewage::RunCalculation({key, {}, {}});
    traceScope.reset();
    TellOfRain(terminal, trace);
    if (!outcome)
        return outcome.GetError();
    if (const Status ended = CheckEnd(outcome.Value(), editor); !ended)
        return Error{ended.GetError().kind, fmt::format("{}: {}", key, ended.GetError().message)};
    for (const std::string& tag : editor.GetOutOfForce())
        terminal.Note(fmt::format("{}: {} is out of force with these values; it was set all the same", key, tag));
    if (outcome->HasStored()) {
        PrintOutcome(results, *calculator.Value(), outcome.Value());
        results << '\n';
    } else {
        terminal.Note(fmt::format("{}: nothing was stored", key));
    }
    return outcome;
}

/// All checks in ascending order of key, each with the values of the file where it names them.
Result<std::vector<CCheckRequest>> PlanChecks(const CParameterFile& file) {
    std::vector<std::string> keys = GetCheckKeys();
    std::sort(keys.begin(), keys.end());
    std::vector<CCheckRequest> requests;
    for (const std::string& key : keys) {
        const auto* words = file.FindCheckWords(key);
        auto request = MakeCheckRequest(key, words == nullptr ? std::vector<CFormWord>() : *words);
        if (!request)
            return request.GetError();
        requests.push_back(std::move(request.Value()));
    }
    return requests;
}

/// The number of findings of each check, and the findings themselves unless they are many.
void PrintFindings(std::ostream& results) {
    constexpr std::size_t MostFindings = 50;
    CTable table;
    table.AddColumn("check");
    table.AddColumn("findings", CTable::enmAlign::Right);
    table.AddColumn("");
    const auto* const manager = CFunctionalAnalysisManager::Instance();
    const CFindingsByItem& findings = *manager->GetFindings();
    for (const auto& item : findings)
        table.AddRow({item.m_item, fmt::format("{}", item.m_findings.size()),
                      OnOneLine(manager->GetItem(item.m_item)->GetItemName())});
    if (table.IsEmpty())
        return;
    results << '\n';
    table.Print(results);
    const std::size_t count = CountFindings(findings);
    if (count > 0 && count <= MostFindings) {
        results << '\n';
        PrintFindingsAsTable(results, findings);
    }
}

} // namespace

CVerbResult RunDesign(const CDesignOptions& options, CTerminal& terminal, std::ostream& results) {
    const auto project = CProject::Open(options.m_project, terminal);
    if (!project)
        return project.GetError();
    if (const Status loaded = project.Value()->LoadModule(); !loaded)
        return loaded.GetError();
    const auto file = CParameterFile::Read(options.m_parameterFile, GetCalculatorKeys(), GetCheckKeys());
    if (!file)
        return file.GetError();
    const auto checks = PlanChecks(file.Value());
    if (!checks)
        return checks.GetError();
    CTerminalDirectionEditor directions(terminal);
    const OLMGis::Sewage::CDirectionEditorScope directionScope(directions);
    bool hasStored = false;
    bool hasChanges = false;
    int count = 0;
    for (const std::string& key : GetCalculatorKeys()) {
        const auto* words = file->FindWords(key);
        if (words == nullptr)
            continue;
        const auto outcome = RunOne(key, *words, terminal, results);
        if (!outcome)
            return outcome.GetError();
        // What an earlier run stored would pass for the result of this one in all that follows.
        if (key == RainCalculator && outcome->m_result == 0) {
            terminal.Note(fmt::format("{}: no result; the design ends here, and nothing of it is stored", key));
            return enmExitCode::NothingStored;
        }
        hasStored = hasStored || outcome->HasStored();
        hasChanges = hasChanges || outcome->m_hasChanges;
        ++count;
    }
    if (count == 0)
        return BadInput(fmt::format("{}: found no calculator, expected one or more", options.m_parameterFile));
    const CNetworkHydraulics hydraulics = CalculateNetworkHydraulics(WaterViscosity, terminal);
    hasStored = hasStored || hydraulics.m_hasStored;
    hasChanges = hasChanges || hydraulics.m_hasStored;
    if (const Status checked = RunChecks(checks.Value(), terminal); !checked)
        return checked.GetError();
    PrintHydraulicsSummary(results, hydraulics.m_rows);
    PrintFindings(results);
    results.flush();
    if (hasChanges) {
        if (const Status saved = project.Value()->Save(options.m_output); !saved)
            return saved.GetError();
        terminal.Tell(fmt::format("{}: saved", project.Value()->GetTarget(options.m_output)));
    }
    return hasStored ? enmExitCode::Done : enmExitCode::NothingStored;
}

} // namespace Cli
