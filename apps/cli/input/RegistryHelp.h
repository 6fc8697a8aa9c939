// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <string>

namespace Cli {

/// Texts for help: the registered calculators and checks, one a line below a heading. Each loads the module, which
/// takes milliseconds, and says so in place of the list when that fails.
std::string ListCalculatorsForHelp();
std::string ListChecksForHelp();

} // namespace Cli
