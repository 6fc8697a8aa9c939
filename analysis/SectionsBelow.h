// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/AnalysedNetwork.h"
#include "host/network_core/TopologyStorage.h"

#include <memory>

namespace Analysis {

/// The sections that leave the lower end of a section, from one snapshot for a whole run of a check. The network must
/// not change in its life.
class CSectionsBelow {
public:
    /// All sections belong to one project.
    explicit CSectionsBelow(const OLMGis::Topology::CAnalysedNetwork& network) {
        if (network.m_sections.empty())
            return;
        m_topology = &network.m_sections.front()->GetTopology();
        m_ways = m_topology->GetConnectivity();
    }

    /// 0 for a section without an end node. section: one of the network.
    std::size_t Count(const OLMGis::Topology::CSection& section) const {
        const std::uint32_t node = m_ways->GetEnd(section.GetRow());
        return node == OLMGis::Topology::CConnectivity::None ? 0 : m_ways->GetWaysOut(node).size();
    }

    /// Calls visit(const boost::shared_ptr<CSection>&) for each in the order of CSection::GetSectionsOut: the main
    /// outlet first, the others in network order.
    template <class Visit>
    void ForEach(const OLMGis::Topology::CSection& section, Visit visit) const {
        const std::uint32_t node = m_ways->GetEnd(section.GetRow());
        if (node == OLMGis::Topology::CConnectivity::None)
            return;
        const std::uint32_t main = m_ways->GetMainOutlet(node);
        if (main != OLMGis::Topology::CConnectivity::None)
            visit(m_topology->GetSectionAt(main));
        for (const std::uint32_t way : m_ways->GetWaysOut(node))
            if (way != main)
                visit(m_topology->GetSectionAt(way));
    }

private:
    const OLMGis::Topology::CTopologyStorage* m_topology = nullptr; ///< null only for a network without sections
    std::shared_ptr<const OLMGis::Topology::CConnectivity> m_ways;
};

} // namespace Analysis
