// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "tests/cli/Program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <filesystem>
#include <string>

using nlohmann::json;
using testing::HasSubstr;
using testing::Not;

namespace {

const std::string PipeHead =
    "group,name,guid,shape,inner_width_mm,inner_height_mm,wall_mm,roughness_mm,type,min_diameter_mm\n";

class Catalogue : public testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(Drenova({"import", SampleNetwork(), "-o", m_project}).m_code, 0); }

    json List(const std::string& project) const {
        return json::parse(Drenova({"catalog", "list", project, "--json"}).m_out);
    }
    json PipeOf(const std::string& section) const {
        return json::parse(Drenova({"get", m_project, "PIPE_REF", "--names", section, "--format", "json"}).m_out)
            .at(0)
            .at("PIPE_REF");
    }

    CFolder m_folder;
    const std::string m_project = m_folder / "town.gpkg";
};

} // namespace

TEST_F(Catalogue, ListsGroupsAndTheirItems) {
    const json groups = List(m_project);
    const auto found = std::find_if(groups.begin(), groups.end(),
                                    [](const json& group) { return group.at("name") == "Vitrified clay EN 295"; });
    ASSERT_NE(found, groups.end());
    EXPECT_EQ(found->at("kind"), "pipe");
    EXPECT_EQ(found->at("built_in"), true);
    EXPECT_EQ(found->at("item_count"), 18);
    for (const std::string& word : {std::string("Vitrified clay EN 295"), found->at("guid").get<std::string>()}) {
        const json shown = json::parse(Drenova({"catalog", "show", m_project, word, "--json"}).m_out);
        ASSERT_EQ(shown.at("items").size(), 18U);
        const json& pipe = shown.at("items").at(6);
        EXPECT_EQ(pipe.at("name"), "Clay DN 300");
        EXPECT_EQ(pipe.at("shape"), "circle");
        EXPECT_EQ(pipe.at("inner_width_mm"), 300.0);
        EXPECT_EQ(pipe.at("wall_mm"), 27.5);
    }
    EXPECT_THAT(Drenova({"catalog", "list", m_project}).m_out, HasSubstr("pipe     Vitrified clay EN 295"));
    EXPECT_THAT(Drenova({"catalog", "list", m_project, "--kind", "manhole"}).m_out, Not(HasSubstr("clay")));
    EXPECT_THAT(Drenova({"catalog", "show", m_project, "Manhole EN 1917 DN 1000"}).m_out,
                HasSubstr("Manhole DN 1000 H 2.50"));
}

TEST_F(Catalogue, ImportsGroupsWholeOrNotAtAll) {
    const std::string before = ReadFile(m_project);
    const std::string bad = m_folder.Write("bad.csv", PipeHead + "Town,A,,circle,300,300,10,0.1,,0\n"
                                                                 "Town,B,,circle,wide,300,10,0.1,,0\n");
    const CEnded refused = Drenova({"catalog", "import", m_project, bad});
    EXPECT_EQ(refused.m_code, 3);
    EXPECT_THAT(refused.m_err, HasSubstr("bad.csv: line 3, column inner_width_mm: found \"wide\""));
    const std::string taken = m_folder.Write("taken.csv", PipeHead + "Vitrified clay EN 295,A,,circle,9,9,1,1,,0\n");
    EXPECT_EQ(Drenova({"catalog", "import", m_project, taken}).m_code, 3);
    EXPECT_TRUE(ReadFile(m_project) == before);

    const std::string pipes = m_folder.Write("pipes.csv", PipeHead + "Town,A,,circle,300,300,10,0.1,storm,250\n"
                                                                     "Town,E,,egg,600,900,90,1.5,,\n");
    const std::string other = m_folder / "other.gpkg";
    const CEnded done = Drenova({"catalog", "import", m_project, pipes, "-o", other});
    EXPECT_EQ(done.m_code, 0);
    EXPECT_THAT(done.m_err, HasSubstr("2 items in 1 group added"));
    EXPECT_TRUE(ReadFile(m_project) == before) << "the other file was written";
    EXPECT_EQ(List(other).size(), List(m_project).size() + 1);
    const json shown = json::parse(Drenova({"catalog", "show", other, "Town", "--json"}).m_out);
    EXPECT_EQ(shown.at("built_in"), false);
    EXPECT_TRUE(shown.at("standard").is_null());
    EXPECT_EQ(shown.at("items").at(0).at("type"), "storm");
    EXPECT_EQ(shown.at("items").at(0).at("min_diameter_mm"), 250.0);
    EXPECT_EQ(shown.at("items").at(1).at("inner_height_mm"), 900.0);

    const std::string manholes =
        m_folder.Write("manholes.csv", "group,name,guid,inner_diameter_m,h1_m,h2_m,height_m\nTown,M,,1,0.3,0.9,2.5\n");
    EXPECT_EQ(Drenova({"catalog", "import", other, manholes, "--kind", "pipe"}).m_code, 3) << "--kind says pipes";
    EXPECT_EQ(Drenova({"catalog", "import", other, manholes}).m_code, 0);
    EXPECT_EQ(Drenova({"catalog", "show", other, "Town"}).m_code, 2) << "pipes or manholes?";
    EXPECT_THAT(Drenova({"catalog", "show", other, "Town", "--kind", "manhole"}).m_out, HasSubstr("0.9"));
}

TEST_F(Catalogue, WrongWordsTouchNothing) {
    const std::string before = ReadFile(m_project);
    const std::string table = m_folder.Write("t.csv", PipeHead);
    const std::vector<std::vector<std::string>> cases = {{"catalog", "list", m_project, "extra"},
                                                         {"catalog", "show", m_project},
                                                         {"catalog", "show", m_project, "No such group"},
                                                         {"catalog", "show", m_project, "x", "-o", "o.gpkg"},
                                                         {"catalog", "import", m_project},
                                                         {"catalog", "import", m_project, table, "--json"},
                                                         {"catalog", "eat", m_project},
                                                         {"settings", m_project, "pipe_group=No such group"}};
    for (const auto& arguments : cases)
        EXPECT_EQ(Drenova(arguments).m_code, 2) << arguments[1] << " " << arguments.back();
    EXPECT_EQ(Drenova({"catalog", "import", m_project, m_folder / "none.csv"}).m_code, 4);
    EXPECT_TRUE(ReadFile(m_project) == before);
}

/// Pipes go by name or GUID wherever they are named; a name that several have is refused.
TEST_F(Catalogue, SectionsTakePipesByNameOrGuid) {
    const json clay = json::parse(Drenova({"catalog", "show", m_project, "Vitrified clay EN 295", "--json"}).m_out);
    const std::string guid = clay.at("items").at(6).at("guid");
    EXPECT_EQ(Drenova({"set", m_project, "PIPE_REF=Clay DN 300", "--names", "MAIN-01"}).m_code, 0);
    EXPECT_EQ(PipeOf("MAIN-01"), guid);
    const CEnded byGuid = Drenova({"set", m_project, "PIPE_REF=" + guid, "--names", "MAIN-02"});
    EXPECT_EQ(byGuid.m_code, 0);
    EXPECT_THAT(byGuid.m_err, Not(HasSubstr("warning")));
    EXPECT_EQ(PipeOf("MAIN-02"), guid);
    EXPECT_EQ(
        Drenova({"set", m_project, "MANHOLE_ID=Manhole DN 1000 H 2.50", "--on", "nodes", "--names", "M001"}).m_code, 0);
    const std::string twins = m_folder.Write("twins.csv", PipeHead + "One,Twin,,circle,300,300,10,0.1,,0\n"
                                                                     "Two,Twin,,circle,300,300,10,0.1,,0\n");
    EXPECT_EQ(Drenova({"catalog", "import", m_project, twins}).m_code, 0);
    const std::string before = ReadFile(m_project);
    const CEnded twin = Drenova({"set", m_project, "PIPE_REF=Twin", "--names", "MAIN-01"});
    EXPECT_EQ(twin.m_code, 2);
    EXPECT_THAT(twin.m_err, HasSubstr("2 pipes"));
    EXPECT_TRUE(ReadFile(m_project) == before);
    const CEnded unknown = Drenova({"set", m_project, "PIPE_REF=Later", "--names", "MAIN-01"});
    EXPECT_EQ(unknown.m_code, 0) << "its catalogue may come later";
    EXPECT_THAT(unknown.m_err, HasSubstr("warning: PIPE_REF: no pipe"));
}

TEST_F(Catalogue, ProjectsHaveADefaultGroupOfPipes) {
    EXPECT_EQ(Drenova({"settings", m_project, "pipe_group=Concrete EN 1916 class 135"}).m_code, 0);
    EXPECT_THAT(Drenova({"settings", m_project}).m_out, HasSubstr("pipe_group=Concrete EN 1916 class 135\n"));
    EXPECT_EQ(Drenova({"settings", m_project, "pipe_group="}).m_code, 0);
    EXPECT_THAT(Drenova({"settings", m_project}).m_out, HasSubstr("pipe_group=\n"));
}

/// A damaged installation is reported; verbs that need no catalogue work.
TEST_F(Catalogue, DamagedInstallationsAreNamed) {
    const std::string data = m_folder / "data";
    std::filesystem::copy(std::string(DRENOVA_SOURCE_DIR) + "/data", data, std::filesystem::copy_options::recursive);
    const std::string pipes = ReadFile(data + "/catalogs/pipes.json");
    m_folder.Write("data/catalogs/pipes.json", pipes.substr(0, pipes.size() / 2));
    const auto run = [&data](std::vector<std::string> arguments) {
        return Drenova(CStart{std::move(arguments), {{"DRENOVA_DATA", data}}});
    };
    EXPECT_EQ(run({"--version"}).m_code, 0);
    for (const auto& arguments : {std::vector<std::string>{"info", m_project},
                                  {"new", m_folder / "new.gpkg"},
                                  {"import", SampleNetwork(), "-o", m_folder / "new.gpkg"}}) {
        const CEnded ended = run(arguments);
        EXPECT_EQ(ended.m_code, 4) << arguments.front();
        EXPECT_THAT(ended.m_err, HasSubstr("catalogs/pipes.json: not a catalogue"));
    }
    EXPECT_THAT(m_folder.List(), Not(HasSubstr("new.gpkg")));
}
