// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <cmath>

namespace OLMGis::Formulas {

/// A positive quantity that rises with u > 0, seen at one u.
struct CRise {
    double m_value = 0.0;    ///< >= 0
    double m_exponent = 0.0; ///< d ln value / d ln u; read only where the value is above 0
    bool m_isBelow = true;   ///< whether the u that is searched for is larger
};

/// The u in (low, high) at which the quantity has the value wanted (> 0). at(u) must give m_isBelow true below one u
/// and false above it. High may be infinite.
///
/// Treats the quantity as a power of u, as flows in pipes nearly are: next u = u (wanted / value)^(1 / exponent), with
/// the Padé approximant of the power, which needs no transcendental function and converges as fast as Newton's method.
/// A step out of the bracket is replaced by bisection, and after 24 steps only bisection is used, so that it ends with
/// any function. Start: any u in (low, high). Stops when the next step would be below 1e-15 of u, estimated by the
/// square of the last one. At most 200 passes; then the last u.
template <class CFunction>
double FindRisingRoot(const CFunction& at, double wanted, double start, double low, double high) {
    constexpr int MostPasses = 200;
    constexpr int MostSteps = 24;
    constexpr double Precision = 1e-15;
    double u = start;
    for (int pass = 0; pass < MostPasses; ++pass) {
        const CRise rise = at(u);
        (rise.m_isBelow ? low : high) = u;
        if (rise.m_value > 0.0 && rise.m_exponent > 0.0 && pass < MostSteps) {
            const double ratio = wanted / rise.m_value - 1.0;
            const double power = 1.0 / rise.m_exponent;
            const double next = u * (1.0 + 0.5 * (1.0 + power) * ratio) / (1.0 + 0.5 * (1.0 - power) * ratio);
            const double step = (next - u) / u;
            if (step * step * (rise.m_exponent + power) <= Precision)
                return next;
            if (next > low && next < high) {
                u = next;
                continue;
            }
        }
        double middle = 0.5 * (low + high);
        if (high > 8.0 * low)
            middle = low > 0.0 ? (std::isinf(high) ? 8.0 * low : std::sqrt(low) * std::sqrt(high)) : 0.125 * high;
        if (!(middle > low && middle < high))
            return u;
        u = middle;
    }
    return u;
}

} // namespace OLMGis::Formulas
