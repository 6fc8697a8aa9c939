// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"
#include "host/network_core/GridSurface.h"

#include <memory>
#include <string>

namespace OLMGis::ProjectIo {

/// Whether a raster lies in the coordinate system of a project.
enum class enmCrsAgreement {
    Same,
    Different,
    Unknown, ///< the raster names none, or one that can't be told from others
};

/// An open raster of heights: its first band.
class ITerrainFile : public Topology::ICellSource {
public:
    /// Usable.
    virtual const Topology::CGridFrame& GetFrame() const = 0;

    /// "EPSG:n" where the raster's coordinate system is one of that register, else its name; empty for none. Heights
    /// have no part in it.
    virtual std::string GetCrs() const = 0;
    virtual enmCrsAgreement CompareCrs(int epsg) const = 0;

    /// Why the last ReadCells failed.
    virtual const std::string& GetTrouble() const = 0;
};

/// Opens a raster of any format that the raster library knows, GeoTIFF and ASCII grids among them. Refused when there
/// is no such file or it may not be read, BadInput for what is no raster of heights with a place in the plan; both name
/// the file.
///
/// The raster library stands behind a library of its own that is loaded here, at the first call: with it come more than
/// a hundred others, which cost every start of the program twice its time. Refused when that library isn't there.
Utility::Result<std::unique_ptr<ITerrainFile>> OpenTerrainFile(const std::string& path);

/// What the library with the raster library offers under TerrainOpenerName; never throws.
using CTerrainOpener = void(const char* path, Utility::Result<std::unique_ptr<ITerrainFile>>& outcome);
inline constexpr const char* TerrainOpenerName = "DrenovaOpenTerrain";
inline constexpr const char* TerrainLibraryName = "libdrenova_terrain_gdal.so";

} // namespace OLMGis::ProjectIo
