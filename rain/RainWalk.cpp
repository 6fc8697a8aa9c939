// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
// The walk of the rain calculation: from the heads of a network down, each section after all that lie above it.
#include "host/gis_core/CoreProgressBar.h"
#include "host/network_core/TopologyStorage.h"
#include "rain/FlowCalculator_RainITP.h"

#include <boost/make_shared.hpp>

#include <algorithm>

using OLMGis::Topology::CNode;
using OLMGis::Topology::CSection;
using OLMGis::Utility::CCoreProgressBar;

void CFlowCalculator_RainITP::BeginRun() {
    m_inputs.Reset();
    m_areaSums.Reset();
}

int CFlowCalculator_RainITP::CalculateNetwork(const CSectionList& sections) {
    PrepareWalk(sections);
    m_done = 0;
    for (std::size_t front = 0; front < m_queue.size(); ++front) {
        FetchLaterSections(front);
        const CSection& section = *m_queue[front];
        if (WalkSection(section.GetTopology().GetSectionAt(section.GetRow())) == 0 || !GoOn())
            return 0;
    }
    return 1;
}

void CFlowCalculator_RainITP::PrepareWalk(const CSectionList& sections) {
    m_params.m_selectedSections.Clear();
    for (const auto& section : sections)
        m_params.m_selectedSections.Insert(section);
    m_sectionData.Clear();
    m_nodeData.Clear();
    m_areaSums.BeginWalk(sections, m_params.m_selectedSections);
    for (auto it = sections.rbegin(); it != sections.rend(); ++it) {
        const CSectionPtr& section = *it;
        if (!section || section->GetStartingNodeRow() == CSection::NoRow ||
            section->GetEndingNodeRow() == CSection::NoRow)
            continue;
        m_sectionData.Enter(*section);
        if (m_nodeData.Find(section->GetStartingNodeRow()) != nullptr)
            continue;
        const CNode& node = *section->GetTopology().GetNodeAt(section->GetStartingNodeRow());
        section->GetSectionsIn(m_buffer);
        const int inputCount = FilterToSelected(m_buffer);
        m_nodeData.Enter(node, boost::make_shared<CNodeDataIDF>(node.GetName(), inputCount, m_params));
    }
    m_queue.clear();
    for (const auto& section : sections)
        if (FindSectionDataList(section) != nullptr &&
            (*m_nodeData.Find(section->GetStartingNodeRow()))->m_inputCount == 0)
            m_queue.push_back(section.get());
}

int CFlowCalculator_RainITP::WalkSection(const CSectionPtr& section) {
    // Without its two nodes a section takes part in nothing, even where it is the next on a way down.
    if (FindSectionDataList(section) == nullptr)
        return 1;
    const CNodeDataIDF& start = **m_nodeData.Find(section->GetStartingNodeRow());
    const auto* const endEntry = m_nodeData.Find(section->GetEndingNodeRow());
    CNodeDataIDF* const end = endEntry == nullptr ? nullptr : endEntry->get();
    const auto candidates = start.ChooseUpstream();
    for (std::size_t i = 0;; ++i) {
        const CRecordPtr previous = i < candidates.size() ? candidates[i] : nullptr;
        const CRecordPtr record = ComputeSection(section, previous, m_params.m_precision, MostPasses);
        if (!record)
            return 0;
        if (end != nullptr)
            end->AddResult(record);
        // With the partial area effect each candidate counts, and at last the section as a head of the network.
        if (m_params.m_partialArea == 0 || !previous)
            break;
    }
    if (end == nullptr || end->m_deliveredCount != end->m_inputCount)
        return 1;
    section->GetSectionsOut(m_buffer);
    const auto next = std::find_if(m_buffer.begin(), m_buffer.end(),
                                   [this](const CSection* out) { return m_params.m_selectedSections.Contains(*out); });
    if (next != m_buffer.end())
        m_queue.push_back(*next);
    return 1;
}

/// False when the user cancelled.
bool CFlowCalculator_RainITP::GoOn() {
    return !m_showsProgress || CCoreProgressBar::Instance()->SetPosition(++m_done) != 0;
}

bool CFlowCalculator_RainITP::IsSelected(const CSectionPtr& section) const {
    return section && m_params.m_selectedSections.Contains(*section);
}

int CFlowCalculator_RainITP::FilterToSelected(CBareList& list) const {
    std::erase_if(list, [this](const CSection* section) { return !m_params.m_selectedSections.Contains(*section); });
    return static_cast<int>(list.size());
}

boost::shared_ptr<CNodeDataIDF> CFlowCalculator_RainITP::FindNodeData(const boost::shared_ptr<CNode>& node) const {
    const auto* const found = node ? m_nodeData.Find(node->GetRow()) : nullptr;
    return found == nullptr ? nullptr : *found;
}

const CRecordList* CFlowCalculator_RainITP::FindSectionDataList(const CSectionPtr& section) const {
    return section ? m_sectionData.Find(section->GetRow()) : nullptr;
}

CVariationData* CFlowCalculator_RainITP::FindVariationData(const CSectionPtr& section) {
    return section ? m_variations.Find(section->GetRow()) : nullptr;
}
