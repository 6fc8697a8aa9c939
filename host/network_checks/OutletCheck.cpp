// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_checks/OutletCheck.h"

#include "host/gis_core/CoreProgressBar.h"
#include "host/network_core/TopologyStorage.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace OLMGis::NetworkChecks {

using Topology::CConnectivity;

namespace {

constexpr int NameMessage = 70435;
constexpr int NoOutlet = 70436;
constexpr int MainOutletMissing = 70437;
constexpr int MainOutletsInRing = 70438;

constexpr std::uint32_t None = CConnectivity::None;

/// Marks sections from the outlets upwards.
class CUpstreamWalk {
public:
    enum class enmWays { All, MainOutlets };

    /// Follows all ways, or those that lead on along main outlets alone.
    /// goOn is called for each marked section; where it answers false the walk ends.
    CUpstreamWalk(const CConnectivity& ways, enmWays kind, std::function<bool()> goOn)
        : m_ways(ways), m_kind(kind), m_goOn(std::move(goOn)), m_isMarked(ways.GetSectionCount(), false) {}

    bool IsMarked(std::uint32_t section) const { return m_isMarked[section]; }
    bool IsCancelled() const { return m_isCancelled; }

    /// Marks a section and all above it that are not marked; returns their number.
    std::size_t Mark(std::uint32_t section) {
        std::size_t count = 0;
        Add(section);
        while (!m_open.empty() && !m_isCancelled) {
            const std::uint32_t current = m_open.back();
            m_open.pop_back();
            m_isCancelled = !m_goOn();
            ++count;
            const std::uint32_t node = m_ways.GetStart(current);
            if (node == None || (m_kind == enmWays::MainOutlets && m_ways.GetMainOutlet(node) != current))
                continue;
            for (const std::uint32_t above : m_ways.GetWaysIn(node))
                Add(above);
        }
        return count;
    }

private:
    void Add(std::uint32_t section) {
        if (m_isMarked[section])
            return;
        m_isMarked[section] = true;
        m_open.push_back(section);
    }

    const CConnectivity& m_ways;
    const enmWays m_kind;
    const std::function<bool()> m_goOn;
    std::vector<bool> m_isMarked; ///< by row of section
    std::vector<std::uint32_t> m_open;
    bool m_isCancelled = false;
};

/// Marks everything above the outlets.
void MarkDrained(const CConnectivity& ways, CUpstreamWalk& walk) {
    for (std::uint32_t section = 0; section < ways.GetSectionCount(); ++section) {
        const std::uint32_t end = ways.GetEnd(section);
        if (end == None || ways.GetWaysOut(end).empty())
            walk.Mark(section);
    }
}

/// The first section of the ring that main outlets lead to from a section. There is one: they end nowhere.
std::uint32_t FindRing(const CConnectivity& ways, std::uint32_t section) {
    const auto next = [&ways](std::uint32_t current) { return ways.GetMainOutlet(ways.GetEnd(current)); };
    // The one that goes twice as fast meets the other within the ring (Floyd).
    std::uint32_t slow = next(section);
    for (std::uint32_t fast = next(slow); fast != slow; fast = next(next(fast)))
        slow = next(slow);
    std::uint32_t first = slow;
    for (std::uint32_t current = next(slow); current != slow; current = next(current))
        first = std::min(first, current);
    return first;
}

} // namespace

COutletCheck::COutletCheck() : CNetworkCheck("0010_NO_OUTLET", NameMessage, "FAI_NO_OUTLET") {}

void COutletCheck::Run(const Topology::CPropertiesEx& /*form*/, const Topology::CAnalysedNetwork& network,
                       Topology::CFindingList& findings) {
    Utility::CProgress progress(GetItemName(), 3 * network.m_sections.size());
    if (network.m_sections.empty())
        return;
    const auto& topology = network.m_sections.front()->GetTopology();
    const auto ways = topology.GetConnectivity();
    std::size_t done = 0;
    const auto goOn = [&progress, &done] { return progress.GoOn(++done); };
    CUpstreamWalk drained(*ways, CUpstreamWalk::enmWays::All, goOn);
    MarkDrained(*ways, drained);
    if (drained.IsCancelled())
        return;
    for (const auto& section : network.m_sections) {
        if (!goOn())
            return;
        if (!drained.IsMarked(section->GetRow()))
            findings.Add(*section, NoOutlet, {0.0, 1.0, {}});
    }

    CUpstreamWalk along(*ways, CUpstreamWalk::enmWays::MainOutlets, goOn);
    MarkDrained(*ways, along);
    for (const auto& node : network.m_nodes) {
        const std::uint32_t row = node->GetRow();
        if (ways->GetWaysOut(row).empty() || ways->GetMainOutlet(row) != None)
            continue;
        std::size_t count = 0;
        for (const std::uint32_t section : ways->GetWaysIn(row))
            count += along.Mark(section);
        if (count > 0)
            findings.AddWithCount(*node, MainOutletMissing, count);
    }
    for (const auto& section : network.m_sections) {
        // A ring without an exit is reported section by section already.
        if (along.IsCancelled() || along.IsMarked(section->GetRow()) || !drained.IsMarked(section->GetRow()))
            continue;
        const std::uint32_t first = FindRing(*ways, section->GetRow());
        findings.AddWithCount(*topology.GetSectionAt(first), MainOutletsInRing, along.Mark(first));
    }
}

} // namespace OLMGis::NetworkChecks
