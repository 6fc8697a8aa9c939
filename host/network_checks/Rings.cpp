// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_checks/Rings.h"

#include <algorithm>

namespace OLMGis::NetworkChecks {

using Topology::CConnectivity;

namespace {

constexpr std::uint32_t None = CConnectivity::None;

} // namespace

/// The depth-first search: m_path is what the recursion would keep.
class CRings::CSearch {
public:
    CSearch(const CConnectivity& ways, std::vector<std::uint32_t>& groups)
        : m_ways(ways), m_groups(groups), m_order(ways.GetNodeCount(), None), m_low(ways.GetNodeCount(), None) {
        m_groups.assign(ways.GetNodeCount(), None);
    }

    std::uint32_t GetGroupCount() const { return m_groupCount; }

    bool Run(const std::function<bool(std::size_t)>& goOn) {
        for (std::uint32_t node = 0; node < m_ways.GetNodeCount(); ++node) {
            if (m_order[node] != None)
                continue;
            Enter(node);
            while (!m_path.empty()) {
                if (!Advance())
                    Leave();
                if (!goOn(m_enteredCount))
                    return false;
            }
        }
        return true;
    }

private:
    struct CStep {
        std::uint32_t m_node;
        std::uint32_t m_next; ///< the way out that is tried next
    };

    void Enter(std::uint32_t node) {
        m_order[node] = m_low[node] = m_enteredCount++;
        m_open.push_back(node);
        m_path.push_back({node, 0});
    }

    /// Tries the next way out of the last node; false when it has no more.
    bool Advance() {
        CStep& step = m_path.back();
        const auto out = m_ways.GetWaysOut(step.m_node);
        if (step.m_next == out.size())
            return false;
        const std::uint32_t to = m_ways.GetEnd(out[step.m_next++]);
        if (to == None)
            return true;
        if (m_order[to] == None)
            Enter(to); // step is no longer valid
        else if (m_groups[to] == None)
            m_low[step.m_node] = std::min(m_low[step.m_node], m_order[to]);
        return true;
    }

    void Leave() {
        const std::uint32_t node = m_path.back().m_node;
        m_path.pop_back();
        if (!m_path.empty()) {
            std::uint32_t& low = m_low[m_path.back().m_node];
            low = std::min(low, m_low[node]);
        }
        if (m_low[node] == m_order[node])
            CloseGroup(node);
    }

    /// A node from which nothing entered before it is reached: with all that was entered since and is open it is a
    /// component.
    void CloseGroup(std::uint32_t first) {
        std::uint32_t node = None;
        do {
            node = m_open.back();
            m_open.pop_back();
            m_groups[node] = m_groupCount;
        } while (node != first);
        ++m_groupCount;
    }

    const CConnectivity& m_ways;
    std::vector<std::uint32_t>& m_groups;
    std::vector<std::uint32_t> m_order; ///< by node: when it was entered
    std::vector<std::uint32_t> m_low;   ///< by node: the earliest open node that is known to be reached from it
    std::vector<std::uint32_t> m_open;  ///< entered nodes without a component, in that order
    std::vector<CStep> m_path;
    std::uint32_t m_enteredCount = 0;
    std::uint32_t m_groupCount = 0;
};

CRings::CRings(const CConnectivity& ways, const std::function<bool(std::size_t)>& goOn) : m_ways(ways) {
    CSearch search(ways, m_groups);
    m_isComplete = search.Run(goOn);
    if (!m_isComplete)
        return;
    m_counts.assign(search.GetGroupCount(), 0);
    for (std::uint32_t section = 0; section < ways.GetSectionCount(); ++section)
        if (const std::uint32_t ring = GetRing(section); ring != None)
            ++m_counts[ring];
}

std::uint32_t CRings::GetRing(std::uint32_t section) const {
    const std::uint32_t start = m_ways.GetStart(section);
    const std::uint32_t end = m_ways.GetEnd(section);
    return start != None && end != None && m_groups[start] == m_groups[end] ? m_groups[start] : None;
}

} // namespace OLMGis::NetworkChecks
