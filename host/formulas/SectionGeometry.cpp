// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/formulas/SectionGeometry.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <iterator>
#include <numbers>

namespace OLMGis::Formulas {

namespace {

constexpr double Pi = std::numbers::pi;

/// Squares of such lengths are far from overflow.
constexpr double LargestLength = 1e6;

bool IsLength(double value) {
    return value > 0.0 && value <= LargestLength;
}

/// The three arcs of an egg: radii, heights of their joins, area and perimeter of the whole below each join.
struct CEggArcs {
    double m_invert;
    double m_flank;
    double m_crown;
    double m_join; ///< height where invert and flanks meet
    double m_axis; ///< height of the greatest width, where flanks and crown meet
    CWetSection m_belowJoin;
    CWetSection m_belowAxis;
};

/// Area between the greatest width of a flank arc and a height (m) above or below it, both flanks together. The arc's
/// centre is offset (m) from the section's axis, on the other side of it.
double ArcArea(double radius, double offset, double height) {
    const double root = std::sqrt(std::max(0.0, radius * radius - height * height));
    return radius * radius * std::asin(height / radius) + height * root - 2.0 * offset * height;
}

CEggArcs MakeEggArcs(double width, double height) {
    CEggArcs egg{};
    egg.m_invert = 0.25 * width;
    egg.m_crown = 0.5 * width;
    egg.m_axis = height - egg.m_crown;
    const double centres = egg.m_axis - egg.m_invert;
    egg.m_flank = (centres * centres + egg.m_crown * egg.m_crown - egg.m_invert * egg.m_invert) / egg.m_crown;
    egg.m_join = egg.m_invert * std::max(0.0, 1.0 - centres / (egg.m_flank - egg.m_invert));
    egg.m_belowJoin = WetCircle(2.0 * egg.m_invert, egg.m_join);
    const double rise = egg.m_axis - egg.m_join;
    egg.m_belowAxis.m_area = egg.m_belowJoin.m_area + ArcArea(egg.m_flank, egg.m_flank - egg.m_crown, rise);
    egg.m_belowAxis.m_perimeter =
        egg.m_belowJoin.m_perimeter + 2.0 * egg.m_flank * std::asin(std::min(1.0, rise / egg.m_flank));
    return egg;
}

bool IsEgg(double width, double height) {
    return IsLength(width) && IsLength(height) && height >= width;
}

bool IsTable(std::span<const CSectionLevel> levels) {
    return levels.size() >= 2 && IsLength(levels.back().m_height) &&
           std::all_of(levels.begin(), levels.end(), [](const CSectionLevel& level) {
               return level.m_height >= 0.0 && level.m_width >= 0.0 && level.m_width <= LargestLength;
           });
}

CWetSection FullCircle(double diameter) {
    return {0.25 * Pi * diameter * diameter, Pi * diameter, 0.0, 0.0};
}

CWetSection FullTable(std::span<const CSectionLevel> levels) {
    CTableWalk walk(levels);
    while (walk.Next())
        continue;
    CWetSection full = walk.WetAt(walk.GetTop());
    full.m_perimeter += levels.back().m_width;
    full.m_surfaceWidth = 0.0;
    full.m_perimeterGrowth = 0.0;
    return full;
}

} // namespace

double SegmentTerm(double angle, double sine) {
    if (angle > 0.25)
        return angle - sine;
    // The series of the sine; the terms left out are below 1e-16 of the sum.
    const double x = angle * angle;
    return angle * x / 6.0 *
           (1.0 - x / 20.0 * (1.0 - x / 42.0 * (1.0 - x / 72.0 * (1.0 - x / 110.0 * (1.0 - x / 156.0)))));
}

CWetSection WetCircle(double diameter, double depth) {
    if (!IsLength(diameter) || !(depth > 0.0))
        return {};
    if (depth >= diameter)
        return FullCircle(diameter);
    // The angle that the water surface subtends at the centre, by a formula that keeps its digits at small depths.
    const double angle = 4.0 * std::asin(std::sqrt(depth / diameter));
    const double surface = 2.0 * std::sqrt(depth * (diameter - depth));
    return {0.125 * diameter * diameter * SegmentTerm(angle, std::sin(angle)), 0.5 * diameter * angle, surface,
            2.0 * diameter / surface};
}

CWetSection WetEgg(double width, double height, double depth) {
    if (!IsEgg(width, height) || !(depth > 0.0))
        return {};
    const CEggArcs egg = MakeEggArcs(width, height);
    if (depth >= height)
        return {egg.m_belowAxis.m_area + 0.5 * Pi * egg.m_crown * egg.m_crown,
                egg.m_belowAxis.m_perimeter + Pi * egg.m_crown, 0.0, 0.0};
    if (depth <= egg.m_join)
        return WetCircle(2.0 * egg.m_invert, depth);
    if (depth <= egg.m_axis) {
        const double below = egg.m_axis - depth;
        const double offset = egg.m_flank - egg.m_crown;
        const double root = std::sqrt(egg.m_flank * egg.m_flank - below * below);
        return {egg.m_belowAxis.m_area - ArcArea(egg.m_flank, offset, below),
                egg.m_belowAxis.m_perimeter - 2.0 * egg.m_flank * std::asin(below / egg.m_flank), 2.0 * (root - offset),
                2.0 * egg.m_flank / root};
    }
    const double above = depth - egg.m_axis;
    const double root = std::sqrt((height - depth) * (egg.m_crown + above));
    return {egg.m_belowAxis.m_area + ArcArea(egg.m_crown, 0.0, above),
            egg.m_belowAxis.m_perimeter + 2.0 * egg.m_crown * std::asin(std::min(1.0, above / egg.m_crown)), 2.0 * root,
            2.0 * egg.m_crown / root};
}

CWetSection WetBox(double width, double height, double depth) {
    if (!IsLength(width) || !IsLength(height) || !(depth > 0.0))
        return {};
    if (depth >= height)
        return {width * height, 2.0 * (width + height), 0.0, 0.0};
    return {width * depth, width + 2.0 * depth, width, 2.0};
}

CTableWalk::CTableWalk(std::span<const CSectionLevel> levels)
    : m_levels(levels), m_perimeter(levels.empty() ? 0.0 : levels.front().m_width) {}

bool CTableWalk::Next() {
    while (m_upper + 1 < m_levels.size()) {
        if (m_upper > 0) {
            const CWetSection below = WetAt(GetTop());
            m_area = below.m_area;
            m_perimeter = below.m_perimeter;
        }
        ++m_upper;
        if (GetTop() > GetBottom())
            return true;
    }
    return false;
}

CWetSection CTableWalk::WetAt(double height) const {
    const CSectionLevel& lower = m_levels[m_upper - 1];
    const CSectionLevel& upper = m_levels[m_upper];
    const double thickness = upper.m_height - lower.m_height;
    const double widening = upper.m_width - lower.m_width;
    if (!(thickness > 0.0))
        return {m_area, m_perimeter + std::abs(widening), upper.m_width, 0.0};
    const double part = (height - lower.m_height) / thickness;
    const double width = lower.m_width + part * widening;
    const double wall = std::sqrt(4.0 * thickness * thickness + widening * widening);
    return {m_area + 0.5 * (lower.m_width + width) * part * thickness, m_perimeter + part * wall, width,
            wall / thickness};
}

CWetSection WetTable(std::span<const CSectionLevel> levels, double depth) {
    if (!IsTable(levels) || !(depth > levels.front().m_height))
        return {};
    if (depth >= levels.back().m_height)
        return FullTable(levels);
    CTableWalk walk(levels);
    while (walk.Next())
        if (depth < walk.GetTop())
            return walk.WetAt(depth);
    return {};
}

namespace {

constexpr CShapeKind Kinds[] = {
    {enmSectionShape::Circle, "circle", enmShapeDimensions::Diameter, 1.0,
     [](const CSectionShape& shape, double depth) { return WetCircle(shape.m_width, depth); },
     [](const CSectionShape& shape) { return IsLength(shape.m_width) ? shape.m_width : 0.0; }},
    {enmSectionShape::Egg, "egg", enmShapeDimensions::WidthAndHeight, 1.5,
     [](const CSectionShape& shape, double depth) { return WetEgg(shape.m_width, shape.m_height, depth); },
     [](const CSectionShape& shape) { return IsEgg(shape.m_width, shape.m_height) ? shape.m_height : 0.0; }},
    {enmSectionShape::Box, "box", enmShapeDimensions::WidthAndHeight, 0.0,
     [](const CSectionShape& shape, double depth) { return WetBox(shape.m_width, shape.m_height, depth); },
     [](const CSectionShape& shape) {
         return IsLength(shape.m_width) && IsLength(shape.m_height) ? shape.m_height : 0.0;
     }},
    {enmSectionShape::Table, "table", enmShapeDimensions::Levels, 0.0,
     [](const CSectionShape& shape, double depth) { return WetTable(shape.m_levels, depth); },
     [](const CSectionShape& shape) { return IsTable(shape.m_levels) ? shape.m_levels.back().m_height : 0.0; }},
};

} // namespace

std::span<const CShapeKind> ShapeKinds() {
    return Kinds;
}

const CShapeKind& KindOfShape(enmSectionShape shape) {
    const auto* const found = std::ranges::find(Kinds, shape, &CShapeKind::m_shape);
    assert(found != std::end(Kinds));
    return *found;
}

const CShapeKind* FindShapeKind(std::string_view key) {
    const auto* const found = std::ranges::find(Kinds, key, &CShapeKind::m_key);
    return found == std::end(Kinds) ? nullptr : found;
}

std::vector<std::string_view> ShapeKeys() {
    std::vector<std::string_view> keys;
    for (const CShapeKind& kind : Kinds)
        keys.push_back(kind.m_key);
    return keys;
}

std::vector<std::string_view> KeysOfSizedShapes() {
    std::vector<std::string_view> keys;
    for (const CShapeKind& kind : Kinds)
        if (kind.m_dimensions != enmShapeDimensions::Levels)
            keys.push_back(kind.m_key);
    return keys;
}

CWetSection WetShape(const CSectionShape& shape, double depth) {
    return KindOfShape(shape.m_kind).m_wet(shape, depth);
}

CWetSection FullShape(const CSectionShape& shape) {
    return WetShape(shape, HeightOfShape(shape));
}

double HeightOfShape(const CSectionShape& shape) {
    return KindOfShape(shape.m_kind).m_height(shape);
}

} // namespace OLMGis::Formulas
