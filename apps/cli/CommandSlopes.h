// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "apps/cli/Command.h"

#include <ostream>
#include <string>

namespace Cli {

struct CSlopesOptions {
    std::string m_project;
    bool m_isForDesign = false; ///< also the design slope where there is none
    std::string m_output;       ///< project to write; empty for the one read
};

/// "slopes": stores the slopes that follow from level lines and plan lengths, and names the sections without one.
CVerbResult StoreSlopesOfLevels(const CSlopesOptions& options, CTerminal& terminal);

} // namespace Cli
