// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_core/Connectivity.h"

#include "host/network_core/TopologyStorage.h"

namespace OLMGis::Topology {

CConnectivity::CConnectivity(const CTopologyStorage& topology)
    : m_starts(topology.GetSectionRowCount(), None), m_ends(m_starts.size(), None),
      m_mainOutlets(topology.GetNodeRowCount(), None) {
    static_assert(None == CSection::NoRow);
    for (const auto& section : topology.GetSections()) {
        m_starts[section->GetRow()] = section->GetStartingNodeRow();
        m_ends[section->GetRow()] = section->GetEndingNodeRow();
    }
    m_in.Sort(m_ends, m_mainOutlets.size());
    m_out.Sort(m_starts, m_mainOutlets.size());
    for (const auto& node : topology.GetNodes())
        if (const CSection* outlet = topology.GetMainOutlet(*node))
            m_mainOutlets[node->GetRow()] = outlet->GetRow();
}

/// A counting sort: sections of a node keep the order of their rows, which is that of the network.
void CConnectivity::CWays::Sort(const std::vector<std::uint32_t>& nodes, std::size_t nodeCount) {
    m_first.assign(nodeCount + 1, 0);
    for (const std::uint32_t node : nodes)
        if (node != None)
            ++m_first[node + 1];
    for (std::size_t node = 0; node < nodeCount; ++node)
        m_first[node + 1] += m_first[node];
    m_sections.resize(m_first.back());
    std::vector<std::uint32_t> next(m_first.begin(), m_first.end() - 1);
    for (std::uint32_t section = 0; section < nodes.size(); ++section)
        if (nodes[section] != None)
            m_sections[next[nodes[section]]++] = section;
}

} // namespace OLMGis::Topology
