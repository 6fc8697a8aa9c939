// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "rain/GuidMap.h"
#include "rain/SectionInputs.h"

#include <boost/shared_ptr.hpp>

#include <cstdint>
#include <vector>

/// Corrected catchment areas (ha) of sections together with the selected ones upstream.
///
/// The sum of a section is its own area and the sums of the sections directly upstream, in the order of GetSectionsIn,
/// wherever their upstream networks can't overlap: the same in exact arithmetic as visiting everything upstream. Where
/// branches that parted above may meet again, and where sections upstream are left out of the selection, everything
/// upstream is visited, nearest first. One function for all modes, so that equal networks give equal bits.
///
/// Cost of a sum: the sections directly upstream; where branches meet that parted above, everything upstream.
class CAreaSums {
public:
    using CSectionPtr = boost::shared_ptr<OLMGis::Topology::CSection>;
    using CSectionList = std::vector<CSectionPtr>;

    /// Forgets the network, which may have changed.
    void Reset();

    /// Begins a walk over a selection. Sums of the walk before are forgotten.
    void BeginWalk(const CSectionList& sections, const CSelectedSections& selected);

    /// The sum of a section. Those of the selected sections directly upstream must have been asked for before; where
    /// they were not, everything upstream is visited.
    double Sum(const CSectionPtr& section, const CSelectedSections& selected, CSectionInputs& inputs);

private:
    bool FindGap(const CSectionList& sections, const CSelectedSections& selected);
    bool MayOverlap(const CSectionList& in, const CSelectedSections& selected);
    double VisitAll(const CSectionPtr& section, const CSelectedSections& selected, CSectionInputs& inputs);

    std::vector<std::uint32_t> m_walks; ///< by section row: the walk of its sum
    std::vector<double> m_sums;         ///< by section row
    std::uint32_t m_walk = 0;
    bool m_hasGap = false;

    std::vector<std::uint32_t> m_blocks; ///< by section row: the smallest part of the network whose every two sections
                                         ///< lie on a common circle; none where nothing divides
    bool m_hasBlocks = false;
    CSectionList m_in;
    CSectionList m_upstream;
};
