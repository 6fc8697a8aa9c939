// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace OLMGis::ProjectIo {

/// The setting that names the raster of a terrain type: "terrain_1" to "terrain_10". Its value is a path, relative to
/// the folder of the project file where both have a common folder, so that they can be moved together; empty for none.
std::string TerrainSetting(int terrainType);

/// The full path of a raster as typed: relative to the working folder or, where there is no such file, to the folder of
/// the project. Empty stays empty. Refused, naming the path, when neither file exists.
Utility::Result<std::string> ResolveTerrainPath(std::string_view typed, const std::string& projectPath);

/// Opens the raster of a type of the active project. BadInput or Refused for one that cannot be read or is in another
/// coordinate system than the project; else a warning for the user, empty for none.
Utility::Result<std::string> CheckTerrain(int terrainType, const std::string& projectPath);

/// Opens all rasters that the active project names and returns one sentence for each that cannot be used. Missing files
/// are reported by AttachTerrain.
std::vector<std::string> FindTerrainTroubles(const std::string& projectPath);

/// Gives each terrain type of the active project the surface that its setting names, or none. Call it after opening a
/// project and after changing a setting. A raster is opened when a height is first asked for; an error then goes to the
/// log, and the type has no heights. Returns one sentence for each missing file.
std::vector<std::string> AttachTerrain(const std::string& projectPath);

/// The rasters of the active project's terrain types, full paths; there need not be such files.
std::vector<std::string> GetTerrainPaths(const std::string& projectPath);

/// Changes the paths of rasters for a project file in another folder while it is saved there; the destructor restores
/// them unless Keep was called. Full paths become relative where possible.
class CTerrainPathsMove {
public:
    /// Folders of project files, full paths; from may be the same as to.
    CTerrainPathsMove(const std::filesystem::path& from, const std::filesystem::path& to);
    ~CTerrainPathsMove();
    CTerrainPathsMove(const CTerrainPathsMove&) = delete;
    CTerrainPathsMove& operator=(const CTerrainPathsMove&) = delete;

    void Keep() { m_former.clear(); }

private:
    std::vector<std::pair<std::string, std::string>> m_former; ///< changed settings with their former values
};

} // namespace OLMGis::ProjectIo
