// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "apps/cli/HydraulicsListing.h"

#include <ostream>
#include <vector>

namespace Cli {

/// What a design came to, for people: how full and how fast the pipes are, pipe by pipe of the catalogue, from the
/// smallest up, with numbers of sections and lengths; and what leaves the network at which sections.
void PrintHydraulicsSummary(std::ostream& stream, const std::vector<CHydraulicsRow>& rows);

} // namespace Cli
