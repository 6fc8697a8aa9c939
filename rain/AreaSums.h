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
/// The sum of a section is its own area and the sums of the selected sections directly upstream, in the order of
/// GetSectionsIn: the same in exact arithmetic as visiting everything upstream. What a walk comes to from there has
/// nothing upstream twice: where flow divides it goes on in one way only, and below the other it stops, since a node
/// waits for all that enter it. Only where a section between selected ones isn't selected is everything upstream
/// visited, nearest first. One function for all modes, so that equal networks give equal bits.
///
/// Cost of a sum: the sections directly upstream; across gaps everything upstream.
class CAreaSums {
public:
    using CSectionPtr = boost::shared_ptr<OLMGis::Topology::CSection>;
    using CSectionList = std::vector<CSectionPtr>;

    /// Forgets all sums.
    void Reset();

    /// Begins a walk over a selection. Sums of the walk before are forgotten.
    void BeginWalk(const CSectionList& sections, const CSelectedSections& selected);

    /// The sum of a section. Those of the selected sections directly upstream must have been asked for before; where
    /// they were not, everything upstream is visited.
    double Sum(const CSectionPtr& section, const CSelectedSections& selected, CSectionInputs& inputs);

    /// Has fetched what Sum looks at for a section of this row.
    void Fetch(std::uint32_t row) const { OLMGis::Utility::FetchElementAhead(m_sums, row); }

private:
    bool HasGap(const CSectionList& sections, const CSelectedSections& selected);
    double VisitAll(const CSectionPtr& section, const CSelectedSections& selected, CSectionInputs& inputs);

    struct CAreaSum {
        double m_area = 0.0;
        std::uint32_t m_walk = 0; ///< that it belongs to
    };
    bool IsSummed(std::uint32_t row) const { return row < m_sums.size() && m_sums[row].m_walk == m_walk; }

    std::vector<CAreaSum> m_sums; ///< by section row
    std::uint32_t m_walk = 0;
    bool m_hasGap = false; ///< a section between selected ones is not selected

    std::vector<std::uint32_t> m_marks; ///< by section row: the walk whose search for gaps saw it
    std::vector<const OLMGis::Topology::CSection*> m_in;
    CSectionList m_upstream;
};
