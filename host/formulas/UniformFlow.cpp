// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/formulas/UniformFlow.h"

#include "host/formulas/RisingRoot.h"

#include <cmath>
#include <limits>
#include <numbers>

namespace OLMGis::Formulas {

namespace {

constexpr double Infinity = std::numeric_limits<double>::infinity();

/// Maximum of a quantity over the depths: the best of a raster of depths, then golden-section search between its
/// neighbours.
template <class CQuantity>
CMaximum FindGreatest(const CSectionShape& shape, const CQuantity& quantity) {
    constexpr int Raster = 256;
    constexpr int Passes = 80;
    const double height = HeightOfShape(shape);
    const double highest = std::nextafter(height, 0.0); // the surface still free
    const auto at = [&](double depth) { return quantity(WetShape(shape, depth)); };
    int best = Raster;
    double bestValue = at(highest);
    for (int i = 1; i < Raster; ++i)
        if (const double value = at(height * i / Raster); value > bestValue) {
            bestValue = value;
            best = i;
        }
    double low = height * (best - 1) / Raster;
    double high = std::min(highest, height * (best + 1) / Raster);
    for (int pass = 0; pass < Passes; ++pass) {
        constexpr double Golden = 1.0 / std::numbers::phi;
        const double left = high - Golden * (high - low);
        const double right = low + Golden * (high - low);
        (at(left) < at(right) ? low : high) = at(left) < at(right) ? left : right;
    }
    CMaximum found{0.5 * (low + high), at(0.5 * (low + high))};
    for (const CMaximum& other : {CMaximum{highest, at(highest)}, CMaximum{height, quantity(FullShape(shape))}})
        if (other.m_value > found.m_value)
            found = other;
    return found.m_value > 0.0 ? found : CMaximum();
}

} // namespace

CUniformFlow::CUniformFlow(const CFlowConditions& conditions) {
    const bool isGood = conditions.m_slope > 0.0 && conditions.m_roughness >= 0.0 && conditions.m_viscosity >= 0.0 &&
                        (conditions.m_roughness > 0.0 || conditions.m_viscosity > 0.0);
    const double root = isGood ? std::sqrt(8.0 * Gravity * conditions.m_slope) : 0.0;
    if (!(root > 0.0) || std::isinf(root))
        return;
    m_root = root;
    m_smooth = 2.51 * conditions.m_viscosity / (4.0 * root);
    m_rough = conditions.m_roughness / 14.84;
}

CUniformFlow::CVelocity CUniformFlow::At(double hydraulicRadius) const {
    if (!Flows() || !(hydraulicRadius > 0.0))
        return {};
    const double root = std::sqrt(hydraulicRadius);
    const double smooth = m_smooth / (hydraulicRadius * root);
    const double argument = smooth + m_rough / hydraulicRadius;
    if (!(argument < 1.0) || !(argument > 0.0))
        return {};
    const double logarithm = -std::log(argument);
    return {2.0 / std::numbers::ln10 * m_root * root * logarithm,
            0.5 + (argument + 0.5 * smooth) / (argument * logarithm)};
}

double UniformVelocity(double hydraulicRadius, const CFlowConditions& conditions) {
    return CUniformFlow(conditions).At(hydraulicRadius).m_velocity;
}

double UniformFlow(const CSectionShape& shape, double depth, const CFlowConditions& conditions) {
    return CUniformFlow(conditions).FlowIn(WetShape(shape, depth));
}

double FullBoreFlow(const CSectionShape& shape, const CFlowConditions& conditions) {
    return CUniformFlow(conditions).FlowIn(FullShape(shape));
}

double LeastDiameter(double flow, const CFlowConditions& conditions) {
    if (!(flow > 0.0))
        return 0.0;
    const CUniformFlow uniform(conditions);
    if (!uniform.Flows() || std::isinf(flow))
        return Infinity;
    const auto at = [&](double diameter) {
        const CUniformFlow::CVelocity velocity = uniform.At(0.25 * diameter);
        const double full = 0.25 * std::numbers::pi * diameter * diameter * velocity.m_velocity;
        return CRise{full, 2.0 + velocity.m_exponent, full < flow};
    };
    // The logarithm varies little: -ln of its argument is about 7 in an ordinary pipe.
    const double start = std::pow(flow / (0.25 * std::numbers::pi / std::numbers::ln10 * uniform.GetRoot() * 7.0), 0.4);
    return FindRisingRoot(at, flow, start, 0.0, Infinity);
}

CMaximum GreatestFlow(const CSectionShape& shape, const CFlowConditions& conditions) {
    const CUniformFlow uniform(conditions);
    return FindGreatest(shape, [&](const CWetSection& wet) { return uniform.FlowIn(wet); });
}

CMaximum GreatestVelocity(const CSectionShape& shape, const CFlowConditions& conditions) {
    const CUniformFlow uniform(conditions);
    return FindGreatest(shape, [&](const CWetSection& wet) { return uniform.At(wet.GetHydraulicRadius()).m_velocity; });
}

} // namespace OLMGis::Formulas
