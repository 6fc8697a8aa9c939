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
    std::string m_output; ///< project to write; empty for the one read
};

/// "run": one calculator. The project is saved in one transaction when values were stored, and after a preview.
CVerbResult RunCalculator(const CRunOptions& options, CTerminal& terminal, std::ostream& results);

} // namespace Cli
