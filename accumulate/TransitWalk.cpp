// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "accumulate/TransitWalk.h"

#include "host/network_core/TopologyStorage.h"
#include "host/sewage_core/FlowDirection.h"

#include <utility>

using OLMGis::Sewage::CFlowDirection;
using OLMGis::Topology::CNode;
using OLMGis::Topology::CSection;

namespace {

template <class Record>
Record& AtRow(std::vector<Record>& records, std::uint32_t row) {
    if (row >= records.size())
        records.resize(row + 1);
    return records[row];
}

/// Where the flow goes on from the node at which a section of the run starts.
std::uint32_t OutletOf(const CNode& start, const CSection& section) {
    if (start.GetSectionsOutCount() > 1)
        return CTransitWalk::Divides;
    // A section that was taken out of the network still knows its start, but the node doesn't know the section.
    return section.IsDeleted() ? CTransitWalk::LeavesRun : section.GetRow();
}

} // namespace

void CTransitWalk::Build(const CSectionList& sections, const COwnFlow& ownFlow) {
    m_sections.clear();
    m_nodes.clear();
    m_heads.clear();
    m_topology = nullptr;
    m_sections.reserve(sections.size());
    m_nodes.reserve(sections.size());
    for (const auto& section : sections) {
        if (!section || section->GetStartingNodeRow() == CSection::NoRow ||
            section->GetEndingNodeRow() == CSection::NoRow)
            continue;
        m_topology = &section->GetTopology();
        CSectionFlow& flow = AtRow(m_sections, section->GetRow());
        flow.own = ownFlow(*section);
        flow.start = section->GetStartingNodeRow();
        flow.end = section->GetEndingNodeRow();
        const CNode& start = *m_topology->GetNodeAt(flow.start);
        CNodeFlow& node = AtRow(m_nodes, flow.start);
        node.sectionsIn = start.GetSectionsInCount();
        if (node.outlet == Outfall || node.outlet == LeavesRun)
            node.outlet = OutletOf(start, *section);
        // A head without both nodes has no record: it carries nothing, so that the walk leaves it out.
        if (node.sectionsIn == 0)
            m_heads.push_back(section->GetRow());
    }
}

void CTransitWalk::PrefetchFlows(const std::vector<std::uint32_t>& queue, std::size_t front) const {
    // The queue jumps about in the rows: what the entries further on need is fetched while this one is reckoned.
    constexpr std::size_t Far = 64;
    constexpr std::size_t Near = 32;
    if (front + Far < queue.size())
        __builtin_prefetch(&m_sections[queue[front + Far]]);
    if (front + Near < queue.size()) {
        const CSectionFlow& flow = m_sections[queue[front + Near]];
        __builtin_prefetch(m_nodes.data() + flow.start);
        __builtin_prefetch(m_nodes.data() + flow.end);
    }
}

void CTransitWalk::Run() {
    std::vector<std::uint32_t> queue = std::move(m_heads); // first in, first out; what is done stays in front
    m_heads.clear();
    for (std::size_t front = 0; front < queue.size(); ++front) {
        PrefetchFlows(queue, front);
        CSectionFlow& flow = m_sections[queue[front]];
        flow.transit = m_nodes[flow.start].accumulated;
        if (flow.end >= m_nodes.size() || m_nodes[flow.end].outlet == Outfall)
            continue; // what reached this point leaves the network
        CNodeFlow& end = m_nodes[flow.end];
        end.accumulated = (flow.own + flow.transit) + end.accumulated;
        if (++end.processedIn != end.sectionsIn)
            continue;
        // An outlet that is no section of the run has nowhere to note what reaches it: the branch ends there.
        const std::uint32_t outlet = end.outlet == Divides ? FindMainOutlet(flow.end) : end.outlet;
        if (HasRecord(outlet))
            queue.push_back(outlet);
    }
}

std::uint32_t CTransitWalk::FindMainOutlet(std::uint32_t nodeRow) const {
    const auto outlet = CFlowDirection::GetMainOutSection(m_topology->GetNodeAt(nodeRow));
    return outlet ? outlet->GetRow() : LeavesRun;
}

const CTransitWalk::CSectionFlow* CTransitWalk::Find(const CSection& section) const {
    return HasRecord(section.GetRow()) ? &m_sections[section.GetRow()] : nullptr;
}
