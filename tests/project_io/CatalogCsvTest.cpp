// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/tables/CatalogCsv.h"

#include "tests/project_io/ProjectFileFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace OLMGis;
using namespace OLMGis::ProjectIo;
using namespace OLMGis::Topology;
using ::testing::HasSubstr;

namespace {

const std::string PipeHead =
    "group,name,guid,shape,inner_width_mm,inner_height_mm,wall_mm,roughness_mm,type,min_diameter_mm\n";
const std::string ManholeHead = "group,name,guid,inner_diameter_m,h1_m,h2_m,height_m\n";

Utility::Result<int> Import(const std::string& text, enmCatalogTable table = enmCatalogTable::Detect) {
    std::istringstream stream(text);
    return ImportCatalogCsv(stream, "cat.csv", table);
}

CCatalog& Catalog(std::string_view id) {
    return *CCatalogManager::Instance()->GetCatalog(id, 1);
}

std::string Export(enmCatalogKind kind) {
    std::ostringstream stream;
    EXPECT_TRUE(ExportCatalogCsv(stream, kind));
    return stream.str();
}

} // namespace

TEST(CatalogCsv, PipesOfAllShapesComeInWithTheirOrderAndData) {
    CTestProject project;
    const auto count = Import(PipeHead + "PVC,DN 300,,circle,285.2,285.2,7.4,0.1,storm,250\n"
                                         "Concrete,E 600/900,{Egg-1},egg,600,900,100,1.5,,0\n"
                                         "PVC,DN 200,,circle,190.2,,,0.1,,\n"
                                         "Concrete,B 1000/800,,box,1000,800,120,1.5,,0\n");
    ASSERT_TRUE(count) << count.GetError().message;
    EXPECT_EQ(count.Value(), 4);
    const auto groups = Catalog("PIPE").GetOwnGroups();
    ASSERT_EQ(groups.size(), 2U);
    EXPECT_EQ(groups[0]->GetName(), "PVC");
    ASSERT_EQ(groups[0]->GetSubItems().size(), 2U);
    const CPipeData expected{enmPipeShape::Circle, 285.2, 285.2, 7.4, 0.1, "storm", 250.0, {}};
    EXPECT_EQ(*groups[0]->GetSubItems()[0]->GetPipeData(), expected);
    EXPECT_EQ(groups[0]->GetSubItems()[1]->GetPipeData()->m_innerHeight, 190.2) << "a circle's second size";
    EXPECT_EQ(Catalog("PIPE").GetItembyGuid("egg-1")->GetPipeData()->m_shape, enmPipeShape::Egg);
    EXPECT_EQ(groups[1]->GetSubItems()[1]->GetPipeData()->m_shape, enmPipeShape::Box);

    const std::string guid = groups[0]->GetSubItems()[0]->GetGUID();
    CTestProject other;
    ASSERT_TRUE(Import(PipeHead + "Steel,DN 300,,circle,1,1,0,0,,0\nPVC,DN 300,,circle,2,2,0,0,,0\n"));
    EXPECT_EQ(Catalog("PIPE").GetGroupByName("PVC")->GetSubItems()[0]->GetGUID(), guid) << "made from group and name";
}

TEST(CatalogCsv, WhatIsExportedComesBackWhole) {
    std::string described;
    std::string pipes;
    std::string manholes;
    {
        CTestProject project;
        CCatalog& catalog = Catalog("PIPE");
        const auto own = catalog.AddGroup("own-guid", "Inv, \"x\"").Value();
        ASSERT_TRUE(catalog.AddPipe(
            *own, "t", "T",
            {enmPipeShape::Table, 200, 450, 1.0 / 3.0, 0.1, "č", 0, {{0, 0}, {100.0 / 3.0, 200}, {450, 0}}}));
        ASSERT_TRUE(catalog.AddPipe(*own, "e", "E", {enmPipeShape::Egg, 250, 375, 0, 0, "", 0, {}}));
        ASSERT_TRUE(Import(ManholeHead + "M,DN 1000,,1,0.3,0.90000000000000002,2.5\nM,DN 800,x,0.8,0,0,0\n"));
        pipes = Export(enmCatalogKind::Pipe);
        manholes = Export(enmCatalogKind::Manhole);
        described = DescribeProject();
        const auto again = Import(pipes);
        ASSERT_TRUE(again) << again.GetError().message << pipes;
        EXPECT_EQ(again.Value(), 0) << "everything is there already";
        EXPECT_EQ(DescribeProject(), described);
    }
    CTestProject project;
    EXPECT_EQ(Import(pipes).Value(), 2);
    EXPECT_EQ(Import(manholes).Value(), 2);
    EXPECT_EQ(DescribeProject(), described);
}

TEST(CatalogCsv, FaultsNameLineAndColumnAndLeaveTheCatalogueAlone) {
    struct CCase {
        std::string text;
        std::string message;
    };
    const CCase cases[] = {
        {"group,name,shape\n", "line 1: found no column inner_width_mm"},
        {PipeHead.substr(0, PipeHead.size() - 1) + ",colour\n", "line 1: found the column \"colour\""},
        {PipeHead + "P,A,,circle,100,101,0,0,,0\n", "line 2, column inner_height_mm: found 101 for a circle"},
        {PipeHead + "P,A,,egg,600,800,0,0,,0\n", "line 2, column inner_height_mm: found 800 for the shape egg"},
        {PipeHead + "P,A,,oval,600,800,0,0,,0\n", "line 2, column shape: found \"oval\""},
        {PipeHead + "P,A,,box,600,,0,0,,0\n", "line 2, column inner_height_mm: found \"\""},
        {PipeHead + "P,A,,circle,0,0,0,0,,0\n", "line 2, column inner_width_mm: found \"0\""},
        {PipeHead + "P,A,,circle,-100,-100,0,0,,0\n", "line 2, column inner_width_mm: found \"-100\""},
        {PipeHead + "P,A,,circle,100,100,0,nan,,0\n", "line 2, column roughness_mm: found \"nan\""},
        {PipeHead + "P,A,,circle,100,100,0,,,0\n", "line 2, column roughness_mm: found \"\""},
        {PipeHead + "P,A,,circle,100,100,-1,0,,0\n", "line 2, column wall_mm: found \"-1\""},
        {PipeHead + ",A,,circle,100,100,0,0,,0\n", "line 2, column group: found an empty text"},
        {PipeHead + "P,,,circle,100,100,0,0,,0\n", "line 2, column name: found an empty text"},
        {PipeHead + "P,A,,circle,1,1,0,0,,0\n\nP,A,,circle,2,2,0,0,,0\n",
         "line 4, column name: found \"A\", which line 2"},
        {PipeHead + "P,A,g,circle,1,1,0,0,,0\nP,A,h,circle,2,2,0,0,,0\n",
         "line 3, column name: found \"A\", which line 2"},
        {PipeHead + "P,A,g,circle,1,1,0,0,,0\nP,B,{G},circle,2,2,0,0,,0\n", "line 3, column guid: found \"{G}\""},
        {PipeHead + "P,A,old,circle,1,1,0,0,,0\n", "line 2, column guid: found \"old\", which an entry"},
        {PipeHead + "Old,B,,circle,1,1,0,0,,0\n", "line 2, column group: found \"Old\""},
        {PipeHead + "P,A,,table,100,100,0,0,,0\n", "line 2, column points: found \"\""},
        {"group,name,shape,inner_width_mm,inner_height_mm,roughness_mm,points\nP,A,table,9,9,0,0:1 5:2 4:0\n",
         "line 2, column points: found \"0:1 5:2 4:0\""},
        {ManholeHead + "M,A,,1000,300,900,2500\n", "line 2, column inner_diameter_m: found \"1000\""},
        {ManholeHead + "M,A,,1,0.3,,2.5\n", "line 2, column h2_m: found \"\""},
    };
    for (const CCase& each : cases) {
        CTestProject project;
        const auto old = Catalog("PIPE").AddGroup("group", "Old").Value();
        ASSERT_TRUE(Catalog("PIPE").AddPipe(*old, "old", "A", {}));
        const std::string before = DescribeProject();
        const auto result = Import(each.text);
        ASSERT_FALSE(result) << each.text;
        EXPECT_THAT(result.GetError().message, HasSubstr("cat.csv: " + each.message));
        EXPECT_EQ(DescribeProject(), before);
    }
    CTestProject project;
    EXPECT_FALSE(Import(ManholeHead + "M,A,,1,0.3,0.9,2.5\n", enmCatalogTable::Pipe)) << "given as pipes";
}
