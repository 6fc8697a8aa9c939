// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "accumulate/TransitWalk.h"

#include "host/network_core/Connectivity.h"
#include "host/network_core/TopologyStorage.h"

#include <algorithm>
#include <memory>
#include <utility>

using OLMGis::Topology::CConnectivity;
using OLMGis::Topology::CSection;

namespace Accumulate {

namespace {

bool HasBothNodes(const boost::shared_ptr<CSection>& section) {
    return section && section->GetStartingNodeRow() != CSection::NoRow &&
           section->GetEndingNodeRow() != CSection::NoRow;
}

} // namespace

void CTransitWalk::Run(const CSectionList& sections, const COwnFlow& ownFlow) {
    m_sections.clear();
    m_nodes.clear();
    m_topology = nullptr;
    const auto any = std::find_if(sections.begin(), sections.end(), HasBothNodes);
    if (any == sections.end())
        return;
    m_topology = &(*any)->GetTopology();
    MakeRecords(sections, ownFlow);
    std::vector<std::uint32_t> heads;
    for (const auto& section : sections)
        if (HasBothNodes(section) && m_nodes[section->GetStartingNodeRow()].sectionsIn == 0)
            heads.push_back(section->GetRow());
    Walk(std::move(heads));
}

void CTransitWalk::MakeRecords(const CSectionList& sections, const COwnFlow& ownFlow) {
    const auto connectivity = m_topology->GetConnectivity();
    m_sections.resize(connectivity->GetSectionCount());
    m_nodes.resize(connectivity->GetNodeCount());
    for (const auto& section : sections) {
        if (!HasBothNodes(section))
            continue;
        m_sections[section->GetRow()] = {ownFlow(*section), NotReached, true};
        CNodeFlow& node = m_nodes[section->GetStartingNodeRow()];
        node.sectionsIn = static_cast<std::int32_t>(connectivity->GetWaysIn(section->GetStartingNodeRow()).size());
        node.hasRecord = true;
    }
}

/// queue: rows of sections, first in, first out; what is done stays in front.
void CTransitWalk::Walk(std::vector<std::uint32_t> queue) {
    const auto connectivity = m_topology->GetConnectivity();
    for (std::size_t front = 0; front < queue.size(); ++front) {
        const std::uint32_t start = connectivity->GetStart(queue[front]);
        const std::uint32_t end = connectivity->GetEnd(queue[front]);
        CSectionFlow& flow = m_sections[queue[front]];
        if (!flow.hasRecord || start == CConnectivity::None)
            continue; // a main outlet outside the run, or a deleted section: nothing to note the flow in
        flow.transit = m_nodes[start].accumulated;
        CNodeFlow& node = m_nodes[end];
        if (!node.hasRecord)
            continue; // an outfall: what reached it leaves the network
        node.accumulated = (flow.own + flow.transit) + node.accumulated;
        ++node.processedIn;
        if (const std::uint32_t outlet = connectivity->GetMainOutlet(end);
            node.processedIn == node.sectionsIn && outlet != CConnectivity::None)
            queue.push_back(outlet);
    }
}

const CTransitWalk::CSectionFlow* CTransitWalk::Find(const CSection& section) const {
    return section.GetRow() < m_sections.size() && m_sections[section.GetRow()].hasRecord
               ? &m_sections[section.GetRow()]
               : nullptr;
}

} // namespace Accumulate
