// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "apps/cli/Command.h"

#include <ostream>
#include <string>
#include <vector>

namespace Cli {

struct CGetOptions {
    std::string m_project;
    std::vector<std::string> m_keys;
    std::string m_on = "sections";    ///< sections, nodes or catchments
    std::vector<std::string> m_names; ///< names or GUIDs; none for all
    std::string m_format = "table";   ///< table, csv or json
};

/// "get": attribute values, to be read by people, spreadsheets or programs.
CVerbResult GetAttributes(const CGetOptions& options, CTerminal& terminal, std::ostream& results);

struct CSetOptions {
    std::string m_project;
    std::vector<std::string> m_words; ///< KEY=VALUE
    std::string m_on = "sections";
    std::vector<std::string> m_names;
    bool m_isForAll = false;
    std::string m_output; ///< project to write; empty for the one read
};

/// "set": the same values on some entities or on all; all or nothing.
CVerbResult SetAttributes(const CSetOptions& options, CTerminal& terminal);

struct CLoadOptions {
    std::string m_project;
    std::string m_table; ///< CSV file, "-" for standard input
    std::string m_on = "sections";
    std::string m_output;
};

/// "load": values of many entities from a table; all or nothing.
CVerbResult LoadAttributes(const CLoadOptions& options, CTerminal& terminal);

} // namespace Cli
