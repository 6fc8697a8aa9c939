// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "rain/variations/VariationNetwork.h"
#include "rain/variations/VariationQueue.h"
#include "rain/variations/VariationTrees.h"

#include <cstdint>
#include <span>
#include <vector>

namespace Rain {

/// How long a search keeps the outcomes of a section's combinations: while the section below, the only one that uses
/// them, is still to be treated, and only where everything upstream of that is a tree. Elsewhere each combination is
/// walked whole.
class COutcomeKeeping {
public:
    /// network and trees are not owned.
    COutcomeKeeping(const CVariationNetwork& network, const CVariationEntries& entries, const CVariationTrees& trees)
        : m_network(network), m_trees(trees), m_entriesLeft(entries.m_ofSection) {}

    bool IsKept(std::uint32_t section) const {
        const std::uint32_t next = m_network.GetNext(section);
        return next != CVariationNetwork::None && m_trees.IsTreeAbove(next) && m_entriesLeft[next] > 0.0;
    }

    /// Ends a treatment of a section. Returns the sections whose outcomes nothing uses any more, often none.
    std::span<const std::uint32_t> Finish(std::uint32_t section) {
        const bool isLast = --m_entriesLeft[section] <= 0.0;
        return isLast && m_trees.IsTreeAbove(section) ? m_network.GetIn(section) : std::span<const std::uint32_t>();
    }

private:
    const CVariationNetwork& m_network;
    const CVariationTrees& m_trees;
    std::vector<double> m_entriesLeft; ///< treatments to come, by row
};

} // namespace Rain
