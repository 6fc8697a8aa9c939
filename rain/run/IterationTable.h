// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "rain/run/NetworkWalk.h"

#include <string>

namespace Rain {

/// The table of IDFOut.txt: a row of fields separated by semicolons for each figure, a field for each section, from its
/// first record, in the order of the GUIDs' characters; sections that were not reached are left out. Iteration 1 begins
/// with what doesn't change. Lines begin with their break, CR LF; numbers always have a ".".
std::string MakeIterationTable(const CRunInput& input, const CNetworkWalk& walk, int iteration);

} // namespace Rain
