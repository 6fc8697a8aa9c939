// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "rain/curves/IDFCurves.h"
#include "reports/Listing.h"

#include <optional>
#include <string>

namespace Reports {

/// Which of the curves of a file are shown, and how.
struct CCurveQuestion {
    std::optional<double> m_frequency; ///< one curve; without it all of them
    std::optional<double> m_duration;  ///< min; without it points, or the ranges of all curves
};

/// An overview of the curves, the points of one curve, or intensities for a duration. file: its name, for the document.
/// Borrows the curves, which must be valid and contain the frequency.
CListing MakeCurveListing(const CIDFCurves& curves, const CCurveQuestion& question, const std::string& file);

} // namespace Reports
