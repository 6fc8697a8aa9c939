// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "rain/VariationNetwork.h"

#include <cstdint>
#include <vector>

/// Above which sections everything upstream, over all ways and not only the main ones, is a tree: no section is reached
/// on two ways, and there is no ring. Only there what was computed for a combination upstream holds unchanged in every
/// combination below, because the sets of sections that meet have nothing in common.
///
/// Where more than 64 nodes upstream have several ways out the answer is no, without counting on: each of them at least
/// doubles the combinations below it, so no search gets there. Linear.
class CVariationTrees {
public:
    explicit CVariationTrees(const CVariationNetwork& network);

    bool IsTreeAbove(std::uint32_t place) const { return m_isTree[place]; }

private:
    std::vector<bool> m_isTree;
};
