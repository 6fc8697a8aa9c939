// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/formulas/Filling.h"

#include "host/formulas/RisingRoot.h"
#include "host/formulas/Units.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace OLMGis::Formulas {

namespace {

constexpr double Infinity = std::numeric_limits<double>::infinity();

/// A flow is above the full-pipe capacity when it is so by more than rounding: flows are read with twelve digits, and a
/// diameter that was calculated for a flow carries it to rounding.
constexpr double Rounding = 1e-11;

/// Fills in the cases that need no search: no flow, and more flow than the full section carries. False when the depth
/// has to be searched.
bool IsKnownWithoutSearch(CFilling& filling, double flow, double height, const CWetSection& full, double slope) {
    if (!(flow > 0.0))
        return true;
    if (flow <= filling.m_fullFlow * (1.0 + Rounding))
        return false;
    filling.m_isOverfull = true;
    filling.m_percent = filling.m_fullFlow > 0.0 ? Percent * (flow / filling.m_fullFlow) : Infinity;
    filling.m_depth = height;
    filling.m_velocity = slope > 0.0 && full.m_area > 0.0 ? flow / full.m_area : 0.0;
    filling.m_wet = full;
    return true;
}

/// Q at a depth (m) with its wet section, compared with the flow that is searched for.
CRise RiseAt(double depth, const CWetSection& wet, double flow, const CUniformFlow& uniform) {
    const CUniformFlow::CVelocity velocity = uniform.At(wet.GetHydraulicRadius());
    const double carried = wet.m_area * velocity.m_velocity;
    return {carried,
            depth * ((1.0 + velocity.m_exponent) * wet.m_surfaceWidth / wet.m_area -
                     velocity.m_exponent * wet.m_perimeterGrowth / wet.m_perimeter),
            carried < flow};
}

/// The depth in a section whose Q(h) rises to one maximum: depths past the maximum are above the one searched for.
double FindDepth(const CSectionShape& shape, double height, double flow, double fullFlow, const CUniformFlow& uniform) {
    const auto at = [&](double depth) {
        CRise rise = RiseAt(depth, WetShape(shape, depth), flow, uniform);
        rise.m_isBelow = !(rise.m_value > 0.0) || (rise.m_isBelow && rise.m_exponent > 0.0);
        return rise;
    };
    return FindRisingRoot(at, flow, 0.8 * height * std::sqrt(flow / fullFlow), 0.0, height);
}

/// The depth in a table. Its Q(h) may fall anywhere: where the section widens suddenly, the perimeter grows faster than
/// the area.
double FindDepthInTable(const CSectionShape& shape, double height, double flow, const CUniformFlow& uniform) {
    constexpr int Pieces = 16;
    CTableWalk walk(shape.m_levels);
    while (walk.Next()) {
        const double bottom = walk.GetBottom();
        const double thickness = walk.GetTop() - bottom;
        const CWetSection atBottom = walk.WetAt(bottom);
        const CWetSection atTop = walk.WetAt(walk.GetTop());
        // The area at the layer's top with the perimeter at its bottom carries more than any depth in the layer.
        const double mostRadius = atBottom.m_perimeter > 0.0 ? atTop.m_area / atBottom.m_perimeter : Infinity;
        if (std::isfinite(mostRadius) && atTop.m_area * uniform.At(mostRadius).m_velocity < flow)
            continue;
        double low = bottom;
        for (int piece = 1; piece <= Pieces; ++piece) {
            const double high = piece == Pieces ? walk.GetTop() : bottom + thickness * piece / Pieces;
            if (uniform.FlowIn(walk.WetAt(high)) >= flow) {
                const auto at = [&](double depth) { return RiseAt(depth, walk.WetAt(depth), flow, uniform); };
                return FindRisingRoot(at, flow, 0.5 * (low + high), low, high);
            }
            low = high;
        }
    }
    return height;
}

} // namespace

CFilling FillCircle(double diameter, double flow, const CFlowConditions& conditions) {
    const CUniformFlow uniform(conditions);
    const CWetSection full = WetCircle(diameter, diameter);
    CFilling filling;
    filling.m_fullFlow = uniform.FlowIn(full);
    if (IsKnownWithoutSearch(filling, flow, full.m_area > 0.0 ? diameter : 0.0, full, conditions.m_slope))
        return filling;
    CUniformFlow::CVelocity velocity;
    double area = 0.0;
    const auto at = [&](double angle) {
        const double half = std::sin(0.5 * angle);
        const double segment = SegmentTerm(angle, 2.0 * half * std::cos(0.5 * angle));
        area = 0.125 * diameter * diameter * segment;
        velocity = uniform.At(0.25 * diameter * segment / angle);
        const double carried = area * velocity.m_velocity;
        const double growth = angle * 2.0 * half * half / segment;
        const double exponent = growth + velocity.m_exponent * (growth - 1.0);
        return CRise{carried, exponent, !(carried > 0.0) || (carried < flow && exponent > 0.0)};
    };
    // Source of the start value: Saatci 1990, the angle by square roots of the flow; within a few hundredths.
    const double part = std::sqrt(0.97925 * flow / filling.m_fullFlow);
    const double start = 1.5 * std::numbers::pi * std::sqrt(part / (1.0 + std::sqrt(1.0 - part)));
    const double angle = FindRisingRoot(at, flow, start, 0.0, 2.0 * std::numbers::pi);
    const double quarter = std::sin(0.25 * angle);
    filling.m_depth = diameter * quarter * quarter;
    filling.m_percent = Percent * quarter * quarter;
    at(angle);
    filling.m_velocity = velocity.m_velocity;
    filling.m_wet = {area, 0.5 * diameter * angle, diameter * std::sin(0.5 * angle), 2.0 / std::sin(0.5 * angle)};
    return filling;
}

CFilling FillShape(const CSectionShape& shape, double flow, const CFlowConditions& conditions) {
    if (shape.m_kind == enmSectionShape::Circle)
        return FillCircle(shape.m_width, flow, conditions);
    const CUniformFlow uniform(conditions);
    const CWetSection full = FullShape(shape);
    const double height = HeightOfShape(shape);
    CFilling filling;
    filling.m_fullFlow = uniform.FlowIn(full);
    if (IsKnownWithoutSearch(filling, flow, height, full, conditions.m_slope))
        return filling;
    filling.m_depth = shape.m_kind == enmSectionShape::Table
                          ? FindDepthInTable(shape, height, flow, uniform)
                          : FindDepth(shape, height, flow, filling.m_fullFlow, uniform);
    filling.m_percent = Percent * filling.m_depth / height;
    filling.m_wet = WetShape(shape, filling.m_depth);
    filling.m_velocity = uniform.At(filling.m_wet.GetHydraulicRadius()).m_velocity;
    return filling;
}

} // namespace OLMGis::Formulas
