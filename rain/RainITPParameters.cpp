// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/RainITPParameters.h"

#include "host/gis_core/HostServices.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/Utility.h"
#include "host/network_core/CatalogManager.h"
#include "host/network_core/PipeManager.h"

#include <algorithm>

using OLMGis::Sewage::CFlowCalculatorParameters;
using OLMGis::Topology::CCatalogManager;
using OLMGis::Topology::CPipeManager;
using OLMGis::Utility::CModuleConfiguration;
using OLMGis::Utility::CUtility;

namespace {

constexpr int PipeGroupName = 2291;
constexpr int BadParameters = 11047;
constexpr int AskForSearch = 11097;

const std::string& Msg(int number) {
    return CModuleConfiguration::Instance()->GetMsg(number);
}

} // namespace

int CRainITPParameters::ReadParameters(CFlowCalculatorParameters* parameters, int interactive) {
    const CForm& form = *parameters->m_properties;
    m_errors.clear();
    m_unread.clear();
    ReadRain(form);
    m_useExistingPipe = form.GetIntProperty("USE_EXISTING_PIPE", 0, 1) == RainChoices::KeepExistingPipe ? 1 : 0;
    m_existingPipeGroup = form.GetIntProperty("USE_EXISTING_PIPE", 0, 1) == RainChoices::ExistingPipeGroup ? 1 : 0;
    m_savePipe = form.GetIntProperty("SAVE_PIPE", 0, 1);
    m_stormCad = form.GetIntProperty("STORM_CAD", 0, 1);
    const int partialArea = form.GetIntProperty("PARTIAL_AREA_EFFECT", 0, 1);
    m_partialArea = partialArea == RainChoices::PartialAreaChains ? 1 : 0;
    m_variationSearch = partialArea == RainChoices::PartialAreaSearch ? 1 : 0;
    if (m_variationSearch != 0 && interactive != 0 &&
        OLMGis::System::HostServices().AskYesNo(
            m_forecastText.empty() ? Msg(AskForSearch) : Msg(AskForSearch) + "\n" + m_forecastText) == 0)
        return 0;
    m_ignoreCarrierPipes = form.GetIntProperty("IGNORE_CARRIER_PIPES", 0, 1);
    m_precision = form.GetDblProperty("PRECISION", 0.0, 1);
    m_waterViscosity = form.GetDblProperty("WATER_VISCOSITY", 0.0, 1);
    ReadPipeGroup(form);
    m_calcStandard = form.GetIntProperty("CALC_STANDARD", 0, 1);
    m_branchingFlowTime = form.GetIntProperty("BRANCHING_FLOW_TIME", 0, 1);
    if (m_calcStandard == RainChoices::StandardRomanian) {
        // A text that doesn't parse means the usual coefficients, and not those of an earlier run.
        m_roCoefficients = {};
        const std::string text = form.GetStrProperty("RO", "", 1);
        if (m_roCoefficients.ParseValue(text) == 0 && !text.empty())
            m_unread.push_back(NameOf(form, "RO"));
    }
    m_pipeFill = form.GetDblProperty("PIPE_FILL", 0.0, 1);
    if (m_pipeFill > 100.0 || m_pipeFill < 0.0) {
        Complain(form, "PIPE_FILL");
        m_pipeFill = std::clamp(m_pipeFill, 0.0, 100.0);
    }
    m_minimalDiameter = form.GetIntProperty("MINIMAL_DIAMETAR", 0, 1);
    if (m_minimalDiameter < 0.0) {
        m_minimalDiameter = 0.0;
        Complain(form, "MINIMAL_DIAMETAR");
    }
    return m_errors.empty() ? 1 : 0;
}

void CRainITPParameters::ReadRain(const CForm& form) {
    m_rainfallMode = form.GetIntProperty("RAINFALL_MODE", 0, 1);
    switch (m_rainfallMode) {
    case RainChoices::CurveFile:
        if (m_curves.LoadFromFile(form.GetStrProperty("FILE_PATH", "", 1)) == 0)
            Complain(form, "FILE_PATH");
        m_frequency = form.GetDblProperty("FREQUENCY", 0.0, 1);
        if (m_frequency == 0.0)
            Complain(form, "FREQUENCY");
        break;
    case RainChoices::Formula:
        m_rainIntensity = form.GetDblProperty("RAIN_INTESITY", 0.0, 1);
        m_frequencyN = form.GetDblProperty("FREQUENCY_N", 0.0, 1);
        break;
    case RainChoices::TurkishParameters: {
        const std::string text = form.GetStrProperty("TURKISH", "", 1);
        m_turkParams.Load();
        if (m_turkParams.setValue(text) == 0 && !text.empty())
            m_unread.push_back(NameOf(form, "TURKISH"));
        break;
    }
    default:
        break;
    }
}

void CRainITPParameters::ReadPipeGroup(const CForm& form) {
    m_pipeGroup.reset();
    std::vector<std::string> guids;
    CUtility::SplitString(form.GetStrProperty("PIPE_GROUP", "", 1), guids, ';');
    if (!guids.empty())
        m_pipeGroup = CCatalogManager::Instance()->GetItemByGuid(CCatalogManager::PipeCatalog, guids.front());
    if (!m_pipeGroup) {
        m_errors.push_back(Msg(PipeGroupName));
        return;
    }
    auto* const pipes = CPipeManager::Instance();
    if (const auto smallest = pipes->GetPipeByInnerDiameter(m_pipeGroup->GetName(), 0.0, 1))
        m_defaultRoughness = pipes->GetPipeRoughness(smallest);
    if (m_pipeGroup->GetSubItems().empty())
        m_errors.push_back(Msg(PipeGroupName));
    else
        m_pipeTypeId = pipes->GetPipeTypeID(m_pipeGroup->GetSubItems().front());
}

std::string CRainITPParameters::NameOf(const CForm& form, const char* tag) {
    const auto property = form.GetPropertyExByTag(tag);
    return property ? property->GetName() : tag;
}

void CRainITPParameters::Complain(const CForm& form, const char* tag) {
    m_errors.push_back(NameOf(form, tag));
}

std::string CRainITPParameters::BuildParameterErrorText() const {
    std::string text = Msg(BadParameters);
    for (const std::string& error : m_errors)
        text += CUtility::Format("\n   - %s", error);
    return text;
}
