// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"

namespace Cli::Interrupt {

/// From now on the first Ctrl+C, SIGTERM or SIGHUP only asks the program to stop, and the second one ends it; one that
/// the starting process ignores, as nohup does, stays ignored. A write into a pipe whose reader went away, or beyond
/// the limit of the file size, answers with an error instead of ending the program.
void InstallHandlers();

/// Opens the null device for each of the three standard descriptors that is closed, so that no file gets its number.
/// Reading from and writing to them fails as before, but for standard error, which nobody misses.
void FillStandardDescriptors();

/// Whether the program was asked to stop.
bool IsRequested();

/// After everything is cleaned up: ends the process by the signal that asked it to stop, as whoever sent it expects.
/// Returns when it was none or Ctrl+C, which has an exit code of its own.
void EndBySignal();

/// Cancelled once the program was asked to stop. Asked between the steps of a verb, for the last time before a project
/// is saved: a saved project never ends with an interruption.
OLMGis::Utility::Status Check();

} // namespace Cli::Interrupt
