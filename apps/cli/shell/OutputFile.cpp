// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/shell/OutputFile.h"

#include "apps/cli/shell/DescriptorStream.h"
#include "apps/cli/shell/Interrupt.h"
#include "host/project_io/base/DiskFile.h"
#include "host/project_io/store/GuardedWrite.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace Cli {

using OLMGis::ProjectIo::CDescriptor;
using OLMGis::ProjectIo::ReasonOf;
using OLMGis::Utility::BadArguments;
using OLMGis::Utility::Done;
using OLMGis::Utility::Refused;
using OLMGis::Utility::Status;

namespace {

bool IsStandardOutput(const std::string& path) {
    return path == "-" || path == "/dev/stdout" || path == "/dev/fd/1" || path == "/proc/self/fd/1";
}

/// Whether it is a pipe or a device: it has no content to lose and cannot be replaced.
bool IsChannel(const std::string& path) {
    struct stat state {};
    return IsStandardOutput(path) ||
           (::stat(path.c_str(), &state) == 0 && !S_ISREG(state.st_mode) && !S_ISDIR(state.st_mode));
}

Status WriteStream(int descriptor, const std::string& name, const std::function<Status(std::ostream&)>& write) {
    CDescriptorStream stream(descriptor, name);
    const Status written = write(stream);
    // The system's reason says more than the writer's.
    Status finished = stream.Finish();
    if (!finished || stream.IsReaderGone()) // a reader that has gone away has seen enough
        return finished;
    return written;
}

Status WriteChannel(const std::string& path, const std::function<Status(std::ostream&)>& write) {
    if (IsStandardOutput(path))
        return WriteStream(STDOUT_FILENO, "standard output", write);
    const CDescriptor channel(::open(path.c_str(), O_WRONLY | O_CLOEXEC));
    if (!channel.IsOpen())
        return Refused(fmt::format("{}: cannot be written: {}", path, ReasonOf(errno)));
    return WriteStream(channel.Get(), path, write);
}

} // namespace

bool IsSamePath(const std::string& a, const std::string& b) {
    struct stat stateOfA {};
    struct stat stateOfB {};
    const bool areThere = ::stat(a.c_str(), &stateOfA) == 0 && ::stat(b.c_str(), &stateOfB) == 0;
    if (areThere && (stateOfA.st_dev != stateOfB.st_dev || stateOfA.st_ino != stateOfB.st_ino))
        return false;
    if (areThere && stateOfA.st_nlink == 1) // whatever the paths look like, as with a folder mounted twice
        return true;
    std::error_code error;
    const std::filesystem::path pathOfA = std::filesystem::weakly_canonical(a, error);
    return !error && pathOfA == std::filesystem::weakly_canonical(b, error) && !error;
}

Status CheckOutput(const COutputOption& output, const std::vector<std::string>& inputs) {
    if (IsChannel(output.m_path))
        return Done{};
    if (std::any_of(inputs.begin(), inputs.end(),
                    [&output](const std::string& input) { return IsSamePath(output.m_path, input); }))
        return BadArguments(
            fmt::format("{}: this command reads the file, expected another name for its output", output.m_path));
    std::error_code ignored;
    if (!output.m_replaces && std::filesystem::exists(output.m_path, ignored))
        return Refused(fmt::format("{}: exists already; --replace replaces it", output.m_path));
    return Done{};
}

Status WriteOutput(const COutputOption& output, const std::function<Status(std::ostream&)>& write) {
    const std::string& path = output.m_path;
    if (IsChannel(path))
        return WriteChannel(path, write);
    return OLMGis::ProjectIo::WriteGuarded(path, output.m_replaces, [&](int descriptor) {
        const Status written = WriteStream(descriptor, path, write);
        // What Ctrl+C broke off fails for reasons of its own.
        Status goesOn = Interrupt::Check();
        return goesOn ? written : goesOn;
    });
}

} // namespace Cli
