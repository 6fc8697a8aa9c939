// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "apps/cli/CommandLine.h"

namespace CLI {
class App;
}

namespace Cli {

/// Declares all verbs with their words, options and help below the program. Taking the words of one in sets the command
/// of parsed, which outlives the program's description.
void AddVerbs(CLI::App& program, CParsedWords& parsed);

} // namespace Cli
