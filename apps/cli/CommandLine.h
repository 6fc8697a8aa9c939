// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "apps/cli/shell/Terminal.h"
#include "apps/cli/shell/Verb.h"
#include "host/gis_core/Result.h"

#include <string>

namespace Cli {

/// A parsed command line.
struct CParsedArguments {
    CTerminalOptions m_terminal;
    CCommand m_command; ///< empty when only m_text is to be printed
    std::string m_text; ///< help or version
};

/// Parses a command line; no file is opened, unless the help that it asks for lists what the module registers.
/// BadArguments for invalid arguments, with the nearest valid one, and where to find help.
OLMGis::Utility::Result<CParsedArguments> ParseCommandLine(int argc, const char* const* argv);

} // namespace Cli
