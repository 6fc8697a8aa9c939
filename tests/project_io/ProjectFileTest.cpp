// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/store/ProjectFile.h"

#include "tests/project_io/ProjectFileFixture.h"
#include "tests/support/ScriptedHost.h"

#include <gmock/gmock.h>

#include <array>
#include <cmath>
#include <cstdio>

using namespace OLMGis;
using ProjectIo::CProjectFile;
using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

/// What a command prints, empty when it cannot be run or fails.
std::string OutputOf(const std::string& command) {
    std::string output;
    FILE* const pipe = ::popen((command + " 2>&1").c_str(), "r");
    if (pipe == nullptr)
        return {};
    std::array<char, 4096> piece{};
    while (const std::size_t size = std::fread(piece.data(), 1, piece.size(), pipe))
        output.append(piece.data(), size);
    return ::pclose(pipe) == 0 ? output : std::string();
}

/// Opens a file into a project of its own and describes that.
std::string Reopened(const std::string& path, std::vector<std::string>* warnings = nullptr) {
    CTestProject project;
    const auto file = CProjectFile::Open(path);
    if (!file)
        return file.GetError().message;
    if (warnings != nullptr)
        *warnings = file->GetWarnings();
    return DescribeProject();
}

/// A file with the small network.
std::string SmallFile(const CTestFolder& folder) {
    CTestProject project;
    FillSmall();
    std::string path = folder.File("small.gpkg");
    const auto file = CProjectFile::Create(path, false);
    EXPECT_TRUE(file) << file.GetError().message;
    return path;
}

} // namespace

TEST(ProjectFile, SavingAndOpeningIsTheIdentity) {
    const CTestFolder folder;
    for (unsigned seed = 1; seed <= 60; ++seed) {
        SCOPED_TRACE(seed);
        const std::string first = folder.File("first.gpkg");
        const std::string second = folder.File("second.gpkg");
        std::string before;
        {
            CTestProject project;
            FillRandomly(seed);
            before = DescribeProject();
            const auto file = CProjectFile::Create(first, true);
            ASSERT_TRUE(file) << file.GetError().message;
        }
        CTestProject project;
        const auto file = CProjectFile::Open(first);
        ASSERT_TRUE(file) << file.GetError().message;
        EXPECT_THAT(file->GetWarnings(), IsEmpty());
        ASSERT_EQ(DescribeProject(), before);
        // The same content gives the same bytes, from any source.
        ASSERT_TRUE(CProjectFile::Create(second, true));
        ASSERT_TRUE(BytesOf(first) == BytesOf(second));
    }
    EXPECT_EQ(folder.List(), "first.gpkg second.gpkg");
}

TEST(ProjectFile, EverythingThatReadsSqliteFindsItSound) {
    const CTestFolder folder;
    const std::string path = folder.File("project.gpkg");
    for (unsigned seed = 1; seed <= 5; ++seed) {
        CTestProject project;
        FillRandomly(seed);
        ASSERT_TRUE(CProjectFile::Create(path, true));
        EXPECT_EQ(RunSql(path, "PRAGMA integrity_check"), "ok");
        EXPECT_EQ(RunSql(path, "PRAGMA foreign_key_check"), "");
    }
}

TEST(ProjectFile, NotANumberIsKeptAsNullAndInfinityAsItIs) {
    const CTestFolder folder;
    const std::string path = folder.File("project.gpkg");
    {
        CTestProject project;
        FillSmall();
        const auto section = ActiveTopology().GetSections().front();
        Data::CDataRW::Write("FLOW_RAIN", section, std::nan(""), nullptr);
        Data::CDataRW::Write("FLOW_TOTAL", section, -HUGE_VAL, nullptr);
        ASSERT_TRUE(CProjectFile::Create(path, false));
    }
    CTestProject project;
    ASSERT_TRUE(CProjectFile::Open(path));
    Data::CDataBox box;
    EXPECT_EQ(Data::CDataRW::Read("FLOW_RAIN", ActiveTopology().GetSections().front(), box, 0, nullptr), 0);
    EXPECT_EQ(Data::CDataRW::Read("FLOW_TOTAL", ActiveTopology().GetSections().front(), box, 0, nullptr), 1);
    EXPECT_EQ(box.AsDouble(), -HUGE_VAL);
}

TEST(ProjectFile, OpensInAGisWithLayersFieldsAndUnits) {
    ASSERT_THAT(OutputOf("ogrinfo --version"), HasSubstr("GDAL")) << "gdal-bin is a package of the tests";
    const CTestFolder folder;
    const std::string path = folder.File("project.gpkg");
    CTestProject project;
    FillSmall();
    System::CProjectSettings::Instance()->Set(System::CProjectSettings::Crs, "EPSG:3765");
    ASSERT_TRUE(CProjectFile::Create(path, false));

    const std::string nodes = OutputOf("ogrinfo -ro -so " + path + " nodes");
    EXPECT_THAT(nodes, AllOf(HasSubstr("Geometry: Point"), HasSubstr("Feature Count: 2"),
                             HasSubstr("Extent: (100.000000, 200.000000) - (160.000000, 280.000000)"),
                             HasSubstr("HTRS96 / Croatia TM"), HasSubstr("TERRAIN_1: Real")));
    const std::string sections = OutputOf("ogrinfo -ro " + path + " sections");
    EXPECT_THAT(sections, AllOf(HasSubstr("Geometry: Line String"), HasSubstr("LINESTRING (100 200,160 280)"),
                                HasSubstr("from_node (String) = A"), HasSubstr("to_guid (String) = node-b"),
                                HasSubstr("SECTION_SLOPE (Real) = 3.5"), HasSubstr("FLOW_WASTE_PER_S (Integer64) = 1"),
                                testing::Not(HasSubstr("ERROR"))));
    EXPECT_THAT(
        RunSql(path, "SELECT title || '; ' || description FROM gpkg_data_columns WHERE column_name = 'SECTION_SLOPE'"),
        HasSubstr("Design slope; Design slope, 1/1000"));
    const std::string catchments = OutputOf("ogrinfo -ro " + path + " catchments");
    EXPECT_THAT(catchments, AllOf(HasSubstr("POLYGON ((100 200,200 200,200 300,100 300,100 200))"),
                                  HasSubstr("section_name (String) = A-B"), HasSubstr("kinds (Integer64) = 3")));
    const std::string all = OutputOf("ogrinfo -ro -al -so " + path);
    EXPECT_THAT(all, AllOf(HasSubstr("Layer name: drenova_settings"), testing::Not(HasSubstr("ERROR")),
                           testing::Not(HasSubstr("Warning"))));
    EXPECT_EQ(folder.List(), "project.gpkg");
}

TEST(ProjectFile, AGisMayChangeIt) {
    ASSERT_THAT(OutputOf("ogr2ogr --version"), HasSubstr("GDAL")) << "gdal-bin is a package of the tests";
    const CTestFolder folder;
    const std::string path = SmallFile(folder);
    // Adding a node goes through the triggers of the spatial index.
    const std::string extra = folder.File("extra.geojson");
    WriteBytes(extra, R"({"type":"FeatureCollection","features":[{"type":"Feature","properties":{"name":"Č"},)"
                      R"("geometry":{"type":"Point","coordinates":[7,8,9]}}]})");
    OutputOf("ogr2ogr -append " + path + " " + extra + " -nln nodes");
    OutputOf("ogrinfo " + path +
             " -sql \"UPDATE nodes SET network_order = 0, TERRAIN_1 = NULL WHERE guid = 'node-b'\"");
    OutputOf("ogrinfo " + path + " -sql \"UPDATE nodes SET geom = NULL WHERE guid = 'node-a'\"");
    EXPECT_EQ(RunSql(path, "SELECT rtreecheck('rtree_nodes_geom')"), "ok");
    EXPECT_EQ(RunSql(path, "SELECT count(*) FROM rtree_nodes_geom"), "2");

    CTestProject project;
    const auto file = CProjectFile::Open(path);
    ASSERT_TRUE(file) << file.GetError().message;
    const auto& nodes = ActiveTopology().GetNodes();
    ASSERT_EQ(nodes.size(), 3U);
    EXPECT_EQ(nodes[0]->GetName(), "B");
    EXPECT_FALSE(nodes[1]->GetPoint().IsKnown());
    EXPECT_EQ(nodes[2]->GetName(), "Č");
    EXPECT_EQ(nodes[2]->GetPoint(), (Topology::CPoint{7, 8}));
    EXPECT_EQ(nodes[2]->GetGuid(), Utility::CUtility::MakeGuid("nodes", "Č", 3));
}

TEST(ProjectFile, WhatOthersDoToRowsIsReadAsLongAsItMakesSense) {
    struct CCase {
        const char* m_sql;
        const char* m_expected; ///< in the description, or in a warning
    };
    const CCase cases[] = {
        {"UPDATE sections SET from_guid = NULL, to_guid = ''", "section section-1 A-B node-a > node-b"},
        {"UPDATE sections SET from_guid = NULL, from_node = ''", "section section-1 A-B  > node-b"},
        {"UPDATE sections SET from_guid = '{NODE-A}'", "section section-1 A-B node-a > node-b"},
        {"UPDATE nodes SET name = 'Z' WHERE name = 'A'", "from_node names \"A\" but from_node is the GUID of \"Z\""},
        {"UPDATE catchments SET section_guid = NULL", "catchment catchment-1 C of section-1"},
        {"DELETE FROM catchments", "section section-1 A-B node-a > node-b"},
        {"INSERT INTO nodes(guid) VALUES ('x')", "row 3 of the layer nodes had no name and is now nodes-3"},
        {"INSERT INTO sections(from_node) VALUES ('B')", " node-b > "},
        {"UPDATE sections SET name = CAST(x'41ff42' AS TEXT)", "section section-1 A\xEF\xBF\xBD"
                                                               "B "},
        {"ALTER TABLE nodes ADD COLUMN TERRAIN_2 REAL AS (zeroblob(1000000000))",
         "the column \"TERRAIN_2\" of the layer nodes is computed and is not read; saving will drop it"},
        {"ALTER TABLE nodes ADD COLUMN terrain_2 REAL", "the column \"terrain_2\" of the layer nodes differs from"},
        {"ALTER TABLE drenova_texts ADD COLUMN mine", "the column \"mine\" of the table drenova_texts"},
        {"CREATE VIRTUAL TABLE words USING fts5(a)", "the table \"words\" is a virtual table of another program"},
        {"UPDATE gpkg_geometry_columns SET srs_id = 4326 WHERE table_name = 'nodes'",
         "the layer nodes has the coordinate system 4326, the project -1"},
        {"UPDATE nodes SET TERRAIN_1 = 7", "TERRAIN_1=0x1.cp+2"},
    };
    for (const CCase& c : cases) {
        SCOPED_TRACE(c.m_sql);
        const CTestFolder folder;
        const std::string path = SmallFile(folder);
        RunSql(path, c.m_sql);
        std::vector<std::string> warnings;
        const std::string project = Reopened(path, &warnings);
        EXPECT_THAT(fmt::format("{}\n{}", project, fmt::join(warnings, "\n")), HasSubstr(c.m_expected));
    }
}

TEST(ProjectFile, NoticesStayFew) {
    const CTestFolder folder;
    const std::string path = SmallFile(folder);
    std::string sql = "BEGIN;";
    for (int i = 0; i < 300; ++i)
        sql += fmt::format("ALTER TABLE drenova_texts ADD COLUMN extra{};", i);
    RunSql(path, sql + "COMMIT");
    std::vector<std::string> warnings;
    Reopened(path, &warnings);
    EXPECT_EQ(warnings.size(), 101U);
}

TEST(ProjectFile, AnOldVersionIsReplacedOnDemandOnly) {
    const CTestFolder folder;
    const std::string path = SmallFile(folder);
    CTestProject project;
    const auto refused = CProjectFile::Create(path, false);
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.GetError().kind, Utility::enmErrorKind::Refused);
    EXPECT_THAT(refused.GetError().message, HasSubstr("small.gpkg: exists already"));
    EXPECT_THAT(Reopened(path), HasSubstr("section-1"));

    auto file = CProjectFile::Create(path, true);
    ASSERT_TRUE(file);
    EXPECT_EQ(Reopened(path), "");
    // After SaveAs the object refers to the other file.
    const std::string other = folder.File("other.gpkg");
    ASSERT_TRUE(file->SaveAs(other, false));
    FillSmall();
    ASSERT_TRUE(file->Save());
    EXPECT_EQ(file->GetPath(), other);
    EXPECT_EQ(Reopened(path), "");
    EXPECT_EQ(Reopened(other), DescribeProject());
}

TEST(ProjectFile, GivingUpChangesNothing) {
    const CTestFolder folder;
    const std::string path = SmallFile(folder);
    const std::string bytes = BytesOf(path);
    CTestProject project;
    auto file = CProjectFile::Open(path);
    ASSERT_TRUE(file);
    {
        CScriptedHost host;
        host.m_progressCallsUntilCancel = 0;
        const auto status = file->Save();
        ASSERT_FALSE(status);
        EXPECT_EQ(status.GetError().kind, Utility::enmErrorKind::Cancelled);
        CTestProject other;
        host.m_progressCallsUntilCancel = 0;
        const auto opened = CProjectFile::Open(path);
        ASSERT_FALSE(opened);
        EXPECT_EQ(opened.GetError().kind, Utility::enmErrorKind::Cancelled);
    }
    EXPECT_EQ(folder.List(), "small.gpkg");
    EXPECT_TRUE(BytesOf(path) == bytes);
    EXPECT_TRUE(file->Save());
}

TEST(ProjectFile, ColumnsOfAttributesDoNotClashWithTheFixedOnes) {
    std::set<std::pair<Data::enmEntityKind, std::string>> names; // without case, as SQL has it
    for (const char* fixed : {"FID", "GEOM", "GUID", "NAME", "NETWORK_ORDER", "FROM_NODE", "TO_NODE", "FROM_GUID",
                              "TO_GUID", "SECTION_NAME", "SECTION_GUID"})
        for (const auto kind :
             {Data::enmEntityKind::Node, Data::enmEntityKind::Section, Data::enmEntityKind::Catchment})
            names.emplace(kind, fixed);
    for (const auto& definition : Data::CDataConfiguration::Instance()->GetDataDefinitions())
        EXPECT_TRUE(names.emplace(definition->m_entityKind, Utility::CUtility::ToUpper(definition->m_id)).second)
            << definition->m_id;
}
