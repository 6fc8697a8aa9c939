// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "accumulate/TransitWalk.h"

#include "host/network_core/TopologyStorage.h"
#include "host/sewage_core/FlowDirection.h"

#include <algorithm>

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

/// Row of the ending node of each section, None for a null and without one. Lower nodes may lie anywhere in memory: a
/// loop of its own lets the machine fetch many at a time, which halves the cost of a whole run on scattered networks.
std::vector<std::uint32_t> RowsOfEnds(const CTransitWalk::CSectionList& sections) {
    std::vector<std::uint32_t> rows;
    rows.reserve(sections.size());
    for (const auto& section : sections) {
        const auto end = section ? section->GetEndingNode() : nullptr;
        rows.push_back(end ? end->GetRow() : CTransitWalk::None);
    }
    return rows;
}

/// Where the flow goes on from the node at which a section of the run starts.
std::uint32_t OutletOf(const CNode& start, const CSection& section) {
    if (start.GetSectionsOutCount() > 1)
        return CTransitWalk::Divides;
    // A section that was taken out of the network still knows its start, but the node doesn't know the section.
    return section.IsDeleted() ? CTransitWalk::LeavesRun : section.GetRow();
}

} // namespace

void CTransitWalk::Build(const CSectionList& sections, const std::function<double(const CSection&)>& ownFlow) {
    m_sections.clear();
    m_nodes.clear();
    const auto first =
        std::find_if(sections.begin(), sections.end(), [](const auto& section) { return section != nullptr; });
    m_topology = first == sections.end() ? nullptr : &(*first)->GetTopology();
    const std::vector<std::uint32_t> ends = RowsOfEnds(sections);
    m_sections.reserve(sections.size());
    m_nodes.reserve(sections.size());
    for (std::size_t i = 0; i < sections.size(); ++i) {
        const auto& section = sections[i];
        const auto start = ends[i] == None ? nullptr : section->GetStartingNode();
        if (!start)
            continue;
        CSectionFlow& flow = AtRow(m_sections, section->GetRow());
        flow.own = ownFlow(*section);
        flow.start = start->GetRow();
        flow.end = ends[i];
        CNodeFlow& node = AtRow(m_nodes, start->GetRow());
        node.sectionsIn = start->GetSectionsInCount();
        if (node.outlet == Outfall || node.outlet == LeavesRun)
            node.outlet = OutletOf(*start, *section);
    }
}

void CTransitWalk::Run(const CSectionList& sections) {
    std::vector<std::uint32_t> queue; // first in, first out; what is done stays in front
    queue.reserve(sections.size());
    // A head without both nodes has no record: it carries nothing, so that the walk leaves it out.
    for (const auto& section : sections)
        if (section && HasRecord(section->GetRow()) && m_nodes[m_sections[section->GetRow()].start].sectionsIn == 0)
            queue.push_back(section->GetRow());

    for (std::size_t front = 0; front < queue.size(); ++front) {
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
