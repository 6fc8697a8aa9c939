// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/Catchment.h"
#include "host/network_core/TopologyStorage.h"

#include <optional>
#include <string>

namespace OLMGis::Sewage {

/// Whether a catchment is a household one with an area above 0 and no population density.
bool LacksDensity(const Topology::CCatchment& catchment);

/// A warning that names the sections (the first ten, and how many there are) with a household catchment that has an
/// area above 0 and no population density: calculations that use densities give meaningless flows there. Empty when
/// there is none. For imports, overviews and the log before a run that uses densities. Linear.
std::optional<std::string> WarnOfMissingDensities(const Topology::CTopologyStorage& topology);

} // namespace OLMGis::Sewage
