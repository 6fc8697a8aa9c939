// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "apps/cli/Command.h"

#include <ostream>
#include <string>

namespace Cli {

struct CHydraulicsOptions {
    std::string m_project;
    std::string m_viscosity{"1e-6"}; ///< m²/s
    std::string m_format = "table";  ///< table, csv or json
    bool m_isJson = false;           ///< the same as the format json
    std::string m_output;            ///< project to write; empty for the one read
};

/// "hydraulics": filling, velocity and capacity of every section with a pipe, a slope and a flow, shown and stored.
CVerbResult CalculateHydraulics(const CHydraulicsOptions& options, CTerminal& terminal, std::ostream& results);

} // namespace Cli
