// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/variations/VariationTrees.h"

#include <algorithm>
#include <iterator>
#include <memory>

namespace Rain {

namespace {

/// Nodes with several ways out upstream, in rising order. Two sets of sections that flow together have a
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

} // namespace

CVariationTrees::CVariationTrees(const CVariationNetwork& network) : m_isTree(network.GetRowCount(), false) {
    const CRunNetwork& run = network.GetNetwork();
    const auto none = std::make_shared<const CPartings>();
    std::vector<CPartingsPtr> partingsOf(run.GetNodeCount()); // of everything upstream of a node, and the node
    std::vector<std::uint32_t> waitsFor(run.GetNodeCount(), 0);
    for (const std::uint32_t section : network.GetSections())
        ++waitsFor[run.GetEnd(section)];
    std::vector<std::uint32_t> ready;
    for (std::uint32_t node = 0; node < run.GetNodeCount(); ++node)
        if (waitsFor[node] == 0)
            ready.push_back(node);
    // From the heads down, each node once. Those on rings and below them never get ready: no trees.
    while (!ready.empty()) {
        const std::uint32_t node = ready.back();
        ready.pop_back();
        CPartingsPtr partings = none;
        for (const std::uint32_t in : run.GetWaysIn(node)) {
            const CPartingsPtr above = network.TakesPart(in) ? partingsOf[run.GetStart(in)] : nullptr;
            partings = partings && above ? Join(partings, above) : nullptr;
        }
        std::vector<std::uint32_t> out;
        for (const std::uint32_t section : run.GetWaysOut(node))
            if (network.TakesPart(section))
                out.push_back(section);
        if (partings && !run.GetWaysIn(node).empty() && out.size() > 1)
            partings = Join(partings, std::make_shared<const CPartings>(1, node));
        partingsOf[node] = partings;
        for (const std::uint32_t section : out) {
            m_isTree[section] = partings != nullptr;
            if (--waitsFor[run.GetEnd(section)] == 0)
                ready.push_back(run.GetEnd(section));
        }
    }
}

} // namespace Rain
