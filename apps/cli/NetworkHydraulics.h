// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "apps/cli/HydraulicsListing.h"
#include "apps/cli/Terminal.h"

#include <vector>

namespace Cli {

/// The hydraulics of a whole network.
struct CNetworkHydraulics {
    std::vector<CHydraulicsRow> m_rows; ///< sections with a flow, a pipe and a slope, in the order of the network
    bool m_hasStored = false;           ///< whether any numbers were stored
};

/// Reckons and stores the hydraulics of every section of the active project; viscosity in m²/s. Told on the way:
/// sections with a flow that lack the rest, and those that are overfull.
CNetworkHydraulics CalculateNetworkHydraulics(double viscosity, CTerminal& terminal);

} // namespace Cli
