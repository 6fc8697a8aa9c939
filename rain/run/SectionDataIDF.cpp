// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/run/SectionDataIDF.h"

#include "host/network_core/PipeManager.h"

#include <cmath>

using OLMGis::Topology::CCatalogItem;
using OLMGis::Topology::CPipeManager;
using Rain::enmInputProblem;

namespace {

/// The nearest group above an item, null without one.
boost::shared_ptr<CCatalogItem> GroupAbove(const CCatalogItem& item) {
    auto parent = item.GetParentItem();
    while (parent && !parent->IsGroup())
        parent = parent->GetParentItem();
    return parent;
}

} // namespace

CSectionDataIDF::CSectionDataIDF(std::uint32_t section, const Rain::CSectionInput& input,
                                 const Rain::CRunSettings& settings)
    : m_name(input.m_name), m_ownArea(input.m_ownArea), m_inletTime(input.m_inletTime.value_or(NotKnown)),
      m_retention(input.m_timeFactor.value_or(1.0)), m_slope(input.m_slope.value_or(NotKnown)),
      m_roughness(input.m_roughness.value_or(NotKnown)), m_length(input.m_length), m_section(section),
      m_existingPipe(input.m_existingPipe), m_params(&settings) {
    if (settings.m_pipeGroup)
        m_pipeGroupName = settings.m_pipeGroup->GetName();
    if (HasRelevantPipe())
        if (const auto group = GroupAbove(*m_existingPipe))
            m_pipeGroupName = group->GetName();
    Rain::ForEachProblem(input, settings, [this](enmInputProblem problem) { m_problem = problem; });
}

double CSectionDataIDF::GetConcentrationTime() const {
    return m_params == nullptr ? m_inletTime + m_upstreamTime
                               : m_params->GetConcentrationTime(m_inletTime, m_flowTime, m_upstreamTime);
}

double CSectionDataIDF::GetEffectiveArea() const {
    return m_params != nullptr && m_params->m_partialArea != 0 ? GetChainArea() : m_totalArea;
}

/// Own area plus that of what it builds on, innermost first; down to the first record that kept its area.
double CSectionDataIDF::GetChainArea() const {
    if (!std::isnan(m_chainArea) || m_previous == nullptr)
        return m_previous == nullptr ? m_ownArea : m_chainArea;
    if (!std::isnan(m_previous->m_chainArea))
        return m_ownArea + m_previous->m_chainArea;
    std::vector<const CSectionDataIDF*> chain;
    for (const auto* record = this; record != nullptr; record = record->m_previous)
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
    return m_flowTime + (m_previous == nullptr ? 0.0 : m_previous->m_carrierTime);
}

bool CSectionDataIDF::HasRelevantPipe() const {
    return m_existingPipe && (m_params->m_useExistingPipe != 0 || m_params->m_existingPipeGroup != 0);
}

CSectionDataIDF::enmRoughness CSectionDataIDF::GetRoughnessSource() const {
    if (m_roughness != NotKnown)
        return enmRoughness::Section;
    if (HasRelevantPipe())
        return enmRoughness::ExistingPipe;
    return m_pipe ? enmRoughness::PassBefore : enmRoughness::SmallestPipe;
}

double CSectionDataIDF::GetRoughness() const {
    switch (GetRoughnessSource()) {
    case enmRoughness::Section:
        return m_roughness;
    case enmRoughness::ExistingPipe:
        return CPipeManager::Instance()->GetPipeRoughness(m_existingPipe);
    case enmRoughness::PassBefore:
        return CPipeManager::Instance()->GetPipeRoughness(m_pipe);
    case enmRoughness::SmallestPipe:
        break;
    }
    return m_params->m_defaultRoughness;
}

std::string_view CSectionDataIDF::GetPipeTypeId() const {
    if (!HasRelevantPipe())
        return m_params->m_pipeTypeId;
    const auto* pipe = m_existingPipe->GetPipeData();
    return pipe == nullptr ? std::string_view() : std::string_view(pipe->m_type);
}
