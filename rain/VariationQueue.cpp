// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/VariationQueue.h"

#include <algorithm>

CVariationQueue::CVariationQueue(const CVariationNetwork& network)
    : m_network(network), m_waiting(network.GetHeads().begin(), network.GetHeads().end()),
      m_visitedCounts(network.GetCount(), 0) {}

std::uint32_t CVariationQueue::Take() {
    const std::uint32_t place = m_waiting.front();
    m_waiting.pop_front();
    return place;
}

void CVariationQueue::Finish(std::uint32_t place) {
    const std::uint32_t next = m_network.GetNext(place);
    if (next == CVariationNetwork::Nowhere)
        return;
    if (++m_visitedCounts[next] == m_network.GetInputCount(next))
        m_waiting.push_back(next);
    if (m_network.IsBifurcating(place))
        m_waiting.push_back(next);
}

namespace {

constexpr std::uint32_t Nowhere = CVariationNetwork::Nowhere;

/// Counts entries along the ways from place to place.
class CEntryCounter {
public:
    CEntryCounter(const CVariationNetwork& network, std::vector<double>& entries)
        : m_network(network), m_entries(entries), m_visits(network.GetCount(), 0.0), m_pending(network.GetCount(), 0.0),
          m_waitsFor(network.GetCount(), 0) {
        for (const std::uint32_t head : network.GetHeads())
            m_pending[head] += 1.0;
        for (std::uint32_t place = 0; place < network.GetCount(); ++place)
            if (const std::uint32_t next = network.GetNext(place); next != Nowhere)
                ++m_waitsFor[next];
    }

    /// All places that no ring leads to. Those of rings are left over.
    void CountOutsideRings() {
        std::vector<std::uint32_t> ready;
        for (std::uint32_t place = 0; place < m_network.GetCount(); ++place)
            if (m_waitsFor[place] == 0)
                ready.push_back(place);
        m_isDone.assign(m_network.GetCount(), false);
        while (!ready.empty()) {
            const std::uint32_t place = ready.back();
            ready.pop_back();
            m_isDone[place] = true;
            PassOn(place);
            if (const std::uint32_t next = m_network.GetNext(place); next != Nowhere && --m_waitsFor[next] == 0)
                ready.push_back(next);
        }
    }

    /// Goes round each ring until nothing is left to pass on; the place of a ring that never comes to that.
    std::uint32_t CountRings() {
        for (std::uint32_t place = 0; place < m_network.GetCount(); ++place) {
            if (m_isDone[place])
                continue;
            std::vector<std::uint32_t> ring;
            for (std::uint32_t at = place; !m_isDone[at]; at = m_network.GetNext(at)) {
                m_isDone[at] = true;
                ring.push_back(at);
            }
            const auto isPending = [this](std::uint32_t at) { return m_pending[at] > 0.0; };
            const bool neverEnds =
                std::all_of(ring.begin(), ring.end(), [this](std::uint32_t at) { return m_network.IsBifurcating(at); });
            while (std::any_of(ring.begin(), ring.end(), isPending)) {
                if (neverEnds)
                    return *std::find_if(ring.begin(), ring.end(), isPending);
                for (const std::uint32_t at : ring)
                    PassOn(at);
            }
        }
        return Nowhere;
    }

private:
    void PassOn(std::uint32_t place) {
        const double count = std::exchange(m_pending[place], 0.0);
        const std::uint32_t next = m_network.GetNext(place);
        m_entries[place] += count;
        if (count == 0.0 || next == Nowhere)
            return;
        const double needed = m_network.GetInputCount(next);
        const bool wasComplete = m_visits[next] >= needed;
        m_visits[next] += count;
        if (!wasComplete && m_visits[next] >= needed)
            m_pending[next] += 1.0;
        if (m_network.IsBifurcating(place))
            m_pending[next] += count;
    }

    const CVariationNetwork& m_network;
    std::vector<double>& m_entries;
    std::vector<double> m_visits;
    std::vector<double> m_pending; ///< entries that were not passed on yet
    std::vector<std::uint32_t> m_waitsFor;
    std::vector<bool> m_isDone;
};

} // namespace

CVariationEntries::CVariationEntries(const CVariationNetwork& network) : m_ofPlace(network.GetCount(), 0.0) {
    CEntryCounter counter(network, m_ofPlace);
    counter.CountOutsideRings();
    m_endless = counter.CountRings();
    for (const double entries : m_ofPlace)
        m_total += entries;
}
