// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "apps/cli/Command.h"

#include <ostream>
#include <string>

namespace Cli {

/// What was typed; numbers are read by the verb.
struct CPipeOptions {
    std::string m_shape;             ///< circle, egg or box
    std::string m_dimensions;        ///< inside width, or width and height joined by "x" (mm)
    std::string m_slope;             ///< 1/1000
    std::string m_roughness;         ///< mm
    std::string m_viscosity{"1e-6"}; ///< m²/s
    std::string m_flow;              ///< m³/s; empty for none
    std::string m_fill;              ///< % of the inside height; empty for none
    bool m_isJson = false;
};

/// "pipe": uniform flow in one pipe, without a project.
CVerbResult CalculatePipe(const CPipeOptions& options, CTerminal& terminal, std::ostream& results);

} // namespace Cli
