// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/store/ProjectFile.h"

#include "host/gis_core/DataConfiguration.h"
#include "host/network_core/CatalogManager.h"
#include "host/project_io/base/Failure.h"
#include "host/project_io/base/FileReplacement.h"
#include "host/project_io/store/ForeignContent.h"
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
        CProjectFile file = Written(path, replace, CProjectFile());
        terrain.Keep();
        return file;
    });
}

Status CProjectFile::SaveAs(const std::string& path, bool replace) {
    return CatchFailures<Done>(path, [&] {
        CTerrainPathsMove terrain(m_target.parent_path(), ResolvedPath(path).parent_path());
        *this = Written(path, replace, *this);
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

/// Reads one state of the file, although another program may replace it meanwhile. False when that happened before the
/// database was open.
bool CProjectFile::ReadSnapshot(CProjectFile& file, CWarnings& warnings) {
    const CReadableFile readable(file.m_target, file.m_path);
    file.m_identity = readable.GetIdentity();
    CSqliteDatabase database(readable.GetPath(), file.m_path, readable.GetAccess());
    database.Execute("BEGIN");
    if (!readable.IsStillThere())
        return false;
    file.m_saveCounter = ReadGeoPackage(database, warnings).m_saveCounter;
    file.m_hasForeignContent = FindForeignContent(database, warnings);
    readable.CheckUnchanged();
    return true;
}

CProjectFile CProjectFile::Opened(const std::string& path) {
    CheckInstallation();
    CProjectFile file;
    file.m_path = path;
    file.m_target = ResolvedPath(path);
    CWarnings warnings;
    constexpr int Tries = 10; // a file that is replaced more often is no project of ours
    for (int i = 1; !ReadSnapshot(file, warnings); ++i)
        if (i == Tries)
            FailRefused(fmt::format("{}: is replaced again and again by another program; try again later", path));
    file.m_warnings = warnings.Take();
    for (std::string& missing : AttachTerrain(file.m_target.string()))
        file.m_warnings.push_back(std::move(missing));
    return file;
}

/// The file that the project was read from, when content of other programs has to be copied from it.
std::unique_ptr<const CReadableFile> CProjectFile::OpenSource() const {
    if (!m_hasForeignContent)
        return nullptr;
    auto source = std::make_unique<const CReadableFile>(m_target, m_path);
    if (source->GetIdentity() != m_identity)
        FailNoLongerOurs(m_path, "was changed or replaced by another program");
    return source;
}

CProjectFile CProjectFile::Written(const std::string& path, bool replace, const CProjectFile& origin) {
    CheckInstallation();
    CProjectFile file;
    file.m_path = path;
    file.m_target = ResolvedPath(path);
    file.m_saveCounter = 1;
    if (!replace && CFileIdentity::Of(file.m_target))
        FailRefused(fmt::format("{}: exists already and was not to be replaced", path));
    CheckSideFiles(file.m_target, path);
    CFileReplacement replacement(file.m_target, path);
    WriteNew(replacement, path, file.m_saveCounter, origin);
    file.m_hasForeignContent = origin.m_hasForeignContent;
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

void CProjectFile::WriteNew(const CFileReplacement& replacement, const std::string& path, int saveCounter,
                            const CProjectFile& origin) {
    const std::unique_ptr<const CReadableFile> source = origin.OpenSource();
    WriteGeoPackage(replacement.GetTemporaryPath(), path, saveCounter, source.get());
    if (source)
        source->CheckUnchanged();
}

void CProjectFile::SaveOver() {
    CheckInstallation();
    CheckSideFiles(m_target, m_path);
    CheckStillOurs(); // before the work; checked again under the lock
    const int counter = m_saveCounter == std::numeric_limits<int>::max() ? 1 : m_saveCounter + 1;
    CFileReplacement replacement(m_target, m_path);
    WriteNew(replacement, m_path, counter, *this);
    replacement.Flush();
    const CFileLock lock(m_target, m_path);
    CheckSideFiles(m_target, m_path);
    CheckStillOurs();
    m_identity = replacement.Commit(true);
    m_saveCounter = counter;
}

} // namespace OLMGis::ProjectIo
