// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/TopologyStorage.h"

#include <cstdint>
#include <limits>
#include <vector>

/// The blocks of a network: the greatest parts of which every two sections lie on a common circle, whatever the
/// directions; a section on no circle is a block of its own. Branches of different blocks that meet at a node have
/// nothing upstream in common.
///
/// Source: Hopcroft and Tarjan 1973, algorithm 447, without recursion. Cost: linear.
class CNetworkBlocks {
public:
    static constexpr std::uint32_t None = std::numeric_limits<std::uint32_t>::max();

    void Find(const OLMGis::Topology::CTopologyStorage& topology);

    /// Number of the block of a section; None for a section without both nodes or with one node twice.
    std::uint32_t Of(const OLMGis::Topology::CSection& section) const {
        return section.GetRow() < m_blocks.size() ? m_blocks[section.GetRow()] : None;
    }

private:
    std::vector<std::uint32_t> m_blocks; ///< by section row
};
