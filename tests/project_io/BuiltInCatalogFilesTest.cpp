// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_core/PipeManager.h"
#include "host/project_io/exchange/ExchangeExport.h"
#include "host/project_io/exchange/ExchangeImport.h"
#include "host/project_io/tables/CatalogCsv.h"
#include "host/project_io/tables/CsvLoad.h"
#include "tests/project_io/ProjectFileFixture.h"

#include <gmock/gmock.h>

using namespace OLMGis;
using namespace OLMGis::ProjectIo;
using namespace OLMGis::Topology;
using testing::HasSubstr;
using testing::Not;

namespace {

constexpr const char* BuiltInPipe = "PVC-U SN 8 DN/OD 315";
constexpr const char* BuiltInGroup = "PVC-U EN 1401 SN 8 (SDR 34)";

CCatalog& Pipes() {
    return *CCatalogManager::Instance()->GetCatalog(CCatalogManager::PipeCatalog, 1);
}

/// Nodes A and B, a section with a built-in pipe and one with a pipe of the project's own group.
void FillWithBothKinds() {
    const auto own = Pipes().AddGroup("own-group", "Old town").Value();
    ASSERT_TRUE(Pipes().AddPipe(*own, "own-pipe", "Brick 500", {enmPipeShape::Circle, 500, 500, 120, 3, "b", 0, {}}));
    CNode* const a = ActiveTopology().AddNode("a", "A", {0.0, 0.0}).Value().get();
    CNode* const b = ActiveTopology().AddNode("b", "B", {10.0, 0.0}).Value().get();
    const auto first = ActiveTopology().AddSection("s1", "S1", a, b, {}).Value();
    const auto second = ActiveTopology().AddSection("s2", "S2", a, b, {}).Value();
    const std::string guid = Pipes().GetItemsByName(BuiltInPipe).front()->GetGUID();
    ASSERT_NE(Data::CDataRW::Write("PIPE_REF", first, Data::CDataBox(guid), nullptr), 0);
    ASSERT_NE(Data::CDataRW::Write("PIPE_REF", second, Data::CDataBox("own-pipe"), nullptr), 0);
}

void ExpectBothPipes() {
    const auto& sections = ActiveTopology().GetSections();
    ASSERT_EQ(sections.size(), 2U);
    ASSERT_NE(sections[0]->GetPipe(), nullptr);
    EXPECT_EQ(sections[0]->GetPipe()->GetName(), BuiltInPipe);
    EXPECT_TRUE(sections[0]->GetPipe()->IsBuiltIn());
    ASSERT_NE(sections[1]->GetPipe(), nullptr);
    EXPECT_EQ(sections[1]->GetPipe()->GetName(), "Brick 500");
    EXPECT_FALSE(sections[1]->GetPipe()->IsBuiltIn());
    EXPECT_EQ(Pipes().GetOwnGroups().size(), 1U);
}

} // namespace

TEST(BuiltInCatalogFiles, ProjectFilesContainTheOwnCatalogueAlone) {
    const CTestFolder folder;
    const std::string path = folder.File("p.gpkg");
    {
        CTestProject project;
        FillWithBothKinds();
        ASSERT_TRUE(ProjectIo::CProjectFile::Create(path, false));
    }
    EXPECT_EQ(RunSql(path, "SELECT group_concat(name) FROM drenova_catalog"), "Old town,Brick 500");
    CTestProject project;
    auto file = ProjectIo::CProjectFile::Open(path);
    ASSERT_TRUE(file) << file.GetError().message;
    ExpectBothPipes();
    ASSERT_TRUE(file->Save());
    EXPECT_EQ(RunSql(path, "SELECT count(*) FROM drenova_catalog"), "2");
}

TEST(BuiltInCatalogFiles, ExchangeFilesAndTablesContainTheOwnCatalogueAlone) {
    std::stringstream exchange;
    {
        CTestProject project;
        FillWithBothKinds();
        ASSERT_TRUE(ExportExchange(exchange));
        std::ostringstream table;
        ASSERT_TRUE(ExportCatalogCsv(table, enmCatalogKind::Pipe));
        EXPECT_THAT(table.str(), HasSubstr("Brick 500"));
        EXPECT_THAT(table.str(), Not(HasSubstr("PVC")));
        std::ostringstream manholes;
        ASSERT_TRUE(ExportCatalogCsv(manholes, enmCatalogKind::Manhole));
        EXPECT_EQ(manholes.str(), "group,name,guid,inner_diameter_m,h1_m,h2_m,height_m\n");
    }
    EXPECT_THAT(exchange.str(), HasSubstr("Old town"));
    EXPECT_THAT(exchange.str(), Not(HasSubstr("EN 1401")));
    CTestProject project;
    const auto imported = ImportExchange(exchange, "town.geojson");
    ASSERT_TRUE(imported) << imported.GetError().message;
    ExpectBothPipes();
}

TEST(BuiltInCatalogFiles, GroupsThatCollideAreReportedByBothNames) {
    struct CCase {
        std::string m_sql;
        std::string m_expected;
    };
    std::string groupGuid;
    std::string pipeGuid;
    {
        CTestProject project;
        groupGuid = Pipes().GetGroupByName(BuiltInGroup)->GetGUID();
        pipeGuid = Pipes().GetItemsByName(BuiltInPipe).front()->GetGUID();
    }
    const std::string builtIn = fmt::format("the built-in group \"{}\"", BuiltInGroup);
    for (const CCase& each :
         {CCase{fmt::format("UPDATE drenova_catalog SET name = '{}' WHERE id = 1", BuiltInGroup),
                fmt::format("catalogue group \"{}\": {} has its name already", BuiltInGroup, builtIn)},
          CCase{fmt::format("UPDATE drenova_catalog SET guid = '{}' WHERE id = 1", groupGuid),
                fmt::format("catalogue group \"Old town\": {} has its GUID", builtIn)},
          CCase{fmt::format("UPDATE drenova_catalog SET guid = '{}' WHERE id = 2", pipeGuid),
                fmt::format("catalogue item \"Brick 500\": the built-in item \"{}\"", BuiltInPipe)}}) {
        const CTestFolder folder;
        const std::string path = folder.File("p.gpkg");
        {
            CTestProject project;
            FillWithBothKinds();
            ASSERT_TRUE(ProjectIo::CProjectFile::Create(path, false));
        }
        RunSql(path, each.m_sql);
        CTestProject project;
        const auto file = ProjectIo::CProjectFile::Open(path);
        ASSERT_FALSE(file) << each.m_sql;
        EXPECT_EQ(file.GetError().kind, Utility::enmErrorKind::BadInput);
        EXPECT_THAT(file.GetError().message, HasSubstr("table drenova_catalog, row "));
        EXPECT_THAT(file.GetError().message, HasSubstr(each.m_expected));
    }
    CTestProject project;
    std::istringstream table("group,name,shape,inner_width_mm,roughness_mm\n" + std::string(BuiltInGroup) +
                             ",DN 1,circle,100,0.1\n");
    const auto imported = ImportCatalogCsv(table, "cat.csv");
    ASSERT_FALSE(imported);
    EXPECT_THAT(imported.GetError().message, HasSubstr("line 2, column group: found"));
    EXPECT_THAT(imported.GetError().message, HasSubstr("built-in catalogue"));
}

/// Exchange files and tables refer to built-in entries as they refer to own ones.
TEST(BuiltInCatalogFiles, ReferencesMayBeNames) {
    CTestProject project;
    std::istringstream exchange(R"({"type": "FeatureCollection", "features": [
        {"type": "Feature", "geometry": null, "properties": {"layer": "node", "name": "A"}},
        {"type": "Feature", "geometry": null, "properties": {"layer": "node", "name": "B"}},
        {"type": "Feature", "geometry": null, "properties": {"layer": "section", "name": "S1", "from": "A", "to": "B",
         "length": 10, "pipe": "Concrete DN 600"}}]})");
    const auto imported = ImportExchange(exchange, "town.geojson");
    ASSERT_TRUE(imported) << imported.GetError().message;
    const auto section = ActiveTopology().GetSections().front();
    EXPECT_EQ(CPipeManager::Instance()->GetInnerDiameter(section->GetPipe()), 600.0);

    const auto load = [](const std::string& text) {
        std::istringstream table(text);
        return LoadCsv(table, "pipes.csv", Data::enmEntityKind::Section);
    };
    ASSERT_TRUE(load("name,PIPE_REF\nS1,Clay DN 300\n"));
    EXPECT_EQ(section->GetPipe()->GetName(), "Clay DN 300");
    for (const char* group : {"g1", "g2"})
        ASSERT_TRUE(Pipes().AddPipe(*Pipes().AddGroup(group, group).Value(), group + std::string("p"), "DN 1", {}));
    const auto ambiguous = load("name,PIPE_REF\nS1,DN 1\n");
    ASSERT_FALSE(ambiguous);
    EXPECT_THAT(ambiguous.GetError().message,
                HasSubstr("line 2, column PIPE_REF: found \"DN 1\", a name that 2 pipes"));
    EXPECT_EQ(section->GetPipe()->GetName(), "Clay DN 300");
}
