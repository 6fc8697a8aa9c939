// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/SectionDataIDF.h"

#include "flow/FlowValue.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/Utility.h"
#include "host/network_core/PipeManager.h"
#include "rain/NodeDataIDF.h"
#include "rain/RainITPParameters.h"
#include "rain/RecordRelease.h"

#include <cmath>
#include <vector>

using OLMGis::Topology::CCatalogItem;
using OLMGis::Topology::CPipeManager;
using OLMGis::Topology::CSection;
using OLMGis::Utility::CModuleConfiguration;
using OLMGis::Utility::CUtility;

namespace {

constexpr int NoInletTime = 2299;
constexpr int NoSlope = 2300;
constexpr int NoRetention = 6128;
constexpr int SlopeNotAboveZero = 11204;
constexpr int SectionWord = 3578;

const std::string& Msg(int number) {
    return CModuleConfiguration::Instance()->GetMsg(number);
}

/// The nearest group above an item, null without one.
boost::shared_ptr<CCatalogItem> GroupAbove(const CCatalogItem& item) {
    auto parent = item.GetParentItem();
    while (parent && !parent->IsGroup())
        parent = parent->GetParentItem();
    return parent;
}

} // namespace

CSectionDataIDF::CSectionDataIDF(const boost::shared_ptr<CSection>& section, const CRainITPParameters& params,
                                 const CSectionInput& input)
    : m_name(input.m_name), m_section(section), m_existingPipe(input.m_existingPipe), m_params(&params),
      m_length(input.m_length) {
    if (params.m_pipeGroup)
        m_pipeGroupName = params.m_pipeGroup->GetName();
    if (HasRelevantPipe())
        if (const auto group = GroupAbove(*m_existingPipe))
            m_pipeGroupName = group->GetName();
}

/// Takes over what was read; a later complaint replaces an earlier one. False where areas stay unknown.
bool CSectionDataIDF::Read(const CSectionInput& input) {
    if (!input.m_hasSlope) {
        m_error = Msg(NoSlope);
    } else {
        m_slope = input.m_slope;
        if (m_slope <= 0.0)
            m_error = CUtility::Format("%s (%s %s)", Msg(SlopeNotAboveZero), Msg(SectionWord), m_name);
    }
    if (input.m_hasInletTime)
        m_inletTime = input.m_inletTime;
    else
        m_error = Msg(NoInletTime);
    if (input.m_hasRoughness)
        m_roughness = input.m_roughness;
    if (m_params->m_calcStandard != RainChoices::StandardBulgarian)
        return true;
    if (!input.m_hasRetention) {
        m_error = Msg(NoRetention);
        return false;
    }
    m_retention = input.m_retention;
    return true;
}

CSectionDataIDF::~CSectionDataIDF() {
    if (!m_previous && !m_startNode)
        return;
    CRecordRelease release;
    release.Take(std::move(m_previous));
    release.Take(std::move(m_startNode));
    release.Finish();
}

double CSectionDataIDF::GetConcentrationTime() const {
    const bool isTurkish = m_params != nullptr && m_params->m_rainfallMode == RainChoices::TurkishParameters;
    return m_inletTime + (isTurkish ? m_flowTime : m_upstreamTime);
}

double CSectionDataIDF::GetEffectiveArea() const {
    return m_params != nullptr && m_params->m_partialArea != 0 ? GetChainArea() : m_totalArea;
}

/// Own area plus that of what it builds on, innermost first; down to the first record that kept its area.
double CSectionDataIDF::GetChainArea() const {
    if (!std::isnan(m_chainArea) || !m_previous)
        return m_previous ? m_chainArea : m_ownArea;
    if (!std::isnan(m_previous->m_chainArea))
        return m_ownArea + m_previous->m_chainArea;
    std::vector<const CSectionDataIDF*> chain;
    for (const auto* record = this; record != nullptr; record = record->m_previous.get())
        chain.push_back(record);
    double area = chain.back()->m_ownArea;
    for (auto record = chain.rbegin() + 1; record != chain.rend(); ++record)
        area = (*record)->m_ownArea + area;
    return area;
}

int CSectionDataIDF::IsCarrier() const {
    return m_params != nullptr && m_params->m_ignoreCarrierPipes != 0 && m_ownArea == 0.0 ? 1 : 0;
}

double CSectionDataIDF::GetTimeContribution() const {
    if (IsCarrier() != 0)
        return 0.0;
    return m_flowTime + (m_previous ? m_previous->m_carrierTime : 0.0);
}

bool CSectionDataIDF::HasRelevantPipe() const {
    return m_existingPipe && (m_params->m_useExistingPipe != 0 || m_params->m_existingPipeGroup != 0);
}

double CSectionDataIDF::GetRoughness() const {
    if (m_roughness != NotKnown)
        return m_roughness;
    if (HasRelevantPipe())
        return CPipeManager::Instance()->GetPipeRoughness(m_existingPipe);
    return m_pipe ? CPipeManager::Instance()->GetPipeRoughness(m_pipe) : m_params->m_defaultRoughness;
}

std::string_view CSectionDataIDF::GetPipeTypeId() const {
    if (!HasRelevantPipe())
        return m_params->m_pipeTypeId;
    const auto* pipe = m_existingPipe->GetPipeData();
    return pipe == nullptr ? std::string_view() : std::string_view(pipe->m_type);
}
