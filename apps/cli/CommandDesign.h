// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "apps/cli/Command.h"

#include <ostream>
#include <string>

namespace Cli {

struct CDesignOptions {
    std::string m_project;
    std::string m_parameterFile;
    std::string m_output; ///< project to write; empty for the one read
};

/// "design": every calculator that the parameter file names, in ascending order of key, then the hydraulics of all
/// pipes, then all checks; a summary at the end. The project is saved once, then: a calculation or check that stops, or
/// is interrupted, leaves it as it was.
CVerbResult RunDesign(const CDesignOptions& options, CTerminal& terminal, std::ostream& results);

} // namespace Cli
