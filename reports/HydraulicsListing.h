// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "reports/Listing.h"
#include "reports/NetworkHydraulics.h"

#include <vector>

namespace Reports {

/// One row per section of the network with its hydraulics. Borrows the rows.
CTable MakeHydraulicsTable(const std::vector<CHydraulicsRow>& rows);

/// The design in figures, for people: per catalogue pipe, from the smallest up, the number of sections, their length,
/// filling and velocity; and the flow at the sections where the network ends (the first 20).
CListing MakeHydraulicsSummary(const std::vector<CHydraulicsRow>& rows);

} // namespace Reports
