// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
// The checks of pipes that carry the flow of the design.
#include "host/formulas/WallShearStress.h"
#include "host/network_checks/OverfullCheck.h"
#include "host/network_checks/ShearStressCheck.h"
#include "host/network_checks/VelocityCheck.h"
#include "tests/support/AnalysisStage.h"

using namespace OLMGis::NetworkChecks;
using testing::IsEmpty;

namespace {

constexpr int Overfull = 70444;
constexpr int NoCapacity = 70445;
constexpr int TooSlow = 70449;
constexpr int TooFast = 70450;
constexpr int TooLowStress = 70453;

/// A circular pipe DN 400 with k = 1 mm at 10 in 1000, by hand: R = 0.1 m, √(8 g R I) = 0.280143 m/s,
/// v = -2 · 0.280143 · log10(2.24e-5 + 6.7385e-4) = 1.76895 m/s, A = 0.125664 m², Qfull = 0.222293 m³/s. Half full, R
/// and v are the same.
constexpr double FullFlow = 0.222293;

struct CFlowStage : CAnalysisStage {
    explicit CFlowStage(double flow, double slope = 10.0) : CAnalysisStage("A---B") {
        Lay("AB", 400.0);
        net.Set("AB", "PIPE_ROUGHNESS", 1.0);
        net.Set("AB", "SECTION_SLOPE", slope);
        net.Set("AB", "FLOW_TOTAL", flow);
    }
};

} // namespace

TEST(OverfullCheck, ComparesTheFlowWithTheCapacity) {
    const struct {
        double m_flow;
        double m_slope;
        const char* m_limit;
        int m_message; ///< 0: no finding
        const char* m_shown;
    } rows[] = {
        {0.5 * FullFlow, 10.0, "100", 0, ""},
        {0.999 * FullFlow, 10.0, "100", 0, ""},
        {1.2 * FullFlow, 10.0, "100", Overfull, "120.00"},
        {0.85 * FullFlow, 10.0, "80", Overfull, "85.00"},
        {0.01, 0.0, "100", NoCapacity, "0.00"},
        {0.01, -2.5, "100", NoCapacity, "-2.50"},
        {0.0, -2.5, "100", 0, ""}, // nothing flows
    };
    for (const auto& row : rows) {
        CFlowStage stage(row.m_flow, row.m_slope);
        EXPECT_EQ(stage.Run(COverfullCheck(), {{"VALUE_MAX", row.m_limit}}),
                  FindingOrNone("AB", row.m_message, row.m_shown))
            << row.m_flow << " " << row.m_slope;
    }
}

TEST(VelocityCheck, TestsBothLimits) {
    const struct {
        double m_flow;
        double m_slope;
        const char* m_least;
        const char* m_greatest;
        int m_message;
        const char* m_shown;
    } rows[] = {
        {0.5 * FullFlow, 10.0, "0.7", "4.6", 0, ""},
        {0.5 * FullFlow, 10.0, "1.768", "1.770", 0, ""},
        {0.5 * FullFlow, 10.0, "1.770", "4.6", TooSlow, "1.77"},
        {0.5 * FullFlow, 10.0, "0.7", "1.768", TooFast, "1.77"},
        {1.0, 10.0, "0.7", "4.6", TooFast, "7.96"}, // surcharged: Q / A
        {0.01, 0.0, "0.7", "4.6", 0, ""},           // no capacity, which is the other check's
        {0.0, 10.0, "0.7", "4.6", 0, ""},
    };
    for (const auto& row : rows) {
        CFlowStage stage(row.m_flow, row.m_slope);
        EXPECT_EQ(stage.Run(CVelocityCheck(), {{"VALUE_MIN", row.m_least}, {"VALUE_MAX", row.m_greatest}}),
                  FindingOrNone("AB", row.m_message, row.m_shown))
            << row.m_flow << " " << row.m_least << " " << row.m_greatest;
    }
}

TEST(ShearStressCheck, ComparesRhoGRIWithTheLimit) {
    const struct {
        double m_flow;
        double m_slope;
        const char* m_least;
        const char* m_shown; ///< empty: no finding
    } rows[] = {
        {0.5 * FullFlow, 10.0, "9.80", ""}, // 1000 · 9.81 · 0.1 · 0.01
        {0.5 * FullFlow, 10.0, "9.82", "9.81"},
        {10.0, 10.0, "9.82", "9.81"}, // surcharged: the full pipe
        {10.0, 0.5, "1.0", "0.49"},
        {0.01, -1.0, "1.0", ""},
        {0.0, 0.5, "1.0", ""},
    };
    for (const auto& row : rows) {
        CFlowStage stage(row.m_flow, row.m_slope);
        EXPECT_EQ(stage.Run(CShearStressCheck(), {{"VALUE_MIN", row.m_least}}),
                  FindingOrNone("AB", *row.m_shown == '\0' ? 0 : TooLowStress, row.m_shown))
            << row.m_flow << " " << row.m_slope;
    }
}

TEST(FlowChecks, TheRainFlowCountsWithoutATotalAndSectionsWithoutInputAreSkipped) {
    CFlowStage stage(2.0 * FullFlow);
    stage.net.Set("AB", "FLOW_RAIN_IDF", 3.0 * FullFlow);
    EXPECT_EQ(stage.Run(COverfullCheck()), FindingOrNone("AB", Overfull, "200.00"));
    stage.net.Set("AB", "FLOW_TOTAL", {});
    EXPECT_EQ(stage.Run(COverfullCheck()), FindingOrNone("AB", Overfull, "300.00"));
    stage.net.Set("AB", "FLOW_RAIN_IDF", std::numeric_limits<double>::infinity());
    EXPECT_THAT(stage.Run(COverfullCheck()), IsEmpty());
    for (const char* key : {"FLOW_RAIN_IDF", "PIPE_REF", "SECTION_SLOPE"}) {
        CFlowStage lacking(2.0 * FullFlow);
        lacking.net.Set("AB", "FLOW_TOTAL", {});
        lacking.net.Set("AB", "FLOW_RAIN_IDF", 2.0 * FullFlow);
        lacking.net.Set("AB", key, {});
        EXPECT_THAT(lacking.Run(COverfullCheck()), IsEmpty()) << key;
        EXPECT_THAT(lacking.Run(CVelocityCheck(), {{"VALUE_MIN", "99"}}), IsEmpty()) << key;
        EXPECT_THAT(lacking.Run(CShearStressCheck(), {{"VALUE_MIN", "99"}}), IsEmpty()) << key;
    }
}
