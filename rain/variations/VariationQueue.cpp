// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/variations/VariationQueue.h"

#include <algorithm>
#include <utility>

namespace Rain {

CVariationQueue::CVariationQueue(const CVariationNetwork& network)
    : m_network(network), m_waiting(network.GetHeads().begin(), network.GetHeads().end()),
      m_arrivals(network.GetRowCount()) {}

std::uint32_t CVariationQueue::Take() {
    const std::uint32_t section = m_waiting.front();
    m_waiting.pop_front();
    return section;
}

void CVariationQueue::Finish(std::uint32_t section) {
    const std::uint32_t next = m_network.GetNext(section);
    if (next == CVariationNetwork::None)
        return;
    const double entries = m_arrivals[next].Arrive(1.0, m_network.IsBifurcating(section), m_network.GetIn(next).size());
    m_waiting.insert(m_waiting.end(), static_cast<std::size_t>(entries), next);
}

namespace {

constexpr std::uint32_t None = CVariationNetwork::None;

/// Counts entries along the ways from section to section.
class CEntryCounter {
public:
    CEntryCounter(const CVariationNetwork& network, std::vector<double>& entries)
        : m_network(network), m_entries(entries), m_arrivals(network.GetRowCount()),
          m_pending(network.GetRowCount(), 0.0), m_waitsFor(network.GetRowCount(), 0), m_isDone(network.GetRowCount()) {
        for (const std::uint32_t head : network.GetHeads())
            m_pending[head] += 1.0;
        for (const std::uint32_t section : network.GetSections())
            if (const std::uint32_t next = network.GetNext(section); next != None)
                ++m_waitsFor[next];
    }

    /// All sections to which no ring leads. Those of rings are left over.
    void CountOutsideRings() {
        std::vector<std::uint32_t> ready;
        for (const std::uint32_t section : m_network.GetSections())
            if (m_waitsFor[section] == 0)
                ready.push_back(section);
        while (!ready.empty()) {
            const std::uint32_t section = ready.back();
            ready.pop_back();
            m_isDone[section] = true;
            PassOn(section);
            if (const std::uint32_t next = m_network.GetNext(section); next != None && --m_waitsFor[next] == 0)
                ready.push_back(next);
        }
    }

    /// Goes round each ring until nothing is left to pass on; the section of a ring that never comes to that.
    std::uint32_t CountRings() {
        for (const std::uint32_t section : m_network.GetSections()) {
            if (m_isDone[section])
                continue;
            std::vector<std::uint32_t> ring;
            for (std::uint32_t at = section; !m_isDone[at]; at = m_network.GetNext(at)) {
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
        return None;
    }

private:
    void PassOn(std::uint32_t section) {
        const double count = std::exchange(m_pending[section], 0.0);
        const std::uint32_t next = m_network.GetNext(section);
        m_entries[section] += count;
        if (count > 0.0 && next != None)
            m_pending[next] +=
                m_arrivals[next].Arrive(count, m_network.IsBifurcating(section), m_network.GetIn(next).size());
    }

    const CVariationNetwork& m_network;
    std::vector<double>& m_entries;
    std::vector<CArrivals> m_arrivals;
    std::vector<double> m_pending; ///< entries that were not passed on yet
    std::vector<std::uint32_t> m_waitsFor;
    std::vector<bool> m_isDone;
};

} // namespace

CVariationEntries::CVariationEntries(const CVariationNetwork& network) : m_ofSection(network.GetRowCount(), 0.0) {
    CEntryCounter counter(network, m_ofSection);
    counter.CountOutsideRings();
    m_endless = counter.CountRings();
}

} // namespace Rain
