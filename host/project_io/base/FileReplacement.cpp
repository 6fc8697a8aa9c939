// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/base/FileReplacement.h"

#include "host/project_io/base/Failure.h"

#include <fmt/format.h>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <random>
#include <string_view>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace OLMGis::ProjectIo {

namespace fs = std::filesystem;

namespace {

// Made without the target's name, so that it is never longer than the file system allows.
constexpr std::string_view Prefix = ".drenova-save-";
constexpr std::string_view Suffix = ".gpkg";
constexpr std::size_t RandomDigits = 16;

std::string RandomName() {
    std::random_device random;
    return fmt::format("{}{:08x}{:08x}{}", Prefix, random(), random(), Suffix);
}

bool IsTemporaryName(std::string_view name) {
    if (name.size() != Prefix.size() + RandomDigits + Suffix.size() || !name.starts_with(Prefix) ||
        !name.ends_with(Suffix))
        return false;
    return name.substr(Prefix.size(), RandomDigits).find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

} // namespace

CFileReplacement::CFileReplacement(fs::path target, std::string name)
    : m_target(std::move(target)), m_name(std::move(name)) {
    struct stat old {};
    const bool hasOld = ::stat(m_target.c_str(), &old) == 0;
    if (hasOld && !S_ISREG(old.st_mode))
        FailRefused(fmt::format("{}: is a folder or a device, expected a file", m_name));
    if (hasOld && ::access(m_target.c_str(), W_OK) != 0)
        Refuse("cannot be written", errno);
    RemoveLeftOvers();
    constexpr mode_t OrdinaryMode = 0666; // reduced by the user's umask
    constexpr mode_t PrivateMode = 0600;  // until it has that of the old file
    constexpr int Tries = 100;
    for (int i = 0; i < Tries; ++i)
        if (TryCreate(hasOld ? PrivateMode : OrdinaryMode))
            return;
    Refuse("cannot be written", EEXIST);
}

CFileReplacement::~CFileReplacement() {
    if (!m_isCommitted)
        ::unlink(m_temporary.c_str());
}

void CFileReplacement::Refuse(const char* what, int systemError) const {
    FailRefused(fmt::format("{}: {}: {}; the file is as it was", m_name, what, ReasonOf(systemError)));
}

/// A temporary file of a killed process is one that no process has locked.
void CFileReplacement::RemoveLeftOvers() const {
    std::error_code error;
    for (fs::directory_iterator entry(m_target.parent_path(), error), end; !error && entry != end;
         entry.increment(error)) {
        if (!IsTemporaryName(entry->path().filename().string()))
            continue;
        const CDescriptor file(::open(entry->path().c_str(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK));
        if (file.IsOpen() && ::flock(file.Get(), LOCK_EX | LOCK_NB) == 0)
            ::unlink(entry->path().c_str());
    }
}

/// False when the name is taken, or when another process removed the new file before it was locked.
bool CFileReplacement::TryCreate(unsigned mode) {
    const fs::path temporary = m_target.parent_path() / RandomName();
    m_file = CDescriptor(::open(temporary.c_str(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode));
    if (!m_file.IsOpen()) {
        if (errno == EEXIST)
            return false;
        Refuse("cannot be written", errno);
    }
    if (::flock(m_file.Get(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK)
        return false;
    struct stat state {};
    if (::fstat(m_file.Get(), &state) != 0 || state.st_nlink == 0)
        return false;
    m_temporary = temporary;
    return true;
}

void CFileReplacement::TakeOverMode() const {
    struct stat old {};
    if (::stat(m_target.c_str(), &old) != 0)
        return;
    // A user who may not change the owner can often still set the group.
    constexpr auto SameOwner = static_cast<uid_t>(-1);
    [[maybe_unused]] const bool isKept =
        ::fchown(m_file.Get(), old.st_uid, old.st_gid) == 0 || ::fchown(m_file.Get(), SameOwner, old.st_gid) == 0;
    constexpr mode_t ModeBits = 07777;
    if (::fchmod(m_file.Get(), old.st_mode & ModeBits) != 0)
        Refuse("its mode cannot be kept", errno);
}

/// 0, or the error number of the system.
int CFileReplacement::Swap(bool mayReplace) const {
    if (mayReplace)
        return ::rename(m_temporary.c_str(), m_target.c_str()) == 0 ? 0 : errno;
    if (::renameat2(AT_FDCWD, m_temporary.c_str(), AT_FDCWD, m_target.c_str(), RENAME_NOREPLACE) == 0)
        return 0;
    if (errno != EINVAL && errno != ENOSYS)
        return errno;
    // For file systems without this kind of rename: a hard link also fails where the target exists.
    if (::link(m_temporary.c_str(), m_target.c_str()) != 0)
        return errno;
    ::unlink(m_temporary.c_str());
    return 0;
}

void CFileReplacement::Flush() {
    TakeOverMode();
    if (::fsync(m_file.Get()) != 0)
        Refuse("cannot be written", errno);
}

CFileIdentity CFileReplacement::Commit(bool mayReplace) {
    const int error = Swap(mayReplace);
    if (error == EEXIST)
        FailRefused(fmt::format("{}: exists already and was not to be replaced", m_name));
    if (error != 0)
        Refuse("cannot be replaced", error);
    m_isCommitted = true;
    const CDescriptor folder(::open(m_target.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.IsOpen())
        ::fsync(folder.Get());
    struct stat state {};
    ::fstat(m_file.Get(), &state);
    return CFileIdentity::Of(state);
}

} // namespace OLMGis::ProjectIo
