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

constexpr const char* Pipes = "group,name,guid,shape,inner_width_mm,inner_height_mm,wall_mm,roughness_mm\n"
                              "Plastic,DN/OD 250,{P250},circle,235,235,7.5,0.1\n"
                              "Plastic,DN/OD 200,{P200},circle,188,188,6,0.1\n"
                              "Concrete,DN 300,{C300},circle,300,300,50,1\n"
                              "Concrete,DN 500,{C500},circle,500,500,60,1\n";

/// A to E one after the other; D has no slope.
constexpr const char* Network = R"({"type": "FeatureCollection", "features": [
{"type": "Feature", "geometry": {"type": "Point", "coordinates": [0, 0]}, "properties": {"layer": "node", "name": "1", "terrain": {"1": 103}}},
{"type": "Feature", "geometry": {"type": "Point", "coordinates": [100, 0]}, "properties": {"layer": "node", "name": "2"}},
{"type": "Feature", "geometry": {"type": "Point", "coordinates": [200, 0]}, "properties": {"layer": "node", "name": "3"}},
{"type": "Feature", "geometry": {"type": "Point", "coordinates": [300, 0]}, "properties": {"layer": "node", "name": "4"}},
{"type": "Feature", "geometry": {"type": "Point", "coordinates": [100, 9]}, "properties": {"layer": "node", "name": "5"}},
{"type": "Feature", "geometry": null, "properties": {"layer": "section", "name": "A", "from": "1", "to": "2", "length": 100, "SECTION_SLOPE": 5, "FLOW_USER": 0.02, "FLOW_TOTAL": 0.00733285381166, "pipe": "DN 300", "LEVEL_LINE_0": 101.15, "LEVEL_LINE_1": 100.65, "LEVEL_LINE_POSITION": 1}},
{"type": "Feature", "geometry": null, "properties": {"layer": "section", "name": "B", "from": "2", "to": "3", "length": 100, "SECTION_SLOPE": 5, "FLOW_USER": 0.04}},
{"type": "Feature", "geometry": null, "properties": {"layer": "section", "name": "C", "from": "3", "to": "4", "length": 100, "SECTION_SLOPE": 5, "FLOW_USER": 0.2}},
{"type": "Feature", "geometry": null, "properties": {"layer": "section", "name": "D", "from": "5", "to": "2", "length": 9, "FLOW_USER": 0.02, "pipe": "DN 300"}}
]})";

struct CTown {
    CFolder m_folder;
    std::string m_project = m_folder / "town.gpkg";

    CTown() {
        const CEnded ended = Drenova({"import", m_folder.Write("n.geojson", Network), "--catalog",
                                      m_folder.Write("pipes.csv", Pipes), "-o", m_project});
        EXPECT_EQ(ended.m_code, 0) << ended.m_err;
    }

    CEnded Size(const std::vector<std::string>& arguments) const {
        std::vector<std::string> all{"size", m_project, "--flow", "FLOW_USER"};
        all.insert(all.end(), arguments.begin(), arguments.end());
        return Drenova(all);
    }
};

} // namespace

TEST(Size, TakesTheGroupsInTheirOrderAndSaysWhatItLeft) {
    const CTown town;
    const std::string before = ReadFile(town.m_project);
    const CEnded ended =
        town.Size({"--group", "Plastic", "Concrete", "--format", "json", "-o", town.m_folder / "o.gpkg"});
    EXPECT_EQ(ended.m_code, 0) << ended.m_err;
    EXPECT_TRUE(ReadFile(town.m_project) == before);
    const json rows = json::parse(ended.m_out);
    const struct {
        const char* m_name;
        json m_old;
        json m_new;
        json m_dn;
    } expected[] = {{"A", "DN 300", "DN/OD 200", 200.0},
                    {"B", nullptr, "DN 300", 300.0}, // as D, which has no slope and keeps its pipe
                    {"C", nullptr, "DN 500", 500.0},
                    {"D", "DN 300", "DN 300", 300.0}};
    ASSERT_EQ(rows.size(), std::size(expected));
    for (std::size_t i = 0; i < std::size(expected); ++i) {
        EXPECT_EQ(rows[i].at("name"), expected[i].m_name);
        EXPECT_EQ(rows[i].at("old_pipe"), expected[i].m_old);
        EXPECT_EQ(rows[i].at("new_pipe"), expected[i].m_new);
        EXPECT_EQ(rows[i].at("dn_mm"), expected[i].m_dn);
    }
    EXPECT_EQ(rows[3].at("reason"), "SECTION_SLOPE is missing");
    EXPECT_TRUE(rows[0].at("reason").is_null());
    EXPECT_TRUE(rows[3].at("filling_percent").is_null());
    EXPECT_THAT(ended.m_err, HasSubstr("1 section not sized, without a SECTION_SLOPE above 0: D"));
    const json stored = json::parse(Drenova({"get", town.m_folder / "o.gpkg", "PIPE_REF", "--format", "json"}).m_out);
    EXPECT_EQ(stored.at(0).at("PIPE_REF"), "{P200}");
    EXPECT_EQ(stored.at(1).at("PIPE_REF"), "{C300}");
    EXPECT_THAT(town.Size({"--group", "Plastic", "--format", "csv"}).m_out,
                HasSubstr("name,guid,flow_m3s,slope_permille,old_pipe,new_pipe,dn_mm,filling_percent,velocity_ms,"
                          "shear_nm2,reason\nA,"));
}

TEST(Size, LimitsAndExitCodes) {
    const struct {
        std::vector<std::string> m_arguments;
        int m_code;
        const char* m_text; ///< in what is printed
    } rows[] = {
        {{"--group", "Plastic", "--min-dn", "250"}, 0, "A,"},
        {{"--group", "Plastic", "--keep", "A,B,C"}, 1, "nothing was stored"},
        {{"--group", "Plastic", "--min-dn", "300"}, 1, "no pipe of the groups of DN 300 or more"},
        {{"--group", "Plastic", "--fill", "20"}, 1, "the filling is"},
        {{"--group", "Plastic", "--min-velocity", "5"},
         1,
         "no pipe is fast enough: in DN/OD 250 the velocity is 1.08 m/s"},
        {{"--group", "Plastic", "--min-shear", "30"}, 1, "no pipe has enough wall shear stress"},
        {{"--group", "Plastik"}, 2, "--group: found \"Plastik\", expected the name or GUID of a group of pipes, did"},
        {{"--group", "{P250}"}, 2, "expected the name or GUID of a group"},
        {{}, 2, "--group is required"},
        {{"--group", "Plastic", "--keep", "Z"}, 2, "--keep"},
        {{"--group", "Plastic", "--fill", "0"}, 2, "--fill: found \"0\""},
        {{"--group", "Plastic", "--fill", "101"}, 2, "--fill: found \"101\""},
        {{"--group", "Plastic", "--min-dn", "-1"}, 2, "--min-dn: found \"-1\""},
        {{"--group", "Plastic", "--min-velocity", "fast"}, 2, "--min-velocity: found \"fast\""},
        {{"--group", "Plastic", "--min-shear", "nan"}, 2, "--min-shear"},
        {{"--group", "Plastic", "--flow", "length"}, 2, "--flow"},
    };
    for (const auto& row : rows) {
        const CTown town;
        const std::string before = ReadFile(town.m_project);
        auto arguments = row.m_arguments;
        arguments.insert(arguments.end(), {"--format", "csv"});
        const CEnded ended = town.Size(arguments);
        EXPECT_EQ(ended.m_code, row.m_code) << row.m_text << ended.m_err;
        EXPECT_THAT(ended.m_out + ended.m_err, HasSubstr(row.m_text));
        EXPECT_EQ(ReadFile(town.m_project) == before, row.m_code != 0) << row.m_text;
    }
    const CTown town;
    EXPECT_THAT(Drenova({"size", town.m_project, "--group", "Plastic", "--flow", "length"}).m_err,
                HasSubstr("--flow: found length in m, expected a flow in m³/s"));
    EXPECT_EQ(Drenova({"settings", town.m_project, "pipe_group=Concrete"}).m_code, 0);
    EXPECT_THAT(town.Size({}).m_out, HasSubstr("DN 300")) << "the group of the project";
}

// A with 300 mm at 5/1000 is filled to 21.28157579 %, with 0.666761211 m/s and a tenth of the capacity: derived at 40
// digits. Its hydraulic radius follows from the angle of the water's surface: 0.03823 m.
TEST(ExportHydraulics, SectionsByBranchWithAllThatIsCalculated) {
    const CTown town;
    const std::string file = town.m_folder / "h.csv";
    ASSERT_EQ(Drenova({"export", town.m_project, "hydraulics", "-o", file}).m_code, 0);
    const std::string text = ReadFile(file);
    std::vector<std::vector<std::string>> cells(1);
    std::string cell;
    for (const char c : text)
        if (c == ',' || c == '\n') {
            cells.back().push_back(std::move(cell));
            cell.clear();
            if (c == '\n')
                cells.emplace_back();
        } else {
            cell += c;
        }
    ASSERT_EQ(cells.size(), 6U) << text;
    const auto value = [&cells](std::size_t row, const std::string& key) {
        for (std::size_t i = 0; i < cells[0].size(); ++i)
            if (cells[0][i] == key)
                return cells[row].at(i);
        return std::string("no such column");
    };
    std::string order;
    for (std::size_t row = 1; row <= 4; ++row)
        order += value(row, "branch") + value(row, "name") + " ";
    EXPECT_EQ(order, "1D 2A 2B 2C ");
    EXPECT_EQ(value(2, "from") + value(2, "to") + value(2, "pipe") + value(2, "flow_key"), "12DN 300FLOW_TOTAL");
    const struct {
        const char* m_key;
        double m_value;
    } figures[] = {{"length_m", 100.0},
                   {"ground_start_m", 103.0},
                   {"invert_start_m", 101.0}, // the level line is the axis
                   {"invert_end_m", 100.5},
                   {"slope_permille", 5.0},
                   {"dn_mm", 300.0},
                   {"flow_m3s", 0.00733285381166},
                   {"capacity_m3s", 0.0733285381166},
                   {"flow_ratio_percent", 10.0},
                   {"filling_percent", 21.28157579},
                   {"velocity_ms", 0.666761211},
                   {"shear_nm2", 9810.0 * 0.0382278 * 0.005},
                   {"overfull", 0.0}};
    for (const auto& figure : figures)
        EXPECT_NEAR(json::parse(value(2, figure.m_key)).get<double>(), figure.m_value, 1e-4 * figure.m_value)
            << figure.m_key;
    EXPECT_EQ(value(2, "ground_end_m") + value(1, "flow_m3s") + value(3, "pipe"), "");
    EXPECT_EQ(Drenova({"export", town.m_project, "hydraulics", "-o", file}).m_code, 4);
    const CEnded refused = Drenova({"export", town.m_project, "hydraulics", "-o", town.m_folder / "h.xlsx"});
    EXPECT_EQ(refused.m_code, 2);
    EXPECT_THAT(refused.m_err, HasSubstr("expected a file name that ends in one of .csv"));
}
