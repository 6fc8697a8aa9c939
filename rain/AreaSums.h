// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "rain/GuidMap.h"
#include "rain/NetworkBlocks.h"
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

    /// Whether branches that enter the section's start may have something upstream in common, so that its sum is not
    /// made of theirs.
    bool MayOverlapAbove(const CSectionPtr& section);

private:
    bool HasGap(const CSectionList& sections, const CSelectedSections& selected);
    bool MayOverlap(const CSectionList& in);
    double VisitAll(const CSectionPtr& section, const CSelectedSections& selected, CSectionInputs& inputs);

    std::vector<std::uint32_t> m_walks; ///< by section row: the walk of its sum
    std::vector<double> m_sums;         ///< by section row
    std::uint32_t m_walk = 0;
    bool m_hasGap = false; ///< a section between selected ones is not selected

    bool m_isDivisionKnown = false;
    bool m_divides = false;  ///< the network has a node where flow can part
    CNetworkBlocks m_blocks; ///< where it divides

    std::vector<std::uint32_t> m_blocksOfIn;
    std::vector<std::uint32_t> m_marks; ///< by section row: the walk whose search for gaps saw it
    CSectionList m_in;
    CSectionList m_upstream;
};
