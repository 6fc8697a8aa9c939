// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/formulas/UniformFlow.h"

namespace OLMGis::Formulas {

/// Density of water (kg/m³).
inline constexpr double WaterDensity = 1000.0;

/// Mean wall shear stress (N/m²) of uniform flow: rho g R I.
/// hydraulicRadius: R (m, >= 0)   slope: I (-, > 0)
/// Source: balance of the weight of the water along the slope and the friction at the wetted wall (du Boys 1879).
inline double WallShearStress(double hydraulicRadius, double slope) {
    return WaterDensity * Gravity * hydraulicRadius * slope;
}

} // namespace OLMGis::Formulas
