// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/base/PolygonValidity.h"

#include <boost/geometry/algorithms/correct.hpp>
#include <boost/geometry/algorithms/is_valid.hpp>
#include <boost/geometry/algorithms/remove_spikes.hpp>
#include <boost/geometry/algorithms/unique.hpp>
#include <boost/geometry/geometries/polygon.hpp>
#include <boost/geometry/geometries/register/point.hpp>
#include <boost/geometry/strategies/strategies.hpp>

#include <cmath>

BOOST_GEOMETRY_REGISTER_POINT_2D(OLMGis::Topology::CPoint, double, boost::geometry::cs::cartesian, m_x, m_y)

namespace OLMGis::ProjectIo {

namespace geometry = boost::geometry;
using Topology::CPoint;

namespace {

using CPolygon = geometry::model::polygon<CPoint>;

/// Whether a closed ring turns one way only, once around: then it cannot cross itself. Most catchments are such rings.
bool IsConvex(const std::vector<CPoint>& ring) {
    if (ring.size() < 4 || ring.front() != ring.back())
        return false;
    const std::size_t count = ring.size() - 1;
    int direction = 0;
    int turnsOfX = 0; // changes between left and right: two of a ring that goes around once
    double lastX = 0.0;
    for (std::size_t i = 0; i < 2 * count; ++i) {
        const CPoint& a = ring[i % count];
        const CPoint& b = ring[(i + 1) % count];
        const CPoint& c = ring[(i + 2) % count];
        const double x = b.m_x - a.m_x;
        const double turn = x * (c.m_y - b.m_y) - (b.m_y - a.m_y) * (c.m_x - b.m_x);
        if (!(std::isfinite(turn) && turn != 0.0) || (direction != 0 && (turn > 0.0) != (direction > 0)))
            return false;
        direction = turn > 0.0 ? 1 : -1;
        if (x == 0.0)
            continue;
        if (i >= count && (x > 0.0) != (lastX > 0.0))
            ++turnsOfX;
        lastX = x;
    }
    return turnsOfX == 2;
}

CPolygon ToPolygon(const Topology::CRings& rings) {
    CPolygon polygon;
    polygon.outer().assign(rings.front().begin(), rings.front().end());
    for (std::size_t i = 1; i < rings.size(); ++i)
        polygon.inners().emplace_back(rings[i].begin(), rings[i].end());
    geometry::unique(polygon);
    geometry::correct(polygon);
    geometry::remove_spikes(polygon);
    return polygon;
}

std::string TextOf(geometry::validity_failure_type failure) {
    switch (failure) {
    case geometry::no_failure:
    case geometry::failure_few_points: // without an area
    case geometry::failure_wrong_topological_dimension:
    case geometry::failure_spikes:
    case geometry::failure_duplicate_points:
        return {};
    case geometry::failure_interior_rings_outside:
        return "has a hole outside its outer ring";
    case geometry::failure_nested_interior_rings:
        return "has holes inside one another";
    case geometry::failure_intersecting_interiors:
        return "has rings that cross each other";
    case geometry::failure_invalid_coordinate:
        return "has a coordinate that is no finite number";
    default:
        return "crosses itself";
    }
}

} // namespace

std::string FindPolygonFault(const Topology::CRings& rings) {
    if (rings.empty() || (rings.size() == 1 && IsConvex(rings.front())))
        return {};
    geometry::validity_failure_type failure = geometry::no_failure;
    for (const auto& ring : rings)
        for (const CPoint& point : ring)
            if (!std::isfinite(point.m_x) || !std::isfinite(point.m_y))
                return TextOf(geometry::failure_invalid_coordinate);
    return geometry::is_valid(ToPolygon(rings), failure) ? std::string() : TextOf(failure);
}

} // namespace OLMGis::ProjectIo
