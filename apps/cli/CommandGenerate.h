// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "apps/cli/Command.h"

#include <ostream>
#include <string>

namespace Cli {

struct CGenerateOptions {
    std::string m_shape;    ///< line, tree, comb or city
    std::string m_sections; ///< how many, as typed
    std::string m_seed;     ///< as typed, empty for the usual one
    std::string m_output;   ///< project to make
    bool m_replaces = false;
};

/// "generate": a synthetic network, the same for the same words.
CVerbResult GenerateProject(const CGenerateOptions& options, CTerminal& terminal, std::ostream& results);

} // namespace Cli
