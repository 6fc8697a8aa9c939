// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "rain/VariationNetwork.h"

#include <deque>
#include <vector>

/// The order in which a variation search treats sections: from the heads down, a section when everything that enters
/// its start has finished.
///
/// Below a bifurcation a section is entered at every arrival, and again when complete, without regard to what still
/// waits upstream: the laid-down rule, which results depend on. So its combinations pile up, and where all ways of a
/// ring bifurcate the queue never runs out.
class CVariationQueue {
public:
    explicit CVariationQueue(const CVariationNetwork& network);

    bool IsEmpty() const { return m_waiting.empty(); }

    /// Takes the next place out. Not on an empty queue.
    std::uint32_t Take();

    /// Passes a treated place on.
    void Finish(std::uint32_t place);

    /// How many of the sections that enter a place have finished; more than there are where some finished repeatedly.
    std::uint32_t GetVisitedCount(std::uint32_t place) const { return m_visitedCounts[place]; }

private:
    const CVariationNetwork& m_network;
    std::deque<std::uint32_t> m_waiting;
    std::vector<std::uint32_t> m_visitedCounts;
};

/// How often the queue will hold each place, known without running it.
struct CVariationEntries {
    std::vector<double> m_ofPlace;
    double m_total = 0.0;

    /// A place that is entered again and again for ever; Nowhere when the queue runs out.
    std::uint32_t m_endless = CVariationNetwork::Nowhere;

    /// Cost: linear where no ring is entered.
    ///
    /// Certain, not a guess. An entry makes an entry behind it in two ways: once in the life of a place, when it
    /// becomes complete; and each time behind a bifurcation. The first way ends by itself. The second goes along fixed
    /// ways, of which each place has one: it ends, unless it leads round a ring of nothing but bifurcations.
    explicit CVariationEntries(const CVariationNetwork& network);
};
