// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/formulas/SectionGeometry.h"

namespace OLMGis::Formulas {

/// Acceleration of gravity (m/s²).
inline constexpr double Gravity = 9.81;

/// Conditions of uniform flow, apart from the section.
struct CFlowConditions {
    double m_slope = 0.0;     ///< energy slope (-, > 0)
    double m_roughness = 0.0; ///< equivalent sand roughness k (m, >= 0)
    double m_viscosity = 0.0; ///< kinematic viscosity (m²/s, >= 0)
};

/// Prandtl-Colebrook; the terms that do not depend on the depth are calculated once.
///
///     v = -2 √(8 g R I) · log10( 2.51 ν / (4 R √(8 g R I)) + k / (14.84 R) )
///
/// Source: Colebrook 1939, for a section of any shape by its hydraulic radius, 4 R in place of the diameter; 14.84 is
/// 4 · 3.71. Where the argument of the logarithm is 1 or more, in a film thinner than the roughness, v is 0.
/// Bad input: 0, never NaN, for a slope of 0 or below, a negative roughness or viscosity, both of them 0, and
/// not-a-number.
class CUniformFlow {
public:
    explicit CUniformFlow(const CFlowConditions& conditions);

    struct CVelocity {
        double m_velocity = 0.0; ///< m/s
        double m_exponent = 0.0; ///< d ln v / d ln R, at least 0.5; 0 where v is 0
    };

    /// At a hydraulic radius (m). Cost: a square root and a logarithm.
    CVelocity At(double hydraulicRadius) const;

    /// Of a wet section: Q = A v (m³/s).
    double FlowIn(const CWetSection& wet) const { return wet.m_area * At(wet.GetHydraulicRadius()).m_velocity; }

    /// False for bad conditions, in which nothing flows in any section.
    bool Flows() const { return m_root > 0.0; }

    /// √(8 g I), 0 for bad conditions.
    double GetRoot() const { return m_root; }

private:
    double m_root = 0.0;
    double m_smooth = 0.0; ///< 2.51 ν / (4 √(8 g I)): over R^1.5 the first addend
    double m_rough = 0.0;  ///< k / 14.84: over R the second addend
};

/// Mean velocity (m/s) of uniform flow with a hydraulic radius (m, > 0).
double UniformVelocity(double hydraulicRadius, const CFlowConditions& conditions);

/// Q(h) (m³/s) of a shape at a depth (m); at the inside height and above it the full-pipe capacity.
double UniformFlow(const CSectionShape& shape, double depth, const CFlowConditions& conditions);

/// Full-pipe capacity (m³/s).
double FullBoreFlow(const CSectionShape& shape, const CFlowConditions& conditions);

/// The circular diameter (m) whose full-pipe capacity equals a flow (m³/s), to a relative error of 1e-12. 0 for a flow
/// of 0 or below; infinite under bad conditions and for an infinite flow; never NaN.
double LeastDiameter(double flow, const CFlowConditions& conditions);

/// A greatest value over all depths, and the depth at which it occurs.
struct CMaximum {
    double m_depth = 0.0; ///< m
    double m_value = 0.0;
};

/// The greatest Q (m³/s) and the greatest v (m/s) over all depths, free surface or full. A section that closes slowly
/// towards its top carries most a little below it; a box just below its top, before the top adds to the perimeter. The
/// depth is accurate to 1e-8 of the height, as far as a flat maximum allows. All 0 where nothing flows. Cost: about 400
/// depths.
CMaximum GreatestFlow(const CSectionShape& shape, const CFlowConditions& conditions);
CMaximum GreatestVelocity(const CSectionShape& shape, const CFlowConditions& conditions);

} // namespace OLMGis::Formulas
