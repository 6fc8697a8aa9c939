// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "apps/cli/Command.h"

#include <ostream>
#include <string>
#include <vector>

namespace Cli {

/// "calculators": what can be run, in ascending order of key.
CVerbResult ListCalculators(bool isJson, CTerminal& terminal, std::ostream& results);

struct CFormOptions {
    std::string m_project;
    std::string m_calculator;
    std::vector<std::string> m_words; ///< TAG=VALUE
    bool m_isJson = false;
};

/// "form": the input form of a calculator as it stands after the words; stores nothing.
CVerbResult ShowForm(const CFormOptions& options, CTerminal& terminal, std::ostream& results);

} // namespace Cli
