// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/inp/InpOutline.h"

#include "host/formulas/Units.h"

#include <algorithm>
#include <cmath>

namespace OLMGis::ProjectIo {

using Formulas::MillimetresPerMetre;

namespace {

constexpr int ChordCount = 64;

/// The upper edge of a ledge is lifted by this (mm), so that heights keep growing.
constexpr double LedgeHeight = 0.01;

double Round(double millimetres) {
    return std::round(millimetres * 1e6) / 1e6;
}

/// Adds a point; one that is not above the last one is left out, because heights must grow.
void AddPoint(CInpOutline& outline, double height, double width) {
    const Topology::CShapePoint point{Round(height), Round(width)};
    if (outline.empty() || point.m_height > outline.back().m_height)
        outline.push_back(point);
}

/// Half the angle of an arc of that radius above a chord of that width.
double HalfAngle(double width, double radius) {
    return std::asin(std::min(width / 2.0 / radius, 1.0));
}

/// Height of the arc above its chord.
double ArcHeight(double width, double radius) {
    return radius * (1.0 - std::cos(HalfAngle(width, radius)));
}

/// How the width of a bed changes at a level: sides that begin or end, and flat pieces.
struct CLevelChange {
    double m_level = 0.0;
    double m_growth = 0.0; ///< change of width per height above the level
    double m_flat = 0.0;   ///< change of width at the level
};

/// The changes of a bed, lowest first.
std::vector<CLevelChange> CollectChanges(const std::vector<std::pair<double, double>>& points, double factor) {
    std::vector<CLevelChange> changes;
    changes.reserve(2 * points.size());
    for (std::size_t i = 1; i < points.size(); ++i) {
        const double width = (points[i].first - points[i - 1].first) * factor * MillimetresPerMetre;
        const auto [low, high] =
            std::minmax({points[i - 1].second * MillimetresPerMetre, points[i].second * MillimetresPerMetre});
        if (high > low) {
            changes.push_back({low, width / (high - low), 0.0});
            changes.push_back({high, -width / (high - low), 0.0});
        } else {
            changes.push_back({low, 0.0, width});
        }
    }
    std::sort(changes.begin(), changes.end(),
              [](const CLevelChange& a, const CLevelChange& b) { return a.m_level < b.m_level; });
    return changes;
}

} // namespace

double ToInpMillimetres(double metres) {
    return Round(metres * MillimetresPerMetre);
}

bool IsPowerOutline(double exponent) {
    return exponent >= 0.05 && exponent <= 20.0;
}

CInpOutline PowerOutline(double height, double width, double exponent) {
    CInpOutline outline;
    for (int i = 0; i <= ChordCount; ++i) {
        const double part = static_cast<double>(i) / ChordCount;
        // Equal steps of the quantity that changes faster: width for a rounded bottom, height for a pointed one.
        if (exponent >= 1.0)
            AddPoint(outline, height * std::pow(part, exponent), width * part);
        else
            AddPoint(outline, height * part, width * std::pow(part, 1.0 / exponent));
    }
    return outline;
}

bool IsRoundedBoxOutline(double height, double width, double radius) {
    return radius >= width / 2.0 && ArcHeight(width, radius) <= height;
}

CInpOutline RoundBottomOutline(double height, double width, double radius) {
    CInpOutline outline;
    for (int i = 0; i <= ChordCount; ++i) {
        const double angle = HalfAngle(width, radius) * i / ChordCount;
        AddPoint(outline, radius * (1.0 - std::cos(angle)), 2.0 * radius * std::sin(angle));
    }
    AddPoint(outline, height, width);
    return outline;
}

CInpOutline RoundTopOutline(double height, double width, double radius) {
    CInpOutline outline;
    AddPoint(outline, 0.0, width);
    for (int i = ChordCount; i >= 0; --i) {
        const double angle = HalfAngle(width, radius) * i / ChordCount;
        AddPoint(outline, height - radius * (1.0 - std::cos(angle)), 2.0 * radius * std::sin(angle));
    }
    return outline;
}

CInpOutline CurveOutline(const std::vector<std::pair<double, double>>& points, double height) {
    CInpOutline outline;
    double last = -1.0;
    for (const auto& [depth, width] : points) {
        if (depth < 0.0 || depth > 1.0 || depth <= last || width < 0.0)
            return {};
        if (outline.empty() && depth > 0.0)
            AddPoint(outline, 0.0, 0.0);
        AddPoint(outline, depth * height, width * height);
        last = depth;
    }
    if (!outline.empty())
        AddPoint(outline, height, outline.back().m_width);
    return outline;
}

CInpOutline ChannelOutline(const std::vector<std::pair<double, double>>& points, double factor) {
    const std::vector<CLevelChange> changes = CollectChanges(points, factor);
    CInpOutline outline;
    if (changes.empty())
        return outline;
    const double bottom = changes.front().m_level;
    const double top = changes.back().m_level;
    double width = 0.0;
    double growth = 0.0;
    double level = bottom;
    for (std::size_t i = 0; i < changes.size();) {
        width += growth * (changes[i].m_level - level);
        level = changes[i].m_level;
        if (level > bottom)
            AddPoint(outline, level - bottom, std::max(width, 0.0));
        double flat = 0.0;
        for (; i < changes.size() && changes[i].m_level == level; ++i) {
            growth += changes[i].m_growth;
            flat += changes[i].m_flat;
        }
        width += flat;
        if (level == bottom)
            AddPoint(outline, 0.0, width);
        else if (flat > 0.0 && level < top)
            AddPoint(outline, level - bottom + LedgeHeight, std::max(width, 0.0));
    }
    return outline;
}

} // namespace OLMGis::ProjectIo
