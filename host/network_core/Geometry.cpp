// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_core/Geometry.h"

#include <algorithm>

namespace OLMGis::Topology {

namespace {

/// Twice the signed area of a closed ring (m²), shoelace formula about its first point.
double TwiceSignedArea(const std::vector<CPoint>& ring) {
    double sum = 0.0;
    for (std::size_t i = 1; i + 1 < ring.size(); ++i) {
        const double ax = ring[i].m_x - ring[0].m_x;
        const double ay = ring[i].m_y - ring[0].m_y;
        const double bx = ring[i + 1].m_x - ring[0].m_x;
        const double by = ring[i + 1].m_y - ring[0].m_y;
        sum += ax * by - bx * ay;
    }
    return sum;
}

} // namespace

double PolylineLength(std::span<const CPoint> points) {
    double length = 0.0;
    for (std::size_t i = 1; i < points.size(); ++i)
        length += Distance(points[i - 1], points[i]);
    return length;
}

CPoint MiddleOfLine(std::span<const CPoint> points) {
    if (points.empty())
        return {};
    if (points.size() == 2)
        return {(points[0].m_x + points[1].m_x) / 2.0, (points[0].m_y + points[1].m_y) / 2.0};
    double left = PolylineLength(points) / 2.0;
    for (std::size_t i = 1; i < points.size(); ++i) {
        const CPoint& from = points[i - 1];
        const CPoint& to = points[i];
        const double length = Distance(from, to);
        if (left <= length && length > 0.0)
            return {from.m_x + (to.m_x - from.m_x) * left / length, from.m_y + (to.m_y - from.m_y) * left / length};
        left -= length;
    }
    return points.front();
}

double PolygonArea(const CRings& rings) {
    double area = 0.0;
    for (std::size_t i = 0; i < rings.size(); ++i) {
        const double ring = std::abs(TwiceSignedArea(rings[i])) / 2.0;
        area += i == 0 ? ring : -ring;
    }
    return std::max(area, 0.0);
}

CPoint PolygonCentre(const CRings& rings) {
    if (rings.empty() || rings.front().empty())
        return {};
    const std::vector<CPoint>& ring = rings.front();
    const CPoint origin = ring.front();
    const double twice = TwiceSignedArea(ring);
    double x = 0.0;
    double y = 0.0;
    if (twice != 0.0) {
        for (std::size_t i = 0; i + 1 < ring.size(); ++i) {
            const double ax = ring[i].m_x - origin.m_x;
            const double ay = ring[i].m_y - origin.m_y;
            const double bx = ring[i + 1].m_x - origin.m_x;
            const double by = ring[i + 1].m_y - origin.m_y;
            const double cross = ax * by - bx * ay;
            x += (ax + bx) * cross;
            y += (ay + by) * cross;
        }
        return {origin.m_x + x / (3.0 * twice), origin.m_y + y / (3.0 * twice)};
    }
    for (const CPoint& point : ring) {
        x += point.m_x - origin.m_x;
        y += point.m_y - origin.m_y;
    }
    const auto count = static_cast<double>(ring.size());
    return {origin.m_x + x / count, origin.m_y + y / count};
}

} // namespace OLMGis::Topology
