// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "analysis/FAI_NegativeSlope.h"
#include "analysis/FAI_NegativeSlopeCalc.h"
#include "tests/support/AnalysisStage.h"

using testing::ElementsAre;
using testing::IsEmpty;

/// Message 0: no finding.
TEST(SlopeChecks, NegativeFirstThenTheLimitsWhichAreThemselvesAccepted) {
    const struct {
        double slope;
        CAnalysisStage::CValues values;
        int message;
        const char* shown;
    } cases[] = {
        {5.0, {}, 0, ""},
        {30.0, {}, 0, ""},
        {4.996, {}, 10361, "5.00"},
        {30.01, {}, 10362, "30.01"},
        {0.0, {}, 10361, "0.00"},
        {0.0, {{"VALUE_MIN", "0"}}, 0, ""},
        {-0.1, {}, 10360, "-0.10"},
        {-0.1, {{"VALUE_MIN", "-1"}}, 10360, "-0.10"},
        {7.0, {{"VALUE_MIN", "9"}, {"VALUE_MAX", "6"}}, 10361, "7.00"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.slope);
        CAnalysisStage stage("A---B");
        stage.net.Set("AB", "SECTION_SLOPE", c.slope);
        EXPECT_THAT(stage.Run(CFAI_NegativeSlopeCalc(), c.values), IsEmpty()) << "it reads the other attribute";
        stage.net.Set("AB", "SECTION_SLOPE", {});
        stage.net.Set("AB", "SECTION_SLOPE_CAL", c.slope);
        EXPECT_THAT(stage.Run(CFAI_NegativeSlope(), c.values), IsEmpty()) << "it reads the other attribute";
        stage.net.Set("AB", "SECTION_SLOPE", c.slope);
        const auto expected = FindingOrNone("AB", c.message, c.shown);
        EXPECT_EQ(stage.Run(CFAI_NegativeSlope(), c.values), expected);
        EXPECT_EQ(stage.Run(CFAI_NegativeSlopeCalc(), c.values), expected);
    }
}

TEST(SlopeChecks, AFormWithoutLimitsFallsBackDifferently) {
    CAnalysisStage stage("A---B---C---D---E");
    const std::pair<const char*, double> slopes[] = {{"AB", 0.9}, {"BC", 3.1}, {"CD", 4.9}, {"DE", 30.5}};
    for (const auto& [section, slope] : slopes)
        for (const char* key : {"SECTION_SLOPE", "SECTION_SLOPE_CAL"})
            stage.net.Set(section, key, slope);
    const auto empty = boost::make_shared<OLMGis::Topology::CPropertiesEx>();
    CFAI_NegativeSlope design;
    CFAI_NegativeSlopeCalc calculated;
    EXPECT_THAT(stage.RunWith(design, empty), ElementsAre(Finding("AB", 10361, "0.90"), Finding("BC", 10361, "3.10"),
                                                          Finding("CD", 10361, "4.90"), Finding("DE", 10362, "30.50")));
    EXPECT_THAT(stage.RunWith(calculated, empty),
                ElementsAre(Finding("AB", 10361, "0.90"), Finding("BC", 10362, "3.10"), Finding("CD", 10362, "4.90"),
                            Finding("DE", 10362, "30.50")));
}
