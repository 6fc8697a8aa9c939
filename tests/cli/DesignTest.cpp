// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "tests/cli/Program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <map>
#include <string>

using nlohmann::json;
using testing::HasSubstr;

namespace {

/// A-B-C with a side outlet B-D: every section has a household area of 1 ha.
constexpr const char* Fork = R"({"type":"FeatureCollection","features":[
{"type":"Feature","properties":{"layer":"node","name":"A"},"geometry":{"type":"Point","coordinates":[0,0]}},
{"type":"Feature","properties":{"layer":"node","name":"B"},"geometry":{"type":"Point","coordinates":[50,0]}},
{"type":"Feature","properties":{"layer":"node","name":"C"},"geometry":{"type":"Point","coordinates":[90,0]}},
{"type":"Feature","properties":{"layer":"node","name":"D"},"geometry":{"type":"Point","coordinates":[50,40]}},
{"type":"Feature","properties":{"layer":"section","name":"AB","from":"A","to":"B","length":50},"geometry":null},
{"type":"Feature","properties":{"layer":"section","name":"BC","from":"B","to":"C","length":40,"LEVEL_LINE_0":9.5},"geometry":null},
{"type":"Feature","properties":{"layer":"section","name":"BD","from":"B","to":"D","length":40,"LEVEL_LINE_0":9.2},"geometry":null},
{"type":"Feature","properties":{"layer":"catchment","section":"AB","kinds":["household"],"area":1,"density":50},"geometry":null},
{"type":"Feature","properties":{"layer":"catchment","section":"BC","kinds":["household"],"area":1},"geometry":null}
]})";

constexpr const char* Parameters = R"({"03_FC_TRANSIT": {"FC_HOUSEWASTE_AREA": 1, "FC_USER": 1},
"02_ADDITIONAL": {"FC_ADD_USER": 1, "FC_ADD_USER_VAL": 2},
"01_WASTE_AREAS": {"HOME_CHECK": 1, "HOME_COEFF": 4},
"04_FC_TOTAL": {"FLOW_TRANSIT": 1, "FLOW_TOTAL_OWN": 1}})";

class ForkProject : public testing::Test {
protected:
    void SetUp() override {
        const std::string network = m_folder.Write("fork.geojson", Fork);
        ASSERT_EQ(Drenova({"import", network, "-o", m_project}).m_code, 0);
        m_before = ReadFile(m_project);
    }
    std::map<std::string, double> Values(const std::string& key) const {
        const json rows = json::parse(Drenova({"get", m_project, key, "--format", "json"}).m_out);
        std::map<std::string, double> values;
        for (const json& row : rows)
            values[row.at("name")] = row.at(key).is_null() ? -1.0 : row.at(key).get<double>();
        return values;
    }

    CFolder m_folder;
    const std::string m_project = m_folder / "fork.gpkg";
    const std::string m_parameters = m_folder.Write("design.json", Parameters);
    std::string m_before;
};

} // namespace

TEST_F(ForkProject, OpenDirectionsStopADesignAndNameTheNodes) {
    const CEnded ended = Drenova({"design", m_project, "--params", m_parameters});
    EXPECT_EQ(ended.m_code, 5);
    EXPECT_THAT(ended.m_err, HasSubstr("1 node without a main outlet: B"));
    EXPECT_EQ(ReadFile(m_project), m_before) << "nothing of the earlier calculators stays either";
}

TEST_F(ForkProject, DirectionsAreSetByWordAndByLevel) {
    for (const char* bad : {"B", "X=BC", "B=AB", "B=nothing"})
        EXPECT_EQ(Drenova({"directions", m_project, "--set", bad}).m_code, 2) << bad;
    EXPECT_EQ(ReadFile(m_project), m_before);
    CEnded ended = Drenova({"directions", m_project, "--set", "B=BC", "--auto", "--json"});
    EXPECT_EQ(ended.m_code, 0) << ended.m_err;
    EXPECT_EQ(json::parse(ended.m_out)[0]["main_outlet"]["name"], "BC") << "the chosen one stays";
    ASSERT_EQ(Drenova({"set", m_project, "MAIN_SECT_OUT=", "--on", "nodes", "--all"}).m_code, 0);
    ended = Drenova({"directions", m_project, "--auto", "--json"});
    EXPECT_EQ(json::parse(ended.m_out)[0]["main_outlet"]["name"], "BD") << "the lowest level line";
    const std::string chosen = ReadFile(m_project);
    EXPECT_EQ(Drenova({"directions", m_project, "--auto"}).m_code, 1) << "nothing is left to choose";
    EXPECT_EQ(ReadFile(m_project), chosen);
}

/// Household: 50 inh/ha on 1 ha times 4 / 1000 / 1000 = 0.0002 m³/s on AB, nothing on the others; user flow 0.002 m³/s
/// on each. AB passes 0.0022 on to the main outlet BC alone.
TEST_F(ForkProject, ADesignRunsInTheOrderOfTheKeysAndSavesOnce) {
    ASSERT_EQ(Drenova({"directions", m_project, "--set", "B=BC"}).m_code, 0);
    const CEnded ended = Drenova({"design", m_project, "--params", m_parameters});
    ASSERT_EQ(ended.m_code, 0) << ended.m_err;
    EXPECT_THAT(ended.m_err, HasSubstr("BC")) << "the area without a density is named";
    EXPECT_LT(ended.m_out.find("01_WASTE_AREAS"), ended.m_out.find("02_ADDITIONAL"));
    EXPECT_LT(ended.m_out.find("03_FC_TRANSIT"), ended.m_out.find("04_FC_TOTAL"));
    const auto total = Values("FLOW_TOTAL");
    EXPECT_NEAR(total.at("AB"), 0.0022, 1e-15);
    EXPECT_NEAR(total.at("BC"), 0.0042, 1e-15);
    EXPECT_NEAR(total.at("BD"), 0.002, 1e-15) << "a side outlet gets nothing";
}

TEST_F(ForkProject, BadParameterFilesAreRefused) {
    const std::pair<const char*, const char*> files[] = {
        {"{}", "no calculator"},
        {R"({"05_NO": {}})", "05_NO"},
        {R"({"02_ADDITIONAL": {"NO_TAG": 1}})", "NO_TAG"},
        {R"({"02_ADDITIONAL": {"FC_ADD_POINT_OPTION": 7}})", "FC_ADD_POINT_OPTION"},
        {"{", "not JSON"},
    };
    for (const auto& [text, part] : files) {
        const CEnded ended = Drenova({"design", m_project, "--params", m_folder.Write("bad.json", text)});
        EXPECT_EQ(ended.m_code, 3) << text;
        EXPECT_THAT(ended.m_err, HasSubstr(part));
    }
    EXPECT_EQ(ReadFile(m_project), m_before);
}

TEST_F(ForkProject, ARunWithoutResultsKeepsItsParametersAndSaysSo) {
    const CEnded ended = Drenova({"run", m_project, "01_WASTE_AREAS"});
    EXPECT_EQ(ended.m_code, 1);
    EXPECT_THAT(ended.m_err, HasSubstr("no flow stored"));
    const CEnded got = Drenova({"get", m_project, "FLOW_WASTE_AREA_S", "FLOW_WASTE_HOME", "--format", "csv"});
    EXPECT_THAT(got.m_out, HasSubstr("HOME_CHECK"));
}
