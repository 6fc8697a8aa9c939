// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
//
// Rasters of terrain as files: the same heights from any format, settings that still lead to moved files, bad files.
#include "host/gis_core/ModuleConfiguration.h"
#include "host/network_core/TerrainSurfaces.h"
#include "host/project_io/terrain/TerrainAttachment.h"
#include "host/project_io/terrain/TerrainFile.h"
#include "host/workspace_core/WsManager.h"
#include "tests/project_io/ProjectFileFixture.h"

#include <gmock/gmock.h>

#include <cmath>

using namespace OLMGis;
using ProjectIo::AttachTerrain;
using ProjectIo::CheckTerrain;
using ProjectIo::FindTerrainTroubles;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using Topology::CTerrainSurfaces;

namespace {

constexpr double None = std::numeric_limits<double>::quiet_NaN();

/// 3 columns by 2 rows of 10 m, lower left corner at 1000, 2000; centres at 1005 ... 1025 and 2015, 2005.
constexpr const char* Grid = "ncols 3\nnrows 2\nxllcorner 1000\nyllcorner 2000\ncellsize 10\nNODATA_value -9999\n"
                             "1800.125 1801.125 -9999\n1790.125 1791.125 1792.125\n";

class TerrainFiles : public ::testing::Test {
protected:
    TerrainFiles() { WriteBytes(m_folder.File("grid.asc"), Grid); }

    void Set(int type, const std::string& file) {
        System::CProjectSettings::Instance()->Set(ProjectIo::TerrainSetting(type), file);
    }
    std::string Setting(int type) const {
        return System::CProjectSettings::Instance()->Get(ProjectIo::TerrainSetting(type));
    }
    /// Writes the grid in another format with the raster library's own program (gdal-bin); false when that fails.
    bool Translate(const std::string& options, const std::string& to) const {
        return std::system(
                   ("gdal_translate -q " + options + " '" + m_folder.File("grid.asc") + "' '" + to + "'").c_str()) == 0;
    }
    double At(int type, double x, double y) {
        double height = 0.0;
        auto* const surface = CTerrainSurfaces::Instance()->Find(type);
        return surface != nullptr && surface->GetHeight({x, y}, height) ? height : None;
    }
    std::string Project() const { return m_folder.File("town.gpkg"); }
    static std::string LastLog() {
        const auto& log = Workspace::CWsManager::Instance()->GetLog();
        return log.empty() ? std::string() : log.back().m_text;
    }

    CTestFolder m_folder;
    CTestProject m_project;
};

} // namespace

TEST_F(TerrainFiles, HeightsAreTheSameWhateverTheFormat) {
    Set(1, m_folder.File("grid.asc"));
    ASSERT_TRUE(Translate("-ot Float64 -co TILED=YES -co COMPRESS=DEFLATE", m_folder.File("grid.tif")));
    Set(2, "grid.tif");
    // Stored as whole numbers of eighths of a metre above 1700 m.
    ASSERT_TRUE(Translate("-ot Int32 -scale 1700 1800 0 800 -a_scale 0.125 -a_offset 1700 -a_nodata none",
                          m_folder.File("scaled.tif")));
    Set(3, "scaled.tif");
    EXPECT_THAT(AttachTerrain(Project()), IsEmpty());
    for (const int type : {1, 2}) {
        SCOPED_TRACE(type);
        EXPECT_EQ(At(type, 1005.0, 2015.0), 1800.125);
        EXPECT_EQ(At(type, 1025.0, 2005.0), 1792.125);
        EXPECT_NEAR(At(type, 1010.0, 2012.5), 1795.625 + 2.5, 1e-9);
        EXPECT_TRUE(std::isnan(At(type, 1020.0, 2010.0))); // one of the four has no data
        EXPECT_EQ(At(type, 1020.0, 2005.0), 1791.625);     // beside it on the line of the row
        EXPECT_TRUE(std::isnan(At(type, 1004.0, 2010.0))); // outside the outermost centres
    }
    EXPECT_NEAR(At(3, 1005.0, 2015.0), 1800.125, 1e-9);
    EXPECT_THAT(FindTerrainTroubles(Project()), IsEmpty());
    EXPECT_EQ(CTerrainSurfaces::Instance()->Find(4), nullptr);
    Set(1, "");
    EXPECT_THAT(AttachTerrain(Project()), IsEmpty());
    EXPECT_EQ(CTerrainSurfaces::Instance()->Find(1), nullptr);
}

TEST_F(TerrainFiles, BadFilesAreNamedAndGiveNoHeights) {
    WriteBytes(m_folder.File("text.tif"), "no raster");
    WriteBytes(m_folder.File("no-place.pgm"), std::string("P5\n2 2\n255\n") + "abcd");
    ASSERT_EQ(
        std::system(fmt::format("gdal_translate -q {} {}", m_folder.File("no-place.pgm"), m_folder.File("no-place.tif"))
                        .c_str()),
        0);
    WriteBytes(m_folder.File("short.asc"), std::string(Grid).substr(0, std::string(Grid).size() - 20));
    struct CCase {
        const char* m_file;
        Utility::enmErrorKind m_kind;
        const char* m_text;
    };
    for (const CCase& row :
         {CCase{"none.tif", Utility::enmErrorKind::Refused, "none.tif: cannot be opened: No such"},
          CCase{"text.tif", Utility::enmErrorKind::BadInput, "text.tif: cannot be read as a GeoTIFF or an ASCII grid"},
          CCase{"no-place.pgm", Utility::enmErrorKind::BadInput, "cannot be read as a GeoTIFF"},
          CCase{"no-place.tif", Utility::enmErrorKind::BadInput, "without a place in the plan"}}) {
        Set(1, row.m_file);
        const auto checked = CheckTerrain(1, Project());
        ASSERT_FALSE(checked) << row.m_file;
        EXPECT_EQ(checked.GetError().kind, row.m_kind);
        EXPECT_THAT(checked.GetError().message, HasSubstr(row.m_text));
        const bool isMissing = row.m_kind == Utility::enmErrorKind::Refused;
        EXPECT_EQ(AttachTerrain(Project()).size(), isMissing ? 1U : 0U);
        EXPECT_EQ(FindTerrainTroubles(Project()).size(), isMissing ? 0U : 1U);
        EXPECT_EQ(CTerrainSurfaces::Instance()->Find(1), nullptr);
        if (!isMissing) {
            EXPECT_THAT(LastLog(), HasSubstr(row.m_text));
        }
    }
    Set(1, "short.asc");
    EXPECT_THAT(AttachTerrain(Project()), IsEmpty());
    EXPECT_TRUE(std::isnan(At(1, 1025.0, 2005.0)));
    EXPECT_THAT(LastLog(), HasSubstr("short.asc"));
}

TEST_F(TerrainFiles, TheCoordinateSystemIsTheProjects) {
    ASSERT_TRUE(Translate("-a_srs EPSG:25832", m_folder.File("utm.tif")));
    ASSERT_TRUE(Translate("-a_srs '+proj=tmerc +lat_0=1 +lon_0=3 +ellps=bessel'", m_folder.File("own.tif")));
    Set(1, "utm.tif");
    Set(2, "grid.asc");
    Set(3, "own.tif");
    EXPECT_TRUE(CheckTerrain(1, Project())) << "a project of plain coordinates takes any";
    System::CProjectSettings::Instance()->Set("crs", "EPSG:25832");
    ASSERT_TRUE(CheckTerrain(1, Project()));
    EXPECT_EQ(CheckTerrain(1, Project()).Value(), "");
    EXPECT_THAT(CheckTerrain(2, Project()).Value(), HasSubstr("names no coordinate system; assumed"));
    EXPECT_THAT(CheckTerrain(3, Project()).Value(), HasSubstr("is not known"));
    AttachTerrain(Project());
    EXPECT_EQ(At(1, 1005.0, 2015.0), 1800.125);
    System::CProjectSettings::Instance()->Set("crs", "EPSG:3765");
    const auto checked = CheckTerrain(1, Project());
    ASSERT_FALSE(checked);
    EXPECT_EQ(checked.GetError().kind, Utility::enmErrorKind::BadInput);
    EXPECT_THAT(checked.GetError().message, HasSubstr("EPSG:25832, expected the project's, EPSG:3765"));
    AttachTerrain(Project());
    EXPECT_TRUE(std::isnan(At(1, 1005.0, 2015.0)));
    EXPECT_THAT(LastLog(), HasSubstr("EPSG:25832"));
    EXPECT_EQ(FindTerrainTroubles(Project()).size(), 3U);
}

TEST_F(TerrainFiles, SavedProjectsFindTheirRastersWhereverTheyGo) {
    namespace fs = std::filesystem;
    const std::string outside = "/some-other-root/dem.tif";
    fs::create_directories(m_folder.File("sub/deeper"));
    Set(1, m_folder.File("grid.asc"));
    Set(2, outside);
    auto made = ProjectIo::CProjectFile::Create(Project(), false);
    ASSERT_TRUE(made) << made.GetError().message;
    EXPECT_EQ(Setting(1), "grid.asc");
    EXPECT_EQ(Setting(2), outside); // shares no folder
    ASSERT_TRUE(made->SaveAs(m_folder.File("sub/deeper/copy.gpkg"), false));
    EXPECT_EQ(Setting(1), "../../grid.asc");
    EXPECT_FALSE(made->SaveAs(m_folder.File("nowhere/copy.gpkg"), false));
    EXPECT_EQ(Setting(1), "../../grid.asc"); // as still in the file
    for (const char* name : {"town.gpkg", "sub/deeper/copy.gpkg"}) {
        CTestProject opened;
        auto file = ProjectIo::CProjectFile::Open(m_folder.File(name));
        ASSERT_TRUE(file) << file.GetError().message;
        ASSERT_EQ(file->GetWarnings().size(), 1U);
        EXPECT_THAT(file->GetWarnings()[0], HasSubstr("terrain_2: " + outside + " is missing"));
        EXPECT_EQ(At(1, 1005.0, 2015.0), 1800.125) << name;
        EXPECT_EQ(CTerrainSurfaces::Instance()->Find(2), nullptr);
        EXPECT_TRUE(file->Save());
    }
    // Moved together they still find each other.
    fs::create_directory(m_folder.File("moved"));
    fs::rename(Project(), m_folder.File("moved/town.gpkg"));
    fs::rename(m_folder.File("grid.asc"), m_folder.File("moved/grid.asc"));
    CTestProject opened;
    ASSERT_TRUE(ProjectIo::CProjectFile::Open(m_folder.File("moved/town.gpkg")));
    EXPECT_EQ(At(1, 1005.0, 2015.0), 1800.125);
}

TEST_F(TerrainFiles, TypedPathsAreSoughtHereAndThenBesideTheProject) {
    EXPECT_EQ(ProjectIo::ResolveTerrainPath("grid.asc", Project()).Value(),
              std::filesystem::canonical(m_folder.File("grid.asc")).string());
    EXPECT_EQ(ProjectIo::ResolveTerrainPath("", Project()).Value(), "");
    const auto missing = ProjectIo::ResolveTerrainPath("none.tif", Project());
    ASSERT_FALSE(missing);
    EXPECT_EQ(missing.GetError().kind, Utility::enmErrorKind::Refused);
    EXPECT_THAT(missing.GetError().message, HasSubstr("none.tif"));
}
