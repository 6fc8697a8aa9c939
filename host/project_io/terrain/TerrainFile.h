// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"
#include "host/network_core/GridSurface.h"

#include <memory>
#include <string>

namespace OLMGis::ProjectIo {

/// Whether a raster is in the coordinate system of a project.
enum class enmCrsAgreement {
    Same,
    Different,
    Unknown, ///< the raster names none, or one that cannot be identified
};

/// An open raster of heights: its first band.
class ITerrainFile : public Topology::ICellSource {
public:
    /// Place and size of the raster, checked.
    virtual const Topology::CGridFrame& GetFrame() const = 0;

    /// "EPSG:n" where the raster's coordinate system is in that register, else its name; empty for none. Of a compound
    /// system only the horizontal part counts.
    virtual std::string GetCrs() const = 0;
    virtual enmCrsAgreement CompareCrs(int epsg) const = 0;

    /// Why the last ReadCells failed.
    virtual const std::string& GetTrouble() const = 0;
};

/// Opens a raster of any format that the raster library knows, GeoTIFF and ASCII grids among them. Refused when there
/// is no such file or it may not be read, BadInput for a file that is not a raster of heights with a place in the plan;
/// both name the file.
///
/// The raster library is used through a library of ours that is loaded at the first call: it brings more than a hundred
/// other libraries, which would double the time of every start. Refused when our library is missing.
Utility::Result<std::unique_ptr<ITerrainFile>> OpenTerrainFile(const std::string& path);

/// The function that our library exports as TerrainOpenerName; never throws.
using CTerrainOpener = void(const char* path, Utility::Result<std::unique_ptr<ITerrainFile>>& outcome);
inline constexpr const char* TerrainOpenerName = "DrenovaOpenTerrain";
inline constexpr const char* TerrainLibraryName = "libdrenova_terrain_gdal.so";

} // namespace OLMGis::ProjectIo
