// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/NetworkBlocks.h"

#include <algorithm>

using OLMGis::Topology::CSection;
using OLMGis::Topology::CTopologyStorage;

namespace {

/// A section between two different nodes, by rows.
struct CEdge {
    std::uint32_t m_section;
    std::uint32_t m_from;
    std::uint32_t m_to;
};

/// The edges at each node.
class CEdgesAtNodes {
public:
    explicit CEdgesAtNodes(const std::vector<CEdge>& edges) {
        std::uint32_t nodes = 0;
        for (const CEdge& edge : edges)
            nodes = std::max({nodes, edge.m_from + 1, edge.m_to + 1});
        m_first.assign(nodes + 1ULL, 0);
        for (const CEdge& edge : edges) {
            ++m_first[edge.m_from + 1ULL];
            ++m_first[edge.m_to + 1ULL];
        }
        for (std::size_t n = 1; n < m_first.size(); ++n)
            m_first[n] += m_first[n - 1];
        m_edges.resize(edges.size() * 2);
        std::vector<std::uint32_t> next(m_first.begin(), m_first.end() - 1);
        for (std::uint32_t e = 0; e < edges.size(); ++e) {
            m_edges[next[edges[e].m_from]++] = e;
            m_edges[next[edges[e].m_to]++] = e;
        }
    }

    std::uint32_t GetNodeCount() const { return static_cast<std::uint32_t>(m_first.size() - 1); }
    std::uint32_t Begin(std::uint32_t node) const { return m_first[node]; }
    std::uint32_t End(std::uint32_t node) const { return m_first[node + 1ULL]; }
    std::uint32_t At(std::uint32_t place) const { return m_edges[place]; }

private:
    std::vector<std::uint32_t> m_first; ///< by node: place of its first edge
    std::vector<std::uint32_t> m_edges;
};

/// A node on the way of the search: the edge by which it was reached, and the next place to look at.
struct CStep {
    std::uint32_t m_node;
    std::uint32_t m_edge;
    std::uint32_t m_next;
};

class CBlockSearch {
public:
    CBlockSearch(const std::vector<CEdge>& edges, std::vector<std::uint32_t>& blocks)
        : m_edges(edges), m_at(edges), m_blocks(blocks), m_seen(m_at.GetNodeCount(), 0),
          m_lowest(m_at.GetNodeCount(), 0) {}

    void Run() {
        for (std::uint32_t root = 0; root < m_at.GetNodeCount(); ++root) {
            if (m_seen[root] != 0)
                continue;
            Enter(root, CNetworkBlocks::None);
            while (!m_way.empty()) {
                CStep& step = m_way.back();
                if (step.m_next < m_at.End(step.m_node))
                    Look(step, m_at.At(step.m_next++));
                else
                    Leave();
            }
        }
    }

private:
    void Enter(std::uint32_t node, std::uint32_t edge) {
        m_seen[node] = m_lowest[node] = ++m_time;
        m_way.push_back({node, edge, m_at.Begin(node)});
    }

    void Look(const CStep& step, std::uint32_t edge) {
        if (edge == step.m_edge)
            return;
        const std::uint32_t node = step.m_node;
        const std::uint32_t other = m_edges[edge].m_from == node ? m_edges[edge].m_to : m_edges[edge].m_from;
        if (m_seen[other] == 0) {
            m_open.push_back(edge);
            Enter(other, edge);
        } else if (m_seen[other] < m_seen[node]) {
            m_open.push_back(edge);
            m_lowest[node] = std::min(m_lowest[node], m_seen[other]);
        }
    }

    void Leave() {
        const CStep left = m_way.back();
        m_way.pop_back();
        if (m_way.empty())
            return;
        const std::uint32_t above = m_way.back().m_node;
        m_lowest[above] = std::min(m_lowest[above], m_lowest[left.m_node]);
        if (m_lowest[left.m_node] < m_seen[above])
            return;
        // Nothing below the edge leads around its upper node: what was opened since is a block.
        std::uint32_t edge = 0;
        do {
            edge = m_open.back();
            m_open.pop_back();
            m_blocks[m_edges[edge].m_section] = m_block;
        } while (edge != left.m_edge);
        ++m_block;
    }

    const std::vector<CEdge>& m_edges;
    CEdgesAtNodes m_at;
    std::vector<std::uint32_t>& m_blocks;
    std::vector<std::uint32_t> m_seen;   ///< by node: when, from 1; 0 for not yet
    std::vector<std::uint32_t> m_lowest; ///< by node: earliest node that it and those behind it touch
    std::vector<CStep> m_way;
    std::vector<std::uint32_t> m_open; ///< edges whose block isn't known yet
    std::uint32_t m_time = 0;
    std::uint32_t m_block = 0;
};

} // namespace

void CNetworkBlocks::Find(const CTopologyStorage& topology) {
    m_blocks.clear();
    std::vector<CEdge> edges;
    edges.reserve(topology.GetSections().size());
    for (const auto& section : topology.GetSections()) {
        const std::uint32_t from = section->GetStartingNodeRow();
        const std::uint32_t to = section->GetEndingNodeRow();
        if (from == CSection::NoRow || to == CSection::NoRow || from == to)
            continue;
        edges.push_back({section->GetRow(), from, to});
        if (section->GetRow() >= m_blocks.size())
            m_blocks.resize(section->GetRow() + 1ULL, None);
    }
    CBlockSearch(edges, m_blocks).Run();
}
