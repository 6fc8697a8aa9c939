// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"
#include "host/network_core/Geometry.h"

#include <string_view>
#include <vector>

namespace OLMGis::ProjectIo {

/// The points of a line in well-known text: "LINESTRING (478360 5051800, 478390 5051810)", also with one point only, or
/// as POINT or MULTIPOINT. Third and fourth coordinates are skipped. BadInput ("found ..., expected ...") for another
/// text.
Utility::Result<std::vector<Topology::CPoint>> ParseLineText(std::string_view text);

/// The line of a section from node to node by way of points: the points alone where they begin and end at the nodes,
/// else with the nodes before and after. BadInput where they run from the end to the start.
Utility::Result<std::vector<Topology::CPoint>>
JoinLine(const Topology::CPoint& start, const std::vector<Topology::CPoint>& points, const Topology::CPoint& end);

} // namespace OLMGis::ProjectIo
