// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "apps/cli/ExitCode.h"
#include "apps/cli/Terminal.h"
#include "host/gis_core/Result.h"

#include <functional>
#include <ostream>

namespace Cli {

/// How a verb ended: an exit code, or an error that ToExitCode turns into one.
using CVerbResult = OLMGis::Utility::Result<enmExitCode>;

/// A verb with its words taken in. Results go to the stream, everything else to the terminal.
using CCommand = std::function<CVerbResult(CTerminal& terminal, std::ostream& results)>;

} // namespace Cli
