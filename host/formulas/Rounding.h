// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <cmath>

namespace OLMGis::Formulas {

/// A derived slope (1/1000), depth or step (m), rounded to 1e-9 of its unit. The difference of two decimal levels is
/// off in its last bits, and a limit that is met exactly must not become a finding. Values from 1e6 on, infinite ones
/// and not-a-number come back as they are.
inline double RoundDerived(double value) {
    constexpr double Parts = 1.0e9;
    constexpr double FirstUnrounded = 1.0e6; // double is hardly finer from here on
    return std::abs(value) < FirstUnrounded ? std::round(value * Parts) / Parts + 0.0 : value;
}

} // namespace OLMGis::Formulas
