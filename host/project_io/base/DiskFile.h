// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

struct stat;

namespace OLMGis::ProjectIo {

/// An open file descriptor, closed by the destructor.
class CDescriptor {
public:
    explicit CDescriptor(int number = -1) : m_number(number) {}
    ~CDescriptor();
    CDescriptor(CDescriptor&& other) noexcept : m_number(other.Release()) {}
    CDescriptor& operator=(CDescriptor&& other) noexcept;

    bool IsOpen() const { return m_number >= 0; }
    int Get() const { return m_number; }
    int Release();

private:
    int m_number;
};

/// Which file it is, its size and the time of its last change: two equal values mean that the file has not changed.
struct CFileIdentity {
    std::uint64_t m_device = 0;
    std::uint64_t m_node = 0;
    std::int64_t m_size = 0; ///< bytes
    std::int64_t m_changedSeconds = 0;
    std::int64_t m_changedNanoseconds = 0;

    static CFileIdentity Of(const struct stat& state);
    /// Nothing when there is no such file.
    static std::optional<CFileIdentity> Of(const std::filesystem::path& path);

    bool IsSameFile(const CFileIdentity& other) const { return m_device == other.m_device && m_node == other.m_node; }
    friend bool operator==(const CFileIdentity&, const CFileIdentity&) = default;
};

/// Opens a file for reading at once or not at all: a pipe without a writer would wait forever, and opening a device may
/// already do something. Throws CFailure, naming the file, for anything but a file that can be read. state: of the open
/// file.
CDescriptor OpenForReading(const std::filesystem::path& path, const std::string& name, struct stat& state);

/// The full path of a file with all links resolved; the file itself need not exist. Throws CFailure, naming the path as
/// given, when its folder is missing.
std::filesystem::path ResolvedPath(const std::string& path);

/// The system's text for an error number.
std::string ReasonOf(int systemError);

/// Keeps other Drenova programs from saving the same file, until the destructor releases the lock. Waits for up to 30
/// s, with a warning in the log after the first second, for other saves and for programs of SQLite that use the file;
/// throws CFailure when it is still in use then or when the user cancels. A missing file and a file system without
/// locks give no lock and no error.
class CFileLock {
public:
    CFileLock(const std::filesystem::path& path, const std::string& name);

private:
    bool TryLock(const std::filesystem::path& path, const std::string& name);

    CDescriptor m_file;
};

} // namespace OLMGis::ProjectIo
