// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/gis_core/AvailableResources.h"

#include "host/gis_core/InstallationPaths.h"
#include "host/gis_core/Utility.h"

#include <algorithm>
#include <sys/resource.h>
#include <unistd.h>

namespace OLMGis::System {

namespace {

const IAvailableResources*& InForce() {
    static const IAvailableResources system;
    static const IAvailableResources* inForce = &system;
    return inForce;
}

/// Bytes that the process may still take before a limit of its own, as "ulimit -v" sets one; none without a limit.
std::optional<double> RoomBelowOwnLimit() {
    rlimit limit{};
    if (getrlimit(RLIMIT_AS, &limit) != 0 || limit.rlim_cur == RLIM_INFINITY)
        return std::nullopt;
    // The first number of the kernel's table: pages of address space in use.
    const auto table = Utility::InstallationPaths::ReadWholeFile("/proc/self/statm");
    const auto used =
        table ? Utility::CUtility::ToDouble(table.Value()) * static_cast<double>(sysconf(_SC_PAGESIZE)) : 0.0;
    return std::max(0.0, static_cast<double>(limit.rlim_cur) - used);
}

} // namespace

std::optional<double> IAvailableResources::GetFreeMemory() const {
    const std::optional<double> own = RoomBelowOwnLimit();
    // A line of the kernel's table: "MemAvailable:   12345678 kB".
    constexpr std::string_view Key = "MemAvailable:";
    constexpr double BytesPerUnit = 1024.0;
    const auto table = Utility::InstallationPaths::ReadWholeFile("/proc/meminfo");
    const std::string text = table ? table.Value() : std::string();
    const std::size_t place = text.find(Key);
    if (place == std::string::npos)
        return own;
    const double free = BytesPerUnit * Utility::CUtility::ToDouble(text.substr(place + Key.size(), 40));
    return std::min(free, own.value_or(free));
}

const IAvailableResources& AvailableResources() {
    return *InForce();
}

CAvailableResourcesScope::CAvailableResourcesScope(const IAvailableResources& resources) : m_former(InForce()) {
    InForce() = &resources;
}

CAvailableResourcesScope::~CAvailableResourcesScope() {
    InForce() = m_former;
}

} // namespace OLMGis::System
