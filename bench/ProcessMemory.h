// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <cstddef>

/// What this process keeps in the machine's memory, in bytes. As Linux reports it; 0 elsewhere.
namespace Bench::ProcessMemory {

/// Now.
std::size_t GetHeldBytes();

/// The most since the start, or since the last reset.
std::size_t GetPeakBytes();

/// Gives unused memory back to the system and starts the peak anew. Where the system does not allow it, the peak goes
/// on from the start of the process.
void ResetPeak();

} // namespace Bench::ProcessMemory
