// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <cmath>
#include <limits>
#include <span>
#include <vector>

namespace OLMGis::Topology {

/// A point of the plan, m, in the project's coordinate system. Not-a-number in both coordinates where nothing is known.
struct CPoint {
    double m_x = std::numeric_limits<double>::quiet_NaN();
    double m_y = std::numeric_limits<double>::quiet_NaN();

    bool IsKnown() const { return !std::isnan(m_x) && !std::isnan(m_y); }
    friend bool operator==(const CPoint&, const CPoint&) = default;
};

inline double Distance(const CPoint& a, const CPoint& b) {
    return std::hypot(b.m_x - a.m_x, b.m_y - a.m_y);
}

/// Length of a polyline (m); 0 for fewer than two points.
double PolylineLength(std::span<const CPoint> points);

/// The point half way along a polyline; the first one of a line without length, unknown for no points.
CPoint MiddleOfLine(std::span<const CPoint> points);

/// Rings of a polygon: the outer one first, then holes; each closed (first point equals last) with at least four
/// points.
using CRings = std::vector<std::vector<CPoint>>;

/// Area of a polygon with holes (m²), never negative. Coordinates are taken from the first point, so that large
/// eastings and northings cost no digits.
double PolygonArea(const CRings& rings);

/// Centre of gravity of the outer ring; the mean of its points when it has no area; unknown for an empty polygon.
CPoint PolygonCentre(const CRings& rings);

} // namespace OLMGis::Topology
