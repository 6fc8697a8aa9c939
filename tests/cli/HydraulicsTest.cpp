// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "tests/cli/Program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <string>
#include <vector>

using nlohmann::json;
using testing::HasSubstr;

namespace {

/// Roughness 1 mm, viscosity 1e-6 m²/s, slope 5/1000, diameter 300 mm, 7.33285381166 l/s: 21.28157579 % and
/// 0.666761211 m/s, ten times which the full pipe carries; derived at 40 digits.
constexpr double Flow = 0.00733285381166;
constexpr double Filling = 21.28157579;
constexpr double Velocity = 0.666761211;
constexpr double Capacity = 0.0733285381166;

constexpr const char* Pipes = "group,name,guid,shape,inner_width_mm,inner_height_mm,wall_mm,roughness_mm\n"
                              "Test,smooth,,circle,300,300,20,0.1\nTest,rough,,circle,300,300,20,1\n";

/// A chain of sections, each 100 m long, with the given properties.
std::string Chain(const std::vector<std::string>& sections) {
    std::string text = R"({"type": "FeatureCollection", "features": [)";
    for (std::size_t i = 0; i <= sections.size(); ++i)
        text += (i == 0 ? "" : ",") + json{{"type", "Feature"},
                                           {"properties", {{"layer", "node"}, {"name", "N" + std::to_string(i)}}},
                                           {"geometry", {{"type", "Point"}, {"coordinates", {100 * i, 0}}}}}
                                          .dump();
    for (std::size_t i = 0; i < sections.size(); ++i)
        text +=
            R"(,{"type": "Feature", "geometry": null, "properties": {"layer": "section", "length": 100, "from": "N)" +
            std::to_string(i) + R"(", "to": "N)" + std::to_string(i + 1) + "\", " + sections[i] + "}}";
    return text + "]}";
}

std::vector<std::string> Arguments(std::string arguments) {
    std::vector<std::string> list{"pipe"};
    for (std::size_t blank = arguments.find(' '); blank != std::string::npos; blank = arguments.find(' ')) {
        list.push_back(arguments.substr(0, blank));
        arguments.erase(0, blank + 1);
    }
    list.push_back(arguments);
    return list;
}

} // namespace

TEST(Hydraulics, OfEverySectionWithPipeFlowAndSlope) {
    const CFolder folder;
    const std::string project = folder / "chain.gpkg";
    const std::string network = folder.Write(
        "chain.geojson",
        Chain({R"("name": "total", "pipe": "rough", "SECTION_SLOPE": 5, "FLOW_TOTAL": 0.00733285381166,
                  "FLOW_RAIN_IDF": 9)",
               R"("name": "rain", "pipe": "smooth", "SECTION_SLOPE": 5, "PIPE_ROUGHNESS": 1,
                  "FLOW_RAIN_IDF": 0.00733285381166)",
               R"("name": "overfull", "pipe": "rough", "SECTION_SLOPE": 5, "FLOW_TOTAL": 0.146657076233)",
               R"("name": "level", "pipe": "rough", "SECTION_SLOPE": 0, "FLOW_TOTAL": 0.01)",
               R"("name": "no slope", "pipe": "rough", "FLOW_TOTAL": 0.01)",
               R"("name": "no pipe", "SECTION_SLOPE": 5, "FLOW_TOTAL": 0.01)",
               R"("name": "unknown pipe", "PIPE_REF": "{00000000-1111-2222-3333-444444444444}", "SECTION_SLOPE": 5,
                  "FLOW_TOTAL": 0.01)",
               R"("name": "no flow", "pipe": "rough", "SECTION_SLOPE": 5, "HYD_FILLING": 77)"}));
    ASSERT_EQ(Drenova({"import", network, "--catalog", folder.Write("pipes.csv", Pipes), "-o", project}).m_code, 0);
    const std::string before = ReadFile(project);
    const CEnded ended = Drenova({"hydraulics", project, "--json", "-o", folder / "out.gpkg"});
    EXPECT_EQ(ended.m_code, 0) << ended.m_err;
    EXPECT_TRUE(ReadFile(project) == before);
    const json rows = json::parse(ended.m_out);
    ASSERT_EQ(rows.size(), 4u);
    EXPECT_EQ(rows.at(0).at("flow_key"), "FLOW_TOTAL");
    EXPECT_EQ(rows.at(1).at("flow_key"), "FLOW_RAIN_IDF");
    for (const std::size_t row : {0u, 1u}) {
        EXPECT_EQ(rows.at(row).at("flow_m3s"), Flow);
        EXPECT_EQ(rows.at(row).at("roughness_mm"), 1.0); // the section's own before the pipe's
        EXPECT_NEAR(rows.at(row).at("filling_percent"), Filling, 1e-6 * Filling);
        EXPECT_NEAR(rows.at(row).at("velocity_ms"), Velocity, 1e-6 * Velocity);
        EXPECT_NEAR(rows.at(row).at("capacity_m3s"), Capacity, 1e-6 * Capacity);
        EXPECT_EQ(rows.at(row).at("overfull"), false);
    }
    EXPECT_NEAR(rows.at(2).at("filling_percent"), 200.0, 1e-4);
    EXPECT_EQ(rows.at(2).at("overfull"), true);
    EXPECT_EQ(rows.at(3).at("filling_percent"), "Infinity");
    EXPECT_EQ(rows.at(3).at("velocity_ms"), 0.0);
    EXPECT_THAT(ended.m_err, HasSubstr("1 section with a pipe that the catalogue does not contain: unknown pipe"));
    EXPECT_THAT(ended.m_err, HasSubstr("without SECTION_SLOPE: no slope"));
    EXPECT_THAT(ended.m_err,
                HasSubstr("2 sections surcharged: the flow is greater than the full-pipe capacity: overfull, level"));

    const json stored = json::parse(
        Drenova({"get", folder / "out.gpkg", "HYD_FILLING", "HYD_VELOCITY", "HYD_CAPACITY", "--format", "json"}).m_out);
    EXPECT_EQ(stored.at(0).at("HYD_FILLING"), rows.at(0).at("filling_percent"));
    EXPECT_EQ(stored.at(0).at("HYD_VELOCITY"), rows.at(0).at("velocity_ms"));
    EXPECT_EQ(stored.at(2).at("HYD_CAPACITY"), rows.at(2).at("capacity_m3s"));
    EXPECT_TRUE(stored.at(5).at("HYD_FILLING").is_null());
    EXPECT_TRUE(stored.at(7).at("HYD_FILLING").is_null()); // an earlier one would mislead

    EXPECT_THAT(Drenova({"hydraulics", project, "--format", "csv"}).m_out,
                HasSubstr("name,guid,pipe,flow_key,flow_m3s,slope_permille,roughness_mm,filling_percent,depth_m,"
                          "velocity_ms,capacity_m3s,overfull\ntotal,"));
    EXPECT_THAT(Drenova({"hydraulics", project}).m_out, HasSubstr("surcharged\n"));
    EXPECT_EQ(Drenova({"set", project, "FLOW_TOTAL=", "FLOW_RAIN_IDF=", "--all"}).m_code, 0);
    EXPECT_EQ(Drenova({"hydraulics", project}).m_code, 1);
}

TEST(PipeCalculator, AnswersAndRefusals) {
    const json flow =
        json::parse(Drenova(Arguments("circle 300 --slope 5 --roughness 1 --flow 0.00733285381166 --json")).m_out);
    EXPECT_NEAR(flow.at("filling_percent"), Filling, 1e-6 * Filling);
    EXPECT_NEAR(flow.at("depth_m"), 0.003 * Filling, 1e-8);
    EXPECT_NEAR(flow.at("velocity_ms"), Velocity, 1e-6 * Velocity);
    EXPECT_NEAR(flow.at("full_flow_m3s"), Capacity, 1e-6 * Capacity);
    EXPECT_NEAR(flow.at("area_m2"), Flow / Velocity, 1e-8);
    const json fill =
        json::parse(Drenova(Arguments("circle 300 --slope 5 --roughness 1 --fill 21.28157579 --json")).m_out);
    EXPECT_NEAR(fill.at("flow_m3s"), Flow, 1e-8);
    const json box = json::parse(Drenova(Arguments("box 1500x900 --slope 3 --roughness 1.5 --json")).m_out);
    EXPECT_NEAR(box.at("full_hydraulic_radius_m"), 1.5 * 0.9 / 4.8, 1e-12);
    EXPECT_NEAR(box.at("greatest_flow_filling_percent"), 100.0, 1e-6); // just below the top
    const json egg = json::parse(Drenova(Arguments("egg 800 --slope 3 --roughness 1.5 --json")).m_out);
    EXPECT_EQ(egg.at("height_mm"), 1200.0);
    const CEnded over = Drenova(Arguments("circle 300 --slope 5 --roughness 1 --flow 0.146657076233"));
    EXPECT_THAT(over.m_out, HasSubstr("surcharged"));
    EXPECT_THAT(over.m_out, HasSubstr("200.00"));

    const struct {
        const char* arguments;
        const char* message;
    } refusals[] = {
        {"circle 300x200 --slope 1 --roughness 1", "DIMENSIONS: found \"300x200\""},
        {"egg 800x700 --slope 1 --roughness 1", "not below the width"},
        {"box 900 --slope 1 --roughness 1", "as 1500x900"},
        {"circle 0 --slope 1 --roughness 1", "DIMENSIONS"},
        {"pentagon 300 --slope 1 --roughness 1", "expected one of circle, egg, box"},
        {"circle 300 --slope steep --roughness 1", "--slope: found \"steep\""},
        {"circle 300 --slope 1 --roughness -1", "--roughness: found \"-1\", expected a number: 0 to 1000000 mm"},
        {"circle 300 --slope 1", "--roughness is required"},
        {"circle 300 --slope 1 --roughness 1 --fill 101", "--fill: found \"101\""},
        {"circle 300 --slope 1 --roughness 1 --fill 10 --flow 1", "excludes"},
        {"circle 300 --slope 1 --roughness 0 --viscosity 0", "one of them above 0"},
    };
    for (const auto& refusal : refusals) {
        const CEnded ended = Drenova(Arguments(refusal.arguments));
        EXPECT_EQ(ended.m_code, 2) << refusal.arguments;
        EXPECT_THAT(ended.m_err, HasSubstr(refusal.message));
    }
}
