// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/RainITPParameters.h"

#include "host/gis_core/HostServices.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/Utility.h"
#include "host/network_core/CatalogManager.h"
#include "host/network_core/PipeManager.h"
#include "rain/editions/Editions.h"

#include <algorithm>
#include <iterator>

using OLMGis::Sewage::CFlowCalculatorParameters;
using OLMGis::Topology::CCatalogManager;
using OLMGis::Topology::CPipeManager;
using OLMGis::Utility::CUtility;
using OLMGis::Utility::Msg;

namespace {

// Messages.
constexpr int PipeGroupLabel = 2291;
constexpr int BadParameters = 11047;
constexpr int AskForSearch = 11097;
constexpr int UnreadText = 70133;

} // namespace

int CRainITPParameters::ReadParameters(CFlowCalculatorParameters* parameters, int interactive,
                                       const std::string& forecast) {
    Rain::CFormReading reading{*parameters->m_properties};
    const int isComplete = Read(reading, interactive, forecast);
    m_errors = std::move(reading.m_errors);
    m_unread = std::move(reading.m_unread);
    m_wrongTags = std::move(reading.m_wrongTags);
    return isComplete != 0 && m_errors.empty() ? 1 : 0;
}

/// 0 when a question was refused.
int CRainITPParameters::Read(Rain::CFormReading& reading, int interactive, const std::string& forecast) {
    const auto& form = reading.m_form;
    m_rainfallMode = form.GetIntProperty("RAINFALL_MODE", 0, 1);
    auto rainfall = Rain::MakeRainfall(m_rainfallMode);
    if (rainfall)
        rainfall->Read(reading);
    m_rainfall = std::move(rainfall);
    const int existingPipe = form.GetIntProperty("USE_EXISTING_PIPE", 0, 1);
    m_useExistingPipe = existingPipe == RainChoices::KeepExistingPipe ? 1 : 0;
    m_existingPipeGroup = existingPipe == RainChoices::ExistingPipeGroup ? 1 : 0;
    m_savePipe = form.GetIntProperty("SAVE_PIPE", 0, 1);
    m_stormCad = form.GetIntProperty("STORM_CAD", 0, 1);
    const int partialArea = form.GetIntProperty("PARTIAL_AREA_EFFECT", 0, 1);
    m_partialArea = partialArea == RainChoices::PartialAreaChains ? 1 : 0;
    m_variationSearch = partialArea == RainChoices::PartialAreaSearch ? 1 : 0;
    if (m_variationSearch != 0 && interactive != 0 &&
        OLMGis::System::HostServices().AskYesNo(forecast.empty() ? Msg(AskForSearch)
                                                                 : Msg(AskForSearch) + "\n" + forecast) == 0)
        return 0;
    m_ignoreCarrierPipes = form.GetIntProperty("IGNORE_CARRIER_PIPES", 0, 1);
    m_precision = form.GetDblProperty("PRECISION", 0.0, 1);
    m_waterViscosity = form.GetDblProperty("WATER_VISCOSITY", 0.0, 1);
    ReadPipeGroup(reading);
    m_calcStandard = form.GetIntProperty("CALC_STANDARD", 0, 1);
    m_branchingFlowTime = form.GetIntProperty("BRANCHING_FLOW_TIME", 0, 1);
    auto standard = Rain::MakeStandard(m_calcStandard);
    if (standard)
        standard->Read(reading);
    m_standard = std::move(standard);
    m_pipeFill = form.GetDblProperty("PIPE_FILL", 0.0, 1);
    if (m_pipeFill > 100.0 || m_pipeFill < 0.0) {
        reading.NoteError("PIPE_FILL");
        m_pipeFill = std::clamp(m_pipeFill, 0.0, 100.0);
    }
    m_minimalDiameter = form.GetIntProperty("MINIMAL_DIAMETAR", 0, 1);
    if (m_minimalDiameter < 0.0) {
        m_minimalDiameter = 0.0;
        reading.NoteError("MINIMAL_DIAMETAR");
    }
    return 1;
}

void CRainITPParameters::ReadPipeGroup(Rain::CFormReading& reading) {
    m_pipeGroup.reset();
    std::vector<std::string> guids;
    CUtility::SplitString(reading.m_form.GetStrProperty("PIPE_GROUP", "", 1), guids, ';');
    if (!guids.empty())
        m_pipeGroup = CCatalogManager::Instance()->GetItemByGuid(CCatalogManager::PipeCatalog, guids.front());
    if (!m_pipeGroup) {
        reading.NoteError("PIPE_GROUP", Msg(PipeGroupLabel));
        return;
    }
    auto* const pipes = CPipeManager::Instance();
    if (const auto smallest = pipes->GetPipeByInnerDiameter(m_pipeGroup->GetName(), 0.0, 1))
        m_defaultRoughness = pipes->GetPipeRoughness(smallest);
    if (m_pipeGroup->GetSubItems().empty())
        reading.NoteError("PIPE_GROUP", Msg(PipeGroupLabel));
    else
        m_pipeTypeId = pipes->GetPipeTypeID(m_pipeGroup->GetSubItems().front());
}

std::string CRainITPParameters::BuildParameterErrorText() const {
    std::string text = Msg(BadParameters);
    for (const std::string& error : m_errors)
        text += CUtility::Format("\n   - %s", error);
    return text;
}

std::vector<std::string> CRainITPParameters::ListProblems() const {
    std::vector<std::string> lines;
    for (const std::string& name : m_unread)
        lines.push_back(CUtility::Format(Msg(UnreadText), name));
    if (m_rainfall)
        std::ranges::copy(m_rainfall->ListProblems(), std::back_inserter(lines));
    return lines;
}

const CIDFCurves* CRainITPParameters::FindCurves() const {
    return m_rainfall ? m_rainfall->FindCurves() : nullptr;
}
