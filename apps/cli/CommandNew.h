// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "apps/cli/Command.h"

#include <string>

namespace Cli {

struct CNewOptions {
    std::string m_project; ///< file to make
    std::string m_crs;     ///< EPSG:n, empty for plain plane coordinates
    std::string m_edition; ///< STANDARD, RO or BLG; empty for STANDARD
    bool m_isTurkish = false;
    bool m_replaces = false; ///< an existing file
};

/// "new": an empty project.
CVerbResult MakeNewProject(const CNewOptions& options, CTerminal& terminal);

} // namespace Cli
