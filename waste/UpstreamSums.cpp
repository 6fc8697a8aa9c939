// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "waste/UpstreamSums.h"

#include "host/network_core/Catchment.h"
#include "host/network_core/Connectivity.h"
#include "host/network_core/TopologyStorage.h"
#include "host/sewage_core/CatchmentAreaManager.h"

#include <algorithm>
#include <cstdint>
#include <memory>

using OLMGis::Sewage::CCatchmentAreaManager;
using OLMGis::Topology::CConnectivity;
using OLMGis::Topology::CSection;
using OLMGis::Topology::CTopologyStorage;

namespace Waste {

namespace {

constexpr std::uint32_t None = CConnectivity::None;

void Add(CHouseholdSum& sum, const CHouseholdSum& other) {
    sum.m_area += other.m_area;
    sum.m_people += other.m_people;
}

CHouseholdSum OwnHouseholds(const boost::shared_ptr<CSection>& section) {
    CHouseholdSum own;
    double density = 0.0;
    const auto* const catchments = CCatchmentAreaManager::Instance();
    catchments->GetCATotalArea(section, own.m_area, OLMGis::Topology::CatchmentHousehold);
    catchments->GetCAAverageDensityInhab(section, density);
    own.m_people = density * own.m_area;
    return own;
}

/// What is upstream of nodes: of all sections that start at a node it is the same. All lists are by row.
class CNodeSums {
public:
    explicit CNodeSums(const CTopologyStorage& topology)
        : m_topology(topology), m_network(topology.GetConnectivity()), m_own(m_network->GetSectionCount()),
          m_sums(m_network->GetNodeCount()), m_isNeeded(m_network->GetNodeCount(), false),
          m_isShared(m_network->GetNodeCount(), true), m_lastWalks(m_network->GetNodeCount(), 0) {}

    /// Asks for the sum of a node, and with it for those of all nodes upstream.
    void Need(std::uint32_t node) {
        const std::size_t first = m_needed.size();
        Enter(node);
        for (std::size_t i = first; i < m_needed.size(); ++i)
            for (const std::uint32_t way : m_network->GetWaysIn(m_needed[i]))
                Enter(m_network->GetStart(way));
    }

    /// Computes the sums of all needed nodes; false when progress stopped it.
    bool Compute(const CSumProgress& progress) {
        const std::vector<std::uint32_t> order = OrderOffRings();
        for (const std::uint32_t node : order)
            m_isShared[node] = m_network->GetWaysOut(node).size() > 1 || CountSharedAbove(node) > 0;
        std::size_t done = 0;
        std::vector<bool> isDone(m_sums.size(), false);
        for (const std::uint32_t node : order) {
            if (!progress(done++, m_needed.size()))
                return false;
            m_sums[node] = CountSharedAbove(node) > 1 ? Walk(node) : SumDirectly(node);
            isDone[node] = true;
        }
        for (const std::uint32_t node : m_needed) {
            if (isDone[node])
                continue;
            if (!progress(done++, m_needed.size()))
                return false;
            m_sums[node] = Walk(node);
        }
        return progress(done, m_needed.size());
    }

    const CHouseholdSum& Of(std::uint32_t node) const { return m_sums[node]; }

private:
    void Enter(std::uint32_t node) {
        if (node == None || m_isNeeded[node])
            return;
        m_isNeeded[node] = true;
        m_needed.push_back(node);
        for (const std::uint32_t way : m_network->GetWaysIn(node))
            m_own[way] = OwnHouseholds(m_topology.GetSectionAt(way));
    }

    /// The needed nodes that are neither on a ring nor below one, each after all that are upstream of it.
    std::vector<std::uint32_t> OrderOffRings() const {
        std::vector<std::uint32_t> pending(m_sums.size(), 0);
        std::vector<std::uint32_t> order;
        for (const std::uint32_t node : m_needed) {
            for (const std::uint32_t way : m_network->GetWaysIn(node))
                pending[node] += m_network->GetStart(way) == None ? 0U : 1U;
            if (pending[node] == 0)
                order.push_back(node);
        }
        for (std::size_t i = 0; i < order.size(); ++i)
            for (const std::uint32_t way : m_network->GetWaysOut(order[i]))
                if (const std::uint32_t below = m_network->GetEnd(way);
                    below != None && m_isNeeded[below] && --pending[below] == 0)
                    order.push_back(below);
        return order;
    }

    /// How many ways into a node come from a shared one. Two of them may bring the same sections.
    int CountSharedAbove(std::uint32_t node) const {
        int count = 0;
        for (const std::uint32_t way : m_network->GetWaysIn(node))
            if (const std::uint32_t start = m_network->GetStart(way); start != None && m_isShared[start])
                ++count;
        return count;
    }

    CHouseholdSum SumDirectly(std::uint32_t node) const {
        CHouseholdSum sum;
        for (const std::uint32_t way : m_network->GetWaysIn(node)) {
            Add(sum, m_own[way]);
            if (const std::uint32_t start = m_network->GetStart(way); start != None)
                Add(sum, m_sums[start]);
        }
        return sum;
    }

    /// Breadth first over everything upstream, each section once. What is above a node that is not shared is reached by
    /// this one way only: its sum is taken whole.
    CHouseholdSum Walk(std::uint32_t node) {
        CHouseholdSum sum;
        ++m_walk;
        m_lastWalks[node] = m_walk;
        m_queue.assign(1, node);
        for (std::size_t i = 0; i < m_queue.size(); ++i)
            for (const std::uint32_t way : m_network->GetWaysIn(m_queue[i])) {
                Add(sum, m_own[way]);
                const std::uint32_t start = m_network->GetStart(way);
                if (start == None || m_lastWalks[start] == m_walk)
                    continue;
                if (!m_isShared[start]) {
                    Add(sum, m_sums[start]);
                    continue;
                }
                m_lastWalks[start] = m_walk;
                m_queue.push_back(start);
            }
        return sum;
    }

    const CTopologyStorage& m_topology;
    const std::shared_ptr<const CConnectivity> m_network;
    std::vector<CHouseholdSum> m_own;  ///< by section; of those that end at a needed node
    std::vector<CHouseholdSum> m_sums; ///< by node: of everything upstream of the sections that start there
    std::vector<bool> m_isNeeded;
    std::vector<bool> m_isShared; ///< on or below a fork or a ring: several ways may lead on from something upstream
    std::vector<std::uint32_t> m_needed;
    std::vector<std::uint32_t> m_lastWalks; ///< number of the walk that saw the node last
    std::uint32_t m_walk = 0;
    std::vector<std::uint32_t> m_queue;
};

} // namespace

bool SumUpstream(const std::vector<boost::shared_ptr<CSection>>& sections, std::vector<CHouseholdSum>& sums,
                 const CSumProgress& progress) {
    sums.assign(sections.size(), {});
    const auto any = std::find_if(sections.begin(), sections.end(), [](const auto& section) { return section; });
    if (any == sections.end())
        return true;
    CNodeSums nodeSums((*any)->GetTopology());
    for (const auto& section : sections)
        if (section && section->GetStartingNodeRow() != None)
            nodeSums.Need(section->GetStartingNodeRow());
    if (!nodeSums.Compute(progress))
        return false;
    for (std::size_t i = 0; i < sections.size(); ++i) {
        if (!sections[i])
            continue;
        sums[i] = OwnHouseholds(sections[i]);
        if (const std::uint32_t start = sections[i]->GetStartingNodeRow(); start != None)
            Add(sums[i], nodeSums.Of(start));
    }
    return true;
}

} // namespace Waste
