// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/Catalog.h"
#include "host/network_core/Section.h"
#include "host/sewage_core/SectionHydraulics.h"

#include <boost/shared_ptr.hpp>

#include <cstddef>
#include <optional>
#include <vector>

namespace OLMGis::Sewage {

/// What a pipe must meet to be chosen for a flow. A limit of 0 is no limit.
struct CSizingRules {
    const Data::CDataDefinition* m_flow = nullptr; ///< attribute of sections, m³/s; never null

    /// Groups of the pipe catalogue, no nulls: the pipes of a later one count where no pipe of the former ones fits.
    std::vector<boost::shared_ptr<Topology::CCatalogItem>> m_groups{};

    double m_viscosity = 1e-6;           ///< of the water, m²/s (> 0)
    double m_greatestFilling = 100.0;    ///< % of the inside height (> 0 to 100)
    double m_leastNominalDiameter = 0.0; ///< mm, see Topology::NominalDiameter
    double m_leastVelocity = 0.0;        ///< m/s, at the filling
    double m_leastShearStress = 0.0;     ///< N/m², at the filling
    bool m_allowsSmaller = false;        ///< a pipe may be narrower than one upstream

    std::vector<boost::shared_ptr<Topology::CSection>> m_kept{}; ///< sections whose pipes stay; no nulls
};

/// What became of a section.
enum class enmSizing {
    Sized,
    Kept,    ///< named by the rules
    NotPipe, ///< SECTION_KIND says that it is something else, such as a pump
    Ring,    ///< on a ring of sections, or below one: nothing is known of what is upstream
    Flow,    ///< no flow, or one of 0 or below
    Slope,   ///< no slope, or one of 0 or below
    // No pipe fits.
    Width,    ///< none has the nominal diameter and the width of the pipes upstream
    Filling,  ///< all of those are filled too much
    Velocity, ///< those that carry the flow are too slow
    Shear,    ///< those that are fast enough have too little wall shear stress
};

struct CSizedSection {
    boost::shared_ptr<Topology::CSection> m_section;
    enmSizing m_outcome = enmSizing::Ring;
    std::optional<double> m_flow{};                      ///< m³/s, as stored
    std::optional<double> m_slope{};                     ///< 1/1000, as stored
    double m_widthUpstream = 0.0;                        ///< widest pipe of all sections upstream, mm; 0 without one
    boost::shared_ptr<Topology::CCatalogItem> m_oldPipe; ///< null without one
    boost::shared_ptr<Topology::CCatalogItem> m_newPipe; ///< the chosen one, else the old one; null without one
    CSectionHydraulics m_figures; ///< in the new pipe; m_gap says what is missing, as where the section has no pipe
    CSectionHydraulics m_nearest; ///< outcomes Filling to Shear: in the pipe that comes nearest to fitting
};

struct CPipeSizing {
    std::vector<CSizedSection> m_sections; ///< all, in the order of the network; empty when cancelled
    bool m_isCancelled = false;
};

/// Chooses for each section of the active project the smallest pipe that meets the rules: of the first group that has
/// one, the narrowest inside, of equal ones that with the smallest area, then the first in the catalogue. Sections are
/// taken downstream. Unless the rules allow it no pipe is narrower inside than the widest of all pipes upstream,
/// whether chosen, kept or left; a section without a pipe passes on what is above it. The least diameter that the
/// catalogue states for a pipe type is kept, too. Nothing is stored.
///
/// Hydraulics: CSectionHydraulicsReader. A flow above the full-pipe capacity overfills a pipe whatever
/// m_greatestFilling is. Progress is shown and may be cancelled. Cost: linear in the sections; for each at most the
/// pipes of the groups.
CPipeSizing SizePipes(const CSizingRules& rules);

/// Stores the pipes of the sections with outcome Sized as PIPE_REF, through the open journal of the store, if any.
/// Returns how many were stored.
std::size_t StorePipes(const CPipeSizing& sizing);

} // namespace OLMGis::Sewage
