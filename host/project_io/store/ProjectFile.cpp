// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/store/ProjectFile.h"

#include "host/gis_core/DataConfiguration.h"
#include "host/network_core/CatalogManager.h"
#include "host/project_io/base/Failure.h"
#include "host/project_io/base/FileReplacement.h"
#include "host/project_io/store/GeoPackageReader.h"
#include "host/project_io/store/GeoPackageWriter.h"
#include "host/project_io/store/ReadableFile.h"
#include "host/project_io/store/SideFiles.h"
#include "host/project_io/store/SqliteDatabase.h"
#include "host/project_io/terrain/TerrainAttachment.h"

#include <fmt/format.h>

#include <limits>

namespace OLMGis::ProjectIo {

using Utility::Done;
using Utility::Result;
using Utility::Status;

namespace {

/// Fails when the installation is incomplete. Without definitions every attribute would be an unknown column and be
/// dropped by the next save; without the built-in catalogues references to their pipes would be lost, and a new group
/// could take the name of a built-in one.
void CheckInstallation() {
    if (const std::string& error = Data::CDataConfiguration::Instance()->GetLoadError(); !error.empty())
        FailRefused(error);
    if (const std::string error = Topology::CCatalogManager::Instance()->GetLoadError(); !error.empty())
        FailRefused(error);
}

/// Files that SQLite left beside an earlier file of this name would be read as part of the new one.
void CheckSideFiles(const std::filesystem::path& target, const std::string& path) {
    const bool hasLog = HasWriteAheadLog(target);
    if (!hasLog && !HasHotJournal(target))
        return;
    const std::filesystem::path side = hasLog ? WriteAheadLogOf(target) : JournalOf(target);
    FailRefused(fmt::format("{}: another program has unfinished changes of it in {}; close the project there, or save "
                            "under another name",
                            path, side.filename().string()));
}

[[noreturn]] void FailNoLongerOurs(const std::string& path, const char* what) {
    FailRefused(fmt::format("{}: {} since it was opened here; save under another name, or open it again", path, what));
}

int ReadSaveCounter(const std::filesystem::path& target, const std::string& path) {
    const CReadableFile file(target, path);
    const CSqliteDatabase database(file.GetPath(), path, CSqliteDatabase::enmAccess::ReadAlone);
    return ReadGeoPackageMeta(database).m_saveCounter;
}

} // namespace

Result<CProjectFile> CProjectFile::Open(const std::string& path) {
    return CatchFailures<CProjectFile>(path, [&] { return Opened(path); });
}

Result<CProjectFile> CProjectFile::Create(const std::string& path, bool replace) {
    return CatchFailures<CProjectFile>(path, [&] {
        const std::filesystem::path folder = ResolvedPath(path).parent_path();
        CTerrainPathsMove terrain(folder, folder);
        CProjectFile file = Written(path, replace);
        terrain.Keep();
        return file;
    });
}

Status CProjectFile::SaveAs(const std::string& path, bool replace) {
    return CatchFailures<Done>(path, [&] {
        CTerrainPathsMove terrain(m_target.parent_path(), ResolvedPath(path).parent_path());
        *this = Written(path, replace);
        terrain.Keep();
        return Done{};
    });
}

Status CProjectFile::Save() {
    return CatchFailures<Done>(m_path, [&] {
        CTerrainPathsMove terrain(m_target.parent_path(), m_target.parent_path());
        SaveOver();
        terrain.Keep();
        return Done{};
    });
}

CProjectFile CProjectFile::Opened(const std::string& path) {
    CheckInstallation();
    CProjectFile file;
    file.m_path = path;
    file.m_target = ResolvedPath(path);
    const CReadableFile readable(file.m_target, path);
    file.m_identity = readable.GetIdentity();
    CWarnings warnings;
    {
        CSqliteDatabase database(readable.GetPath(), path, readable.GetAccess());
        database.Execute("BEGIN");
        file.m_saveCounter = ReadGeoPackage(database, warnings).m_saveCounter;
    }
    readable.CheckUnchanged();
    file.m_warnings = warnings.Take();
    for (std::string& missing : AttachTerrain(file.m_target.string()))
        file.m_warnings.push_back(std::move(missing));
    return file;
}

CProjectFile CProjectFile::Written(const std::string& path, bool replace) {
    CheckInstallation();
    CProjectFile file;
    file.m_path = path;
    file.m_target = ResolvedPath(path);
    file.m_saveCounter = 1;
    if (!replace && CFileIdentity::Of(file.m_target))
        FailRefused(fmt::format("{}: exists already and was not to be replaced", path));
    CheckSideFiles(file.m_target, path);
    CFileReplacement replacement(file.m_target, path);
    WriteGeoPackage(replacement.GetTemporaryPath(), path, file.m_saveCounter);
    replacement.Flush();
    const CFileLock lock(file.m_target, path);
    CheckSideFiles(file.m_target, path);
    file.m_identity = replacement.Commit(replace);
    return file;
}

void CProjectFile::CheckStillOurs() const {
    const auto found = CFileIdentity::Of(m_target);
    if (!found)
        FailNoLongerOurs(m_path, "was removed");
    if (!found->IsSameFile(m_identity))
        FailNoLongerOurs(m_path, "was replaced by another program");
    if (*found != m_identity || ReadSaveCounter(m_target, m_path) != m_saveCounter)
        FailNoLongerOurs(m_path, "was changed by another program");
}

void CProjectFile::SaveOver() {
    CheckInstallation();
    CheckSideFiles(m_target, m_path);
    CheckStillOurs(); // before the work; checked again under the lock
    const int counter = m_saveCounter == std::numeric_limits<int>::max() ? 1 : m_saveCounter + 1;
    CFileReplacement replacement(m_target, m_path);
    WriteGeoPackage(replacement.GetTemporaryPath(), m_path, counter);
    replacement.Flush();
    const CFileLock lock(m_target, m_path);
    CheckSideFiles(m_target, m_path);
    CheckStillOurs();
    m_identity = replacement.Commit(true);
    m_saveCounter = counter;
}

} // namespace OLMGis::ProjectIo
