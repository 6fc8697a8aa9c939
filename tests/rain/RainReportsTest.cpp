// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "tests/rain/RainRun.h"

#include <fmt/format.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <unistd.h>

using namespace OLMGis;
using ::testing::SizeIs;

namespace {

/// A folder of its own for reports.
class CReportFolder {
public:
    CReportFolder() { setenv("DRENOVA_HOME", m_folder.c_str(), 1); } // made by the first report
    ~CReportFolder() {
        unsetenv("DRENOVA_HOME");
        std::filesystem::remove_all(m_folder);
    }
    CReportFolder(const CReportFolder&) = delete;
    CReportFolder& operator=(const CReportFolder&) = delete;

    std::string Read(const char* name) const {
        std::ifstream stream(m_folder / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    bool IsThere() const { return std::filesystem::exists(m_folder); }

private:
    const std::filesystem::path m_folder =
        std::filesystem::path(testing::TempDir()) / ("drenova-reports-" + std::to_string(getpid()));
};

} // namespace

TEST(RainReports, TheIterationTableIsExactToTheByte) {
    const CReportFolder folder;
    CRainRun run;
    run.Rain("BC", 0.5).Type("STORM_CAD", "11091").Type("MINIMAL_DIAMETAR", "450");
    ASSERT_EQ(run.Calculate(), 1);
    EXPECT_FALSE(folder.IsThere()) << "an ordinary run writes no file";
    run.calculator.WriteResults(0, 1, 1);
    // At the head of both sections the time is 0 and so the intensity that of 5 min; AB has no flow and no pipe.
    const double intensity = (1.0 - 0.369) * (38.0 / 14.0 * 100.0);
    const double flow = 0.5 * intensity / 1000.0;
    const double velocity = CCircleFlow{0.5, 0.005, 0.001}.Fill(flow).second;
    const std::string sections =
        fmt::format("\r\n{};AB;BC\r\n{};0.000000;0.500000\r\n[0] {};0.000000;0.500000\r\n{}[LL];30.000000;30.000000"
                    "\r\n{};5.000000;5.000000\r\n[FIT] FlowInletTime;5.000000;5.000000",
                    Msg(425), Msg(2310), Msg(2311), Msg(428), Msg(1351));
    const auto results = [&](int iteration) {
        return fmt::format(
            "\r\n\r\n ITERATION {}\r\n[1] {};{:.6f};{:.6f}\r\n[2]=[1]*[0] : {};0.000000;{:.6f}\r\n"
            "[3] MinPipeDiam;0.000000;450.000000\r\n{};;DN500\r\n[4] {};;500.000000\r\n"
            "[5] SpeedSemiFull;0.000000;{:.6f}\r\n[6]=[SL]/[5] {};0.000000;{:.6f}\r\n[7] {};0.000000;0.000000\r\n"
            "[8]=[7]+[FIT] {};5.000000;5.000000",
            iteration, Msg(2128), intensity, intensity, Msg(2145), flow, Msg(1130), Msg(7495), velocity, Msg(2302),
            30.0 / velocity / 60.0, Msg(2303), Msg(2304));
    };
    EXPECT_EQ(folder.Read("IDFOut.txt"), sections + results(1));
    run.calculator.WriteResults(0, 1, 2);
    EXPECT_EQ(folder.Read("IDFOut.txt"), sections + results(1) + results(2)) << "appended";
    run.calculator.WriteResults(0, 1, 1);
    EXPECT_EQ(folder.Read("IDFOut.txt"), sections + results(1)) << "begun anew";

    run.trace.Request("IDFOut.txt");
    const Utility::CRunTraceScope scope(run.trace);
    ASSERT_EQ(run.Calculate(), 1);
    EXPECT_EQ(folder.Read("IDFOut.txt"), sections + results(1)) << "a host may request it of a run";
}

TEST(RainReports, FlowsFollowFromTheTracedNumbers) {
    const std::string path = std::string(DRENOVA_SOURCE_DIR) + "/data/samples/rivertown-curves.txt";
    CRainRun run("A---B-----C--D\nF----C");
    run.Rain("AB", 0.4).Rain("FC", 1.1).Rain("CD", 0.3).Type("CALC_STANDARD", "2").Type("RO", "0;0.9;1;1");
    run.Type("RAINFALL_MODE", "2481").Type("FILE_PATH", path).Type("FREQUENCY", "5");
    run.net.Set("AB", "PIPE_REF", "Test-900");
    ASSERT_EQ(run.CalculateTraced("CD"), 1);

    const auto& sections = *run.trace.FindTable("rain");
    ASSERT_THAT(sections.m_rows, SizeIs(4));
    EXPECT_EQ(sections.m_rows[0].m_name, "AB");
    EXPECT_EQ(sections.m_rows[0].m_values[6].AsText(), "DN900");
    EXPECT_EQ(run.TraceValue(sections, sections.m_rows[0], "flow"), run.Value("AB", "FLOW_RAIN_IDF"));

    double area = 0.0;
    for (const auto& row : run.trace.FindTable("rain_areas")->m_rows)
        area += row.m_values[0].AsDouble();
    double flow = 0.0;
    double time = 0.0;
    double upstream = 0.0; // along the chain as calculated here
    const auto& passes = *run.trace.FindTable("rain_passes");
    for (const auto& row : passes.m_rows) {
        const auto value = [&](const char* column) { return run.TraceValue(passes, row, column); };
        SCOPED_TRACE(row.m_name + " pass " + std::to_string(static_cast<int>(value("pass"))));
        if (value("pass") == 1.0) {
            upstream = time;
            time = 0.0;
        }
        EXPECT_DOUBLE_EQ(value("time_before"), time);
        EXPECT_DOUBLE_EQ(value("concentration_time"), value("inlet_time") + time);
        const double span = value("duration_above") - value("duration_below");
        const double share = span == 0.0 ? 0.0 : (value("concentration_time") - value("duration_below")) / span;
        const double intensity =
            value("intensity_below") + (value("intensity_above") - value("intensity_below")) * share;
        EXPECT_NEAR(value("intensity"), intensity, 1e-9);
        flow = value("effective_area") * intensity / 1000.0 * value("coefficient");
        EXPECT_NEAR(value("flow"), flow, 1e-12);
        const CCircleFlow pipe{value("inner_diameter") / 1000.0, value("slope") / 1000.0, value("roughness") / 1000.0};
        const auto [filling, velocity] = pipe.Fill(flow);
        EXPECT_NEAR(value("filling"), filling, 1e-6);
        EXPECT_NEAR(value("velocity"), velocity, 1e-9);
        EXPECT_DOUBLE_EQ(value("upstream_time_above"), upstream);
        time = upstream + value("length") / value("velocity") / 60.0;
        EXPECT_DOUBLE_EQ(value("upstream_time"), time);
    }
    EXPECT_EQ(passes.m_rows.back().m_name, "CD");
    EXPECT_NEAR(run.Value("CD", "FLOW_RAIN_IDF"), flow, 1e-12);
    EXPECT_NEAR(run.Value("CD", "FLOW_IDF_AREA_CORRECTED_TOTAL"), area, 1e-12);
}
