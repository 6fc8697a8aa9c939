// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

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
    CRemarks m_remarks;                 ///< sections with a flow that lack the rest, and surcharged ones
};

/// Calculates and stores the hydraulics of every section of the active project; viscosity of the water in m²/s (> 0).
CNetworkHydraulics CalculateNetworkHydraulics(double viscosity);

} // namespace Reports
