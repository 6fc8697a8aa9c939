// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/Section.h"
#include "host/network_core/TopologyStorage.h"

#include <boost/shared_ptr.hpp>

#include <cstddef>
#include <optional>
#include <vector>

namespace OLMGis::Topology {

/// Slope of the level line (1/1000): (LEVEL_LINE_0 - LEVEL_LINE_1) / plan length, negative where it climbs, see
/// Formulas::RoundDerived. Nothing without either level, for a length that is not above 0 and where the result would
/// not be finite.
std::optional<double> SlopeOfLevels(const CSection& section);

/// Which slopes StoreSlopes stores.
struct CSlopeChoice {
    bool m_fillsDesign = false; ///< also SECTION_SLOPE where it is null
};

/// What StoreSlopes did, sections in network order, no nulls.
struct CSlopeSummary {
    std::size_t m_calculated = 0; ///< sections that got SECTION_SLOPE_CAL
    std::size_t m_designed = 0;   ///< sections that got SECTION_SLOPE
    std::vector<boost::shared_ptr<CSection>> m_withoutLevels;
    std::vector<boost::shared_ptr<CSection>> m_withoutLength; ///< levels, but no length above 0
    std::vector<boost::shared_ptr<CSection>> m_climbing;      ///< negative slopes, stored as they are
    std::vector<boost::shared_ptr<CSection>> m_refused;       ///< read-only ones
};

/// Stores the slope of its level line with every section that has one; the others keep what they have.
CSlopeSummary StoreSlopes(const CTopologyStorage& topology, const CSlopeChoice& choice);

} // namespace OLMGis::Topology
