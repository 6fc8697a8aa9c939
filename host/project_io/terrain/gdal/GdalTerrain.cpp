// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
// Terrain files read by the raster library. Built as a library of its own that is loaded with the first raster.
#include "host/gis_core/Utility.h"
#include "host/project_io/terrain/TerrainFile.h"

#include <fmt/format.h>
#include <gdal.h>
#include <gdal_frmts.h>
#include <ogr_spatialref.h>

#include <array>
#include <cmath>
#include <cpl_conv.h>
#include <cpl_error.h>
#include <limits>
#include <utility>
#include <vector>

namespace OLMGis::ProjectIo {

using Utility::BadInput;
using Utility::Result;

namespace {

constexpr double NotANumber = std::numeric_limits<double>::quiet_NaN();

/// Catches messages of the raster library, which would go to standard error, while it exists.
class CSaid {
public:
    CSaid() { CPLPushErrorHandlerEx(&Keep, &m_text); }
    ~CSaid() { CPLPopErrorHandler(); }
    CSaid(const CSaid&) = delete;
    CSaid& operator=(const CSaid&) = delete;

    /// The first failure.
    std::string GetText() const { return m_text.empty() ? "the raster library gives no reason" : m_text; }

private:
    static void CPL_STDCALL Keep(CPLErr kind, CPLErrorNum /*number*/, const char* text) {
        auto& kept = *static_cast<std::string*>(CPLGetErrorHandlerUserData());
        if (kind >= CE_Failure && kept.empty())
            kept = text;
    }

    std::string m_text;
};

struct CCloseDataset {
    void operator()(GDALDatasetH dataset) const { GDALClose(dataset); }
};
using CDataset = std::unique_ptr<void, CCloseDataset>;

/// Metres per unit of the heights of a raster; 0 for an unknown unit.
double MetresOfUnit(std::string_view unit) {
    if (unit.empty() || unit == "m" || unit == "metre" || unit == "meter" || unit == "metres" || unit == "meters")
        return 1.0;
    if (unit == "ft" || unit == "foot" || unit == "feet")
        return 0.3048; // the international foot
    if (unit == "US survey foot" || unit == "us-ft" || unit == "ftUS" || unit == "sfoot")
        return 1200.0 / 3937.0;
    return 0.0;
}

class CGdalTerrain final : public ITerrainFile {
public:
    static Result<std::unique_ptr<ITerrainFile>> Open(const char* path);

    bool ReadCells(int column, int row, int columns, int rows, double* cells, std::size_t stride) override;
    const Topology::CGridFrame& GetFrame() const override { return m_frame; }
    std::string GetCrs() const override;
    enmCrsAgreement CompareCrs(int epsg) const override;
    const std::string& GetTrouble() const override { return m_trouble; }

private:
    Utility::Status Begin(const std::string& path);
    void ReadCrs();

    CDataset m_dataset;
    GDALRasterBandH m_band = nullptr; ///< the dataset's
    Topology::CGridFrame m_frame;
    double m_factor = 1.0; ///< from stored numbers to metres
    double m_offset = 0.0; ///< m
    bool m_hasGaps = false;
    OGRSpatialReference m_crs; ///< empty for none
    int m_epsg = 0;            ///< 0 where the register has no such system
    std::vector<unsigned char> m_mask;
    std::string m_trouble;
};

Result<std::unique_ptr<ITerrainFile>> CGdalTerrain::Open(const char* path) {
    static const bool isReady = [] {
        // Only these: other drivers open what a path merely describes, as files on the network or in archives, and
        // programs in the folders of the environment.
        GDALRegister_GTiff();
        GDALRegister_AAIGrid();
        // By default cells of ASCII grids are read with seven digits, too few for millimetres on mountains.
        CPLSetConfigOption("AAIGRID_DATATYPE", "Float64");
        return true;
    }();
    static_cast<void>(isReady);
    auto terrain = std::make_unique<CGdalTerrain>();
    const CSaid said;
    const std::array<const char*, 3> drivers{"GTiff", "AAIGrid", nullptr};
    terrain->m_dataset.reset(
        GDALOpenEx(path, GDAL_OF_RASTER | GDAL_OF_READONLY | GDAL_OF_VERBOSE_ERROR, drivers.data(), nullptr, nullptr));
    if (!terrain->m_dataset)
        return BadInput(fmt::format("{}: cannot be read as a GeoTIFF or an ASCII grid: {}", path, said.GetText()));
    if (const Utility::Status begun = terrain->Begin(path); !begun)
        return begun.GetError();
    return std::unique_ptr<ITerrainFile>(std::move(terrain));
}

Utility::Status CGdalTerrain::Begin(const std::string& path) {
    GDALDatasetH const dataset = m_dataset.get();
    if (GDALGetRasterCount(dataset) < 1)
        return BadInput(path + ": found a raster without bands, expected one of heights");
    m_frame.m_columns = GDALGetRasterXSize(dataset);
    m_frame.m_rows = GDALGetRasterYSize(dataset);
    if (GDALGetGeoTransform(dataset, m_frame.m_transform.data()) != CE_None)
        return BadInput(path + ": found a raster without a place in the plan, expected one with a geotransform");
    if (!m_frame.IsUsable())
        return BadInput(path + ": found a raster whose cells have no extent in the plan");
    m_band = GDALGetRasterBand(dataset, 1);
    if (GDALDataTypeIsComplex(GDALGetRasterDataType(m_band)) != 0 || GDALGetRasterColorTable(m_band) != nullptr)
        return BadInput(path + ": found a raster of complex numbers or of colours, expected one of heights");
    const char* const unit = GDALGetRasterUnitType(m_band);
    m_factor = MetresOfUnit(unit == nullptr ? "" : unit);
    if (m_factor == 0.0)
        return BadInput(fmt::format("{}: found heights in \"{}\", expected metres or feet", path, unit));
    m_offset = GDALGetRasterOffset(m_band, nullptr) * m_factor;
    m_factor *= GDALGetRasterScale(m_band, nullptr);
    m_hasGaps = GDALGetMaskFlags(m_band) != GMF_ALL_VALID;
    ReadCrs();
    return Utility::Done{};
}

void CGdalTerrain::ReadCrs() {
    const auto* const found = static_cast<const OGRSpatialReference*>(GDALGetSpatialRef(m_dataset.get()));
    if (found == nullptr)
        return;
    m_crs = *found;
    m_crs.StripVertical();
    if (m_crs.GetAuthorityCode(nullptr) == nullptr)
        m_crs.AutoIdentifyEPSG();
    const char* const authority = m_crs.GetAuthorityName(nullptr);
    const char* const code = m_crs.GetAuthorityCode(nullptr);
    if (authority != nullptr && code != nullptr && std::string_view(authority) == "EPSG")
        m_epsg = Utility::CUtility::ParseInt(code).value_or(0);
}

std::string CGdalTerrain::GetCrs() const {
    if (m_epsg > 0)
        return fmt::format("EPSG:{}", m_epsg);
    const char* const name = m_crs.IsEmpty() ? nullptr : m_crs.GetName();
    return name == nullptr ? std::string() : std::string(name);
}

enmCrsAgreement CGdalTerrain::CompareCrs(int epsg) const {
    if (m_crs.IsEmpty())
        return enmCrsAgreement::Unknown;
    if (m_epsg == epsg)
        return enmCrsAgreement::Same;
    const CSaid said;
    OGRSpatialReference projects;
    if (projects.importFromEPSG(epsg) != OGRERR_NONE)
        return enmCrsAgreement::Unknown;
    // Many files leave out the EPSG number and the order of axes, which rasters ignore anyway.
    const std::array<const char*, 3> leniently{"CRITERION=EQUIVALENT_EXCEPT_AXIS_ORDER_GEOGCRS",
                                               "IGNORE_DATA_AXIS_TO_SRS_AXIS_MAPPING=YES", nullptr};
    if (m_crs.IsSame(&projects, leniently.data()) != 0)
        return enmCrsAgreement::Same;
    return m_epsg > 0 || m_crs.IsGeographic() != projects.IsGeographic() ? enmCrsAgreement::Different
                                                                         : enmCrsAgreement::Unknown;
}

bool CGdalTerrain::ReadCells(int column, int row, int columns, int rows, double* cells, std::size_t stride) {
    const CSaid said;
    const auto rowBytes = static_cast<GSpacing>(stride) * GSpacing{sizeof(double)};
    if (GDALRasterIOEx(m_band, GF_Read, column, row, columns, rows, cells, columns, rows, GDT_Float64, 0, rowBytes,
                       nullptr) != CE_None) {
        m_trouble = said.GetText();
        return false;
    }
    if (m_hasGaps) {
        m_mask.resize(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows));
        if (GDALRasterIO(GDALGetMaskBand(m_band), GF_Read, column, row, columns, rows, m_mask.data(), columns, rows,
                         GDT_Byte, 0, 0) != CE_None) {
            m_trouble = said.GetText();
            return false;
        }
    }
    std::size_t place = 0;
    for (int r = 0; r < rows; ++r)
        for (int c = 0; c < columns; ++c, ++place) {
            double& cell = cells[static_cast<std::size_t>(r) * stride + static_cast<std::size_t>(c)];
            const bool isHeight = (!m_hasGaps || m_mask[place] != 0) && std::isfinite(cell);
            cell = isHeight ? cell * m_factor + m_offset : NotANumber;
        }
    return true;
}

} // namespace

} // namespace OLMGis::ProjectIo

extern "C" __attribute__((visibility("default"))) void
DrenovaOpenTerrain(const char* path,
                   OLMGis::Utility::Result<std::unique_ptr<OLMGis::ProjectIo::ITerrainFile>>& outcome);

void DrenovaOpenTerrain(const char* path,
                        OLMGis::Utility::Result<std::unique_ptr<OLMGis::ProjectIo::ITerrainFile>>& outcome) {
    try {
        outcome = OLMGis::ProjectIo::CGdalTerrain::Open(path);
    } catch (const std::exception& error) {
        outcome = OLMGis::Utility::Refused(fmt::format("{}: cannot be opened: {}", path, error.what()));
    }
}
