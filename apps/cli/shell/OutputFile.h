// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"

#include <functional>
#include <ostream>
#include <string>
#include <vector>

namespace Cli {

/// The file that -o names, and whether it may replace an existing one.
struct COutputOption {
    std::string m_path; ///< empty without -o; "-" for standard output, where a verb allows that
    bool m_replaces = false;

    bool empty() const { return m_path.empty(); }
};

/// Whether two paths lead to one directory entry, links resolved. Hard links are two entries: replacing one of them
/// leaves the other.
bool IsSamePath(const std::string& a, const std::string& b);

/// Whether the output can be made. BadArguments when it is one of the inputs, which the same command reads; Refused
/// when it exists and may not be replaced. Pipes, devices and standard output are always free. Called before long work;
/// writing checks once more.
OLMGis::Utility::Status CheckOutput(const COutputOption& output, const std::vector<std::string>& inputs);

/// Writes a file whole or not at all: under another name beside it, then renamed. After an error, the writer's or the
/// system's, or Ctrl+C, a former file is unchanged and no other is left. Waits for programs that use the former file,
/// as a save of a project does. A pipe or a device is written directly.
OLMGis::Utility::Status WriteOutput(const COutputOption& output,
                                    const std::function<OLMGis::Utility::Status(std::ostream&)>& write);

} // namespace Cli
