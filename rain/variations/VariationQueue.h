// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "rain/variations/VariationNetwork.h"

#include <cstdint>
#include <deque>
#include <vector>

namespace Rain {

/// The rule by which finished sections enter the next one in the queue of a search: when the last of the sections that
/// enter it has finished, and once more below each bifurcation, without regard to what still waits upstream. Fixed:
/// others rely on it. So combinations pile up below bifurcations, and where all ways of a ring bifurcate the queue
/// never runs out.
class CArrivals {
public:
    /// Arrivals (one or many at once) of a section that finished at the next one; how many entries they make there.
    double Arrive(double count, bool isBifurcating, std::size_t inputCount) {
        const auto needed = static_cast<double>(inputCount);
        const bool wasComplete = m_count >= needed;
        m_count += count;
        return (!wasComplete && m_count >= needed ? 1.0 : 0.0) + (isBifurcating ? count : 0.0);
    }

    double GetCount() const { return m_count; }

private:
    double m_count = 0.0;
};

/// The order in which a variation search treats sections: from the heads down, first in, first out.
class CVariationQueue {
public:
    explicit CVariationQueue(const CVariationNetwork& network);

    bool IsEmpty() const { return m_waiting.empty(); }

    /// Takes the next section out. Not on an empty queue.
    std::uint32_t Take();

    /// Passes a treated section on.
    void Finish(std::uint32_t section);

    /// How many of the sections that enter a section have finished; more than there are where some finished repeatedly.
    int GetVisitedCount(std::uint32_t section) const { return static_cast<int>(m_arrivals[section].GetCount()); }

private:
    const CVariationNetwork& m_network;
    std::deque<std::uint32_t> m_waiting;
    std::vector<CArrivals> m_arrivals; ///< by row
};

/// How often each section will be in the queue, known without running it.
struct CVariationEntries {
    std::vector<double> m_ofSection; ///< by row

    /// A section that is entered again and again for ever; None when the queue runs out.
    std::uint32_t m_endless = CVariationNetwork::None;

    /// Cost: linear where no ring is entered.
    ///
    /// Certain, not a guess. An entry makes an entry of the section below in two ways: once in the life of a section,
    /// when it becomes complete; and each time below a bifurcation. The first way ends by itself. The second goes along
    /// fixed ways, of which each section has one: it ends, unless it leads round a ring of nothing but bifurcations.
    explicit CVariationEntries(const CVariationNetwork& network);
};

} // namespace Rain
