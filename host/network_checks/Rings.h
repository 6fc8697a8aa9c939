// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/Connectivity.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

namespace OLMGis::NetworkChecks {

/// The rings of a network: sections that lead, in the direction of flow, back to where they start. Sections whose rings
/// touch are one ring: strongly connected components of the nodes (Tarjan 1972), found without recursion.
class CRings {
public:
    /// goOn is called with the number of nodes seen; where it answers false the search ends. Linear in nodes and
    /// sections; 20 bytes per node.
    CRings(const Topology::CConnectivity& ways, const std::function<bool(std::size_t)>& goOn);

    /// Whether the search came to its end; without it nothing is known.
    bool IsComplete() const { return m_isComplete; }

    /// Number of a section's ring, CConnectivity::None for one that is in none. section: a row.
    std::uint32_t GetRing(std::uint32_t section) const;

    /// Number of sections of a ring.
    std::size_t GetSectionCount(std::uint32_t ring) const { return m_counts[ring]; }

private:
    class CSearch;

    const Topology::CConnectivity& m_ways;
    std::vector<std::uint32_t> m_groups; ///< by row of node: its component
    std::vector<std::size_t> m_counts;   ///< by component: sections within
    bool m_isComplete = false;
};

} // namespace OLMGis::NetworkChecks
