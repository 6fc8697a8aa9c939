// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

/// Factors between the units of attributes, catalogues and forms, and those of the formulas (m, s, m³/s, ratios).
namespace OLMGis::Formulas {

inline constexpr double MillimetresPerMetre = 1000.0;
inline constexpr double SquareMetresPerHectare = 10000.0;
inline constexpr double LitresPerCubicMetre = 1000.0;
inline constexpr double PerMille = 1000.0; ///< 1/1000 in a ratio of 1
inline constexpr double Percent = 100.0;   ///< % in a ratio of 1
inline constexpr double SecondsPerMinute = 60.0;
inline constexpr double SecondsPerHour = 3600.0;
inline constexpr double HoursPerDay = 24.0;

} // namespace OLMGis::Formulas
