// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "apps/cli/Command.h"
#include "apps/cli/Terminal.h"
#include "host/gis_core/Result.h"

#include <string>

namespace Cli {

/// What the words of a command line ask for.
struct CParsedWords {
    CTerminalOptions m_terminal;
    CCommand m_command; ///< empty when only m_text is to be printed
    std::string m_text; ///< help or version
};

/// Takes the words in without touching anything. BadWords for words that are none of the program's, with the nearest
/// one that is, and where to find help.
OLMGis::Utility::Result<CParsedWords> ParseCommandLine(int argc, const char* const* argv);

} // namespace Cli
