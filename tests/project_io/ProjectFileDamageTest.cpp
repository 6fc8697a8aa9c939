// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/store/ProjectFile.h"
#include "tests/project_io/ProjectFileFixture.h"

#include <gmock/gmock.h>

#include <functional>
#include <random>

using namespace OLMGis;
using ProjectIo::CProjectFile;
using testing::HasSubstr;
using testing::StartsWith;
using Utility::enmErrorKind;

namespace {

/// The bytes of a file with the small network.
const std::string& SmallBytes() {
    static const std::string bytes = [] {
        const CTestFolder folder;
        CTestProject project;
        FillSmall();
        auto& pipes = *Topology::CCatalogManager::Instance()->GetCatalog("PIPE", 1);
        const auto group = pipes.AddGroup("group-1", "PVC").Value();
        Topology::CPipeData pipe;
        pipe.m_shape = Topology::enmPipeShape::Table;
        pipe.m_table = {{0, 100}, {100, 200}, {200, 0}};
        EXPECT_TRUE(pipes.AddPipe(*group, "pipe-1", "DN", pipe));
        EXPECT_TRUE(CProjectFile::Create(folder.File("small.gpkg"), false));
        return BytesOf(folder.File("small.gpkg"));
    }();
    return bytes;
}

/// Opens bytes as a project file; the error, or nothing for a file that opens.
std::optional<Utility::Error> ErrorOf(const CTestFolder& folder, const std::string& path) {
    CTestProject project;
    const auto file = CProjectFile::Open(path);
    EXPECT_EQ(folder.List(), "small.gpkg");
    return file ? std::optional<Utility::Error>() : file.GetError();
}

void ExpectBad(const CTestFolder& folder, const std::string& path, const std::string& expected) {
    const auto error = ErrorOf(folder, path);
    ASSERT_TRUE(error) << "it opens";
    EXPECT_EQ(error->kind, enmErrorKind::BadInput);
    EXPECT_THAT(error->message, StartsWith(path + ": "));
    EXPECT_THAT(error->message, HasSubstr(expected));
}

} // namespace

TEST(ProjectFileDamage, BytesThatAreNoProjectFileAreDistinguished) {
    struct CCase {
        const char* m_name;
        std::string m_bytes;
        const char* m_expected;
    };
    const auto changed = [](std::size_t place, const std::string& bytes) {
        return std::string(SmallBytes()).replace(place, bytes.size(), bytes);
    };
    const std::size_t size = SmallBytes().size();
    const CCase cases[] = {
        {"empty", "", "is empty, expected a project file"},
        {"text", "[TITLE]\nno project\n", "does not begin like a GeoPackage"},
        {"head cut off", SmallBytes().substr(0, 99), "does not begin like a GeoPackage"},
        {"cut off in the middle", SmallBytes().substr(0, size / 2), "is cut off: found"},
        {"last byte gone", SmallBytes().substr(0, size - 1), "is cut off: found"},
        {"another application", changed(68, "OTHR"), "found the application number 0x4f544852, expected 0x47504b47"},
        {"another version", changed(60, std::string("\0\0\x4e\x20", 4)),
         "found GeoPackage version 20000, expected 10300"},
        {"page size", changed(16, std::string("\0\3", 2)), "is damaged or not a project file"},
        {"tables overwritten", changed(100, std::string(3000, '\x7f')), "is damaged or not a project file"},
    };
    for (const CCase& c : cases) {
        SCOPED_TRACE(c.m_name);
        const CTestFolder folder;
        WriteBytes(folder.File("small.gpkg"), c.m_bytes);
        ExpectBad(folder, folder.File("small.gpkg"), c.m_expected);
    }
}

TEST(ProjectFileDamage, WhatIsWrongInATableIsNamed) {
    struct CCase {
        std::string m_sql;
        const char* m_expected;
    };
    const CCase cases[] = {
        // The file itself.
        {"DROP TABLE drenova_meta", "is a GeoPackage but not a project file: found no table drenova_meta"},
        {"UPDATE drenova_meta SET value = '2' WHERE name = 'schema_version'",
         "was saved by a newer program: found schema version 2, expected 1"},
        {"UPDATE drenova_meta SET value = 'x' WHERE name = 'schema_version'", "found \"x\" as schema_version"},
        {"DELETE FROM drenova_meta WHERE name = 'save_counter'", "found \"\" as save_counter"},
        {"UPDATE drenova_meta SET value = x'00'",
         "table drenova_meta, row 1: column value: found binary data, expected a text"},
        // Tables and columns.
        {"DROP TABLE sections", "found no table sections"},
        {"DROP TABLE drenova_catalog_shapes", "found no table drenova_catalog_shapes"},
        {"DROP TABLE sections; CREATE VIEW sections AS WITH RECURSIVE c(x) AS (SELECT 1 UNION ALL SELECT x FROM c) "
         "SELECT x AS fid FROM c",
         "sections is a view, expected a table"},
        {"ALTER TABLE nodes RENAME COLUMN guid TO id", "table nodes: found no column guid"},
        {"ALTER TABLE catchments DROP COLUMN section_guid", "table catchments: found no column section_guid"},
        // Values of the wrong kind.
        {"UPDATE nodes SET TERRAIN_1 = 'high'",
         "table nodes, row 1: column TERRAIN_1: found a text, expected a number"},
        {"UPDATE catchments SET kinds = 1.5",
         "table catchments, row 1: column kinds: found a number, expected a whole number"},
        {"UPDATE catchments SET kinds = 4294967296", "column kinds: found 4294967296, expected a number of 32 bits"},
        {"UPDATE nodes SET network_order = 'last'", "column network_order: found a text"},
        {"UPDATE nodes SET geom = 'POINT(1 2)'", "column geom: found a text, expected binary data"},
        {"UPDATE nodes SET name = x'41'", "column name: found binary data, expected a text"},
        {"UPDATE sections SET FLOW_WASTE_PER_S = 2",
         "column FLOW_WASTE_PER_S: found 2, expected a row of drenova_texts"},
        {"UPDATE sections SET FLOW_WASTE_PER_S = '{}'", "column FLOW_WASTE_PER_S: found a text"},
        // Geometry.
        {"UPDATE nodes SET geom = x'00'", "table nodes, row 1: the geometry does not begin with GP"},
        {"UPDATE nodes SET geom = substr(geom, 1, 20)", "the geometry ends too early"},
        {"UPDATE nodes SET geom = substr(geom, 1, 6)", "the geometry ends too early"},
        {"UPDATE nodes SET geom = (SELECT geom FROM sections)", "the geometry is of type 2, expected 1"},
        {"UPDATE nodes SET geom = x'4750002100000000'", "is of an extended kind"},
        {"UPDATE nodes SET geom = x'4750000b00000000'", "unknown kind of envelope"},
        {"UPDATE nodes SET geom = x'475000010000000001010000000000000000000000000000000000f07f'",
         "not a finite number"},
        {"UPDATE sections SET geom = x'47500001000000000102000000ffffffff'", "expected 4294967295 points"},
        {"UPDATE sections SET geom = x'475000010000000001020000000100000000000000000000000000000000000000'",
         "has 1 point"},
        {"UPDATE sections SET geom = x'47500001000000000105000000ffffff7f'", "has 2147483647 parts, expected 1"},
        {"UPDATE sections SET geom = x'475000010000000001050000000100000001050000000100000001'", "is of type 5"},
        {"UPDATE catchments SET geom = x'47500001000000000103000000ffffffff'", "expected 4294967295"},
        {"UPDATE catchments SET geom = x'475000010000000001030000000100000004000000" + std::string(127, '0') + "1'",
         "a ring of the polygon is not closed"},
        // Missing references, and duplicates.
        {"DELETE FROM nodes WHERE name = 'B'", "table sections, row 1: section A-B: found the node \"node-b\" in "
                                               "to_guid, expected a node of the layer nodes"},
        {"UPDATE sections SET from_guid = NULL, from_node = 'X'", "found the node \"X\" in from_node"},
        {"DELETE FROM sections", "table catchments, row 1: found the section \"section-1\" in section_guid"},
        {"UPDATE catchments SET section_guid = NULL, section_name = NULL",
         "found 0 sections of the name \"\", expected 1"},
        {"INSERT INTO sections(name) VALUES ('A-B'); UPDATE catchments SET section_guid = NULL",
         "found 2 sections of the name \"A-B\", expected 1"},
        {"UPDATE nodes SET guid = 'NODE-A' WHERE guid = 'node-b'",
         "table nodes, row 2: node B: the GUID \"NODE-A\" occurs twice"},
        {"UPDATE nodes SET guid = '{node-a}' WHERE guid = 'node-b'", "table nodes, row 2: node B: the GUID"},
        {"UPDATE nodes SET name = 'A'", "table nodes, row 2: node A: the name occurs twice"},
        // Catalogues.
        {"UPDATE drenova_catalog SET catalog = 'PUMP' WHERE id = 2",
         "table drenova_catalog, row 2: found the catalogue \"PUMP\""},
        {"UPDATE drenova_catalog SET parent = 2 WHERE id = 2",
         "table drenova_catalog, row 2: found row 2 as its group"},
        {"UPDATE drenova_catalog SET parent = 2 WHERE id = 1",
         "table drenova_catalog, row 1: found row 2 as its group"},
        {"UPDATE drenova_catalog SET catalog = 'MANHOLE' WHERE id = 2", "row 2: found row 1 as its group"},
        {"UPDATE drenova_catalog SET shape = 'heart' WHERE id = 2",
         "found the shape \"heart\", expected circle, egg, box, table"},
        {"UPDATE drenova_catalog SET guid = 'GROUP-1' WHERE id = 2", "has its GUID \"GROUP-1\" already"},
        {"UPDATE drenova_catalog SET wall = 'thick' WHERE id = 2", "column wall: found a text, expected a number"},
        {"UPDATE drenova_catalog_shapes SET height = -height",
         "table drenova_catalog_shapes, row 2: found the height -100 mm below"},
    };
    for (const CCase& c : cases) {
        SCOPED_TRACE(c.m_sql);
        const CTestFolder folder;
        const std::string path = folder.File("small.gpkg");
        WriteBytes(path, SmallBytes());
        RunSql(path, c.m_sql);
        ExpectBad(folder, path, c.m_expected);
    }
}

TEST(ProjectFileDamage, GeometryOfOtherProgramsIsUnderstood) {
    struct CCase {
        const char* m_sql;
        Topology::CPoint m_expected;
    };
    const double unknown = std::nan("");
    const CCase cases[] = {
        // Big-endian point 1 2; point with height; one-part collection; with envelope; empty by flag; empty by numbers.
        {"UPDATE nodes SET geom = x'475000000000000000000000013ff00000000000004000000000000000'", {1, 2}},
        {"UPDATE nodes SET geom = x'475000000000000000000003e93ff00000000000004000000000000000bff0000000000000'",
         {1, 2}},
        {"UPDATE nodes SET geom = x'47500001000000000104000000010000000101000000000000000000f03f0000000000000040'",
         {1, 2}},
        {"UPDATE nodes SET geom = x'4750001100000000'", {unknown, unknown}},
        {"UPDATE nodes SET geom = x'47500001000000000101000000000000000000f87f000000000000f87f'", {unknown, unknown}},
        {"UPDATE nodes SET geom = x''", {unknown, unknown}},
        {"UPDATE nodes SET geom = x'4750000100000000010400000000000000'", {unknown, unknown}},
    };
    for (const CCase& c : cases) {
        SCOPED_TRACE(c.m_sql);
        const CTestFolder folder;
        const std::string path = folder.File("small.gpkg");
        WriteBytes(path, SmallBytes());
        RunSql(path, c.m_sql);
        CTestProject project;
        const auto file = CProjectFile::Open(path);
        ASSERT_TRUE(file) << file.GetError().message;
        const Topology::CPoint& point = ActiveTopology().GetNodes().front()->GetPoint();
        EXPECT_EQ(point.IsKnown(), !std::isnan(c.m_expected.m_x));
        if (point.IsKnown()) {
            EXPECT_EQ(point, c.m_expected);
        }
    }
}

TEST(ProjectFileDamage, FlippedBytesNeverBringTheProgramDown) {
    const CTestFolder folder;
    const std::string path = folder.File("small.gpkg");
    std::mt19937 random(7);
    int refusedCount = 0;
    for (int i = 0; i < 400; ++i) {
        std::string bytes = SmallBytes();
        for (int flips = 0; flips < 20; ++flips)
            bytes[random() % bytes.size()] = static_cast<char>(random() % 256);
        WriteBytes(path, bytes);
        const auto error = ErrorOf(folder, path);
        refusedCount += error ? 1 : 0;
        if (error) {
            EXPECT_FALSE(error->message.empty());
        }
    }
    EXPECT_GT(refusedCount, 0);
}
