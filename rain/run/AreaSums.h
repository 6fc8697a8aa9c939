// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "rain/run/RunInput.h"

#include <cstdint>
#include <span>
#include <vector>

namespace Rain {

/// Corrected catchment areas (ha) of sections together with the selected ones upstream.
///
/// The sum of a section is its own area and the sums of the selected sections directly upstream, in network order: the
/// same in exact arithmetic as visiting everything upstream. What a walk reaches in this way has nothing upstream
/// twice: where flow divides the walk goes on in one way only, and below the other it stops, since a node waits for all
/// that enter it. Only where a section between selected ones isn't selected is everything upstream visited, nearest
/// first. One function for all modes, so that equal networks give equal bits.
///
/// Cost of a sum: the sections directly upstream; across gaps everything upstream.
class CAreaSums {
public:
    /// input is not owned.
    explicit CAreaSums(const CRunInput& input);

    /// Begins a walk over a selection, by row of section; not owned. Sums of the walk before are forgotten.
    void BeginWalk(std::span<const std::uint32_t> selected, const std::vector<bool>& isSelected);

    /// The sum of a section. Those of the selected sections directly upstream must have been asked for before; where
    /// they were not, everything upstream is visited.
    double Sum(std::uint32_t section);

private:
    bool HasGap(std::span<const std::uint32_t> selected);
    double VisitAll(std::uint32_t section);
    bool IsSummed(std::uint32_t section) const { return m_sums[section].m_walk == m_walk; }

    /// Whether the mark of a section is the present one; it is afterwards.
    bool IsMarked(std::uint32_t section);

    struct CAreaSum {
        double m_area = 0.0;
        std::uint32_t m_walk = 0; ///< that it belongs to
    };

    const CRunInput& m_input;
    const std::vector<bool>* m_isSelected = nullptr;
    std::vector<CAreaSum> m_sums; ///< by row
    std::uint32_t m_walk = 0;
    bool m_hasGap = false; ///< a section between selected ones is not selected

    std::vector<std::uint32_t> m_marks; ///< by row: the last search that saw it; empty before the first
    std::uint32_t m_search = 0;
    std::vector<std::uint32_t> m_found;
};

} // namespace Rain
