// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "rain/variations/VariationNetwork.h"
#include "rain/variations/VariationQueue.h"
#include "rain/variations/VariationTrees.h"

#include <cstdint>

namespace Rain {

/// What the partial area effect will take, found without any hydraulics. Counts are exact up to 2^53, rounded above,
/// and infinite where they leave the range of numbers.
struct CVariationForecast {
    static constexpr std::uint32_t None = CVariationNetwork::None;

    /// A section that the queue would enter for ever; then the figures are 0. None when the search ends.
    std::uint32_t m_endless = None;

    double m_total = 0.0;            ///< combinations, or by chains calculations of sections
    std::uint32_t m_greatest = None; ///< the section with the most of them; None without any
    double m_mostOfSection = 0.0;    ///< how many that has
    double m_memory = 0.0;           ///< estimate of the greatest use beside the network, bytes

    /// Some main outlet is not chosen: once it is, the search goes on below it, and all figures grow.
    bool m_isAtLeast = false;
};

/// The search over combinations. Cost: the entries of the queue, each with the sections that enter its start; an
/// overflow ends the counting.
CVariationForecast ForecastSearch(const CVariationNetwork& network, const CVariationEntries& entries,
                                  const CVariationTrees& trees);

/// The chains: a section has one record on each record of the branch that it goes on from, and one as a head of the
/// network: along a line of n sections n (n + 1) / 2 records. Which branch goes on is known only to the hydraulics;
/// here it is the one with the most records, so that a line is exact and a tree an upper bound. Linear.
CVariationForecast ForecastChains(const CVariationNetwork& network);

/// All that is known of a search before it begins. network is not owned.
struct CSearchPlan {
    explicit CSearchPlan(const CRunNetwork& network)
        : m_network(network), m_entries(m_network), m_trees(m_network),
          m_forecast(ForecastSearch(m_network, m_entries, m_trees)) {}

    CVariationNetwork m_network;
    CVariationEntries m_entries;
    CVariationTrees m_trees;
    CVariationForecast m_forecast;
};

} // namespace Rain
