// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "rain/VariationNetwork.h"

#include <cstdint>

/// What the partial area effect by chains will take at most. A section has one record on each record of the branch
/// that it goes on from, and one as a head of the network: along a line of n sections n (n + 1) / 2 records.
///
/// Which branch goes on is known only to the hydraulics; here it is the one with the most records, so that a line is
/// exact and a tree an upper bound.
struct CChainForecast {
    double m_records = 0.0;
    double m_mostOfSection = 0.0;
    std::uint32_t m_greatest = CVariationNetwork::Nowhere; ///< the section with the most, Nowhere without any
    double m_memory = 0.0;                                 ///< bytes, all of which the run holds at its end

    /// Some direction is not settled: settled, the walk would go on behind it.
    bool m_isAtLeast = false;
};

/// Linear.
CChainForecast ForecastChains(const CVariationNetwork& network);
