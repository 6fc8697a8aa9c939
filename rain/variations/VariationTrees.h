// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "rain/variations/VariationNetwork.h"

#include <cstdint>
#include <vector>

namespace Rain {

/// Above which sections everything upstream, over all ways and not only the main ones, is a tree: no section is reached
/// on two ways, and there is no ring. Only there the results of a combination upstream are the same in every
/// combination below, because the sets of sections that meet have nothing in common.
///
/// Where more than 64 nodes upstream have several ways out the answer is no, without counting on: each of them at least
/// doubles the combinations below it, so no search gets there. Linear.
class CVariationTrees {
public:
    explicit CVariationTrees(const CVariationNetwork& network);

    bool IsTreeAbove(std::uint32_t section) const { return m_isTree[section]; }

private:
    std::vector<bool> m_isTree; ///< by row
};

} // namespace Rain
