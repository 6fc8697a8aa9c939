// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/FlowCalculator_RainITP.h"

#include "flow/FlowKeys.h"
#include "flow/FlowOutputs.h"
#include "flow/MainOutlets.h"
#include "host/formulas/Units.h"
#include "host/gis_core/CoreProgressBar.h"
#include "host/gis_core/HostServices.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/PerformanceTimer.h"
#include "host/gis_core/ReportFile.h"
#include "host/gis_core/RunTrace.h"
#include "host/gis_core/ShortName.h"
#include "host/gis_core/Utility.h"
#include "host/network_core/Selector.h"
#include "host/workspace_core/WsManager.h"
#include "rain/RainITPForm.h"
#include "rain/RainLacks.h"
#include "rain/explain/RainTrace.h"
#include "rain/run/IterationTable.h"
#include "rain/run/ResultStore.h"
#include "rain/variations/ForecastText.h"
#include "rain/variations/VariationReport.h"

#include <algorithm>
#include <optional>

using OLMGis::Selection::CSelector;
using OLMGis::Sewage::CFlowCalculatorParameters;
using OLMGis::Sewage::CReport;
using OLMGis::Sewage::IUserInteraction;
using OLMGis::Topology::CPropertyEx;
using OLMGis::Utility::CModuleConfiguration;
using OLMGis::Utility::CPerformanceTimer;
using OLMGis::Utility::CProgress;
using OLMGis::Utility::CReportFile;
using OLMGis::Utility::CRunTrace;
using OLMGis::Utility::CUtility;
using OLMGis::Utility::Msg;
using OLMGis::Utility::ShortName;
using OLMGis::Workspace::CLogLine;
using OLMGis::Workspace::CWsManager;
using Rain::CRunStop;
using Rain::enmInputProblem;

namespace {

// Messages.
constexpr int NameMessage = 11164;
constexpr int GroupNameMessage = 11166;
constexpr int NoInletTime = 2299;
constexpr int NoSlope = 2300;
constexpr int SlopeNotAboveZero = 11204;
constexpr int SectionWord = 3578;
constexpr int NoPipeLargeEnough = 9454;
constexpr int ExistingPipeTooFull = 11085;
constexpr int CombinationFailed = 2297;
constexpr int SearchCaption = 70140;
constexpr int ReportNotWritten = 70148;

constexpr const char* IdfOut = "IDFOut.txt";
constexpr const char* Variations = "variations.txt";

/// Path of a report.
std::string ReportPath(const char* name) {
    std::string folder = CModuleConfiguration::Instance()->GetPath("install");
    if (!folder.ends_with('/'))
        folder += '/';
    return CUtility::Format("%s%s", folder, name);
}

/// Ends a report; isWhole is false where the user cancelled it. Of one that is not whole nothing stays, and where it
/// could not be written a line of the log gives the reason: the results are stored all the same.
void FinishReport(CReportFile& file, const std::string& path, bool isWhole) {
    if (isWhole && file.Close()) {
        RainTrace::NoteFile(path);
        return;
    }
    file.TakeBack();
    if (!file.GetProblem().empty())
        CWsManager::Instance()->LogMessage(CLogLine::NothingStored,
                                           CUtility::Format(Msg(ReportNotWritten), path, file.GetProblem()));
}

constexpr std::size_t ProgressRange = 10000;

/// Place in the range of the progress bar: combinations may be more than it counts.
std::size_t ShareOf(std::uint64_t done, double total) {
    return static_cast<std::size_t>(std::min(1.0, static_cast<double>(done) / std::max(1.0, total)) * ProgressRange);
}

std::string ShowProblem(const CRunStop& stop, const Rain::CRunSettings& settings) {
    switch (stop.m_problem) {
    case enmInputProblem::NoSlope:
        return Msg(NoSlope);
    case enmInputProblem::SlopeNotAboveZero:
        return CUtility::Format("%s (%s %s)", Msg(SlopeNotAboveZero), Msg(SectionWord), ShortName(stop.m_name));
    case enmInputProblem::NoInletTime:
        return Msg(NoInletTime);
    case enmInputProblem::NoTimeFactor:
        return Msg(settings.FindTimeFactor()->m_missingMessage);
    case enmInputProblem::None:
        break;
    }
    return {};
}

/// What the user hears of a stopped run; empty for nothing.
std::string ShowStop(const CRunStop& stop, const Rain::CRunSettings& settings) {
    switch (stop.m_reason) {
    case CRunStop::enmReason::BadInput:
        return ShowProblem(stop, settings);
    case CRunStop::enmReason::NoPipe:
        return CUtility::Format(
            "%s %s %s", ShortName(stop.m_name),
            CUtility::Format(Msg(NoPipeLargeEnough), stop.m_diameter / OLMGis::Formulas::MillimetresPerMetre),
            stop.m_pipeGroup);
    case CRunStop::enmReason::ExistingPipeTooFull:
        return CUtility::Format("%s %s", ShortName(stop.m_name), Msg(ExistingPipeTooFull));
    case CRunStop::enmReason::None:
    case CRunStop::enmReason::Cancelled:
    case CRunStop::enmReason::NotConverged: // without a message. Fixed: others rely on it
        break;
    }
    return {};
}

} // namespace

/// One run, from what it reads to its records. Later members refer to earlier ones.
struct CFlowCalculator_RainITP::CRun {
    explicit CRun(const CSectionList& sections) : m_network(sections) {}

    /// Forecasts a run with a choice of PARTIAL_AREA_EFFECT; a search keeps its plan.
    void Forecast(int partialArea) {
        if (partialArea == RainChoices::PartialAreaChains) {
            const Rain::CVariationNetwork ways(m_network);
            m_refusal = WhyChainsAreRefused(ways, ForecastChains(ways));
        } else if (partialArea == RainChoices::PartialAreaSearch) {
            m_plan = std::make_unique<const Rain::CSearchPlan>(m_network);
            m_refusal = WhySearchIsRefused(m_plan->m_network, m_plan->m_forecast);
        }
    }

    /// Whether the run is not started; the user gets the reason.
    bool AlertRefusal() const {
        if (m_refusal.empty())
            return false;
        acedAlert(m_refusal);
        return true;
    }

    std::string ShowForecast() const {
        return m_plan && m_refusal.empty() ? Rain::ShowForecast(m_plan->m_network, m_plan->m_forecast) : std::string();
    }

    Rain::CRunNetwork m_network;
    std::unique_ptr<const Rain::CSearchPlan> m_plan; ///< of a search
    std::string m_refusal;                           ///< why the run is not started; empty when it may be
    std::optional<Rain::CRunInput> m_input;
    std::optional<Rain::CNetworkWalk> m_walk;
    std::optional<Rain::CVariationSearch> m_search;
};

CFlowCalculator_RainITP::CFlowCalculator_RainITP() {
    m_key = "001_RAIN_ITP";
    m_outputDefinitions =
        Flow::Outputs::Definitions({Flow::Keys::CorrectedArea, Flow::Keys::CorrectedAreaTotal, Flow::Keys::Intensity,
                                    Flow::Keys::ConcentrationTime, Flow::Keys::UpstreamFlowTime,
                                    Flow::Keys::SectionFlowTime, Flow::Keys::RainCurves});
    m_outputDefinitionsWithKind = Flow::Outputs::DefinitionsWithKind(
        {Flow::Keys::CorrectedArea, Flow::Keys::CorrectedAreaTotal, Flow::Keys::Intensity,
         Flow::Keys::ConcentrationTime, Flow::Keys::UpstreamFlowTime, Flow::Keys::SectionFlowTime,
         Flow::Keys::RainCurves, Flow::Keys::PipeMark});
}

CFlowCalculator_RainITP::~CFlowCalculator_RainITP() = default;

std::string CFlowCalculator_RainITP::GetCalculatorName() {
    return Msg(NameMessage);
}

std::string CFlowCalculator_RainITP::GetCalculatorGroupName() {
    return Msg(GroupNameMessage);
}

std::string CFlowCalculator_RainITP::GetParametersDataId() {
    return Flow::Keys::RainCurvesParameters;
}

boost::shared_ptr<CFlowCalculatorParameters> CFlowCalculator_RainITP::CreateParameters() {
    m_parameters = RainITPForm::Make();
    m_logged.clear();
    m_stopLacks.clear();
    return m_parameters;
}

void CFlowCalculator_RainITP::OnPropertiesUpdated(CPropertyEx* property, CFlowCalculatorParameters* parameters) {
    if (property == nullptr || parameters == nullptr || !parameters->m_properties ||
        !CUtility::EqualIgnoreCase(property->GetTag(), "FILE_PATH"))
        return;
    CRainITPParameters typed;
    typed.ReadParameters(parameters, 0);
    LogProblems(typed);
    if (const auto frequency = parameters->m_properties->GetPropertyExByTag("FREQUENCY"))
        RainITPForm::OfferFrequencies(*frequency, typed.FindCurves());
}

/// Logs what of the curve file and of texts was left out; the same lines once per form.
void CFlowCalculator_RainITP::LogProblems(const CRainITPParameters& params) {
    const std::vector<std::string> lines = params.ListProblems();
    std::string text;
    for (const std::string& line : lines)
        text += line + '\n';
    if (text == m_logged)
        return;
    m_logged = std::move(text);
    for (const std::string& line : lines)
        CWsManager::Instance()->LogMessage(CLogLine::NothingStored, line);
}

int CFlowCalculator_RainITP::Calculate(const CSectionList& sections, CFlowCalculatorParameters* params, int /*write*/,
                                       CReport* /*report*/, IUserInteraction* interaction) {
    if (params == nullptr || !params->m_properties)
        return 0;
    CSelector* const selector = CSelector::LoopInstance();
    const int includesSubsystem = selector->GetIncludeSubsystemIntoSelection();
    selector->SetIncludeSubsystemIntoSelection(0);
    const int partialArea = params->m_properties->GetIntProperty("PARTIAL_AREA_EFFECT", 0, 1);
    auto run = std::make_unique<CRun>(sections);
    run->Forecast(partialArea);
    // Where the run ends before the walk the switch stays cleared. Fixed: others rely on it. A run that is refused asks
    // no question, but errors of the form come first.
    const int isRead = m_params.ReadParameters(params, run->m_refusal.empty() ? 1 : 0, run->ShowForecast());
    LogProblems(m_params);
    if (isRead == 0) {
        if (!m_params.m_errors.empty())
            acedAlert(m_params.BuildParameterErrorText());
        return 0;
    }
    if (run->AlertRefusal())
        return 0;
    const bool hadUnchosen = run->m_plan && run->m_plan->m_forecast.m_isAtLeast;
    if (Flow::MainOutlets::ChooseMissing(Flow::MainOutlets::CollectStartingNodes(sections), interaction) == 0) {
        acedAlert(Msg(Flow::MainOutlets::MissingMessage));
        return 0;
    }
    if (partialArea != RainChoices::PartialAreaSearch || hadUnchosen)
        run = std::make_unique<CRun>(sections); // main outlets may have been chosen just now
    if (hadUnchosen)
        run->Forecast(partialArea);
    m_run = std::move(run);
    const int result = Run();
    if (result == 0)
        m_run.reset();
    selector->SetIncludeSubsystemIntoSelection(includesSubsystem);
    return result;
}

int CFlowCalculator_RainITP::Run() {
    if (m_run->AlertRefusal())
        return 0;
    const CRunStop stop = m_run->m_plan ? Search() : Walk();
    RainTrace::NoteNotConverged(m_run->m_network, stop);
    if (const std::string text = ShowStop(stop, m_params); !text.empty())
        acedAlert(text);
    if (stop.IsStopped() && stop.m_reason != CRunStop::enmReason::Cancelled && m_run->m_plan)
        acedAlert(Msg(CombinationFailed));
    m_stopLacks = Rain::FindStopLacks(stop, *m_run->m_input);
    if (stop.IsStopped())
        return 0;
    if (m_run->m_search) {
        WriteBestResults();
        WriteVariationsFile();
        RainTrace::NoteBest(*m_run->m_input, m_params, *m_run->m_search);
    } else {
        const auto* const trace = CRunTrace::Active();
        const int wantsTable = trace != nullptr && trace->IsRequested(RainTrace::IterationTable) ? 1 : 0;
        WriteResults(1, wantsTable, wantsTable);
        RainTrace::NoteRun(*m_run->m_input, m_params, *m_run->m_walk);
    }
    return 1;
}

CRunStop CFlowCalculator_RainITP::Walk() {
    const auto& rows = m_run->m_network.GetRows();
    CProgress progress(GetCalculatorName(), rows.size());
    m_run->m_input.emplace(m_run->m_network, m_params);
    m_run->m_walk.emplace(*m_run->m_input, m_params);
    return m_run->m_walk->Walk(rows, [&progress](std::uint64_t done) { return progress.GoOn(done); });
}

CRunStop CFlowCalculator_RainITP::Search() {
    auto* const timers = CPerformanceTimer::Instance();
    const int timer = timers->CreateTimer();
    timers->StartTimer(timer);
    CRunStop stop;
    {
        CProgress progress(Msg(SearchCaption), ProgressRange);
        const double total = m_run->m_plan->m_forecast.m_total;
        m_run->m_input.emplace(m_run->m_network, m_params);
        m_run->m_search.emplace(*m_run->m_input, m_params, *m_run->m_plan);
        stop = m_run->m_search->Run([&](std::uint64_t done) { return progress.GoOn(ShareOf(done, total)); });
    }
    if (stop.IsStopped())
        return stop;
    timers->StopTimer(timer);
    acutPrintf(CUtility::Format("\ndelta ITP_CALC_VARIATION = %s", timers->ReadTimerStr(timer, 4)));
    timers->DestroyTimer(timer);
    return stop;
}

void CFlowCalculator_RainITP::WriteResults(int write, int report, int iteration) {
    if (!m_run || !m_run->m_walk)
        return;
    if (report != 0) {
        const std::string path = ReportPath(IdfOut);
        CReportFile file(path, iteration == 1 ? CReportFile::enmStart::Anew : CReportFile::enmStart::Append);
        const bool isWhole =
            file.IsOpen() && file.Append(Rain::MakeIterationTable(*m_run->m_input, *m_run->m_walk, iteration));
        FinishReport(file, path, isWhole);
    }
    if (write == 0)
        return;
    const Rain::CResultStore store(*m_run->m_input, m_params.m_savePipe != 0);
    for (const std::uint32_t section : m_run->m_walk->GetSections())
        if (const auto& list = *m_run->m_walk->FindRecords(section); !list.empty())
            store.Store(*list.front());
}

void CFlowCalculator_RainITP::WriteBestResults() {
    const Rain::CResultStore store(*m_run->m_input, m_params.m_savePipe != 0);
    for (const std::uint32_t section : m_run->m_search->GetSections())
        if (const CVariationData& data = *m_run->m_search->FindData(section);
            data.m_bestIndex != CVariationData::NoBest)
            store.Store(data.m_best);
}

void CFlowCalculator_RainITP::WriteVariationsFile() {
    const std::string path = ReportPath(Variations);
    CReportFile file(path);
    CProgress progress(Variations, ProgressRange);
    const double total = m_run->m_plan->m_forecast.m_total + 1.0;
    const auto append = [&](std::string_view text, std::uint64_t written) {
        return file.Append(text) && progress.GoOn(ShareOf(written, total));
    };
    FinishReport(file, path, file.IsOpen() && Rain::WriteVariations(*m_run->m_input, *m_run->m_search, append));
}

const Rain::CRecordList* CFlowCalculator_RainITP::FindSectionDataList(const CSectionPtr& section) const {
    return section && m_run && m_run->m_walk ? m_run->m_walk->FindRecords(section->GetRow()) : nullptr;
}

const CVariationData* CFlowCalculator_RainITP::FindVariationData(const CSectionPtr& section) const {
    return section && m_run && m_run->m_search ? m_run->m_search->FindData(section->GetRow()) : nullptr;
}

const Rain::CVariationSearch* CFlowCalculator_RainITP::GetSearch() const {
    return m_run && m_run->m_search ? &*m_run->m_search : nullptr;
}

std::vector<std::string> CFlowCalculator_RainITP::GetReadKeys() const {
    return Rain::GetReadKeys();
}

std::vector<std::string> CFlowCalculator_RainITP::GetWrittenKeys(bool /*inAnyEdition*/) const {
    return {Flow::Keys::Intensity,          Flow::Keys::ConcentrationTime, Flow::Keys::UpstreamFlowTime,
            Flow::Keys::SectionFlowTime,    Flow::Keys::RainCurves,        Flow::Keys::CorrectedArea,
            Flow::Keys::CorrectedAreaTotal, Flow::Keys::PipeReference};
}

std::vector<OLMGis::Sewage::CLack> CFlowCalculator_RainITP::FindLacks(const CSectionList& sections,
                                                                      CFlowCalculatorParameters& params) const {
    std::vector<OLMGis::Sewage::CLack> lacks = Rain::FindLacks(sections, params);
    lacks.insert(lacks.end(), m_stopLacks.begin(), m_stopLacks.end());
    return lacks;
}
