// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "tests/cli/Program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <map>
#include <numbers>
#include <sstream>
#include <string>
#include <vector>

using nlohmann::json;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

namespace {

/// Two branches, of which one carries through a section without a catchment, meet above a trunk; "side" leaves the
/// trunk's end beside the main way.
constexpr const char* Network = R"({"type":"FeatureCollection","features":[
{"type":"Feature","properties":{"layer":"node","name":"1"},"geometry":{"type":"Point","coordinates":[0,0]}},
{"type":"Feature","properties":{"layer":"node","name":"2"},"geometry":{"type":"Point","coordinates":[90,0]}},
{"type":"Feature","properties":{"layer":"node","name":"3"},"geometry":{"type":"Point","coordinates":[90,70]}},
{"type":"Feature","properties":{"layer":"node","name":"4"},"geometry":{"type":"Point","coordinates":[210,0]}},
{"type":"Feature","properties":{"layer":"node","name":"5"},"geometry":{"type":"Point","coordinates":[300,0]}},
{"type":"Feature","properties":{"layer":"node","name":"6"},"geometry":{"type":"Point","coordinates":[300,50]}},
{"type":"Feature","properties":{"layer":"section","name":"long","guid":"G1","from":"1","to":"2","length":90,"SECTION_SLOPE":4,"FLOW_INTIME":5,"PIPE_ROUGHNESS":1.5},"geometry":null},
{"type":"Feature","properties":{"layer":"section","name":"short","guid":"G2","from":"3","to":"2","length":70,"SECTION_SLOPE":9,"FLOW_INTIME":5},"geometry":null},
{"type":"Feature","properties":{"layer":"section","name":"carrier","guid":"G3","from":"2","to":"4","length":120,"SECTION_SLOPE":6,"FLOW_INTIME":6},"geometry":null},
{"type":"Feature","properties":{"layer":"section","name":"trunk","guid":"G4","from":"4","to":"5","length":90,"SECTION_SLOPE":3,"FLOW_INTIME":7,"pipe":"DN500"},"geometry":null},
{"type":"Feature","properties":{"layer":"section","name":"side","guid":"G5","from":"5","to":"6","length":50,"SECTION_SLOPE":3,"FLOW_INTIME":7},"geometry":null},
{"type":"Feature","properties":{"layer":"section","name":"twin","guid":"G6","from":"5","to":"6","length":50,"SECTION_SLOPE":3,"FLOW_INTIME":7},"geometry":null},
{"type":"Feature","properties":{"layer":"section","name":"twin","guid":"G7","from":"5","to":"6","length":50,"SECTION_SLOPE":3,"FLOW_INTIME":7},"geometry":null},
{"type":"Feature","properties":{"layer":"main_outlet","node":"5","section":"side"},"geometry":null},
{"type":"Feature","properties":{"layer":"catchment","section":"long","kinds":["rain"],"area":0.9,"coefficient":0.5},"geometry":null},
{"type":"Feature","properties":{"layer":"catchment","section":"long","kinds":["rain"],"area":0.4,"coefficient":0.8},"geometry":null},
{"type":"Feature","properties":{"layer":"catchment","section":"short","kinds":["rain"],"area":0.6},"geometry":null},
{"type":"Feature","properties":{"layer":"catchment","section":"trunk","kinds":["rain"],"area":1.1,"coefficient":0.7},"geometry":null}
]})";

std::string Pipes() {
    std::string text = "group,name,guid,shape,inner_width_mm,inner_height_mm,wall_mm,roughness_mm\n";
    for (const char* size : {"300", "400", "500", "600", "700", "800", "1000"})
        text += std::string("Round,DN") + size + ",,circle," + size + "," + size + ",30,1\n";
    return text;
}

class RainProject : public testing::Test {
protected:
    void SetUp() override {
        const std::string network = m_folder.Write("net.geojson", Network);
        ASSERT_EQ(
            Drenova({"import", network, "--catalog", m_folder.Write("pipes.csv", Pipes()), "-o", m_project}).m_code, 0);
    }
    CEnded Run(const std::vector<std::string>& more) const {
        std::vector<std::string> arguments{
            "run", m_project, "001_RAIN_ITP", "PIPE_GROUP=Round", "FILE_PATH=" + m_curves, "FREQUENCY=2"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return Drenova(CStart{arguments, {{"DRENOVA_HOME", m_folder / "home"}}});
    }

    CFolder m_folder;
    const std::string m_project = m_folder / "net.gpkg";
    const std::string m_curves = m_folder.Write("curves.txt", "#2\n5 230\n10 174\n15 140\n30 90\n#5\n5 296\n10 224\n");
};

/// Uniform flow in a circle of a diameter (mm) by bisection on the wetted angle.
struct CCircle {
    double m_diameter, m_slope, m_roughness, m_viscosity;

    double Velocity(double radius) const {
        const double root = std::sqrt(8.0 * 9.81 * radius * m_slope / 1000.0);
        return -2.0 * root *
               std::log10(2.51 * m_viscosity / (4.0 * radius * root) + m_roughness / 1000.0 / (14.84 * radius));
    }
    double FullFlow() const {
        const double d = m_diameter / 1000.0;
        return std::numbers::pi * d * d / 4.0 * Velocity(d / 4.0);
    }
    /// Filling (%) and velocity (m/s) of a flow on the rising branch.
    std::pair<double, double> Fill(double flow) const {
        const double d = m_diameter / 1000.0;
        double low = 1e-6, high = 5.2781, velocity = 0.0;
        for (int i = 0; i < 100; ++i) {
            const double angle = (low + high) / 2.0;
            velocity = Velocity(d / 4.0 * (1.0 - std::sin(angle) / angle));
            (d * d / 8.0 * (angle - std::sin(angle)) * velocity < flow ? low : high) = angle;
        }
        return {50.0 * (1.0 - std::cos(low / 2.0)), velocity};
    }
};

/// Repeats a calculation from the numbers of its printed explanation alone.
class CRecalculation {
public:
    explicit CRecalculation(const json& sheet) : m_sheet(sheet), m_basis(sheet.at("basis")) {}

    /// The flow of the last section, m³/s.
    double Calculate() {
        double area = 0.0;
        for (const json& each : m_sheet.at("areas"))
            area += Area(each);
        double flow = 0.0;
        for (const json& step : m_sheet.at("chain"))
            flow = CalculateStep(step);
        if (!m_sheet.at("areas").empty()) {
            EXPECT_NEAR(area, m_sheet.at("chain").back().at("passes").back().at("effective_area"), 1e-12);
        }
        return flow;
    }

private:
    struct CState {
        double m_inlet = 0.0, m_flowTime = 0.0, m_path = 0.0, m_carried = 0.0, m_adds = 0.0;
    };

    static double Area(const json& of) {
        double area = 0.0;
        for (const json& catchment : of.at("catchments"))
            area += catchment.at("area").get<double>() * catchment.at("coefficient").get<double>();
        EXPECT_NEAR(area, of.at("own_area"), 1e-12);
        return area;
    }

    double Intensity(const json& pass, double t) const {
        switch (m_basis.at("rainfall_mode").get<int>()) {
        case 2484:
            return (1.0 / std::pow(m_basis.at("frequency_n").get<double>(), 0.25) - 0.369) * 38.0 / (t + 9.0) *
                   m_basis.at("base_intensity").get<double>();
        case 9455:
            return pass.at("row_a").get<double>() /
                   std::pow(t + pass.at("row_b").get<double>(), pass.at("row_c").get<double>());
        default: {
            const double t1 = pass.at("duration_below"), t2 = pass.at("duration_above");
            const double i1 = pass.at("intensity_below"), i2 = pass.at("intensity_above");
            return t1 == t2 ? i1 : i1 + (i2 - i1) * (t - t1) / (t2 - t1);
        }
        }
    }

    double CalculateStep(const json& step) {
        const bool isTurkish = m_basis.at("rainfall_mode") == 9455;
        const double own = Area(step);
        const CState above = step.at("above").is_null() ? CState() : m_states.at(step.at("above"));
        m_chainArea = (step.at("above").is_null() ? 0.0 : m_chainArea) + own;
        CState state;
        double flow = 0.0;
        for (const json& pass : step.at("passes")) {
            const std::string where = step.at("section").get<std::string>() + " pass " + pass.at("pass").dump();
            state.m_inlet = pass.at("inlet_time");
            if (isTurkish && !step.at("above").is_null()) {
                EXPECT_NEAR(state.m_inlet, above.m_inlet + above.m_flowTime, 1e-9) << where;
            }
            const double t = state.m_inlet + (isTurkish ? state.m_flowTime : state.m_path);
            EXPECT_NEAR(t, pass.at("concentration_time"), 1e-9) << where;
            const double intensity = Intensity(pass, t);
            EXPECT_NEAR(intensity, pass.at("intensity"), 1e-9 * intensity) << where;
            const double area = pass.at("effective_area");
            if (m_basis.at("partial_area") == 1) {
                EXPECT_NEAR(area, m_chainArea, 1e-12) << where;
            }
            flow = area * intensity / 1000.0 *
                   (pass.at("coefficient").is_null() ? 1.0 : pass.at("coefficient").get<double>());
            EXPECT_NEAR(flow, pass.at("flow"), 1e-9 * flow) << where;
            const CCircle pipe{pass.at("inner_diameter"), pass.at("slope"), pass.at("roughness"),
                               m_basis.at("viscosity")};
            const CCircle least{pass.at("full_diameter"), pass.at("slope"), pass.at("roughness"),
                                m_basis.at("viscosity")};
            EXPECT_NEAR(least.FullFlow(), flow, 1e-9 * flow) << where;
            EXPECT_GE(pass.at("inner_diameter"), pass.at("min_diameter")) << where;
            const auto [filling, velocity] = pipe.Fill(flow);
            EXPECT_NEAR(filling, pass.at("filling"), 1e-6 * filling) << where;
            EXPECT_NEAR(velocity, pass.at("velocity"), 1e-6 * velocity) << where;
            state.m_flowTime = pass.at("length").get<double>() / velocity / 60.0 * pass.at("retention").get<double>();
            EXPECT_NEAR(state.m_flowTime, pass.at("flow_time"), 1e-6) << where;
            const bool isCarrier = m_basis.at("ignore_carriers") != 0 && own == 0.0;
            state.m_adds = isCarrier ? 0.0 : state.m_flowTime + above.m_carried;
            state.m_carried = isCarrier ? state.m_flowTime + above.m_carried : 0.0;
            state.m_path = above.m_path + (m_basis.at("time_rule") == 11091 ? above.m_adds : state.m_adds);
            EXPECT_NEAR(state.m_path, pass.at("upstream_time"), 1e-6) << where;
            state.m_path = pass.at("upstream_time"); // goes on with what was printed, not with its rounding
            state.m_flowTime = pass.at("flow_time");
            const double next = Intensity(pass, state.m_inlet + (isTurkish ? state.m_flowTime : state.m_path));
            const bool isLast = &pass == &step.at("passes").back();
            const double allowed = intensity * m_basis.at("precision").get<double>() / 100.0;
            EXPECT_EQ(std::abs(intensity - pass.at("next_intensity").get<double>()) <= allowed, isLast) << where;
            if (pass.at("duration_below").is_null()) {
                EXPECT_NEAR(next, pass.at("next_intensity"), 1e-6) << where;
            }
        }
        m_states[step.at("section")] = state;
        return flow;
    }

    const json& m_sheet;
    const json& m_basis;
    std::map<std::string, CState> m_states;
    double m_chainArea = 0.0;
};

/// The text between two equal signs: numbers, + - · / ^ and parentheses.
class CExpression {
public:
    explicit CExpression(std::string text) : m_text(std::move(text)) {
        for (std::size_t dot = m_text.find("·"); dot != std::string::npos; dot = m_text.find("·"))
            m_text.replace(dot, 2, "*");
    }
    double Sum() {
        double sum = Product();
        while (Next() == '+' || Next() == '-')
            sum += Take() == '+' ? Product() : -Product();
        return sum;
    }
    double Number() {
        if (Next() == '(') {
            Take();
            const double inside = Sum();
            Take();
            return inside;
        }
        std::size_t length = 0;
        const double number = std::stod(m_text.substr(m_at), &length);
        m_at += length;
        return number;
    }

private:
    double Product() {
        double product = Power();
        while (Next() == '*' || Next() == '/')
            product *= Take() == '*' ? Power() : 1.0 / Power();
        return product;
    }
    double Power() {
        const double base = Number();
        if (Next() != '^')
            return base;
        Take();
        return std::pow(base, Number());
    }
    char Next() {
        m_at = std::min(m_text.find_first_not_of(' ', m_at), m_text.size());
        return m_at < m_text.size() ? m_text[m_at] : '\0';
    }
    char Take() { return m_text[m_at++]; }

    std::string m_text;
    std::size_t m_at = 0;
};

} // namespace

/// With every rule the stored flow follows from the printed numbers.
TEST_F(RainProject, AnExplanationIsEnoughToRepeatTheCalculation) {
    const std::vector<std::string> variants[] = {
        {},
        {"STORM_CAD=11091"},
        {"IGNORE_CARRIER_PIPES=1", "PIPE_FILL=60"},
        {"BRANCHING_FLOW_TIME=11089", "CALC_STANDARD=RO", "RO=1;1;0.8;0.9"},
        {"RAINFALL_MODE=2484", "RAIN_INTESITY=130", "FREQUENCY_N=0.5"},
        {"RAINFALL_MODE=9455", "TURKISH=0;1:1500:10:0.8;100:2000:10:0.8"},
        {"PARTIAL_AREA_EFFECT=1"},
        {"PARTIAL_AREA_EFFECT=2", "--yes"},
        {"MINIMAL_DIAMETAR=600", "USE_EXISTING_PIPE=2"},
    };
    for (const auto& variant : variants) {
        const std::string about = variant.empty() ? "as the form comes" : variant.front();
        SCOPED_TRACE(about);
        std::vector<std::string> arguments = variant;
        arguments.insert(arguments.end(), {"--explain", "trunk", "--format", "json"});
        const CEnded ended = Run(arguments);
        ASSERT_EQ(ended.m_code, 0) << ended.m_err;
        const json sheet = json::parse(ended.m_out);
        EXPECT_EQ(sheet.at("section"), "trunk");
        ASSERT_EQ(sheet.at("chain").size(), 3U);
        const double flow = CRecalculation(sheet).Calculate();
        const json stored =
            json::parse(Drenova({"get", m_project, "FLOW_RAIN_IDF", "--names", "trunk", "--format", "json"}).m_out);
        EXPECT_NEAR(flow, stored.at(0).at("FLOW_RAIN_IDF"), 1e-9 * flow);
        EXPECT_EQ(sheet.at("stored").at("FLOW_RAIN_IDF"), stored.at(0).at("FLOW_RAIN_IDF"));
        EXPECT_GT(flow, 0.05);
    }
}

/// The sheet for people: every line of the form "letters = numbers = result" is true to its seven digits.
TEST_F(RainProject, ASheetIsTrueToItsOwnNumbers) {
    for (const auto& [variant, formulas] : {std::pair{"FREQUENCY=2", 25}, {"RAINFALL_MODE=2484", 20}}) {
        const CEnded ended = Run({variant, "--explain", "G4"});
        ASSERT_EQ(ended.m_code, 0) << ended.m_err;
        EXPECT_THAT(ended.m_out, HasSubstr("0.9 · 0.5 + 0.4 · 0.8 = 0.77"));
        EXPECT_THAT(ended.m_out, HasSubstr("k = 1.5 mm (PIPE_ROUGHNESS of the section)"));
        EXPECT_THAT(ended.m_out, HasSubstr("Section carrier, below "));
        int count = 0;
        std::istringstream lines(ended.m_out);
        for (std::string line; std::getline(lines, line);) {
            const std::size_t last = line.rfind(" = ");
            const std::size_t before = last == std::string::npos ? last : line.rfind(" = ", last - 1);
            if (before == std::string::npos)
                continue;
            const std::string numbers = line.substr(before + 3, last - before - 3);
            if (numbers.find_first_not_of("0123456789.e+-/^() ·") != std::string::npos)
                continue; // a line of text
            const double value = CExpression(numbers).Sum();
            EXPECT_NEAR(CExpression(line.substr(last + 3)).Number() / value, 1.0, 1e-5) << line;
            ++count;
        }
        EXPECT_GE(count, formulas);
    }
}

TEST_F(RainProject, ListsItsSectionsInThreeFormats) {
    const CEnded table = Run({"SAVE_PIPE=1"});
    ASSERT_EQ(table.m_code, 0) << table.m_err;
    EXPECT_THAT(table.m_out, HasSubstr("l/(s·ha)"));
    EXPECT_THAT(table.m_err, HasSubstr("without results, at a side outlet, below one, or in a ring: twin, twin"));
    EXPECT_THAT(table.m_err, Not(HasSubstr("of4")));
    const json rows = json::parse(Run({"--format", "json", "-o", m_folder / "o.gpkg"}).m_out);
    ASSERT_EQ(rows.size(), 5U);
    EXPECT_EQ(rows.at(0).at("name"), "long") << "in the order of the network";
    const json& trunk = rows.at(3);
    EXPECT_NEAR(trunk.at("area_ha"), 0.77 + 0.6 + 0.77, 1e-12);
    EXPECT_NEAR(trunk.at("own_area_ha"), 0.77, 1e-12);
    EXPECT_EQ(trunk.at("pipe"), trunk.at("pipe_before")) << "the first run stored it";
    EXPECT_NE(trunk.at("pipe"), "DN500");
    EXPECT_THAT(Run({"--format", "csv"}).m_out,
                HasSubstr("name,guid,own_area_ha,area_ha,time_min,intensity_lsha,flow_m3s,pipe,inner_diameter_mm,"
                          "filling_percent,velocity_ms,pipe_before,pipe_after\nlong,G1,0.77,0.77,"));
}

TEST_F(RainProject, ReportsTheFilesItWrote) {
    EXPECT_THAT(Run({"--idf-table"}).m_err, HasSubstr(m_folder / "home/IDFOut.txt"));
    EXPECT_THAT(ReadFile(m_folder / "home/IDFOut.txt"), HasSubstr(" ITERATION 1\r\n"));
    EXPECT_THAT(Run({"PARTIAL_AREA_EFFECT=2", "--yes"}).m_err, HasSubstr(m_folder / "home/variations.txt"));
    EXPECT_THAT(Run({}).m_err, Not(HasSubstr(".txt: written")));
    // On a full disk a report is not written, which is no reason to fail.
    std::filesystem::remove(m_folder / "home/variations.txt");
    std::filesystem::create_symlink("/dev/full", m_folder / "home/variations.txt");
    const CEnded full = Run({"PARTIAL_AREA_EFFECT=2", "--yes"});
    EXPECT_EQ(full.m_code, 0);
    EXPECT_THAT(full.m_err, Not(HasSubstr(".txt: written")));
    EXPECT_THAT(full.m_err,
                HasSubstr((m_folder / "home/variations.txt") + " was not written: No space left on device."));
    std::filesystem::remove(m_folder / "home/IDFOut.txt");
    std::filesystem::create_directories(m_folder / "home/IDFOut.txt/full");
    const CEnded blocked = Run({"--idf-table"});
    EXPECT_EQ(blocked.m_code, 0);
    EXPECT_THAT(blocked.m_err, HasSubstr((m_folder / "home/IDFOut.txt") + " was not written: Is a directory."));
}

TEST_F(RainProject, RefusesOptionsOfOtherCalculators) {
    const struct {
        std::vector<std::string> arguments;
        const char* message;
    } refusals[] = {
        {{"run", m_project, "01_WASTE_PERCENT", "--explain", "trunk"}, "--explain: found the calculator"},
        {{"run", m_project, "01_WASTE_PERCENT", "--idf-table"}, "--idf-table: found the calculator"},
        {{"run", m_project, "001_RAIN_ITP", "--explain", "trunks"}, "--explain: found \"trunks\""},
        {{"run", m_project, "001_RAIN_ITP", "--explain", "twin"}, "2 sections are named"},
        {{"run", m_project, "001_RAIN_ITP", "--explain", "trunk", "--format", "csv"}, "expected table or json"},
        {{"run", m_project, "001_RAIN_ITP", "--preview"}, "--preview"},
    };
    for (const auto& refusal : refusals) {
        const CEnded ended = Drenova(refusal.arguments);
        EXPECT_EQ(ended.m_code, 2) << refusal.message;
        EXPECT_THAT(ended.m_err, HasSubstr(refusal.message));
    }
    EXPECT_THAT(Run({"--explain", "G6"}).m_err, HasSubstr("nothing to explain"));
}

TEST_F(RainProject, PrintsJsonAlsoWithoutResults) {
    const CEnded none = Run({"RAINFALL_MODE=2484", "FREQUENCY_N=100", "--format", "json"});
    EXPECT_EQ(none.m_code, 1);
    EXPECT_EQ(json::parse(none.m_out), json::array());
    EXPECT_TRUE(json::parse(Run({"--explain", "G6", "--format", "json"}).m_out).is_null());
}

TEST(Curves, AreShownLookedUpAndRefused) {
    const CFolder folder;
    const std::string good = folder.Write("good.txt", "* comment\r\n#5\r\n10\t100\r\n5 150\r\n#2\r\n5 90\r\n5 91\r\n");
    const CEnded all = Drenova({"curves", good});
    EXPECT_EQ(all.m_code, 0);
    EXPECT_THAT(all.m_out, HasSubstr("5 to 10"));
    EXPECT_THAT(all.m_err, HasSubstr("good.txt, line 7: the duration 5 occurred before"));
    const json found = json::parse(Drenova({"curves", good, "--duration", "7.5", "--json"}).m_out);
    ASSERT_EQ(found.at("curves").size(), 2U);
    EXPECT_EQ(found.at("curves").at(0).at("intensity_lsha"), 90.0) << "constant outside the points";
    EXPECT_EQ(found.at("curves").at(1).at("intensity_lsha"), 125.0);
    EXPECT_EQ(found.at("problems").at(0).at("line"), 7);
    EXPECT_THAT(Drenova({"curves", good, "--frequency", "5"}).m_out, HasSubstr("150.00"));

    const struct {
        std::vector<std::string> arguments;
        int code;
        const char* message;
    } refusals[] = {
        {{folder.Write("bad.txt", "*\n10 20 30\n")}, 3, "bad.txt, line 2: found 3 parts"},
        {{folder.Write("none.txt", "* nothing\n")}, 3, "the file contains no curve"},
        {{folder / "missing.txt"}, 4, "No such file"},
        {{good, "--frequency", "3"}, 2, "expected one that"},
        {{good, "--frequency", "often"}, 2, "found \"often\""},
        {{good, "--duration", "long"}, 2, "found \"long\""},
    };
    for (const auto& refusal : refusals) {
        std::vector<std::string> arguments{"curves"};
        arguments.insert(arguments.end(), refusal.arguments.begin(), refusal.arguments.end());
        const CEnded ended = Drenova(arguments);
        EXPECT_EQ(ended.m_code, refusal.code) << refusal.message;
        EXPECT_THAT(ended.m_err, HasSubstr(refusal.message));
    }
}

/// High intensities for long times alone: the flow of the slow pass makes a fast one, that of the fast pass a slow one.
TEST_F(RainProject, ADesignEndsWhereTheRainComesToNoResult) {
    const std::string before = ReadFile(m_project);
    const std::string curves = m_folder.Write("rising.txt", "#2\n5 20\n6.5 20\n6.6 230\n30 230\n");
    const json parameters = {
        {"001_RAIN_ITP", {{"PIPE_GROUP", "Round"}, {"FILE_PATH", curves}, {"FREQUENCY", "2"}}},
        {"03_FC_TRANSIT", {{"FC_USER", 1}}},
    };
    const CEnded ended = Drenova({"design", m_project, "--params", m_folder.Write("design.json", parameters.dump())});
    EXPECT_EQ(ended.m_code, 1);
    EXPECT_THAT(ended.m_err, AllOf(HasSubstr("section long"), HasSubstr("001_RAIN_ITP: no result")));
    EXPECT_THAT(ended.m_out, Not(HasSubstr("03_FC_TRANSIT"))) << "nothing goes on with the rain of an earlier run";
    EXPECT_EQ(ReadFile(m_project), before);
}
