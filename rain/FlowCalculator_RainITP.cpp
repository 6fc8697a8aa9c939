// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/FlowCalculator_RainITP.h"

#include "flow/FlowKeys.h"
#include "flow/FlowOutputs.h"
#include "flow/MainOutlets.h"
#include "host/gis_core/CoreProgressBar.h"
#include "host/gis_core/HostServices.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/RunTrace.h"
#include "host/gis_core/Utility.h"
#include "host/network_core/Selector.h"
#include "host/workspace_core/WsManager.h"
#include "rain/RainITPForm.h"
#include "rain/RainTrace.h"
#include "rain/RunForecast.h"

#include <boost/make_shared.hpp>

using OLMGis::Selection::CSelector;
using OLMGis::Sewage::CFlowCalculatorParameters;
using OLMGis::Sewage::CReport;
using OLMGis::Sewage::CSewageHydraulics;
using OLMGis::Sewage::IUserInteraction;
using OLMGis::Topology::CPropertyEx;
using OLMGis::Utility::CCoreProgressBar;
using OLMGis::Utility::CModuleConfiguration;
using OLMGis::Utility::CRunTrace;
using OLMGis::Utility::CUtility;
using OLMGis::Workspace::CLogLine;
using OLMGis::Workspace::CWsManager;

namespace {

constexpr int NameMessage = 11164;
constexpr int GroupNameMessage = 11166;
constexpr int CurveProblem = 70120;
constexpr int CurveFileProblem = 70132;
constexpr int UnreadText = 70133;

/// The progress bar for one run, given back as it was found.
class CProgress {
public:
    CProgress(const std::string& caption, std::size_t count) {
        m_bar->SaveState();
        m_bar->Show(caption, 0, static_cast<int>(count));
    }
    ~CProgress() {
        m_bar->Hide();
        m_bar->RestoreState();
    }
    CProgress(const CProgress&) = delete;
    CProgress& operator=(const CProgress&) = delete;

private:
    CCoreProgressBar* const m_bar = CCoreProgressBar::Instance();
};

} // namespace

CFlowCalculator_RainITP::CFlowCalculator_RainITP() : m_hydraulics(boost::make_shared<CSewageHydraulics>()) {
    m_key = "001_RAIN_ITP";
    m_outputDefinitions = FlowOutputs::Definitions(
        {FlowKeys::CorrectedArea, FlowKeys::CorrectedAreaTotal, FlowKeys::Intensity, FlowKeys::ConcentrationTime,
         FlowKeys::UpstreamFlowTime, FlowKeys::SectionFlowTime, FlowKeys::RainCurves});
    m_outputDefinitionsWithKind = FlowOutputs::DefinitionsWithKind(
        {FlowKeys::CorrectedArea, FlowKeys::CorrectedAreaTotal, FlowKeys::Intensity, FlowKeys::ConcentrationTime,
         FlowKeys::UpstreamFlowTime, FlowKeys::SectionFlowTime, FlowKeys::RainCurves, FlowKeys::PipeMark});
}

CFlowCalculator_RainITP::~CFlowCalculator_RainITP() = default;

boost::shared_ptr<CFlowCalculatorParameters> CFlowCalculator_RainITP::CreateParameters() {
    m_parameters = RainITPForm::Make();
    m_explained.clear();
    return m_parameters;
}

void CFlowCalculator_RainITP::OnPropertiesUpdated(CPropertyEx* property, CFlowCalculatorParameters* parameters) {
    if (property == nullptr || parameters == nullptr || !parameters->m_properties ||
        !CUtility::EqualIgnoreCase(property->GetTag(), "FILE_PATH"))
        return;
    CRainITPParameters typed;
    typed.ReadParameters(parameters, 0);
    ExplainInput(typed);
    if (const auto frequency = parameters->m_properties->GetPropertyExByTag("FREQUENCY"))
        RainITPForm::OfferFrequencies(*frequency, typed.m_curves);
}

/// Tells the log what of a curve file and of texts doesn't count; the same story once per form.
void CFlowCalculator_RainITP::ExplainInput(const CRainITPParameters& params) {
    std::vector<std::string> lines;
    for (const std::string& name : params.m_unread)
        lines.push_back(CUtility::Format(CModuleConfiguration::Instance()->GetMsg(UnreadText), name));
    const bool hasFile = params.m_rainfallMode == RainChoices::CurveFile && !params.m_curves.GetPath().empty();
    for (const CIDFCurves::CProblem& problem : params.m_curves.GetProblems()) {
        if (!hasFile)
            break;
        const auto& format =
            CModuleConfiguration::Instance()->GetMsg(problem.m_line == 0 ? CurveFileProblem : CurveProblem);
        lines.push_back(problem.m_line == 0
                            ? CUtility::Format(format, params.m_curves.GetPath(), problem.m_text)
                            : CUtility::Format(format, params.m_curves.GetPath(), problem.m_line, problem.m_text));
    }
    std::string story;
    for (const std::string& line : lines)
        story += line + '\n';
    if (story == m_explained)
        return;
    m_explained = std::move(story);
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
    CRunForecast forecast = ForecastRun(sections, params->m_properties->GetIntProperty("PARTIAL_AREA_EFFECT", 0, 1));
    m_params.m_forecastText = std::move(forecast.m_text);
    // Where the run ends before the walk the switch stays cleared: a form that was refused is edited again, and the
    // selections made meanwhile are for the same run. What can't be started is not asked about; what is wrong with the
    // form is told all the same.
    const int isRead = m_params.ReadParameters(params, forecast.m_refusal.empty() ? 1 : 0);
    ExplainInput(m_params);
    if (isRead == 0) {
        if (!m_params.m_errors.empty())
            acedAlert(m_params.BuildParameterErrorText());
        return 0;
    }
    if (!forecast.m_refusal.empty()) {
        acedAlert(forecast.m_refusal);
        return 0;
    }
    if (MainOutlets::Settle(MainOutlets::CollectStartingNodes(sections), interaction) == 0) {
        acedAlert(CModuleConfiguration::Instance()->GetMsg(MainOutlets::NotSettled));
        return 0;
    }
    const int result = Run(sections);
    selector->SetIncludeSubsystemIntoSelection(includesSubsystem);
    return result;
}

int CFlowCalculator_RainITP::Run(const CSectionList& sections) {
    BeginRun();
    m_sectionData.Clear();
    m_nodeData.Clear();
    m_variations.Clear();
    const int result = m_params.m_variationSearch != 0 ? SearchVariations(sections) : WalkWithProgress(sections);
    if (result == 0) {
        m_sectionData.Clear();
        m_nodeData.Clear();
    } else if (m_params.m_variationSearch != 0) {
        WriteBestResults();
        WriteVariationsFile();
        RainTrace::NoteBest(*this);
    } else {
        const auto* const trace = CRunTrace::Active();
        const int wantsTable = trace != nullptr && trace->IsRequested(RainTrace::IterationTable) ? 1 : 0;
        WriteResults(1, wantsTable, wantsTable);
        RainTrace::NoteRun(*this);
    }
    BeginRun(); // what was read of the sections is of no more use
    return result;
}

int CFlowCalculator_RainITP::WalkWithProgress(const CSectionList& sections) {
    const CProgress progress(GetCalculatorName(), sections.size());
    m_showsProgress = true;
    m_inputs.Gather(sections);
    const int result = CalculateNetwork(sections);
    m_showsProgress = false;
    return result;
}

std::string CFlowCalculator_RainITP::GetCalculatorName() {
    return CModuleConfiguration::Instance()->GetMsg(NameMessage);
}

std::string CFlowCalculator_RainITP::GetCalculatorGroupName() {
    return CModuleConfiguration::Instance()->GetMsg(GroupNameMessage);
}

std::string CFlowCalculator_RainITP::GetParametersDataId() {
    return FlowKeys::RainCurvesParameters;
}
