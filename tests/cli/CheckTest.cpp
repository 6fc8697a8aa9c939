// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "tests/cli/Program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <string>
#include <vector>

using nlohmann::json;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

/// A-B-C with a side outlet B-D. Slopes: AB 2, BC -1.5, BD 40 in 1/1000; the level steps up from AB to BC by 0.75 m.
/// BD is drawn with a bend, 10 m to the east and 30 m to the north: half way is at (60, 10).
constexpr const char* Faulty = R"({"type":"FeatureCollection","crs":{"type":"name","properties":{"name":"EPSG:3765"}},
"features":[
{"type":"Feature","properties":{"layer":"node","name":"A"},"geometry":{"type":"Point","coordinates":[0,0]}},
{"type":"Feature","properties":{"layer":"node","name":"B"},"geometry":{"type":"Point","coordinates":[50,0]}},
{"type":"Feature","properties":{"layer":"node","name":"C"},"geometry":{"type":"Point","coordinates":[90,0]}},
{"type":"Feature","properties":{"layer":"node","name":"D"},"geometry":{"type":"Point","coordinates":[60,30]}},
{"type":"Feature","properties":{"layer":"section","name":"AB","guid":"ab","from":"A","to":"B","length":50,"SECTION_SLOPE":2,"LEVEL_LINE_1":7},"geometry":null},
{"type":"Feature","properties":{"layer":"section","name":"BC","guid":"bc","from":"B","to":"C","length":40,"SECTION_SLOPE":-1.5,"LEVEL_LINE_0":7.75},"geometry":null},
{"type":"Feature","properties":{"layer":"section","name":"BD","guid":"bd","from":"B","to":"D","SECTION_SLOPE":40},
 "geometry":{"type":"LineString","coordinates":[[50,0],[60,0],[60,30]]}}
]})";

class FaultyProject : public testing::Test {
protected:
    void SetUp() override {
        const std::string network = m_folder.Write("faulty.geojson", Faulty);
        const CEnded ended = Drenova({"import", network, "-o", m_project});
        ASSERT_EQ(ended.m_code, 0) << ended.m_err;
    }

    /// "item name value limit unit" of each finding.
    static std::vector<std::string> Brief(const json& findings) {
        std::vector<std::string> brief;
        for (const json& f : findings)
            brief.push_back(f.at("item").get<std::string>() + " " + f.at("name").get<std::string>() + " " +
                            f.at("value").dump() + " " + f.at("limit").dump() + " " + f.at("unit").dump());
        return brief;
    }
    /// Checks with arguments; its findings.
    std::vector<std::string> Check(std::vector<std::string> arguments, int code = 0) const {
        arguments.insert(arguments.begin(), {"check", m_project, "--format", "json"});
        const CEnded ended = Drenova(arguments);
        EXPECT_EQ(ended.m_code, code) << ended.m_err;
        return ended.m_out.empty() ? std::vector<std::string>() : Brief(json::parse(ended.m_out));
    }

    CFolder m_folder;
    const std::string m_project = m_folder / "faulty.gpkg";
};

} // namespace

TEST_F(FaultyProject, AllChecksRunInTheOrderOfRegistration) {
    const std::vector<std::string> module{
        "0004_MIN_SLOPE AB 2 5 \"1/1000\"", "0004_MIN_SLOPE BC -1.5 0 \"1/1000\"", "0004_MIN_SLOPE BD 40 30 \"1/1000\"",
        "0006_NEGATIVE_CASCADE AB -0.75 -0.5 \"m\"", "0005_MULTI_OUTLET_SECT AB 2 1 null"};
    EXPECT_EQ(Check({"--only", "module"}), module);
    EXPECT_EQ(Check({"--only", "module", "--strict"}, 1), module);
    std::vector<std::string> all = module;
    for (const char* own :
         {"0010_NO_OUTLET B 1 0 null", "0015_MISSING_INPUT AB 2 0 null", "0015_MISSING_INPUT BC 2 0 null",
          "0015_MISSING_INPUT BD 3 0 null", "0015_MISSING_INPUT A 1 0 null", "0015_MISSING_INPUT B 1 0 null",
          "0015_MISSING_INPUT C 1 0 null", "0015_MISSING_INPUT D 1 0 null"})
        all.emplace_back(own);
    EXPECT_EQ(Check({}), all);
    EXPECT_EQ(Check({"--strict"}, 1), all);
}

TEST_F(FaultyProject, ItemsAreChosenAndLimitsSetByWords) {
    EXPECT_THAT(Check({"0006_NEGATIVE_CASCADE", "0004_MIN_SLOPE", "0004_MIN_SLOPE.VALUE_MAX=40",
                       "0004_MIN_SLOPE.VALUE_MIN=2", "--strict"},
                      1),
                ElementsAre("0004_MIN_SLOPE BC -1.5 0 \"1/1000\"", "0006_NEGATIVE_CASCADE AB -0.75 -0.5 \"m\""));
    EXPECT_EQ(Check({"0004_MIN_SLOPE.VALUE_MIN=1"}).size(), 12U) << "a value alone leaves all checks to run";
    EXPECT_EQ(Check({"--only", "module", "0004_MIN_SLOPE.VALUE_MIN=1"}).size(), 4U);
    EXPECT_THAT(Check({"0015_MISSING_INPUT", "0010_NO_OUTLET", "0015_MISSING_INPUT.PIPE=0",
                       "0015_MISSING_INPUT.LEVELS=0", "0015_MISSING_INPUT.GROUND=0"}),
                ElementsAre("0010_NO_OUTLET B 1 0 null"));
    EXPECT_EQ(Check({"0007_SMALLER_DIAMETERS", "--strict"}).size(), 0U);
}

TEST_F(FaultyProject, InvalidArgumentsChangeNothing) {
    const std::string before = ReadFile(m_project);
    const std::pair<std::vector<std::string>, const char*> cases[] = {
        {{"0004_MIN_SLOPES"}, "did you mean 0004_MIN_SLOPE?"},
        {{"0004_MIN_SLOPE.VALUE=3"}, "found the tag VALUE"},
        {{"0004_MIN_SLOPE.VALUE_MIN=steep"}, "steep"},
        {{"0002_MIN_PIPE_DEPTH.TERRAIN=11"}, "11"},
        {{"0006_NEGATIVE_CASCADE.VALUE_MIN=1"}, "VALUE_MIN"},
        {{"VALUE_MIN=3"}, "ITEM.TAG=VALUE"},
        {{"X.VALUE_MIN=3"}, "found the check \"X\""},
        {{"0004_MIN_SLOPE", "0003_MIN_LL_SLOPE.VALUE_MIN=3"}, "not among the checks to run"},
        {{"--only", "module", "0009_RING"}, "found the check 0009_RING with --only module"},
        {{"--only", "module", "0011_COMPONENTS.VALUE_MAX=2"}, "found the check 0011_COMPONENTS"},
        {{"--only", "own"}, "own"},
        {{"--format", "xml"}, "xml"},
    };
    for (const auto& [arguments, message] : cases) {
        std::vector<std::string> all{"check", m_project};
        all.insert(all.end(), arguments.begin(), arguments.end());
        const CEnded ended = Drenova(all);
        EXPECT_EQ(ended.m_code, 2) << arguments.front();
        EXPECT_THAT(ended.m_err, HasSubstr(message));
    }
    EXPECT_EQ(ReadFile(m_project), before);
}

TEST_F(FaultyProject, FindingsStayInTheProjectUntilTheNextRun) {
    const std::string before = ReadFile(m_project);
    const std::string checked = m_folder / "checked.gpkg";
    ASSERT_EQ(Drenova({"check", m_project, "0004_MIN_SLOPE", "-o", checked}).m_code, 0);
    EXPECT_EQ(ReadFile(m_project), before);
    // Another verb that stores keeps them; the next run replaces them.
    ASSERT_EQ(Drenova({"set", checked, "SECTION_SLOPE=6", "--all"}).m_code, 0);
    EXPECT_THAT(ReadFile(checked), HasSubstr("0004_MIN_SLOPE"));
    ASSERT_EQ(Drenova({"check", checked, "0005_MULTI_OUTLET_SECT"}).m_code, 0);
    EXPECT_THAT(ReadFile(checked), testing::Not(HasSubstr("0004_MIN_SLOPE")));
}

TEST_F(FaultyProject, TablesAndMaps) {
    const CEnded csv = Drenova({"check", m_project, "0006_NEGATIVE_CASCADE", "--format", "csv"});
    EXPECT_THAT(csv.m_out, testing::StartsWith("item,guid,name,text,value,limit,unit\n0006_NEGATIVE_CASCADE,ab,AB,"));
    EXPECT_THAT(csv.m_out, HasSubstr("(-0.75)\",-0.75,-0.5,m\n"));
    const CEnded table = Drenova({"check", m_project, "0006_NEGATIVE_CASCADE"});
    EXPECT_THAT(table.m_out, HasSubstr("(-0.75)"));
    EXPECT_THAT(table.m_err, HasSubstr("1 finding of 1 check"));
    const json map = json::parse(Drenova({"check", m_project, "0004_MIN_SLOPE", "--format", "geojson"}).m_out);
    EXPECT_EQ(map.at("crs").at("properties").at("name"), "EPSG:3765");
    ASSERT_EQ(map.at("features").size(), 3U);
    EXPECT_EQ(map.at("features")[0].at("geometry").at("coordinates"), json::parse("[25.0, 0.0]"));
    EXPECT_EQ(map.at("features")[2].at("geometry").at("coordinates"), json::parse("[60.0, 10.0]"));
    EXPECT_EQ(map.at("features")[2].at("properties").at("guid"), "bd");
    const CEnded none = Drenova({"check", m_project, "0007_SMALLER_DIAMETERS"});
    EXPECT_EQ(none.m_out, "");
    EXPECT_THAT(none.m_err, HasSubstr("no findings of 1 check"));
}

TEST_F(FaultyProject, ADesignEndsWithTheChecks) {
    ASSERT_EQ(Drenova({"directions", m_project, "--auto"}).m_code, 0);
    const std::string parameters =
        m_folder.Write("p.json", R"({"02_ADDITIONAL": {"FC_ADD_USER": 1, "FC_ADD_USER_VAL": 2},
                      "checks": {"0004_MIN_SLOPE": {"VALUE_MIN": 1, "VALUE_MAX": 50}}})");
    const CEnded ended = Drenova({"design", m_project, "--params", parameters});
    ASSERT_EQ(ended.m_code, 0) << ended.m_err;
    EXPECT_LT(ended.m_out.find("02_ADDITIONAL"), ended.m_out.find("0002_MIN_PIPE_DEPTH"));
    EXPECT_LT(ended.m_out.find("0005_MULTI_OUTLET_SECT"), ended.m_out.find("0006_NEGATIVE_CASCADE")) << "by key";
    EXPECT_THAT(ended.m_out, testing::ContainsRegex("0004_MIN_SLOPE +1 "));
    EXPECT_THAT(ReadFile(m_project), HasSubstr("0006_NEGATIVE_CASCADE"));
    EXPECT_THAT(ended.m_out, testing::Not(HasSubstr("0015_MISSING_INPUT"))) << "the file does not name it";
    const std::string more = m_folder.Write("more.json", R"({"02_ADDITIONAL": {"FC_ADD_USER": 1, "FC_ADD_USER_VAL": 3},
                      "checks": {"0015_MISSING_INPUT": {"GROUND": 0}, "0009_RING": {}}})");
    const CEnded own = Drenova({"design", m_project, "--params", more});
    ASSERT_EQ(own.m_code, 0) << own.m_err;
    EXPECT_THAT(own.m_out, testing::ContainsRegex("0007_SMALLER_DIAMETERS +0 [^\n]*\n0009_RING +0 [^\n]*\n"
                                                  "0015_MISSING_INPUT +3 "));
    for (const char* bad : {R"({"02_ADDITIONAL": {}, "checks": {"0004": {}}})",
                            R"({"02_ADDITIONAL": {}, "checks": {"0004_MIN_SLOPE": {"MIN": 1}}})"})
        EXPECT_EQ(Drenova({"design", m_project, "--params", m_folder.Write("bad.json", bad)}).m_code, 3) << bad;
}
