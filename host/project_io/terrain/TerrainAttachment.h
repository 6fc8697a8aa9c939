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
/// the folder of the project file where both share a folder, so that the two can be moved together; empty for none.
std::string TerrainSetting(int terrainType);

/// The full path of a raster that was typed: relative to the working folder, or else, where no such file is there, to
/// the project's, as settings are shown. Empty stays empty. Refused, naming the path, when neither is there.
Utility::Result<std::string> ResolveTerrainPath(std::string_view typed, const std::string& projectPath);

/// Opens the raster of a type of the active project. BadInput or Refused for one that can't be read and for one in
/// another coordinate system than the project's; else what the user should know of it, empty for nothing.
Utility::Result<std::string> CheckTerrain(int terrainType, const std::string& projectPath);

/// What stands in the way of the rasters that the active project names, one whole sentence each; opens them all. Files
/// that are not there are left to AttachTerrain.
std::vector<std::string> FindTerrainTroubles(const std::string& projectPath);

/// Gives the terrain types of the active project the surfaces that its settings name (and takes away those that they
/// don't), each opened when a height is first asked for; what goes wrong then is told in the log, and the type has no
/// heights. Answers a sentence for each file that isn't there. After opening a project and after changing a setting.
std::vector<std::string> AttachTerrain(const std::string& projectPath);

/// Makes the paths of rasters fit a project file in another folder while it is saved there; put back at the end unless
/// that is kept. Full paths become relative where they can.
class CTerrainPathsMove {
public:
    /// Folders of project files, full paths; from may be the same as to.
    CTerrainPathsMove(const std::filesystem::path& from, const std::filesystem::path& to);
    ~CTerrainPathsMove();
    CTerrainPathsMove(const CTerrainPathsMove&) = delete;
    CTerrainPathsMove& operator=(const CTerrainPathsMove&) = delete;

    void Keep() { m_former.clear(); }

private:
    std::vector<std::pair<std::string, std::string>> m_former; ///< settings that changed, and what they were
};

} // namespace OLMGis::ProjectIo
