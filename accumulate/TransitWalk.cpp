// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "accumulate/TransitWalk.h"

#include "host/gis_core/FetchAhead.h"
#include "host/network_core/TopologyStorage.h"
#include "host/sewage_core/FlowDirection.h"

#include <utility>

using OLMGis::Sewage::CFlowDirection;
using OLMGis::Topology::CNode;
using OLMGis::Topology::CSection;
using OLMGis::Utility::FetchElementAhead;

namespace {

template <class Record>
Record& AtRow(std::vector<Record>& records, std::uint32_t row) {
    if (row >= records.size())
        records.resize(row + 1);
    return records[row];
}

/// Where the flow goes on from the node at which a section of the run starts.
std::uint32_t OutletOf(const boost::shared_ptr<CNode>& start, const CSection& section) {
    if (start->GetSectionsOutCount() > 1) {
        const auto main = CFlowDirection::GetMainOutSection(start);
        return main ? main->GetRow() : CTransitWalk::LeavesRun;
    }
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
        const boost::shared_ptr<CNode>& start = m_topology->GetNodeAt(flow.start);
        CNodeFlow& node = AtRow(m_nodes, flow.start);
        node.sectionsIn = start->GetSectionsInCount();
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
        FetchElementAhead(m_sections, queue[front + Far]);
    if (front + Near < queue.size()) {
        const CSectionFlow& flow = m_sections[queue[front + Near]];
        FetchElementAhead(m_nodes, flow.start);
        FetchElementAhead(m_nodes, flow.end);
    }
}

void CTransitWalk::Run() {
    std::vector<std::uint32_t> queue = std::move(m_heads); // first in, first out; what is done stays in front
    m_heads.clear();
    for (std::size_t front = 0; front < queue.size(); ++front) {
        PrefetchFlows(queue, front);
        CSectionFlow& flow = m_sections[queue[front]];
        if (flow.start == None)
            continue; // an outlet that is no section of the run has nowhere to note what reaches it: the branch ends
        flow.transit = m_nodes[flow.start].accumulated;
        if (flow.end >= m_nodes.size() || m_nodes[flow.end].outlet == Outfall)
            continue; // what reached this point leaves the network
        CNodeFlow& end = m_nodes[flow.end];
        end.accumulated = (flow.own + flow.transit) + end.accumulated;
        if (++end.processedIn != end.sectionsIn)
            continue;
        // Whether it has a record is seen when its turn comes: by then it was fetched.
        if (end.outlet < m_sections.size())
            queue.push_back(end.outlet);
    }
}

const CTransitWalk::CSectionFlow* CTransitWalk::Find(const CSection& section) const {
    return HasRecord(section.GetRow()) ? &m_sections[section.GetRow()] : nullptr;
}
