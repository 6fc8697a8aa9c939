// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/run/RunInput.h"

#include "flow/FlowKeys.h"
#include "flow/FlowValue.h"
#include "host/gis_core/DataRW.h"
#include "host/gis_core/InputNotes.h"
#include "host/gis_core/ProjectContext.h"
#include "host/sewage_core/CatchmentAreaManager.h"

#include <algorithm>
#include <optional>
#include <utility>

using OLMGis::Data::CDataBox;
using OLMGis::Data::CDataDefinition;
using OLMGis::Data::CDataRW;
using OLMGis::Data::FindDefinition;
using OLMGis::Sewage::CCatchmentAreaManager;
using OLMGis::Topology::CSection;

namespace Rain {

namespace {

std::optional<double> ReadNumber(const CSection& section, const CDataDefinition* definition) {
    CDataBox box;
    CDataRW::Read(definition, &section, box, 0, nullptr);
    return box.IsNotNull() ? std::optional(box.AsDouble()) : std::nullopt;
}

} // namespace

CRunNetwork::CRunNetwork(const std::vector<CSectionPtr>& sections) {
    m_rows.reserve(sections.size());
    for (const CSectionPtr& section : sections) {
        if (!section)
            continue;
        if (m_topology == nullptr) {
            m_topology = &section->GetTopology();
            m_ways = m_topology->GetConnectivity();
            m_isListed.resize(m_ways->GetSectionCount());
        }
        m_rows.push_back(section->GetRow());
        m_isListed[section->GetRow()] = true;
    }
}

void CRunNetwork::SortByGuid(CRows& rows) const {
    std::vector<std::pair<std::string_view, std::uint32_t>> byGuid;
    byGuid.reserve(rows.size());
    for (const std::uint32_t row : rows)
        byGuid.emplace_back(GetSection(row)->GetGuid(), row);
    std::sort(byGuid.begin(), byGuid.end());
    std::transform(byGuid.begin(), byGuid.end(), rows.begin(), [](const auto& entry) { return entry.second; });
}

CRunInput::CRunInput(const CRunNetwork& network, const CRunSettings& settings)
    : CRunNetwork(network), m_inputs(network.GetRowCount()) {
    const CDataDefinition* const slope = FindDefinition(Flow::Keys::Slope);
    const CDataDefinition* const inletTime = FindDefinition(Flow::Keys::InletTime);
    const CDataDefinition* const roughness = FindDefinition(Flow::Keys::PipeRoughness);
    const CRequiredNumber* const required = settings.FindTimeFactor();
    const CDataDefinition* const timeFactor = required == nullptr ? nullptr : FindDefinition(required->m_key);
    for (const std::uint32_t row : GetRows()) {
        const CSectionPtr& section = GetSection(row);
        CSectionInput& input = m_inputs[row];
        input.m_name = section->GetName();
        input.m_slope = ReadNumber(*section, slope);
        input.m_inletTime = ReadNumber(*section, inletTime);
        input.m_roughness = ReadNumber(*section, roughness);
        if (timeFactor != nullptr)
            input.m_timeFactor = ReadNumber(*section, timeFactor);
        CCatchmentAreaManager::Instance()->GetCATotalCorectedArea(section, input.m_ownArea);
        input.m_length = section->GetLength2D();
    }
    // Where existing pipes are ignored they are only listed beside the results, which do not depend on them.
    OLMGis::Data::CInputNotes unused;
    std::optional<OLMGis::Data::CInputNotesScope> scope;
    if (settings.m_useExistingPipe == 0 && settings.m_existingPipeGroup == 0)
        scope.emplace(OLMGis::System::CProjectContext::Active().GetAttributes(), unused);
    for (const std::uint32_t row : GetRows())
        m_inputs[row].m_existingPipe = GetSection(row)->GetPipe();
}

} // namespace Rain
