// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "bench/InputFiles.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <sys/wait.h>
#include <unistd.h>

namespace Bench::InputFiles {

using OLMGis::Utility::Refused;
namespace fs = std::filesystem;

namespace {

std::string theOwnFolder;

std::string Folder() {
    if (const char* given = std::getenv("DRENOVA_BENCH_FOLDER"); given != nullptr && *given != '\0')
        return given;
    if (theOwnFolder.empty()) {
        theOwnFolder = (fs::temp_directory_path() / fmt::format("drenova-bench-{}", getpid())).string();
        fs::create_directories(theOwnFolder);
    }
    return theOwnFolder;
}

/// Ends a child process without the endings that belong to its parent.
[[noreturn]] void EndChild(const Status& status) {
    if (!status)
        fmt::print(stderr, "{}\n", status.GetError().message);
    std::fflush(nullptr);
    _exit(status ? 0 : 1);
}

} // namespace

std::string PathOf(std::string_view what, const CSize& size, std::string_view ending) {
    std::string shapeAndSections = size.m_name;
    std::replace(shapeAndSections.begin(), shapeAndSections.end(), '/', '-');
    return fmt::format("{}/{}-{}.{}", Folder(), what, shapeAndSections, ending);
}

Result<std::string> MakeOnce(std::string_view what, const CSize& size, std::string_view ending,
                             const std::function<Status(const std::string& path)>& make) {
    const std::string path = PathOf(what, size, ending);
    if (fs::exists(path))
        return path;
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child < 0)
        return Refused("no process could be started to make input files");
    if (child == 0)
        EndChild(make(path));
    int status = 0;
    if (waitpid(child, &status, 0) != child || !WIFEXITED(status) || WEXITSTATUS(status) != 0) {
        fs::remove(path); // half a file must not be found by the next benchmark
        return Refused(fmt::format("{} could not be made", path));
    }
    return path;
}

void RemoveOwnFolder() {
    if (!theOwnFolder.empty())
        fs::remove_all(theOwnFolder);
}

} // namespace Bench::InputFiles
