// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/VariationTrees.h"

#include <algorithm>
#include <iterator>
#include <memory>

namespace {

/// Nodes with several ways out that lie upstream, in rising order. Two sets of sections that flow together have a
/// section in common only where they have such a node in common: there the ways part that meet again.
using CPartings = std::vector<std::uint32_t>;
using CPartingsPtr = std::shared_ptr<const CPartings>;

constexpr std::size_t MostPartings = 64;

/// Both sets; nothing when they have a node in common or are too many.
CPartingsPtr Join(const CPartingsPtr& a, const CPartingsPtr& b) {
    if (b->empty())
        return a;
    if (a->empty())
        return b;
    CPartings both;
    std::merge(a->begin(), a->end(), b->begin(), b->end(), std::back_inserter(both));
    const bool isDisjoint = std::adjacent_find(both.begin(), both.end()) == both.end();
    return isDisjoint && both.size() <= MostPartings ? std::make_shared<const CPartings>(std::move(both)) : nullptr;
}

/// The network by node: what enters each and how much leaves it.
struct CNodes {
    struct CNode {
        std::vector<std::uint32_t> m_in; ///< places
        std::vector<std::uint32_t> m_out;
        CPartingsPtr m_partings; ///< of all that lies upstream and the node itself; null when that is no tree
        std::size_t m_waitsFor = 0;
        bool m_isKnown = true; ///< false where a section enters that has no place
    };

    explicit CNodes(const CVariationNetwork& network) {
        for (std::uint32_t place = 0; place < network.GetCount(); ++place) {
            CNode& start = At(network.GetSection(place)->GetStartingNodeRow());
            start.m_out.push_back(place);
            start.m_isKnown = network.GetIn(place).size() == network.GetInputCount(place);
            At(network.GetSection(place)->GetEndingNodeRow()).m_in.push_back(place);
        }
        for (CNode& node : m_nodes)
            node.m_waitsFor = node.m_in.size();
    }

    CNode& At(std::uint32_t row) {
        if (m_nodes.size() <= row)
            m_nodes.resize(std::max<std::size_t>(row + 1, m_nodes.size() * 2));
        return m_nodes[row];
    }

    std::vector<CNode> m_nodes; ///< by row
};

} // namespace

CVariationTrees::CVariationTrees(const CVariationNetwork& network) : m_isTree(network.GetCount(), false) {
    CNodes nodes(network);
    const auto none = std::make_shared<const CPartings>();
    std::vector<std::uint32_t> ready;
    for (std::uint32_t row = 0; row < nodes.m_nodes.size(); ++row)
        if (nodes.m_nodes[row].m_waitsFor == 0)
            ready.push_back(row);
    // From the heads down, each node once. Those on rings and below them never get ready: no trees.
    while (!ready.empty()) {
        const std::uint32_t row = ready.back();
        ready.pop_back();
        CNodes::CNode& node = nodes.m_nodes[row];
        CPartingsPtr partings = node.m_isKnown ? none : nullptr;
        for (const std::uint32_t in : node.m_in) {
            const auto& above = nodes.m_nodes[network.GetSection(in)->GetStartingNodeRow()].m_partings;
            partings = partings && above ? Join(partings, above) : nullptr;
        }
        if (partings && !node.m_in.empty() && node.m_out.size() > 1)
            partings = Join(partings, std::make_shared<const CPartings>(1, row));
        node.m_partings = partings;
        for (const std::uint32_t out : node.m_out) {
            m_isTree[out] = partings != nullptr;
            CNodes::CNode& end = nodes.m_nodes[network.GetSection(out)->GetEndingNodeRow()];
            if (--end.m_waitsFor == 0)
                ready.push_back(network.GetSection(out)->GetEndingNodeRow());
        }
    }
}
