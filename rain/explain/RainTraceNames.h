// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <cstddef>

/// Names of what a rain calculation adds to an open run trace, for those who fill its tables and those who show them.
namespace RainTrace {

/// A row for each stored section, in the order of the GUIDs' characters: areas, times, intensity, flow, pipe, filling,
/// velocity.
inline constexpr const char* Sections = "rain";

/// Of the section that is wanted in detail and of those above it on its chain, from the highest down: a row for each
/// pass with its inputs and results, from which the flow can be calculated again. Of a very long chain the nearest
/// MostChained sections: the times of those above are in the first row.
inline constexpr const char* Passes = "rain_passes";
inline constexpr std::size_t MostChained = 1000;

/// What applies to all these passes: one row of the rain, the rules and the limits of the form.
inline constexpr const char* Basis = "rain_basis";

/// What reached the starting nodes of the chain: a row for each branch, of which one was taken.
inline constexpr const char* Branches = "rain_branches";

/// The areas that make up that section's own total: a row for each selected section with one, itself first.
inline constexpr const char* Areas = "rain_areas";

/// Sections that the walk did not reach: rings, side outlets and what is below them.
inline constexpr const char* Unreached = "rain_unreached";

/// The section whose iteration ended a run.
inline constexpr const char* NotConverged = "rain_not_converged";

/// Files beside the project that the run wrote: their paths as names.
inline constexpr const char* Files = "rain_files";

/// The name by which a host requests IDFOut.txt of a run.
inline constexpr const char* IterationTable = "IDFOut.txt";

} // namespace RainTrace
