// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/store/ReadableFile.h"

#include "host/project_io/base/Failure.h"
#include "host/project_io/store/GeoPackageLayout.h"
#include "host/project_io/store/SideFiles.h"

#include <fmt/format.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <sys/stat.h>
#include <unistd.h>

namespace OLMGis::ProjectIo {

namespace fs = std::filesystem;

/// The first bytes of an SQLite file; numbers are big-endian.
class CReadableFile::CHead {
public:
    static constexpr std::size_t Size = 100;
    static constexpr std::string_view Magic{"SQLite format 3\0", 16};

    explicit CHead(int file) : m_size(::pread(file, m_bytes.data(), m_bytes.size(), 0)) {}

    bool IsSqlite() const {
        return m_size == static_cast<ssize_t>(Size) && std::string_view(m_bytes.data(), Magic.size()) == Magic;
    }
    bool IsLogged() const { return m_bytes[18] == 2 || m_bytes[19] == 2; } ///< the file uses a write-ahead log
    std::uint32_t GetApplicationId() const { return NumberAt(68); }
    std::uint32_t GetUserVersion() const { return NumberAt(60); }

    /// Size that the file should have; 0 when the head does not say.
    std::uint64_t GetExpectedSize() const {
        const std::uint32_t pageSize = ByteAt(16) * 256U + ByteAt(17);
        constexpr std::uint32_t LargestPage = 65536;
        const bool isCountValid = NumberAt(24) == NumberAt(92);
        return isCountValid ? std::uint64_t{NumberAt(28)} * (pageSize == 1 ? LargestPage : pageSize) : 0;
    }

private:
    std::uint32_t ByteAt(std::size_t place) const { return static_cast<unsigned char>(m_bytes[place]); }
    std::uint32_t NumberAt(std::size_t place) const {
        return (ByteAt(place) << 24U) | (ByteAt(place + 1) << 16U) | (ByteAt(place + 2) << 8U) | ByteAt(place + 3);
    }

    std::array<char, Size> m_bytes{};
    ssize_t m_size;
};

CReadableFile::CReadableFile(const fs::path& path, std::string name)
    : m_path(path), m_name(std::move(name)), m_readPath(path.string()) {
    struct stat state {};
    m_file = OpenForReading(path, m_name, state);
    m_identity = CFileIdentity::Of(state);
    const CHead head(m_file.Get());
    CheckHead(head);
    if (HasHotJournal(path))
        FailRefused(fmt::format("{}: another program is changing it or was killed while it did: found {}; open and "
                                "close it there once",
                                m_name, JournalOf(path).filename().string()));
    if (HasWriteAheadLog(path)) {
        MakePrivateCopy();
        return;
    }
    if (static_cast<std::uint64_t>(m_identity.m_size) < head.GetExpectedSize())
        FailBadInput(fmt::format("{}: is cut off: found {} bytes, expected {}", m_name, m_identity.m_size,
                                 head.GetExpectedSize()));
    if (head.IsLogged()) // opening it normally would create files beside it
        m_access = CSqliteDatabase::enmAccess::ReadAlone;
}

void CReadableFile::CheckHead(const CHead& head) const {
    if (m_identity.m_size == 0)
        FailBadInput(fmt::format("{}: is empty, expected a project file", m_name));
    if (!head.IsSqlite())
        FailBadInput(fmt::format("{}: is not a project file: it does not begin like a GeoPackage", m_name));
    if (head.GetApplicationId() != Layout::ApplicationId)
        FailBadInput(fmt::format("{}: is not a project file: found the application number {:#x}, expected {:#x}, a "
                                 "GeoPackage",
                                 m_name, head.GetApplicationId(), Layout::ApplicationId));
    constexpr std::uint32_t OldestVersion = 10200;
    constexpr std::uint32_t NextGeneration = 20000;
    if (head.GetUserVersion() < OldestVersion || head.GetUserVersion() >= NextGeneration)
        FailBadInput(fmt::format("{}: found GeoPackage version {}, expected {} or a later one of its kind", m_name,
                                 head.GetUserVersion(), Layout::GeoPackageVersion));
}

bool CReadableFile::IsStillThere() const {
    return CFileIdentity::Of(m_path) == m_identity;
}

void CReadableFile::CheckUnchanged() const {
    struct stat state {};
    if (::fstat(m_file.Get(), &state) != 0 || CFileIdentity::Of(state) != m_identity)
        FailRefused(fmt::format("{}: was changed by another program while it was being read; open it again", m_name));
}

CReadableFile::CPrivateFolder::~CPrivateFolder() {
    std::error_code ignored;
    if (!m_path.empty())
        fs::remove_all(m_path, ignored);
}

int CReadableFile::CPrivateFolder::Make() {
    std::error_code error;
    std::string path = (fs::temp_directory_path(error) / "drenova-XXXXXX").string();
    if (error)
        return error.value();
    if (::mkdtemp(path.data()) == nullptr)
        return errno;
    m_path = path;
    return 0;
}

/// Copies file and log; fails when one of them changed meanwhile, because the two would not fit together.
void CReadableFile::MakePrivateCopy() {
    if (const int error = m_copyFolder.Make(); error != 0)
        FailRefused(fmt::format("{}: no folder for a private copy: {}", m_name, ReasonOf(error)));
    const fs::path copy = m_copyFolder.GetPath() / "project.gpkg";
    const fs::path log = WriteAheadLogOf(m_path);
    const auto logBefore = CFileIdentity::Of(log);
    std::error_code error;
    if (fs::copy_file(m_path, copy, error))
        fs::copy_file(log, WriteAheadLogOf(copy), error);
    if (error)
        FailRefused(fmt::format("{}: cannot be copied for reading: {}", m_name, ReasonOf(error.value())));
    if (CFileIdentity::Of(log) != logBefore || CFileIdentity::Of(m_path) != m_identity)
        FailRefused(fmt::format("{}: is being changed by another program; open it again", m_name));
    m_readPath = copy.string();
    m_access = CSqliteDatabase::enmAccess::ReadCopy;
}

} // namespace OLMGis::ProjectIo
