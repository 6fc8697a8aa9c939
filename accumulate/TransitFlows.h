// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/Section.h"

#include <boost/shared_ptr.hpp>

#include <array>
#include <cstdint>
#include <string>

/// The on/off switches of a transit run, in the order of its form; 0 is off.
using TransitSwitches = std::array<std::int32_t, 10>;

/// What a transit run found out about a section.
struct TransitSectionFlow {
    boost::shared_ptr<OLMGis::Topology::CSection> section;
    double transit = -1.0; ///< m³/s arriving at its starting node; below 0 also where the walk did not come
    double own = 0.0;      ///< m³/s, sum of its own flows
};

/// What a transit run found out about a node at which a section of the run starts.
struct TransitNodeFlow {
    std::int32_t sectionsIn = 0; ///< sections that enter the node
    std::string name;
    std::int32_t processedIn = 0; ///< entering sections that the walk has finished
    double accumulated = 0.0;     ///< m³/s that has reached the node
};
