// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "rain/VariationNetwork.h"
#include "rain/VariationQueue.h"

#include <cstdint>
#include <vector>

class CVariationTrees;

/// What a variation search of a network will take, found by running its queue without any hydraulics. All figures are
/// exact up to 2^53, rounded above, and infinite where they leave the range of numbers.
struct CVariationForecast {
    static constexpr std::uint32_t Nowhere = CVariationNetwork::Nowhere;

    /// A place that the queue would enter for ever; then the figures below are 0. Nowhere when the search ends.
    std::uint32_t m_endless = Nowhere;

    /// How often sections are treated, repeated entries below bifurcations included.
    double m_entries = 0.0;

    /// Combinations by place and in all, and the place with the most; Nowhere without any. Combinations pile up where a
    /// section is treated repeatedly.
    std::vector<double> m_ofPlace;
    double m_total = 0.0;
    std::uint32_t m_greatest = Nowhere;

    /// Computations of sections when every combination is computed whole, and when each extends combinations upstream
    /// wherever these can be taken over.
    double m_plainComputations = 0.0;
    double m_computations = 0.0;

    /// The most memory (bytes) that the search holds beside the network.
    double m_memory = 0.0;

    /// What variations.txt grows by (bytes). Exact for the lists of combinations, which make nearly all of it.
    double m_fileBytes = 0.0;

    /// Some direction is not settled: settled, the search would go on behind it, and all figures would grow.
    bool m_isAtLeast = false;

    /// A number has left its range; those that were not counted to the end are infinite.
    bool IsOverflown() const;
};

/// Cost: the entries, each with the sections that enter its start; an overflow ends the counting.
CVariationForecast ForecastVariations(const CVariationNetwork& network, const CVariationEntries& entries,
                                      const CVariationTrees& trees);
