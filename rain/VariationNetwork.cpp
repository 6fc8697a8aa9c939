// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/VariationNetwork.h"

#include "host/sewage_core/FlowDirection.h"

using OLMGis::Sewage::CFlowDirection;

CVariationNetwork::CVariationNetwork(const CSectionList& sections) {
    EnterSections(sections);
    CSectionList scratch;
    for (CPlace& place : m_places)
        Join(place, scratch);
    for (const auto& section : sections) {
        const std::uint32_t place = section ? FindPlace(*section) : Nowhere;
        if (place != Nowhere && m_places[place].m_inputCount == 0)
            m_heads.push_back(place);
    }
}

void CVariationNetwork::EnterSections(const CSectionList& sections) {
    m_places.reserve(sections.size());
    for (const auto& section : sections) {
        if (!section || section->GetStartingNodeRow() == CSection::NoRow ||
            section->GetEndingNodeRow() == CSection::NoRow || FindPlace(*section) != Nowhere)
            continue;
        if (m_placeOfRow.size() <= section->GetRow())
            m_placeOfRow.resize(std::max<std::size_t>(section->GetRow() + 1, sections.size()), Nowhere);
        m_placeOfRow[section->GetRow()] = GetCount();
        m_places.push_back({section});
    }
}

void CVariationNetwork::Join(CPlace& place, CSectionList& scratch) {
    place.m_inputCount = static_cast<std::uint32_t>(place.m_section->GetSectionsIn(scratch));
    place.m_firstIn = static_cast<std::uint32_t>(m_in.size());
    for (const auto& in : scratch)
        if (const std::uint32_t entered = FindPlace(*in); entered != Nowhere)
            m_in.push_back(entered);
    place.m_inPlaces = static_cast<std::uint32_t>(m_in.size()) - place.m_firstIn;
    const int outCount = place.m_section->GetSectionsOut(scratch);
    place.m_isBifurcating = outCount > 1;
    const auto next = outCount > 1    ? CFlowDirection::GetMainOutSection(place.m_section->GetEndingNode())
                      : outCount == 1 ? scratch.front()
                                      : nullptr;
    if (next)
        place.m_next = FindPlace(*next);
    else if (outCount > 1)
        m_hasUnsettledDirections = true;
}
