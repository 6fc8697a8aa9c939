// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/project_io/base/DiskFile.h"
#include "host/project_io/store/SqliteDatabase.h"

#include <filesystem>
#include <string>

namespace OLMGis::ProjectIo {

/// Prepares a project file for reading without changing anything in its folder, which may be read-only. Changes that
/// another program keeps in a write-ahead log beside the file are read too, from a private copy; a file with an
/// unfinished change that must be rolled back first is refused. Throws CFailure; name: name of the file in messages.
class CReadableFile {
public:
    CReadableFile(const std::filesystem::path& path, std::string name);

    /// Path and mode for opening the database.
    const std::string& GetPath() const { return m_readPath; }
    CSqliteDatabase::enmAccess GetAccess() const { return m_access; }

    /// State of the project file before anything was read.
    const CFileIdentity& GetIdentity() const { return m_identity; }

    /// Whether the path still leads to this file, unchanged. Asked once the database is open: from then on it reads
    /// this file, whatever takes its name.
    bool IsStillThere() const;

    /// Fails when this file, not another one that took its name, has been changed since.
    void CheckUnchanged() const;

private:
    class CHead;

    /// A folder that only the user may read, removed with its content by the destructor.
    class CPrivateFolder {
    public:
        CPrivateFolder() = default;
        ~CPrivateFolder();
        CPrivateFolder(const CPrivateFolder&) = delete;
        CPrivateFolder& operator=(const CPrivateFolder&) = delete;

        /// 0, or the error number of the system.
        int Make();
        const std::filesystem::path& GetPath() const { return m_path; }

    private:
        std::filesystem::path m_path; ///< empty while there is none
    };

    void CheckHead(const CHead& head) const;
    void MakePrivateCopy();

    std::filesystem::path m_path;
    std::string m_name;
    std::string m_readPath;
    CPrivateFolder m_copyFolder;
    CDescriptor m_file; ///< outlives the database: closing it would release the locks of SQLite
    CFileIdentity m_identity;
    CSqliteDatabase::enmAccess m_access = CSqliteDatabase::enmAccess::Read;
};

} // namespace OLMGis::ProjectIo
