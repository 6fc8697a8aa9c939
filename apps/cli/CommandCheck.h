// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "apps/cli/Command.h"

#include <ostream>
#include <string>
#include <vector>

namespace Cli {

struct CCheckOptions {
    std::string m_project;
    std::vector<std::string> m_words; ///< ITEM and ITEM.TAG=VALUE; none for all checks as their forms are made
    std::string m_format = "table";   ///< table, csv, json or geojson
    bool m_isStrict = false;          ///< ends with 1 when something was found
    std::string m_output;             ///< project to write; empty for the one read
};

/// "check": runs checks, prints their findings and keeps them in the project in place of those that it had.
CVerbResult CheckProject(const CCheckOptions& options, CTerminal& terminal, std::ostream& results);

} // namespace Cli
