// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "analysis/FAI_MinimalPipeDepth.h"
#include "tests/support/AnalysisStage.h"

using testing::ElementsAre;
using testing::IsEmpty;

/// Terrain at 100 m at both ends, so that the depth there is 100 minus the level.
TEST(DepthCheck, TheFirstSampleOutsideTheLimitsCountsAndALimitItselfIsAccepted) {
    const struct {
        double start;
        double end;
        CAnalysisStage::CValues values;
        int message;
        const char* shown;
    } cases[] = {
        {99.0, 96.5, {}, 0, ""},
        {99.02, 97.0, {}, 10357, "0.98"},
        {98.0, 96.49, {}, 10358, "3.51"},
        {99.5, 90.0, {}, 10357, "0.50"},
        {90.0, 99.5, {}, 10358, "10.00"},
        {97.0, 97.0, {{"VALUE_MIN", "4"}, {"VALUE_MAX", "2"}}, 10357, "3.00"},
        {95.0, 95.0, {{"VALUE_MIN", "4"}, {"VALUE_MAX", "2"}}, 10358, "5.00"},
        {101.0, 98.0, {}, 10357, "-1.00"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.start);
        CAnalysisStage stage("A---B");
        stage.SetNode('A', "TERRAIN_1", 100.0);
        stage.SetNode('B', "TERRAIN_1", 100.0);
        stage.SetLevels("AB", c.start, c.end);
        EXPECT_EQ(stage.Run(CFAI_MinimalPipeDepth(), c.values), FindingOrNone("AB", c.message, c.shown));
    }
}

TEST(DepthCheck, WithoutAFormOrItsLimitsTheGreatestDepthIsThreeMetres) {
    CAnalysisStage stage("A---B");
    for (const char node : {'A', 'B'}) {
        stage.SetNode(node, "TERRAIN_1", 100.0);
        stage.SetNode(node, "TERRAIN_7", 97.5);
    }
    stage.SetLevels("AB", 96.8, 96.8);
    CFAI_MinimalPipeDepth item;
    EXPECT_THAT(stage.RunWith(item, item.CreateProperties()), IsEmpty()) << "3.2 m; the limit of a new form is 3.5";
    EXPECT_THAT(stage.RunWith(item, nullptr), ElementsAre(Finding("AB", 10358, "3.20")));
    EXPECT_THAT(stage.RunWith(item, boost::make_shared<OLMGis::Topology::CPropertiesEx>()),
                ElementsAre(Finding("AB", 10358, "3.20")));
    EXPECT_THAT(stage.Run(CFAI_MinimalPipeDepth(), {{"TERRAIN", "7"}}), ElementsAre(Finding("AB", 10357, "0.70")));
}

TEST(DepthCheck, SectionsWithoutTerrainOrLevelsAreSkipped) {
    CAnalysisStage stage("A---B---C---D");
    for (const char node : {'A', 'B', 'D'})
        stage.SetNode(node, "TERRAIN_1", 100.0);
    stage.net.Set("AB", "LEVEL_LINE_0", 100.0);
    stage.SetLevels("BC", 100.0, 100.0);
    stage.SetLevels("CD", 100.0, 100.0);
    EXPECT_THAT(stage.Run(CFAI_MinimalPipeDepth()), IsEmpty());
}
