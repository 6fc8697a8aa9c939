// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/Section.h"
#include "reports/Listing.h"
#include "reports/TraceRows.h"

#include <boost/shared_ptr.hpp>

#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace Reports {

/// How a rain run calculated the numbers of one section, gathered from the run's trace and the active project: the
/// basis of the whole run, the areas, and pass by pass the section and the chain of sections above that it depends on.
/// Borrows the trace.
struct CRainExplanation {
    /// One rain catchment: area (ha) times runoff coefficient.
    struct CCatchment {
        double m_area = 0.0;
        double m_coefficient = 1.0;
    };
    /// The contributing area of one section, with the catchments that the network has for it.
    struct CArea {
        std::string m_guid;
        std::string m_name;
        double m_area = 0.0; ///< ha
        std::vector<CCatchment> m_catchments;
    };
    /// A section of the chain; at least one pass.
    struct CStep {
        boost::shared_ptr<OLMGis::Topology::CSection> m_section;
        CArea m_own;
        std::vector<CTraceValues> m_branches; ///< the sections that end at its start; empty for a head
        std::vector<CTraceValues> m_passes;

        /// The branch whose times it continues; null for a head.
        const CTraceValues* FindTaken() const;
    };

    boost::shared_ptr<OLMGis::Topology::CSection> m_section;
    std::vector<CTraceValues> m_basis; ///< one row; none when the run gave the section no result
    std::vector<CArea> m_areas;        ///< parts of its effective area; empty with the partial-area effect by chains
    std::vector<CStep> m_chain;        ///< from the highest down to the section itself
    std::vector<std::pair<std::string, OLMGis::Data::CDataBox>> m_stored; ///< results on the section, by key

    bool IsEmpty() const { return m_basis.empty() || m_chain.empty(); }
};

CRainExplanation ExplainRain(const OLMGis::Utility::CRunTrace& trace,
                             const boost::shared_ptr<OLMGis::Topology::CSection>& section);

/// For programs: all of it as one JSON document, numbers in full, absent ones null. Not for an empty explanation.
void PrintRainDocument(std::ostream& stream, const CRainExplanation& explanation);

/// For people: the calculation sheet, formulas with their numbers in seven digits, enough to repeat the calculation by
/// hand. Lines without the last line end. Not for an empty explanation.
std::string MakeRainSheet(const CRainExplanation& explanation);

/// Sheet and document of an explanation, which is copied; of an empty one nothing for people and null in JSON.
CListing MakeRainListing(CRainExplanation explanation);

} // namespace Reports
