// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <string>
#include <string_view>

/// Coefficients of the flow under the Romanian standard, each -.
class CRORainCoefficients {
public:
    /// Reads "areaKind;sensitive;shortDuration;longDuration". 1 when the text has all four parts, else 0 and nothing
    /// changed. Parts read by the number that they begin with.
    int ParseValue(std::string_view text);

    /// The text that ParseValue reads; six decimals.
    std::string FormatValue() const;

    /// The coefficient for an inlet time (min).
    double GetCoefficient(double inletTime) const;

    static constexpr double LongestShortDuration = 40.0; ///< min

    int m_areaKind = 0;           ///< 0 sensitive areas, any other number other areas
    double m_sensitive = 1.0;     ///< of sensitive areas
    double m_shortDuration = 0.8; ///< of other areas, times up to 40 min
    double m_longDuration = 0.9;  ///< of other areas, longer times
};
