// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "apps/cli/Command.h"

#include <ostream>
#include <string>

namespace Cli {

struct CInfoOptions {
    std::string m_project;
    bool m_isJson = false;
};

/// "info": what a project holds.
CVerbResult ShowInfo(const CInfoOptions& options, CTerminal& terminal, std::ostream& results);

} // namespace Cli
