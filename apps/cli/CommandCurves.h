// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "apps/cli/Command.h"

#include <ostream>
#include <string>

namespace Cli {

struct CCurvesOptions {
    std::string m_file;      ///< "-" for standard input
    std::string m_frequency; ///< of one curve; empty for all
    std::string m_duration;  ///< min; empty for no look-up
    bool m_isJson = false;
};

/// "curves": what a file of rain intensity curves holds, the points of one curve, or intensities for a duration. Needs
/// no project. What of the file does not count is told line by line.
CVerbResult ShowCurves(const CCurvesOptions& options, CTerminal& terminal, std::ostream& results);

} // namespace Cli
