// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "apps/cli/Command.h"

#include <ostream>
#include <string>
#include <vector>

namespace Cli {

struct CSettingsOptions {
    std::string m_project;
    std::vector<std::string> m_words; ///< KEY=VALUE; none to show the settings
    std::string m_output;
};

/// "settings": shows the settings of a project, or changes some of them.
CVerbResult ShowOrChangeSettings(const CSettingsOptions& options, CTerminal& terminal, std::ostream& results);

} // namespace Cli
