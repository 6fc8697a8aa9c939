// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

struct stat;

namespace OLMGis::ProjectIo {

/// An open file of the system, closed at the end.
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

/// What tells one state of a file from another: which file it is, its size and the time of its last change. Two states
/// that look the same are the same.
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

/// The full path of a file behind all links, the last of which may lead to nothing yet. Throws CFailure when its folder
/// is missing, naming the path as given.
std::filesystem::path ResolvedPath(const std::string& path);

/// The system's words for an error number.
std::string ReasonOf(int systemError);

/// Keeps other programs of ours from saving the same file at the same time, for its own lifetime. It waits for a
/// second; then, or when the file is used by another program, it throws CFailure. A file that isn't there and a file
/// system without locks give no lock and no error.
class CFileLock {
public:
    CFileLock(const std::filesystem::path& path, const std::string& name);

private:
    bool TryLock(const std::filesystem::path& path, const std::string& name);

    CDescriptor m_file;
};

} // namespace OLMGis::ProjectIo
