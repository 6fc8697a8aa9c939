// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "apps/cli/Command.h"

#include <ostream>
#include <string>

namespace Cli {

struct CDirectionsOptions {
    std::string m_project;
    bool m_isJson = false;
};

/// "directions": the nodes that need a main outlet, the sections that leave them and which of these is settled.
CVerbResult ListDirections(const CDirectionsOptions& options, CTerminal& terminal, std::ostream& results);

} // namespace Cli
