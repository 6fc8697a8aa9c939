// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "tests/cli/Program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <string>
#include <vector>

using nlohmann::json;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

namespace {

class Sample : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(Drenova({"import", SampleNetwork(), "-o", m_project}).m_code, 0);
        ASSERT_EQ(Drenova({"slopes", m_project}).m_code, 0);
    }

    std::vector<std::string> Findings(const std::vector<std::string>& options = {}) const {
        std::vector<std::string> arguments{"check", m_project, "--format", "json"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        std::vector<std::string> findings;
        for (const json& each : json::parse(Drenova(arguments).m_out))
            findings.push_back(each.at("item").get<std::string>() + " " + each.at("name").get<std::string>());
        return findings;
    }
    void PutRight() const {
        const std::vector<std::vector<std::string>> repairs = {
            {"LEVEL_LINE_1=116.51", "--names", "POPL-02"},
            {"LEVEL_LINE_0=120.20", "SECTION_SLOPE=7.6319", "--names", "WEIR-01"},
            {"LEVEL_LINE_0=118.51", "SECTION_SLOPE=10.5196", "--names", "GARD-02"}};
        for (const auto& each : repairs) {
            std::vector<std::string> arguments{"set", m_project};
            arguments.insert(arguments.end(), each.begin(), each.end());
            ASSERT_EQ(Drenova(arguments).m_code, 0);
        }
        ASSERT_EQ(Drenova({"slopes", m_project}).m_code, 0);
    }

    CFolder m_folder;
    const std::string m_project = m_folder / "town.gpkg";
};

} // namespace

TEST_F(Sample, HasThePlantedFaultsAndNoOthers) {
    EXPECT_THAT(Findings(),
                ElementsAre("0002_MIN_PIPE_DEPTH WEIR-01", "0003_MIN_LL_SLOPE POPL-02", "0006_NEGATIVE_CASCADE GARD-01",
                            "0008_LEVEL_SLOPE POPL-02", "0011_COMPONENTS SQUA-01"));
    PutRight();
    EXPECT_THAT(Findings(), ElementsAre("0011_COMPONENTS SQUA-01")) << "the two banks are two networks";
}

/// The delivered parameters take the town, faults and all, through the whole design.
TEST_F(Sample, IsDesignedByItsParameterFile) {
    const std::string parameters = SampleNetwork().substr(0, SampleNetwork().rfind('/')) + "/design.json";
    const CEnded ended = Drenova({"design", m_project, "--params", parameters});
    ASSERT_EQ(ended.m_code, 0) << ended.m_err;
    for (const char* part :
         {"001_RAIN_ITP", "01_WASTE_PERCENT", "03_FC_TRANSIT", "04_FC_TOTAL", "hydraulics: 121 ",
          "0002_MIN_PIPE_DEPTH    WEIR-01", "0003_MIN_LL_SLOPE      POPL-02", "0006_NEGATIVE_CASCADE  GARD-01"})
        EXPECT_THAT(ended.m_out, HasSubstr(part));
    EXPECT_THAT(Findings({"--only", "module"}), SizeIs(3)) << "by the default limits";
    EXPECT_THAT(Findings({"0012_OVERFULL", "0013_VELOCITY", "0014_SHEAR_STRESS", "0016_OUTDATED_RESULT"}),
                ElementsAre("0013_VELOCITY QUAY-19", "0013_VELOCITY WORK-01", "0013_VELOCITY LIND-01",
                            "0013_VELOCITY MEAD-01", "0013_VELOCITY MOOR-01", "0014_SHEAR_STRESS WORK-01",
                            "0014_SHEAR_STRESS LIND-01", "0014_SHEAR_STRESS MEAD-01", "0014_SHEAR_STRESS MOOR-01"))
        << "one steep trunk, and four sections without rain areas of their own";
    const json rows = json::parse(
        Drenova({"get", m_project, "FLOW_TOTAL", "FLOW_RAIN_IDF", "HYD_FILLING", "--format", "json"}).m_out);
    ASSERT_EQ(rows.size(), 121U);
    for (const json& row : rows) {
        EXPECT_GT(row.at("FLOW_TOTAL"), row.at("FLOW_RAIN_IDF")) << row;
        EXPECT_LT(row.at("HYD_FILLING"), 60.0) << row;
    }
}

/// The pipes carry what the two-year curve brings, with room to spare.
TEST_F(Sample, PipesCarryTheTwoYearRain) {
    PutRight();
    const std::string curves = SampleNetwork().substr(0, SampleNetwork().rfind('/')) + "/rivertown-curves.txt";
    const CEnded ended = Drenova({"run", m_project, "001_RAIN_ITP", "FILE_PATH=" + curves, "FREQUENCY=2",
                                  "USE_EXISTING_PIPE=1", "PIPE_FILL=80", "PIPE_GROUP=Concrete EN 1916 class 135"});
    EXPECT_EQ(ended.m_code, 0) << ended.m_err;
    const json rows = json::parse(Drenova({"hydraulics", m_project, "--json"}).m_out);
    ASSERT_EQ(rows.size(), 121U);
    double greatest = 0.0;
    for (const json& row : rows)
        greatest = std::max(greatest, row.at("filling_percent").get<double>());
    EXPECT_GT(greatest, 50.0) << "sized, not just large";
    EXPECT_LE(greatest, 60.0);
}
