// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "apps/cli/Command.h"

#include <ostream>
#include <string>

namespace Cli {

struct CCatalogOptions {
    std::string m_action; ///< list, show or import
    std::string m_project;
    std::string m_what;   ///< show: name or GUID of a group; import: CSV file, "-" for standard input
    std::string m_kind;   ///< pipe or manhole; empty for both, and for what the head line of a table says
    std::string m_output; ///< import: project to write; empty for the one read
    bool m_isJson = false;
};

/// "catalog": the groups of pipes and manholes, built-in and own; the items of a group; further groups for the project
/// from a table, all or nothing.
CVerbResult ShowOrImportCatalog(const CCatalogOptions& options, CTerminal& terminal, std::ostream& results);

} // namespace Cli
