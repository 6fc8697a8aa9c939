// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/base/DiskFile.h"

#include "host/gis_core/HostServices.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/Utility.h"
#include "host/project_io/base/Failure.h"
#include "host/workspace_core/WsManager.h"

#include <fmt/format.h>

#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <utility>

namespace OLMGis::ProjectIo {

namespace fs = std::filesystem;

namespace {

constexpr auto LockWait = std::chrono::milliseconds(20);
constexpr int TriesInSilence = 50; ///< one second
constexpr int LockTries = 30 * TriesInSilence;
constexpr int WaitingMessage = 70300;

class CWaitingProgress {
public:
    CWaitingProgress() = default;
    ~CWaitingProgress() { System::HostServices().HideProgress(); }
    CWaitingProgress(const CWaitingProgress&) = delete;
    CWaitingProgress& operator=(const CWaitingProgress&) = delete;

    void Show(double done) {
        if (System::HostServices().ShowProgress("Waiting for other programs", done) == 0)
            throw CFailure({Utility::enmErrorKind::Cancelled, "cancelled by the user; nothing was changed"});
    }
};

} // namespace

CDescriptor::~CDescriptor() {
    if (m_number >= 0)
        ::close(m_number);
}

CDescriptor& CDescriptor::operator=(CDescriptor&& other) noexcept {
    std::swap(m_number, other.m_number);
    return *this;
}

int CDescriptor::Release() {
    return std::exchange(m_number, -1);
}

CFileIdentity CFileIdentity::Of(const struct stat& state) {
    return {state.st_dev, state.st_ino, state.st_size, state.st_mtim.tv_sec, state.st_mtim.tv_nsec};
}

std::optional<CFileIdentity> CFileIdentity::Of(const fs::path& path) {
    struct stat state {};
    if (::stat(path.c_str(), &state) != 0)
        return std::nullopt;
    return Of(state);
}

std::string ReasonOf(int systemError) {
    return std::generic_category().message(systemError);
}

fs::path ResolvedPath(const std::string& path) {
    constexpr int MostLinks = 40;
    std::error_code error;
    fs::path resolved = path;
    for (int links = 0; fs::is_symlink(fs::symlink_status(resolved, error)); ++links) {
        const fs::path target = fs::read_symlink(resolved, error);
        if (error || links >= MostLinks)
            FailRefused(fmt::format("{}: is a link to a missing file", path));
        resolved = resolved.parent_path() / target;
    }
    if (!resolved.has_filename())
        FailRefused(fmt::format("{}: is a folder, expected a file", path));
    const fs::path folder = fs::canonical(resolved.has_parent_path() ? resolved.parent_path() : fs::path("."), error);
    if (error)
        FailRefused(fmt::format("{}: its folder cannot be reached: {}", path, ReasonOf(error.value())));
    return folder / resolved.filename();
}

CDescriptor OpenForReading(const fs::path& path, const std::string& name, struct stat& state) {
    const auto check = [&name](int failed, const struct stat& found) {
        if (failed != 0)
            FailRefused(fmt::format("{}: cannot be opened: {}", name, ReasonOf(errno)));
        if (S_ISDIR(found.st_mode))
            FailRefused(fmt::format("{}: cannot be opened: it is a folder, expected a file", name));
        if (!S_ISREG(found.st_mode))
            FailRefused(fmt::format("{}: cannot be opened: it is a pipe or a device, expected a file", name));
    };
    check(::stat(path.c_str(), &state), state);
    CDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    // Another file may have taken the name meanwhile.
    check(file.IsOpen() ? ::fstat(file.Get(), &state) : -1, state);
    return file;
}

CFileLock::CFileLock(const fs::path& path, const std::string& name) {
    CWaitingProgress progress;
    for (int i = 0; i < LockTries; ++i) {
        if (TryLock(path, name))
            return;
        if (i == TriesInSilence)
            Workspace::CWsManager::Instance()->LogMessage(
                Workspace::CLogLine::NothingStored,
                Utility::CUtility::Format(Utility::Msg(WaitingMessage), name, LockTries / TriesInSilence));
        progress.Show(static_cast<double>(i) / LockTries);
        std::this_thread::sleep_for(LockWait);
    }
    FailRefused(fmt::format("{}: is being used by another program; close it there and try again, or save under another "
                            "name",
                            name));
}

bool CFileLock::TryLock(const fs::path& path, const std::string& name) {
    m_file = CDescriptor(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!m_file.IsOpen()) {
        if (errno == ENOENT)
            return true;
        FailRefused(fmt::format("{}: cannot be opened: {}", name, ReasonOf(errno)));
    }
    if (::flock(m_file.Get(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK)
        return false;
    struct stat state {};
    ::fstat(m_file.Get(), &state);
    const CFileIdentity locked = CFileIdentity::Of(state);
    const auto there = CFileIdentity::Of(path);
    if (!there || !there->IsSameFile(locked))
        return false; // another process replaced the file while we waited
    // The bytes that SQLite locks while it reads or writes.
    constexpr off_t SqliteLocks = 0x40000000;
    constexpr off_t SqliteLockCount = 512;
    struct flock use {};
    use.l_type = F_WRLCK;
    use.l_whence = SEEK_SET;
    use.l_start = SqliteLocks;
    use.l_len = SqliteLockCount;
    return ::fcntl(m_file.Get(), F_OFD_GETLK, &use) != 0 || use.l_type == F_UNLCK;
}

} // namespace OLMGis::ProjectIo
