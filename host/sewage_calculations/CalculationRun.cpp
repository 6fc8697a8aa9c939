// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/sewage_calculations/CalculationRun.h"

#include "host/gis_core/CoreProgressBar.h"
#include "host/gis_core/DataConfiguration.h"
#include "host/gis_core/HostServices.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/ProjectContext.h"
#include "host/gis_core/ShortName.h"
#include "host/gis_core/Utility.h"
#include "host/network_core/TopologyMultiStorage.h"
#include "host/sewage_calculations/OutdatedResults.h"
#include "host/sewage_calculations/Readiness.h"
#include "host/sewage_core/FlowCalculatorManager.h"
#include "host/sewage_core/IDensityUser.h"
#include "host/sewage_core/LastForms.h"
#include "host/sewage_core/MissingDensities.h"
#include "host/workspace_core/WsManager.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <cmath>
#include <optional>

namespace OLMGis::Sewage {

using Data::CDataBox;
using Data::CDataDefinition;
using Data::CJournal;
using Topology::CTopologyMultiStorage;
using Utility::BadArguments;
using Utility::Msg;
using Utility::Result;

namespace {

constexpr int NotFiniteResults = 70070;

/// Passes everything on to the host and records the alerts: a run with an alert has stopped, one without may have
/// stored nothing for other reasons.
class CAlertRecorder final : public System::IBasicHostServices {
public:
    CAlertRecorder() : m_host(System::HostServices()) {}
    void Alert(std::string_view text) override {
        m_alerts.emplace_back(text);
        m_host.Alert(text);
    }
    int AskYesNo(std::string_view text) override { return m_host.AskYesNo(text); }
    void WriteCommandLine(std::string_view text) override { m_host.WriteCommandLine(text); }
    int ShowProgress(std::string_view caption, double done) override { return m_host.ShowProgress(caption, done); }
    void HideProgress() override { m_host.HideProgress(); }

    std::vector<std::string> m_alerts;

private:
    System::IBasicHostServices& m_host;
};

/// Editors that calculators open are modal in every host, so there is nothing to suspend.
// Final, and never deleted through its base.
class CModalInteraction final : public IUserInteraction { // NOLINT(cppcoreguidelines-virtual-class-destructor)
public:
    void EndUserInteraction() override {}
    void BeginUserInteraction() override {}
};

/// A reference to the network's own list, which no calculator changes, or to that of the request.
const CSectionList& GatherSections(const CCalculationRequest& request, IFlowCalculator& calculator) {
    if (request.m_sections.empty() || calculator.IsWholeNetworkCalculator() != 0)
        return CTopologyMultiStorage::Instance()->GetActiveTopology()->GetSections();
    return request.m_sections;
}

/// From the journal of a run: which keys got values, how many, in which range.
std::vector<CStoredResult> Summarise(const CJournal& journal, const CDataDefinition* parameters) {
    std::vector<CStoredResult> results;
    std::vector<std::vector<bool>> seen;
    const auto& store = System::CProjectContext::Active().GetAttributes();
    for (const CJournal::CAttributeChange& change : journal.GetAttributeChanges()) {
        // Only values of sections are results; a main outlet chosen during the run is an attribute of a node.
        if (change.m_definition == parameters || change.m_definition->m_entityKind != Data::enmEntityKind::Section)
            continue;
        CDataBox box;
        if (!store.Read(*change.m_definition, change.m_row, box))
            continue;
        auto found = std::find_if(results.begin(), results.end(),
                                  [&](const CStoredResult& r) { return r.m_definition == change.m_definition; });
        if (found == results.end()) {
            found = results.insert(results.end(), CStoredResult{change.m_definition});
            seen.emplace_back(store.GetRowCount(change.m_definition->m_entityKind), false);
        }
        std::vector<bool>& rows = seen[static_cast<std::size_t>(found - results.begin())];
        if (rows[change.m_row])
            continue;
        rows[change.m_row] = true;
        ++found->m_count;
        const double value = box.AsDouble();
        if (box.GetKind() == CDataBox::enmKind::Text || !std::isfinite(value))
            continue;
        found->m_sum += value;
        found->m_minimum = found->m_finiteCount == 0 ? value : std::min(found->m_minimum, value);
        found->m_maximum = found->m_finiteCount == 0 ? value : std::max(found->m_maximum, value);
        ++found->m_finiteCount;
    }
    return results;
}

/// Names the sections whose results are not finite: such numbers are stored as they are and must not go unnoticed.
void LogNonFinite(const CJournal& journal) {
    constexpr std::size_t MostNames = 10;
    const auto& store = System::CProjectContext::Active().GetAttributes();
    const auto* topology = CTopologyMultiStorage::Instance()->GetActiveTopology();
    std::size_t count = 0;
    std::vector<std::string> names;
    for (const CJournal::CAttributeChange& change : journal.GetAttributeChanges()) {
        const bool isSectionNumber = change.m_definition->m_entityKind == Data::enmEntityKind::Section &&
                                     change.m_definition->m_type == Data::enmDataType::Double;
        CDataBox box;
        if (!isSectionNumber || !store.Read(*change.m_definition, change.m_row, box) || std::isfinite(box.AsDouble()))
            continue;
        if (++count <= MostNames)
            names.push_back(fmt::format("{} of {}", change.m_definition->m_id,
                                        Utility::ShortName(topology->GetSectionAt(change.m_row)->GetName())));
    }
    if (count > 0)
        Workspace::CWsManager::Instance()->LogMessage(
            Workspace::CLogLine::NothingStored,
            Utility::CUtility::Format(
                Msg(NotFiniteResults), count,
                fmt::format("{}{}", fmt::join(names, ", "), count > names.size() ? ", ..." : "")));
}

void LogMissingDensities(const IFlowCalculator& calculator) {
    const auto* const user = dynamic_cast<const IDensityUser*>(&calculator);
    if (user == nullptr || !user->UsesDensities())
        return;
    if (const auto warning = WarnOfMissingDensities(*CTopologyMultiStorage::Instance()->GetActiveTopology()))
        Workspace::CWsManager::Instance()->LogMessage(Workspace::CLogLine::NothingStored, *warning);
}

} // namespace

Result<CCalculationOutcome> RunCalculation(const CCalculationRequest& request) {
    const auto calculator = CFlowCalculatorManager::Instance()->GetCalculator(request.m_key);
    if (!calculator)
        return BadArguments(
            fmt::format("found the calculator {}, expected one that \"calculators\" lists", request.m_key));
    CCalculationOutcome outcome;
    const CSectionList& sections = GatherSections(request, *calculator);
    outcome.m_sectionCount = static_cast<int>(sections.size());
    const auto parameters = calculator->CreateParameters();
    auto& store = System::CProjectContext::Active().GetAttributes();
    CJournal journal;
    CAlertRecorder recorder;
    const std::vector<COutdatedResult> outdated = FindOutdatedResults();
    std::optional<COriginRecorder> origin;
    auto* const progress = Utility::CCoreProgressBar::Instance();
    progress->SaveState();
    {
        const System::CHostServicesScope services(recorder);
        const Data::CJournalScope open(store, &journal);
        CModalInteraction interaction;
        if (calculator->InputParameters(sections, parameters.get(), 0, nullptr) == 0) {
            outcome.m_end = enmRunEnd::GivenUp;
        } else {
            LogMissingDensities(*calculator);
            // Not earlier: what the form read for its defaults is a value of the form now.
            origin.emplace();
            bool goesOn = true;
            if (request.m_showPreview && calculator->IsPreviewAvailable() != 0) {
                CReport report;
                calculator->Calculate(sections, parameters.get(), 0, &report, &interaction);
                goesOn = request.m_showPreview(calculator->GetCalculatorName(), report) != 0;
            }
            outcome.m_parameters = parameters->Serialize();
            if (goesOn)
                outcome.m_result = calculator->Calculate(sections, parameters.get(), 1, nullptr, &interaction);
            else
                outcome.m_end = enmRunEnd::Previewed;
            origin->Stop();
        }
    }
    const bool isCancelled = progress->IsCancelled();
    progress->RestoreState();
    outcome.m_alerts = std::move(recorder.m_alerts);
    if (isCancelled || !outcome.m_alerts.empty()) {
        outcome.m_end = isCancelled ? enmRunEnd::Cancelled : enmRunEnd::Alerted;
        journal.Undo(store);
        if (!isCancelled)
            outcome.m_lacks = FindLacks(*calculator, *parameters, sections);
        return outcome;
    }
    outcome.m_hasChanges = !journal.IsEmpty();
    outcome.m_results = Summarise(journal, Data::FindDefinition(calculator->GetParametersDataId()));
    LogNonFinite(journal);
    if (origin) {
        outcome.m_outdated = SelectRead(outdated, origin->GetNotes(), request.m_key);
        if (outcome.HasStored())
            outcome.m_former = origin->Keep(request.m_key, journal);
    }
    if (outcome.HasStored())
        CLastForms::Instance()->Set(request.m_key, TakeLastForm(*parameters->m_properties));
    return outcome;
}

} // namespace OLMGis::Sewage
