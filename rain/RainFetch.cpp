// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
// What the walk of the rain calculation does for its speed alone. The sections that come next lie anywhere in the
// network and in what the walk has made: in a network of a million sections each of them would wait for a dozen places
// of the memory, one after the other.
#include "host/gis_core/FetchAhead.h"
#include "host/network_core/TopologyStorage.h"
#include "rain/FlowCalculator_RainITP.h"

using OLMGis::Topology::CSection;
using OLMGis::Utility::FetchAhead;
using OLMGis::Utility::FetchObjectAhead;

namespace {

/// Each step follows what the one before brought, some sections earlier.
enum enmStep : int { Itself, Rows, Entries, NodeRecords, Branches, Records, StepCount };

} // namespace

/// front: place of the section in the queue that is computed next.
void CFlowCalculator_RainITP::FetchLaterSections(std::size_t front) {
    constexpr std::size_t Distance = 2; // sections between two steps; one takes as long as several fetches
    for (int step = Itself; step < StepCount; ++step)
        if (const std::size_t place = front + Distance * static_cast<std::size_t>(StepCount - step);
            place < m_queue.size())
            FetchSection(*m_queue[place], step);
}

void CFlowCalculator_RainITP::FetchSection(const CSection& section, int step) {
    const std::uint32_t row = section.GetRow();
    const std::uint32_t nodes[] = {section.GetStartingNodeRow(), section.GetEndingNodeRow()};
    switch (step) {
    case Itself:
        FetchObjectAhead(&section);
        break;
    case Rows:
        FetchAhead(&section.GetTopology().GetSectionAt(row));
        section.FetchNodes(0);
        m_inputs.Fetch(row);
        m_areaSums.Fetch(row);
        m_sectionData.Fetch(row, 0);
        for (const std::uint32_t node : nodes)
            m_nodeData.Fetch(node, 0);
        break;
    case Entries:
        section.FetchNodes(1);
        m_sectionData.Fetch(row, 1);
        for (const std::uint32_t node : nodes)
            m_nodeData.Fetch(node, 1);
        break;
    case NodeRecords:
        section.FetchSectionsIn();
        section.FetchSectionsOut(2);
        for (const std::uint32_t node : nodes)
            if (const auto* const data = m_nodeData.Find(node))
                FetchObjectAhead(data->get());
        break;
    case Branches:
        section.GetSectionsIn(m_buffer);
        for (const CSection* in : m_buffer) {
            m_areaSums.Fetch(in->GetRow());
            m_params.m_selectedSections.Fetch(in->GetRow());
        }
        for (const std::uint32_t node : nodes)
            if (const auto* const branches = FindBranches(node))
                FetchObjectAhead(&*branches->begin());
        break;
    default:
        if (const auto* const branches = FindBranches(nodes[0]))
            FetchObjectAhead(branches->begin()->second.front().get());
        if (const auto* const branches = FindBranches(nodes[1]))
            FetchAhead(branches->begin()->first.data()); // a name that those of others are compared with
        break;
    }
}

/// What has reached a node, null for nothing.
const CNodeDataIDF::CBranches* CFlowCalculator_RainITP::FindBranches(std::uint32_t nodeRow) const {
    const auto* const data = m_nodeData.Find(nodeRow);
    return data == nullptr || (*data)->m_results.empty() ? nullptr : &(*data)->m_results;
}
