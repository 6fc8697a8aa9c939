// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "apps/cli/Command.h"

#include <ostream>
#include <string>
#include <vector>

namespace Cli {

struct CDirectionsOptions {
    std::string m_project;
    std::vector<std::string> m_settings; ///< NODE=SECTION, by name or GUID
    bool m_isAutomatic = false;          ///< settles what is left by levels and pipes
    bool m_isJson = false;
    std::string m_output; ///< project to write; empty for the one read
};

/// "directions": the nodes that need a main outlet, the sections that leave them and which of these is settled. With
/// settings, or automatically, main outlets are stored first and the project is saved.
CVerbResult ShowOrSettleDirections(const CDirectionsOptions& options, CTerminal& terminal, std::ostream& results);

} // namespace Cli
