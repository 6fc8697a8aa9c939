// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"

namespace Cli::Interrupt {

/// From now on the first Ctrl+C only asks the program to stop, and the second one kills it. A write into a pipe whose
/// reader went away answers with an error instead of ending the program.
void InstallHandlers();

/// Whether Ctrl+C was pressed.
bool IsRequested();

/// Cancelled once Ctrl+C was pressed. Asked between the steps of a verb, for the last time before a project is saved:
/// a saved project never ends with an interruption.
OLMGis::Utility::Status Check();

} // namespace Cli::Interrupt
