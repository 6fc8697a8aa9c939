// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "tests/cli/Program.h"
#include "tests/project_io/ProjectFileFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

using nlohmann::json;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

namespace {

constexpr const char* Network = R"({"type":"FeatureCollection","features":[
{"type":"Feature","properties":{"layer":"node","name":"A"},"geometry":{"type":"Point","coordinates":[0,0]}},
{"type":"Feature","properties":{"layer":"node","name":"B"},"geometry":{"type":"Point","coordinates":[50,0]}},
{"type":"Feature","properties":{"layer":"node","name":"C"},"geometry":{"type":"Point","coordinates":[90,0]}},
{"type":"Feature","properties":{"layer":"section","name":"AB","from":"A","to":"B"},"geometry":{"type":"LineString","coordinates":[[0,0],[50,0]]}},
{"type":"Feature","properties":{"layer":"section","name":"BC","from":"B","to":"C","length":40},"geometry":null},
{"type":"Feature","properties":{"layer":"catchment","section":"AB","kinds":["rain"],"area":1},"geometry":null}]})";

class Values : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(Drenova({"import", m_folder.Write("net.geojson", Network), "-o", m_project}).m_code, 0);
        m_before = ReadFile(m_project);
    }

    CFolder m_folder;
    std::string m_project = m_folder / "town.gpkg";
    std::string m_before;
};

/// The network with one text replaced by another.
std::string With(std::string_view from, std::string_view to) {
    std::string text = Network;
    text.replace(text.find(from), from.size(), to);
    return text;
}

} // namespace

TEST_F(Values, ImpossibleOnesAreRefusedAtEveryDoor) {
    const auto write = [this](const char* name, std::string_view text) { return m_folder.Write(name, text); };
    const std::string made = m_folder / "made.gpkg";
    const auto import = [&](const char* name, std::string_view text) {
        return std::vector<std::string>{"import", write(name, text), "-o", made};
    };
    const std::string inp =
        "[JUNCTIONS]\nJ 1 2\n[OUTFALLS]\nO 0 FREE\n[XSECTIONS]\nC CIRCULAR 0.3 0 0 0 1\n[CONDUITS]\n";
    const struct {
        std::vector<std::string> m_arguments;
        int m_code;
        std::string m_message;
    } cases[] = {
        {{"set", m_project, "length=-500", "--all"}, 2, "length: found -500, expected 0 to 1000000 m"},
        {{"set", m_project, "PIPE_ROUGHNESS=-1", "--all"}, 2, "PIPE_ROUGHNESS: found -1, expected 0 to 1000000 mm"},
        {{"set", m_project, "FLOW_INTIME=-5", "--all"}, 2, "FLOW_INTIME: found -5, expected 0 to 10000 min"},
        {{"set", m_project, "FLOW_INTIME=1e999", "--all"}, 2, "FLOW_INTIME: found \"1e999\", expected a number"},
        {{"set", m_project, "coefficient=50", "--on", "catchments", "--all"}, 2, "found 50, expected 0 to 2"},
        {{"load", m_project, write("t.csv", "name,FLOW_INTIME\nAB,Infinity\n")}, 3, "section AB: FLOW_INTIME Infinity"},
        {{"load", m_project, write("c.csv", "section,kinds,area\nAB,rain,-5\n"), "--on", "catchments"},
         3,
         "section AB: area -5"},
        {import("a.geojson", With("\"length\":40", "\"length\":-40")), 3, "section BC: length -40"},
        {import("b.geojson", With(",\"length\":40", "")), 3, "(section \"BC\"): found neither a geometry nor a length"},
        {import("c.geojson", With("\"to\":\"C\"", "\"to\":\"B\"")), 3, "section BC: leads from a node to itself"},
        {import("d.geojson", With("\"area\":1}", "\"area\":1,\"coefficient\":50}")), 3, "section AB: coefficient 50"},
        {import("e.geojson",
                With("\"area\":1},\"geometry\":null", "\"area\":1},\"geometry\":{\"type\":\"Polygon\",\"coordinates\":"
                                                      "[[[0,0],[9,9],[9,0],[0,9],[0,0]]]}")),
         3, "catchment of section AB: polygon crosses itself"},
        {import("f.geojson", With("\"features\":", "\"crs\":\"EPSG:4326\",\"features\":")), 3,
         "section AB: its length is taken from coordinates in degrees"},
        {import("g.inp", inp + "C J J 10 0.013\n"), 3, "found link \"C\" from the node \"J\" to itself"},
        {import("h.inp", inp + "C J O 10 13\n"), 3, "section C: MANNING_N 13, expected 0 to 1"},
        {{"settings", m_project, "crs=EPSG:4326"}, 3, "section AB: its length is taken from coordinates in degrees"},
        {{"catalog", "import", m_project,
          write("p.csv", "group,name,shape,inner_width_mm,roughness_mm\nG,P,circle,300,-1\n")},
         3,
         "line 2, column roughness_mm: found \"-1\", expected a number: 0 to 1000000 mm"},
        {{"pipe", "circle", "300", "--slope", "5", "--roughness", "-1"}, 2, "--roughness: found \"-1\""},
        {{"pipe", "circle", "-300", "--slope", "5", "--roughness", "1"}, 2, "DIMENSIONS: found \"-300\""},
        {{"pipe", "circle", "300", "--slope", "1e999", "--roughness", "1"}, 2, "--slope: found \"1e999\""},
    };
    for (const auto& c : cases) {
        const CEnded ended = Drenova(c.m_arguments);
        EXPECT_EQ(ended.m_code, c.m_code) << c.m_message << '\n' << ended.m_err;
        EXPECT_THAT(ended.m_err, HasSubstr(c.m_message));
        EXPECT_EQ(ReadFile(m_project), m_before);
    }
}

TEST_F(Values, UnusualOnesAreStoredWithOneWarning) {
    const std::string made = m_folder / "made.gpkg";
    const struct {
        std::vector<std::string> m_arguments;
        std::string m_warning;
    } cases[] = {
        {{"set", m_project, "PIPE_ROUGHNESS=0.00075", "--all"},
         "warning: PIPE_ROUGHNESS: 2 unusual values (AB: 0.00075, BC: 0.00075); usual are 0.01 to 10 mm\n"},
        {{"import",
          m_folder.Write("a.geojson", With("\"area\":1},\"geometry\":null",
                                           "\"area\":40},\"geometry\":{\"type\":\"Polygon\",\"coordinates\":"
                                           "[[[0,0],[100,0],[100,100],[0,100],[0,0]]]}")),
          "-o", made},
         "warning: area: 1 unusual value (AB: 40 ha entered, polygon 1 ha)"},
        {{"pipe", "circle", "0.3", "--slope", "5", "--roughness", "1"},
         "DIMENSIONS: found 0.3, usual are 20 to 20000 mm"},
        {{"pipe", "circle", "300", "--slope", "5", "--roughness", "1", "--flow", "50"},
         "--flow: found 50, usual are 0 to 20 m³/s"},
        {{"catalog", "import", m_project,
          m_folder.Write("p.csv", "group,name,shape,inner_width_mm,roughness_mm\nG,P,circle,300,0.00075\n"), "-o", made,
          "--replace"},
         "warning: roughness_mm: 1 unusual value (P: 0.00075); usual are 0.01 to 10 mm"},
        {{"info", m_project}, "warning: PIPE_ROUGHNESS: 2 unusual values"},
    };
    for (const auto& c : cases) {
        const CEnded ended = Drenova(c.m_arguments);
        EXPECT_EQ(ended.m_code, 0) << ended.m_err;
        EXPECT_THAT(ended.m_err, HasSubstr(c.m_warning));
    }
}

TEST_F(Values, AnOpenedProjectIsRefusedUntilTheyAreCorrected) {
    RunSql(m_project, "ALTER TABLE sections ADD COLUMN FLOW_INTIME REAL; UPDATE sections SET FLOW_INTIME = -5; "
                      "UPDATE sections SET length = -500 WHERE name = 'BC'");
    const CEnded export_ = Drenova({"export", m_project, "geojson", "-o", m_folder / "out.geojson"});
    EXPECT_EQ(export_.m_code, 3);
    EXPECT_THAT(export_.m_err, AllOf(HasSubstr("found 3 impossible values"), HasSubstr("section BC: length -500"),
                                     HasSubstr("section AB: FLOW_INTIME -5"), HasSubstr("drenova set")));
    const CEnded info = Drenova({"info", m_project, "--json"});
    EXPECT_EQ(info.m_code, 0);
    EXPECT_THAT(info.m_err, HasSubstr("impossible: section BC: FLOW_INTIME -5, expected 0 to 10000 min"));
    EXPECT_THAT(json::parse(info.m_out).at("warnings").dump(), HasSubstr("section BC: length -500"));

    const CEnded half = Drenova({"set", m_project, "FLOW_INTIME=5", "--all"});
    EXPECT_EQ(half.m_code, 0) << "a step: the length is left";
    EXPECT_THAT(half.m_err, HasSubstr("impossible values left: 1"));
    EXPECT_EQ(Drenova({"set", m_project, "FLOW_COEFDEN=1", "--all"}).m_code, 3) << "no step";
    EXPECT_EQ(
        Drenova({"load", m_project, m_folder.Write("t.csv", "name,FLOW_INTIME,length\nAB,5,50\nBC,5,40\n")}).m_code, 0);
    const CEnded sound = Drenova({"info", m_project});
    EXPECT_THAT(sound.m_err, Not(HasSubstr("impossible")));
}

TEST_F(Values, FeetAreConvertedWhenTheyAreRead) {
    const std::string made = m_folder / "feet.gpkg";
    // 50 US survey feet, one of 1200/3937 m.
    const CEnded imported =
        Drenova({"import", m_folder.Write("feet.geojson", With("\"features\":", "\"crs\":\"EPSG:2263\",\"features\":")),
                 "-o", made});
    ASSERT_EQ(imported.m_code, 0) << imported.m_err;
    EXPECT_THAT(imported.m_err, AllOf(HasSubstr("EPSG:2263"), HasSubstr("US survey foot"), HasSubstr("EPSG:32118")));
    EXPECT_THAT(Drenova({"settings", made}).m_out, HasSubstr("crs=EPSG:32118\n"));
    const json features = json::parse(ReadFile([&] {
                              const std::string out = m_folder / "out.geojson";
                              EXPECT_EQ(Drenova({"export", made, "geojson", "-o", out}).m_code, 0);
                              return out;
                          }()))
                              .at("features");
    EXPECT_NEAR(features.at(1).at("geometry").at("coordinates").at(0).get<double>(), 50.0 * 1200.0 / 3937.0, 1e-9);

    // A project that is said to be in feet is converted when it is opened next.
    const CEnded set = Drenova({"settings", m_project, "crs=EPSG:2263"});
    EXPECT_EQ(set.m_code, 0);
    EXPECT_THAT(set.m_err, HasSubstr("1 of 2 sections have a stored length"));
    const CEnded info = Drenova({"info", m_project, "--json"});
    EXPECT_THAT(info.m_err, HasSubstr("the coordinates were converted to m"));
    EXPECT_NEAR(json::parse(info.m_out).at("length_m").get<double>(), 50.0 * 1200.0 / 3937.0 + 40.0, 1e-9);
}
