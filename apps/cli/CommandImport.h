// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "apps/cli/Command.h"

#include <ostream>
#include <string>

namespace Cli {

struct CImportOptions {
    std::string m_input;     ///< file to read, "-" for standard input
    std::string m_output;    ///< project to make
    std::string m_format;    ///< key of a format; empty to take the one of the input's suffix
    std::string m_catalog;   ///< pipe catalogue table that the network may refer to; empty for none
    bool m_replaces = false; ///< an existing output
};

/// "import": a project from a file of another program. On any error no output is made and an existing one not touched.
CVerbResult ImportProject(const CImportOptions& options, CTerminal& terminal, std::ostream& results);

} // namespace Cli
