// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "bench/Network.h"

#include <functional>
#include <string>
#include <string_view>

/// Files that benchmarks read and write.
namespace Bench::InputFiles {

/// A path in the folder of the benchmarks: DRENOVA_BENCH_FOLDER when that is set, else one of our own in the system's
/// folder for temporary files.
std::string PathOf(std::string_view what, const CSize& size, std::string_view ending);

/// The path of an input file, which make writes at its first use. A process of its own does that: what making the file
/// took of memory is no part of what reading it takes.
Result<std::string> MakeOnce(std::string_view what, const CSize& size, std::string_view ending,
                             const std::function<Status(const std::string& path)>& make);

/// Takes our own folder away, not one that was given.
void RemoveOwnFolder();

} // namespace Bench::InputFiles
