// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
//
// Rasters of terrain and slopes of levels, as people attach and store them.
#include "tests/cli/Program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <filesystem>
#include <string>

using nlohmann::json;
using testing::HasSubstr;

namespace {

/// AB falls 1 m in 50 m, BC has no levels, CD climbs; no slope was given.
constexpr const char* Network = R"({"type":"FeatureCollection","features":[
{"type":"Feature","properties":{"layer":"node","name":"A"},"geometry":{"type":"Point","coordinates":[0,0]}},
{"type":"Feature","properties":{"layer":"node","name":"B"},"geometry":{"type":"Point","coordinates":[50,0]}},
{"type":"Feature","properties":{"layer":"node","name":"C"},"geometry":{"type":"Point","coordinates":[100,0]}},
{"type":"Feature","properties":{"layer":"node","name":"D"},"geometry":{"type":"Point","coordinates":[110,0]}},
{"type":"Feature","properties":{"layer":"section","name":"AB","from":"A","to":"B","length":50,"LEVEL_LINE_0":10,"LEVEL_LINE_1":9},"geometry":null},
{"type":"Feature","properties":{"layer":"section","name":"BC","from":"B","to":"C","length":50,"LEVEL_LINE_0":9},"geometry":null},
{"type":"Feature","properties":{"layer":"section","name":"CD","from":"C","to":"D","length":10,"LEVEL_LINE_0":8,"LEVEL_LINE_1":8.5,"SECTION_SLOPE":4,
 "SECTION_SLOPE_CAL":3},"geometry":null}]})";

constexpr const char* Grid = "ncols 3\nnrows 2\nxllcorner -50\nyllcorner -50\ncellsize 100\n12 13 14\n12 13 14\n";

class Ground : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(Drenova({"import", m_folder.Write("net.geojson", Network), "-o", m_project}).m_code, 0);
    }
    json Slopes(const std::string& project, const std::string& key) const {
        json values = json::array();
        for (const json& section : json::parse(Drenova({"get", project, key, "--format", "json"}).m_out))
            values.push_back(section.at(key));
        return values;
    }

    CFolder m_folder;
    const std::string m_project = m_folder / "town.gpkg";
};

} // namespace

TEST_F(Ground, SlopesFollowFromLevels) {
    EXPECT_EQ(Slopes(m_project, "SECTION_SLOPE_CAL"), json({nullptr, nullptr, 3.0})) << "an import derives nothing";
    const std::string other = m_folder / "other.gpkg";
    const CEnded stored = Drenova({"slopes", m_project, "-o", other});
    EXPECT_EQ(stored.m_code, 0);
    EXPECT_THAT(stored.m_err, HasSubstr("1 section without levels at both ends, unchanged: BC"));
    EXPECT_THAT(stored.m_err, HasSubstr("negative slope: CD"));
    EXPECT_THAT(stored.m_err, HasSubstr("SECTION_SLOPE_CAL of 2 sections"));
    EXPECT_EQ(Slopes(other, "SECTION_SLOPE_CAL"), json({20.0, nullptr, -50.0}));
    EXPECT_EQ(Slopes(other, "SECTION_SLOPE"), json({nullptr, nullptr, 4.0}));
    EXPECT_EQ(Slopes(m_project, "SECTION_SLOPE_CAL"), json({nullptr, nullptr, 3.0}));
    EXPECT_EQ(Drenova({"slopes", m_project, "--design"}).m_code, 0);
    EXPECT_EQ(Slopes(m_project, "SECTION_SLOPE"), json({20.0, nullptr, 4.0}));
    EXPECT_EQ(Drenova({"set", m_project, "LEVEL_LINE_0=", "--all"}).m_code, 0);
    EXPECT_EQ(Drenova({"slopes", m_project}).m_code, 1);
}

TEST_F(Ground, RastersAreAttachedCheckedAndTakenAway) {
    const std::string grid = m_folder.Write("grid.asc", Grid);
    EXPECT_EQ(Drenova({"settings", m_project, "terrain_2=" + grid}).m_code, 0);
    EXPECT_THAT(Drenova({"settings", m_project}).m_out, HasSubstr("\nterrain_2=grid.asc\n"));
    EXPECT_EQ(json::parse(Drenova({"info", m_project, "--json"}).m_out).at("terrain"),
              json({{"terrain_2", "grid.asc"}}));

    const CEnded bad = Drenova({"settings", m_project, "terrain_1=" + m_folder.Write("bad.tif", "none")});
    EXPECT_EQ(bad.m_code, 3);
    EXPECT_THAT(bad.m_err, HasSubstr("bad.tif"));
    const CEnded missing = Drenova({"settings", m_project, "terrain_1=" + (m_folder / "none.tif")});
    EXPECT_EQ(missing.m_code, 4);
    EXPECT_THAT(missing.m_err, HasSubstr("none.tif"));
    EXPECT_EQ(Drenova({"settings", m_project, "terrain_11=" + grid}).m_code, 2);
    EXPECT_THAT(Drenova({"settings", m_project}).m_out, Not(HasSubstr("terrain_1=")));

    std::filesystem::remove(grid);
    const CEnded info = Drenova({"info", m_project, "--json"});
    EXPECT_EQ(info.m_code, 0);
    EXPECT_THAT(info.m_err, HasSubstr("warning: terrain_2: "));
    ASSERT_EQ(json::parse(info.m_out).at("warnings").size(), 1U);
    EXPECT_THAT(json::parse(info.m_out).at("warnings").at(0).get<std::string>(), HasSubstr("grid.asc is missing"));
    EXPECT_EQ(Drenova({"settings", m_project, "terrain_2="}).m_code, 0);
    EXPECT_EQ(Drenova({"info", m_project}).m_err, "");
}
