// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/Section.h"

#include <boost/shared_ptr.hpp>

#include <cstddef>
#include <functional>
#include <vector>

namespace Waste {

/// Household catchments of one section or of several together.
struct CHouseholdSum {
    double m_area = 0.0;   ///< ha
    double m_people = 0.0; ///< inhabitants: density times area, also where the density is the mark of an absent one
};

/// Called now and then with how much of the work is done; false stops it.
using CSumProgress = std::function<bool(std::size_t done, std::size_t count)>;

/// Fills sums with the household catchments of each section and of everything upstream of it, in the order of the list;
/// a null gives 0. All sections belong to one network. False when progress stopped it; sums then is of no use.
///
/// Each upstream section counts once, whatever the number of ways from it. The section itself does not count as seen,
/// so that a ring that leads back to it counts it twice.
///
/// The sum above a node is made of those of the nodes directly above it where these have no section upstream in common,
/// else by a walk over everything upstream. Which of the two depends on the network alone: a figure never depends on
/// which sections a run is asked for.
///
/// Cost: linear in the upstream network where no ways part and meet again. Each node where ways meet again, and each
/// node on or below a ring, costs a walk over those upstream nodes that are on or below a fork or a ring.
bool SumUpstream(const std::vector<boost::shared_ptr<OLMGis::Topology::CSection>>& sections,
                 std::vector<CHouseholdSum>& sums, const CSumProgress& progress);

} // namespace Waste
