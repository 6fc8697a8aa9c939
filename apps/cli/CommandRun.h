// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "apps/cli/Command.h"

#include <ostream>
#include <string>
#include <vector>

namespace Cli {

struct CRunOptions {
    std::string m_project;
    std::string m_calculator;
    std::vector<std::string> m_words; ///< TAG=VALUE; they win over the parameter file
    std::string m_parameterFile;      ///< empty for none
    std::vector<std::string> m_names; ///< sections by name or GUID; none for all
    bool m_isPreview = false;
    std::string m_output;         ///< project to write; empty for the one read
    std::string m_format;         ///< of the sections of a rain run: table, csv or json; empty for a table
    std::string m_explain;        ///< section whose numbers are told in place of all sections; empty for none
    bool m_wantsIdfTable = false; ///< IDFOut.txt too
};

/// "run": one calculator. The project is saved in one transaction when values were stored, and after a preview. A rain
/// run by curves prints its sections, or the calculation sheet of one.
CVerbResult RunCalculator(const CRunOptions& options, CTerminal& terminal, std::ostream& results);

} // namespace Cli
