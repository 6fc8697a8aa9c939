// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/project_io/base/DiskFile.h"
#include "host/project_io/store/SqliteDatabase.h"

#include <filesystem>
#include <string>

namespace OLMGis::ProjectIo {

/// A project file made ready for reading without leaving a trace, also in a folder that may not be written. Changes
/// that another program keeps in a log beside the file are read as well, from a private copy; a half-made change that
/// would have to be taken back first is refused. Throws CFailure, which calls the file name.
class CReadableFile {
public:
    CReadableFile(const std::filesystem::path& path, std::string name);

    /// What to open, and how.
    const std::string& GetPath() const { return m_readPath; }
    CSqliteDatabase::enmAccess GetAccess() const { return m_access; }

    /// What the project file was before anything was read.
    const CFileIdentity& GetIdentity() const { return m_identity; }

    /// Fails when somebody changed the project file since.
    void CheckUnchanged() const;

private:
    class CHead;

    /// A folder that only the user may look into, and that goes away with its content.
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
    CFileIdentity m_identity;
    CSqliteDatabase::enmAccess m_access = CSqliteDatabase::enmAccess::Read;
};

} // namespace OLMGis::ProjectIo
