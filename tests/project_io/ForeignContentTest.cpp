// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/gis_core/DataRW.h"
#include "host/project_io/store/ProjectFile.h"
#include "tests/project_io/ProjectFileFixture.h"
#include "tests/support/TestProject.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

using namespace OLMGis;
using namespace OLMGis::ProjectIo;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

/// Saves over the file and under another name, as verbs do, after something else was changed.
std::string SavedTwice(const CTestFolder& folder, const std::string& path) {
    CTestProject project;
    auto file = CProjectFile::Open(path);
    EXPECT_TRUE(file) << file.GetError().message;
    EXPECT_THAT(file->GetWarnings(), IsEmpty()) << "all of it is kept";
    const auto saved = file->Save();
    EXPECT_TRUE(saved) << saved.GetError().message;
    std::string other = folder.File("other.gpkg");
    const auto savedAs = file->SaveAs(other, false);
    EXPECT_TRUE(savedAs) << savedAs.GetError().message;
    return other;
}

std::string SmallFile(const CTestFolder& folder) {
    CTestProject project;
    FillSmall();
    std::string path = folder.File("small.gpkg");
    EXPECT_TRUE(CProjectFile::Create(path, false));
    return path;
}

} // namespace

TEST(ForeignContent, EverySaveKeepsIt) {
    struct CCase {
        const char* m_what;
        const char* m_made;     ///< SQL of another program
        const char* m_question; ///< SQL
        const char* m_answer;
    };
    const CCase cases[] = {
        {"a table with its last key",
         "CREATE TABLE layer_styles (id INTEGER PRIMARY KEY AUTOINCREMENT, qml TEXT); "
         "INSERT INTO layer_styles VALUES (5, '<qgis/>'), (9, 'x'); DELETE FROM layer_styles WHERE id = 9; "
         "INSERT INTO gpkg_contents(table_name, data_type, identifier) VALUES ('layer_styles', 'attributes', 'l')",
         "SELECT (SELECT seq FROM sqlite_sequence WHERE name = 'layer_styles') || qml || (SELECT identifier FROM "
         "gpkg_contents WHERE table_name = 'layer_styles') FROM layer_styles",
         "9<qgis/>l"},
        {"a table with computed and checked columns, without rowid",
         "CREATE TABLE t (a TEXT PRIMARY KEY, b INT CHECK (b > 1), c INT AS (b * 2) STORED) WITHOUT ROWID; "
         "INSERT INTO t(a, b) VALUES ('x', 2), ('y', 4)",
         "SELECT group_concat(a || b || c) FROM t", "x24,y48"},
        {"a view and an index on it all", "CREATE VIEW v AS SELECT name FROM nodes; CREATE INDEX i ON nodes(name)",
         "SELECT (SELECT count(*) FROM v) || (SELECT sql FROM sqlite_schema WHERE name = 'i')",
         "2CREATE INDEX i ON nodes(name)"},
        {"a trigger, which does not run while we save",
         "CREATE TABLE log (a); CREATE TRIGGER tr AFTER INSERT ON nodes BEGIN INSERT INTO log VALUES (NEW.name); END",
         "SELECT (SELECT count(*) FROM log) || (SELECT count(*) FROM sqlite_schema WHERE name = 'tr')", "01"},
        {"a layer with its spatial index",
         "CREATE TABLE roads (fid INTEGER PRIMARY KEY, geom BLOB); INSERT INTO roads VALUES (7, x'4750'); "
         "CREATE VIRTUAL TABLE rtree_roads_geom USING rtree(id, minx, maxx, miny, maxy); "
         "INSERT INTO rtree_roads_geom VALUES (7, 1, 2, 3, 4); "
         "INSERT INTO gpkg_contents(table_name, data_type, identifier) VALUES ('roads', 'features', 'roads'); "
         "INSERT INTO gpkg_geometry_columns VALUES ('roads', 'geom', 'POINT', 0, 0, 0); "
         "INSERT INTO gpkg_extensions VALUES ('roads', 'geom', 'gpkg_rtree_index', 'x', 'write-only'); "
         "CREATE TRIGGER rtree_roads_geom_delete AFTER DELETE ON roads BEGIN SELECT 1; END",
         "SELECT hex(geom) || (SELECT id || maxy FROM rtree_roads_geom) || (SELECT count(*) FROM gpkg_extensions WHERE "
         "table_name = 'roads') || (SELECT count(*) FROM gpkg_geometry_columns) || (SELECT count(*) FROM sqlite_schema "
         "WHERE name LIKE 'rtree_roads%') FROM roads",
         "475074.01" /* one row of extensions */ "4" /* layers */ "5"},
        {"columns of layers, by entity",
         "ALTER TABLE nodes ADD COLUMN colour TEXT DEFAULT 'none'; ALTER TABLE nodes ADD COLUMN size VARCHAR(10); "
         "UPDATE nodes SET colour = 'red', size = 3 WHERE name = 'B'; "
         "UPDATE nodes SET network_order = 3 - network_order; "
         "INSERT INTO gpkg_data_columns(table_name, column_name, name) VALUES ('nodes', 'colour', 'c')",
         "SELECT group_concat(name || colour || coalesce(size, '-')) || (SELECT name FROM gpkg_data_columns WHERE "
         "column_name = 'colour') FROM (SELECT * FROM nodes ORDER BY fid)",
         "Anone-,Bred3c"},
        {"a column of a row without a GUID",
         "ALTER TABLE nodes ADD COLUMN colour TEXT; INSERT INTO nodes(name, colour) VALUES ('C', 'blue')",
         "SELECT colour FROM nodes WHERE name = 'C'", "blue"},
        {"coordinate systems with a further column",
         "ALTER TABLE gpkg_spatial_ref_sys ADD COLUMN definition_12_063 TEXT NOT NULL DEFAULT 'undefined'; "
         "INSERT INTO gpkg_spatial_ref_sys VALUES ('mine', 99, 'me', 99, 'd', NULL, 'd12'); "
         "UPDATE gpkg_spatial_ref_sys SET definition_12_063 = 'w' WHERE srs_id = 4326",
         "SELECT group_concat(definition_12_063) FROM gpkg_spatial_ref_sys WHERE srs_id IN (99, 4326)", "d12,w"},
        {"counts of rows, which are corrected",
         "CREATE TABLE gpkg_ogr_contents (table_name TEXT PRIMARY KEY, feature_count INT); "
         "INSERT INTO gpkg_ogr_contents VALUES ('nodes', 77), ('others', 5)",
         "SELECT group_concat(feature_count) FROM gpkg_ogr_contents", "2,5"},
    };
    for (const CCase& c : cases) {
        SCOPED_TRACE(c.m_what);
        const CTestFolder folder;
        const std::string path = SmallFile(folder);
        RunSql(path, c.m_made);
        ASSERT_EQ(RunSql(path, c.m_question).empty(), false);
        const std::string other = SavedTwice(folder, path);
        for (const std::string& saved : {path, other}) {
            EXPECT_EQ(RunSql(saved, c.m_question), c.m_answer);
            EXPECT_EQ(RunSql(saved, "PRAGMA integrity_check"), "ok");
        }
        EXPECT_EQ(RunSql(path, "PRAGMA foreign_key_check"), "");
    }
}

/// An index that the new rows do not allow is left out whole: the file stays sound.
TEST(ForeignContent, AnIndexThatNoLongerFitsIsLeftOut) {
    const CTestFolder folder;
    const std::string path = SmallFile(folder);
    RunSql(path, "CREATE UNIQUE INDEX i ON nodes(TERRAIN_1); CREATE INDEX k ON nodes(name)");
    CTestProject project;
    auto file = CProjectFile::Open(path);
    ASSERT_TRUE(file);
    for (const auto& node : ActiveTopology().GetNodes())
        Data::CDataRW::Write("TERRAIN_1", node, 7.0, nullptr);
    const auto saved = file->Save();
    ASSERT_TRUE(saved) << saved.GetError().message;
    EXPECT_EQ(RunSql(path, "PRAGMA integrity_check"), "ok");
    EXPECT_EQ(RunSql(path, "SELECT group_concat(name) FROM sqlite_schema WHERE type = 'index' AND sql NOT NULL"), "k");
}

TEST(ForeignContent, WithoutAnyTheFileIsAsBefore) {
    const CTestFolder folder;
    const std::string path = SmallFile(folder);
    CTestProject project;
    auto file = CProjectFile::Open(path);
    ASSERT_TRUE(file->SaveAs(folder.File("other.gpkg"), false));
    EXPECT_TRUE(BytesOf(path) == BytesOf(folder.File("other.gpkg")));
}

TEST(ForeignContent, IsNotTakenFromAFileThatIsNoLongerTheSame) {
    const CTestFolder folder;
    const std::string path = SmallFile(folder);
    RunSql(path, "CREATE TABLE mine (a); INSERT INTO mine VALUES (1)");
    CTestProject project;
    auto file = CProjectFile::Open(path);
    RunSql(path, "INSERT INTO mine VALUES (2)");
    const auto saved = file->SaveAs(folder.File("other.gpkg"), false);
    ASSERT_FALSE(saved);
    EXPECT_THAT(saved.GetError().message, HasSubstr("was changed or replaced by another program"));
    EXPECT_EQ(folder.List(), "small.gpkg");
}
