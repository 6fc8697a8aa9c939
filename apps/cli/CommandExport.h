// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "apps/cli/Command.h"

#include <string>

namespace Cli {

struct CExportOptions {
    std::string m_project;
    std::string m_format;          ///< key of a format
    std::string m_output;          ///< file to write, "-" for standard output
    std::string m_on = "sections"; ///< of csv: sections, nodes or catchments
    std::string m_kind = "pipe";   ///< of catalog: pipe or manhole
};

/// "export": a file for other programs, written whole or not at all.
CVerbResult ExportProject(const CExportOptions& options, CTerminal& terminal);

} // namespace Cli
