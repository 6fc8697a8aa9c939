// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "apps/cli/TraceRows.h"
#include "host/network_core/Section.h"

#include <boost/shared_ptr.hpp>

#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace Cli {

/// How a rain run came to the numbers of one section, gathered from the run's trace and the active project: what holds
/// for the whole run, the areas, and pass by pass the section and the chain of sections that it builds on. Borrows the
/// trace.
struct CRainExplanation {
    /// One rain catchment: area (ha) times runoff coefficient.
    struct CCatchment {
        double m_area = 0.0;
        double m_coefficient = 1.0;
    };
    /// The corrected area of one section, as far as the network still says where it comes from.
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
        std::vector<CTraceValues> m_branches; ///< what met at its start; empty for a head
        std::vector<CTraceValues> m_passes;

        /// The branch that it builds on; null for a head.
        const CTraceValues* FindTaken() const;
    };

    boost::shared_ptr<OLMGis::Topology::CSection> m_section;
    std::vector<CTraceValues> m_basis; ///< one row; none when the run gave the section no result
    std::vector<CArea> m_areas; ///< that make up its effective area; empty with the partial area effect by chains
    std::vector<CStep> m_chain; ///< from the highest down to the section itself
    std::vector<std::pair<std::string, OLMGis::Data::CDataBox>> m_stored; ///< results on the section, by key

    bool IsEmpty() const { return m_basis.empty() || m_chain.empty(); }
};

CRainExplanation ExplainRain(const OLMGis::Utility::CRunTrace& trace,
                             const boost::shared_ptr<OLMGis::Topology::CSection>& section);

/// For programs: all of it, numbers in full, absent ones null.
void PrintRainExplanationAsJson(std::ostream& stream, const CRainExplanation& explanation);

/// For people: a calculation sheet, formulas with their numbers in seven digits, which is enough to reckon it again.
void PrintRainSheet(std::ostream& stream, const CRainExplanation& explanation);

} // namespace Cli
