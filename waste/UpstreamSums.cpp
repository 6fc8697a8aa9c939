// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "waste/UpstreamSums.h"

#include "host/network_core/Catchment.h"
#include "host/network_core/Node.h"
#include "host/sewage_core/CatchmentAreaManager.h"

#include <algorithm>
#include <array>
#include <span>
#include <tuple>

using OLMGis::Data::enmEntityKind;
using OLMGis::Sewage::CCatchmentAreaManager;
using OLMGis::Topology::CSection;

namespace {

/// As many sums as go through a list at a time: enough to keep the adders busy while each waits for its last result.
constexpr std::size_t Lanes = 8;

// Measured on lines and trees of 100,000 sections: a step of a walk, and of a batch of sums.
constexpr double SecondsPerWalkStep = 6e-9;
constexpr double SecondsPerBatchStep = 1.5e-9;

/// Arcs from nodes to nodes.
class CArcs {
public:
    CArcs(std::size_t nodes, const std::vector<std::pair<std::uint32_t, std::uint32_t>>& arcs)
        : m_first(nodes + 1, 0), m_to(arcs.size()) {
        for (const auto& arc : arcs)
            ++m_first[arc.first + 1];
        for (std::size_t n = 0; n < nodes; ++n)
            m_first[n + 1] += m_first[n];
        std::vector<std::uint32_t> next(m_first.begin(), m_first.end() - 1);
        for (const auto& [from, to] : arcs)
            m_to[next[from]++] = to;
    }

    std::span<const std::uint32_t> Of(std::uint32_t node) const {
        return {m_to.data() + m_first[node], m_to.data() + m_first[node + 1]};
    }

private:
    std::vector<std::uint32_t> m_first;
    std::vector<std::uint32_t> m_to;
};

/// Takes away the nodes whose arcs all lead to nodes that are taken away, until there is none left; returns them in the
/// order of taking. back holds the arcs turned round.
std::vector<std::uint32_t> Peel(const CArcs& arcs, const CArcs& back, std::vector<bool>& isTaken) {
    std::vector<std::ptrdiff_t> pending(isTaken.size(), 0);
    std::vector<std::uint32_t> order;
    for (std::uint32_t n = 0; n < isTaken.size(); ++n) {
        for (const std::uint32_t to : arcs.Of(n))
            pending[n] += isTaken[to] ? 0 : 1;
        if (!isTaken[n] && pending[n] == 0)
            order.push_back(n);
    }
    for (std::size_t i = 0; i < order.size(); ++i) {
        isTaken[order[i]] = true;
        for (const std::uint32_t n : back.Of(order[i]))
            if (!isTaken[n] && --pending[n] == 0)
                order.push_back(n);
    }
    return order;
}

/// Adds a list to several sums, to each in the order of the list.
void AddToAll(std::span<const CHouseholdSum> list, std::array<CHouseholdSum, Lanes>& sums) {
    std::array<CHouseholdSum, Lanes> local = sums;
    for (const CHouseholdSum& own : list)
        for (CHouseholdSum& sum : local) {
            sum.m_area += own.m_area;
            sum.m_people += own.m_people;
        }
    sums = local;
}

} // namespace

/// Numbers the nodes upstream of the starts and lists what enters them.
class CUpstreamSums::CGathering {
public:
    CGathering(CUpstreamSums& sums, const CSection& any)
        : m_sums(sums), m_nodeByRow(any.GetStore().GetRowCount(enmEntityKind::Node), NoNode),
          m_isAsked(any.GetStore().GetRowCount(enmEntityKind::Section), false), m_household(m_isAsked.size()) {}

    void Enter(const boost::shared_ptr<CSection>& section, CStart& start) {
        start = {Household(section), StartingNode(*section)};
    }

    void Gather() {
        std::vector<boost::shared_ptr<CSection>> sectionsIn;
        m_sums.m_first.push_back(0);
        for (std::size_t node = 0; node < m_startsThere.size(); ++node) {
            m_startsThere[node]->GetSectionsIn(sectionsIn);
            for (const auto& section : sectionsIn)
                m_sums.m_inflows.push_back({Household(section), StartingNode(*section)});
            m_sums.m_first.push_back(static_cast<std::uint32_t>(m_sums.m_inflows.size()));
        }
        const auto forgetIfEmpty = [this](std::uint32_t& node) {
            if (node != NoNode && m_sums.CountInflows(node) == 0)
                node = NoNode;
        };
        for (CInflow& inflow : m_sums.m_inflows)
            forgetIfEmpty(inflow.m_node);
        for (CStart& start : m_sums.m_starts)
            forgetIfEmpty(start.m_node);
    }

private:
    std::uint32_t StartingNode(const CSection& section) {
        const auto node = section.GetStartingNode();
        if (!node)
            return NoNode;
        std::uint32_t& number = m_nodeByRow[node->GetRow()];
        if (number == NoNode) {
            number = static_cast<std::uint32_t>(m_startsThere.size());
            m_startsThere.push_back(&section);
        }
        return number;
    }

    const CHouseholdSum& Household(const boost::shared_ptr<CSection>& section) {
        CHouseholdSum& household = m_household[section->GetRow()];
        if (!m_isAsked[section->GetRow()]) {
            m_isAsked[section->GetRow()] = true;
            double density = 0.0;
            const auto* const catchments = CCatchmentAreaManager::Instance();
            catchments->GetCATotalArea(section, household.m_area, OLMGis::Topology::CatchmentHousehold);
            catchments->GetCAAverageDensityInhab(section, density);
            household.m_people = density * household.m_area;
        }
        return household;
    }

    CUpstreamSums& m_sums;
    std::vector<std::uint32_t> m_nodeByRow;
    std::vector<const CSection*> m_startsThere; ///< by number: a section that starts at the node
    std::vector<bool> m_isAsked;                ///< by row
    std::vector<CHouseholdSum> m_household;     ///< by row
};

/// Ways: runs of nodes from each of which only one way leads on upstream, to the next node of the run. The list of a
/// node is its inflows and then the list of the next node, as long as the node is on no loop.
class CUpstreamSums::CWays {
public:
    explicit CWays(const CUpstreamSums& sums)
        : m_way(sums.m_first.size() - 1, NoNode), m_offset(m_way.size(), 0), m_upstream(m_way.size(), 0.0) {
        std::vector<std::pair<std::uint32_t, std::uint32_t>> arcs;
        for (std::uint32_t n = 0; n < m_way.size(); ++n)
            for (std::uint32_t i = sums.m_first[n]; i < sums.m_first[n + 1]; ++i)
                if (sums.m_inflows[i].m_node != NoNode)
                    arcs.emplace_back(n, sums.m_inflows[i].m_node);
        const CArcs up(m_way.size(), arcs);
        for (auto& [from, to] : arcs)
            std::swap(from, to);
        const CArcs down(m_way.size(), arcs);

        std::vector<bool> isOffLoops(m_way.size(), false);
        const auto aboveLoops = Peel(up, down, isOffLoops);
        auto belowLoops = Peel(down, up, isOffLoops);
        std::reverse(belowLoops.begin(), belowLoops.end());
        Count(sums, up, isOffLoops, aboveLoops, belowLoops);
        Trace(sums, up, isOffLoops);
    }

    std::uint32_t GetWay(std::uint32_t node) const { return m_way[node]; }
    std::uint32_t GetOffset(std::uint32_t node) const { return m_offset[node]; }

    /// How many sections are upstream of those that start at the node, as GetVisits counts.
    double GetUpstreamCount(std::uint32_t node) const { return m_upstream[node]; }

private:
    void Count(const CUpstreamSums& sums, const CArcs& up, const std::vector<bool>& isOffLoops,
               const std::vector<std::uint32_t>& aboveLoops, const std::vector<std::uint32_t>& belowLoops) {
        const auto all = static_cast<double>(sums.m_inflows.size());
        for (std::size_t n = 0; n < m_upstream.size(); ++n)
            m_upstream[n] = isOffLoops[n] ? 0.0 : all;
        for (const auto* nodes : {&aboveLoops, &belowLoops}) {
            for (const std::uint32_t n : *nodes) {
                double count = sums.CountInflows(n);
                for (const std::uint32_t next : up.Of(n))
                    count += m_upstream[next];
                m_upstream[n] = std::min(count, all);
            }
        }
    }

    void Trace(const CUpstreamSums& sums, const CArcs& up, const std::vector<bool>& isOffLoops) {
        std::vector<std::uint32_t> next(m_way.size(), NoNode);
        std::vector<bool> isNext(m_way.size(), false);
        for (std::uint32_t n = 0; n < next.size(); ++n) {
            const auto to = up.Of(n);
            const bool isOneWay =
                !to.empty() && std::all_of(to.begin(), to.end(), [&to](auto other) { return other == to[0]; });
            if (!isOneWay || !isOffLoops[n])
                continue;
            next[n] = to[0];
            isNext[to[0]] = true;
        }
        std::uint32_t ways = 0;
        for (std::uint32_t n = 0; n < next.size(); ++n) {
            if (isNext[n])
                continue;
            std::uint32_t offset = 0;
            // Where two ways run together the first one has the rest; the list of each goes on all the same.
            for (std::uint32_t m = n; m != NoNode && m_way[m] == NoNode; m = next[m]) {
                m_way[m] = ways;
                m_offset[m] = offset;
                offset += sums.CountInflows(m);
            }
            ++ways;
        }
    }

    // All by node.
    std::vector<std::uint32_t> m_way;
    std::vector<std::uint32_t> m_offset;
    std::vector<double> m_upstream;
};

CUpstreamSums::CUpstreamSums(const std::vector<boost::shared_ptr<CSection>>& sections) : m_starts(sections.size()) {
    const auto any = std::find_if(sections.begin(), sections.end(), [](const auto& section) { return section; });
    if (any == sections.end())
        return;
    CGathering gathering(*this, **any);
    for (std::size_t i = 0; i < sections.size(); ++i)
        if (sections[i])
            gathering.Enter(sections[i], m_starts[i]);
    gathering.Gather();
    OrderStarts(CWays(*this));
    m_marks.assign(m_first.size() - 1, 0);
    m_queue.assign(m_first.size() - 1, 0);
    m_list.resize(m_inflows.size());
}

void CUpstreamSums::OrderStarts(const CWays& ways) {
    for (std::uint32_t i = 0; i < m_starts.size(); ++i)
        if (const std::uint32_t node = m_starts[i].m_node; node != NoNode)
            m_places.push_back({ways.GetWay(node), ways.GetOffset(node), i});
    std::sort(m_places.begin(), m_places.end(), [](const CPlace& a, const CPlace& b) {
        return std::tie(a.m_way, a.m_offset, a.m_start) < std::tie(b.m_way, b.m_offset, b.m_start);
    });
    const auto count = [&](std::size_t i) { return ways.GetUpstreamCount(m_starts[m_places[i].m_start].m_node); };
    for (std::size_t begin = 0, end = 0; begin < m_places.size(); begin = end) {
        end = EndOfWay(begin);
        m_expectedSeconds += count(begin) * SecondsPerWalkStep;
        for (std::size_t i = begin; i < end; ++i) {
            m_visits += count(i);
            if ((i - begin) % Lanes == 0)
                m_expectedSeconds += count(i) * SecondsPerBatchStep;
        }
    }
}

/// The first place behind those of the way on which the place begin stands.
std::size_t CUpstreamSums::EndOfWay(std::size_t begin) const {
    std::size_t end = begin;
    while (end < m_places.size() && m_places[end].m_way == m_places[begin].m_way)
        ++end;
    return end;
}

bool CUpstreamSums::Compute(std::vector<CHouseholdSum>& sums, const CGoOn& goOn) {
    sums.resize(m_starts.size());
    std::transform(m_starts.begin(), m_starts.end(), sums.begin(), [](const CStart& start) { return start.m_own; });
    auto done = static_cast<int>(m_starts.size() - m_places.size());
    for (std::size_t begin = 0, end = 0; begin < m_places.size(); begin = end) {
        end = EndOfWay(begin);
        Collect(m_starts[m_places[begin].m_start].m_node);
        for (std::size_t i = begin; i < end; i += Lanes) {
            const std::size_t batchEnd = std::min(i + Lanes, end);
            SumBatch(i, batchEnd, m_places[begin].m_offset, sums);
            done += static_cast<int>(batchEnd - i);
            if (!goOn(done))
                return false;
        }
    }
    return true;
}

/// Fills the list of a node: everything upstream of the sections that start there.
void CUpstreamSums::Collect(std::uint32_t node) {
    ++m_walk;
    m_queue[0] = node;
    m_marks[node] = m_walk;
    std::size_t queued = 1;
    std::size_t listed = 0;
    for (std::size_t i = 0; i < queued; ++i) {
        const std::uint32_t entered = m_queue[i];
        for (std::uint32_t k = m_first[entered]; k < m_first[entered + 1]; ++k) {
            const CInflow& inflow = m_inflows[k];
            m_list[listed++] = inflow.m_own;
            if (inflow.m_node == NoNode || m_marks[inflow.m_node] == m_walk)
                continue;
            m_marks[inflow.m_node] = m_walk;
            m_queue[queued++] = inflow.m_node;
        }
    }
    m_listed = listed;
}

/// Sums for the places from begin to end, at most Lanes; base is the offset at which the list begins.
void CUpstreamSums::SumBatch(std::size_t begin, std::size_t end, std::size_t base,
                             std::vector<CHouseholdSum>& sums) const {
    std::array<CHouseholdSum, Lanes> batch{};
    const std::span<const CHouseholdSum> list(m_list.data(), m_listed);
    const std::size_t common = m_places[end - 1].m_offset - base;
    for (std::size_t i = begin; i < end; ++i) {
        CHouseholdSum& sum = batch[i - begin];
        sum = m_starts[m_places[i].m_start].m_own;
        const std::size_t first = m_places[i].m_offset - base;
        for (const CHouseholdSum& own : list.subspan(first, common - first)) {
            sum.m_area += own.m_area;
            sum.m_people += own.m_people;
        }
    }
    AddToAll(list.subspan(common), batch);
    for (std::size_t i = begin; i < end; ++i)
        sums[m_places[i].m_start] = batch[i - begin];
}
