// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/terrain/TerrainAttachment.h"

#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/ProjectSettings.h"
#include "host/gis_core/Utility.h"
#include "host/network_core/GridSurface.h"
#include "host/network_core/TerrainSurfaces.h"
#include "host/project_io/base/CoordinateSystem.h"
#include "host/project_io/base/DiskFile.h"
#include "host/project_io/base/StoredPath.h"
#include "host/project_io/terrain/TerrainFile.h"
#include "host/workspace_core/WsManager.h"

#include <fmt/format.h>

#include <cerrno>
#include <memory>
#include <system_error>
#include <utility>

namespace OLMGis::ProjectIo {

using std::filesystem::path;
using System::CProjectSettings;
using Topology::CTerrainSurfaces;
using Utility::BadInput;
using Utility::CUtility;
using Utility::Result;

namespace {

constexpr std::string_view SettingHead = "terrain_";
constexpr int NoHeightsMessage = 70180;
constexpr int GapMessage = 70181;

void LogTrouble(int message, int terrainType, const std::string& reason) {
    Workspace::CWsManager::Instance()->LogMessage(Workspace::CLogLine::NothingStored,
                                                  CUtility::Format(Utility::Msg(message), terrainType, reason));
}

/// A terrain file whose first failure to read cells goes to the log.
class CLoggedCells final : public Topology::ICellSource {
public:
    CLoggedCells(std::unique_ptr<ITerrainFile> file, int terrainType, std::string name)
        : m_file(std::move(file)), m_terrainType(terrainType), m_name(std::move(name)) {}

    bool ReadCells(int column, int row, int columns, int rows, double* cells, std::size_t stride) override {
        if (m_file->ReadCells(column, row, columns, rows, cells, stride))
            return true;
        if (!std::exchange(m_isLogged, true))
            LogTrouble(GapMessage, m_terrainType, fmt::format("{}: {}", m_name, m_file->GetTrouble()));
        return false;
    }

private:
    std::unique_ptr<ITerrainFile> m_file;
    int m_terrainType;
    std::string m_name;
    bool m_isLogged = false;
};

path FolderOf(const std::string& projectPath) {
    std::error_code ignored;
    const path full = std::filesystem::weakly_canonical(std::filesystem::absolute(projectPath, ignored), ignored);
    return full.parent_path();
}

std::string FullPath(const std::string& setting, const std::string& projectPath) {
    return (FolderOf(projectPath) / setting).lexically_normal().string();
}

std::string SettingOf(int terrainType) {
    return CProjectSettings::Instance()->Get(TerrainSetting(terrainType));
}

/// An error for a raster in another coordinate system, else a warning; empty for none.
Result<std::string> CompareCrs(const ITerrainFile& file, const std::string& name) {
    const std::string projects = CProjectSettings::Instance()->Get(CProjectSettings::Crs);
    const auto epsg = ParseEpsgCode(projects);
    if (!epsg)
        return std::string();
    const std::string found = file.GetCrs();
    switch (file.CompareCrs(*epsg)) {
    case enmCrsAgreement::Same:
        return std::string();
    case enmCrsAgreement::Different:
        return BadInput(fmt::format("{}: found a raster in the coordinate system {}, expected the project's, {}", name,
                                    found, projects));
    case enmCrsAgreement::Unknown:
        break;
    }
    return fmt::format("{}: {}; assumed to be in the project's, {}", name,
                       found.empty() ? "the raster names no coordinate system"
                                     : fmt::format("the raster's coordinate system \"{}\" is not known", found),
                       projects);
}

/// The surface of a type; null, with a line in the log, when it cannot be read.
std::shared_ptr<Topology::ITerrainSurface> OpenSurface(int terrainType, const std::string& name) {
    auto file = OpenTerrainFile(name);
    if (file) {
        if (const auto crs = CompareCrs(*file.Value(), name); !crs)
            file = crs.GetError();
    }
    if (!file) {
        LogTrouble(NoHeightsMessage, terrainType, file.GetError().message);
        return nullptr;
    }
    const Topology::CGridFrame frame = file.Value()->GetFrame();
    return std::make_shared<Topology::CGridSurface>(
        frame, std::make_unique<CLoggedCells>(std::move(file.Value()), terrainType, name));
}

} // namespace

std::string TerrainSetting(int terrainType) {
    return fmt::format("{}{}", SettingHead, terrainType);
}

Result<std::string> ResolveTerrainPath(std::string_view typed, const std::string& projectPath) {
    if (typed.empty())
        return std::string();
    if (!CUtility::IsUtf8(typed))
        return BadInput(fmt::format("{}: found a file name that is not UTF-8", typed));
    std::error_code error;
    path full = std::filesystem::absolute(path(typed), error);
    if (const path beside = FolderOf(projectPath) / path(typed);
        !std::filesystem::exists(full, error) && std::filesystem::exists(beside, error))
        full = beside;
    if (!std::filesystem::exists(full, error))
        return Utility::Refused(fmt::format("{}: cannot be opened: {}", typed, ReasonOf(ENOENT)));
    // Links to the folder are resolved, as for the project; a link to the file itself is kept.
    return (std::filesystem::canonical(full.parent_path(), error) / full.filename()).lexically_normal().string();
}

Result<std::string> CheckTerrain(int terrainType, const std::string& projectPath) {
    const std::string setting = SettingOf(terrainType);
    if (setting.empty())
        return std::string();
    const std::string name = FullPath(setting, projectPath);
    const auto file = OpenTerrainFile(name);
    if (!file)
        return file.GetError();
    return CompareCrs(*file.Value(), name);
}

std::vector<std::string> FindTerrainTroubles(const std::string& projectPath) {
    std::vector<std::string> troubles;
    for (int type = 1; type <= CTerrainSurfaces::TypeCount; ++type) {
        const std::string setting = SettingOf(type);
        std::error_code error;
        if (setting.empty() || !std::filesystem::exists(FullPath(setting, projectPath), error))
            continue;
        const auto checked = CheckTerrain(type, projectPath);
        if (!checked)
            troubles.push_back(fmt::format("{}: {}", TerrainSetting(type), checked.GetError().message));
        else if (!checked->empty())
            troubles.push_back(fmt::format("{}: {}", TerrainSetting(type), checked.Value()));
    }
    return troubles;
}

std::vector<std::string> GetTerrainPaths(const std::string& projectPath) {
    std::vector<std::string> paths;
    for (int type = 1; type <= CTerrainSurfaces::TypeCount; ++type)
        if (const std::string setting = SettingOf(type); !setting.empty())
            paths.push_back(FullPath(setting, projectPath));
    return paths;
}

std::vector<std::string> AttachTerrain(const std::string& projectPath) {
    std::vector<std::string> missing;
    for (int type = 1; type <= CTerrainSurfaces::TypeCount; ++type) {
        const std::string setting = SettingOf(type);
        if (setting.empty()) {
            CTerrainSurfaces::Instance()->Attach(type, {});
            continue;
        }
        const std::string name = FullPath(setting, projectPath);
        std::error_code error;
        const bool isThere = std::filesystem::exists(name, error);
        if (!isThere)
            missing.push_back(fmt::format("{}: {} is missing; the terrain has no heights but those of the nodes",
                                          TerrainSetting(type), name));
        CTerrainSurfaces::Instance()->Attach(
            type, isThere ? CTerrainSurfaces::CSource([type, name] { return OpenSurface(type, name); }) : nullptr);
    }
    return missing;
}

CTerrainPathsMove::CTerrainPathsMove(const path& from, const path& to) {
    for (int type = 1; type <= CTerrainSurfaces::TypeCount; ++type) {
        const std::string former = SettingOf(type);
        if (former.empty())
            continue;
        const std::string moved = StoredPath((from / former).lexically_normal(), to);
        if (moved == former)
            continue;
        m_former.emplace_back(TerrainSetting(type), former);
        CProjectSettings::Instance()->Set(TerrainSetting(type), moved);
    }
}

CTerrainPathsMove::~CTerrainPathsMove() {
    for (const auto& [name, value] : m_former)
        CProjectSettings::Instance()->Set(name, value);
}

} // namespace OLMGis::ProjectIo
