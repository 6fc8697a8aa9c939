// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "bench/ProcessMemory.h"

#include "host/gis_core/Utility.h"

#include <fstream>
#include <malloc.h>
#include <string>
#include <string_view>

namespace Bench::ProcessMemory {

namespace {

/// A line "VmRSS:     1234 kB" of the process's status.
std::size_t StatusBytes(std::string_view name) {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with(name))
            return static_cast<std::size_t>(OLMGis::Utility::CUtility::ToDouble(line.substr(name.size()))) * 1024;
    return 0;
}

} // namespace

std::size_t GetHeldBytes() {
    return StatusBytes("VmRSS:");
}

std::size_t GetPeakBytes() {
    return StatusBytes("VmHWM:");
}

void ResetPeak() {
    malloc_trim(0);
    std::ofstream("/proc/self/clear_refs") << "5\n";
}

} // namespace Bench::ProcessMemory
