// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "apps/cli/Terminal.h"
#include "host/gis_core/RunTrace.h"

#include <ostream>
#include <string>

namespace Cli {

/// Key of the calculator whose sections are listed one by one.
inline constexpr const char* RainCalculator = "001_RAIN_ITP";

/// The sections that got results from a rain run, in the order of the network, from the run's trace: own and effective
/// area, concentration time, intensity, flow, the pipe that was chosen with its filling and velocity, and the pipe of
/// the section before the run and after. format: table (rounded, for people), csv (a head line) or json (an array of
/// objects, one a line); the latter two in full, absent values empty or null. Reads the active project.
void PrintRainSections(std::ostream& stream, const OLMGis::Utility::CRunTrace& trace, const std::string& format);

/// What of a rain run is no result: sections that it did not come to, the one that did not converge, files that it
/// wrote.
void TellOfRain(CTerminal& terminal, const OLMGis::Utility::CRunTrace& trace);

} // namespace Cli
