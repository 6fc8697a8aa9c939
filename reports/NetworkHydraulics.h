// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/sewage_calculations/OutdatedResults.h"
#include "host/sewage_core/SectionHydraulics.h"
#include "reports/Remark.h"

#include <vector>

namespace Reports {

/// The hydraulics of one section that has a flow, a pipe and a slope.
struct CHydraulicsRow {
    const OLMGis::Topology::CSection* m_section = nullptr;
    OLMGis::Sewage::CSectionHydraulics m_figures;
};

/// The hydraulics of a whole network.
struct CNetworkHydraulics {
    std::vector<CHydraulicsRow> m_rows; ///< sections with a flow, a pipe and a slope, in the order of the network
    bool m_hasStored = false;           ///< whether any numbers were stored
    std::vector<OLMGis::Sewage::COutdatedResult> m_outdated{}; ///< results that were read and are outdated
    CRemarks m_remarks; ///< sections with a flow that lack the rest, and surcharged ones
};

/// Calculates and stores the hydraulics of every section of the active project, and the origin of these results.
/// viscosity: of the water in m²/s (> 0). flow: attribute of the flow, null for the flow of the design (see
/// CSectionHydraulicsReader).
CNetworkHydraulics CalculateNetworkHydraulics(double viscosity, const OLMGis::Data::CDataDefinition* flow = nullptr);

} // namespace Reports
