// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
// The checks of what leads on from a section: steps of the level line, number of outlets, diameters.
#include "analysis/FAI_MultipleOutletSections.h"
#include "analysis/FAI_NegativeCascade.h"
#include "analysis/FAI_SmallerDiametersDownflow.h"
#include "tests/support/AnalysisStage.h"

using testing::ElementsAre;
using testing::IsEmpty;

TEST(CascadeCheck, AStepUpOfMoreThanHalfAMetreIsAFinding) {
    const struct {
        double level;
        double next;
        const char* shown; ///< empty: no finding
    } cases[] = {{100.0, 90.0, ""},
                 {100.0, 100.0, ""},
                 {100.0, 100.5, ""},
                 {0.57, 1.07, ""}, // more than 0.5 as a difference of doubles
                 {100.0, 100.515625, "-0.52"},
                 {100.0, 101.0, "-1.00"},
                 {100.0, 200.0, "-100.00"}};
    for (const auto& c : cases) {
        CAnalysisStage stage("A---B---C");
        stage.net.Set("AB", "LEVEL_LINE_1", c.level);
        stage.SetLevels("BC", c.next, 0.0);
        EXPECT_EQ(stage.Run(CFAI_NegativeCascade()), FindingOrNone("AB", *c.shown == '\0' ? 0 : 3239, c.shown))
            << c.next;
    }
}

TEST(CascadeCheck, EachSectionThatLeadsOnIsComparedWithTheUpperOne) {
    CAnalysisStage stage("A---B---C\nB---D\nB---E\nF---B");
    stage.net.Set("AB", "LEVEL_LINE_1", 50.0);
    stage.net.Set("BC", "LEVEL_LINE_0", 51.0);
    stage.net.Set("BE", "LEVEL_LINE_0", 51.0); // BD has none; FB has no end level
    EXPECT_THAT(stage.Run(CFAI_NegativeCascade()),
                ElementsAre(Finding("AB", 3239, "-1.00"), Finding("AB", 3239, "-1.00")));
    stage.net.Set("BE", "LEVEL_LINE_0", 52.0);
    stage.SetNode('B', "MAIN_SECT_OUT", stage.net.Section("BE")->GetGuid());
    EXPECT_THAT(stage.Run(CFAI_NegativeCascade()),
                ElementsAre(Finding("AB", 3239, "-2.00"), Finding("AB", 3239, "-1.00")))
        << "the main outlet comes first";
}

TEST(OutletCheck, OneFindingPerSectionHoweverManyLeadOn) {
    CAnalysisStage stage("A---B---C---D---E\nC---F\nD---G\nD---H");
    EXPECT_THAT(stage.Run(CFAI_MultipleOutletSections()), ElementsAre(Finding("BC", 3237), Finding("CD", 3237)));
}

TEST(DiameterCheck, AnySmallerPipeIsAFindingAndSectionsWithoutAPipeAreSkipped) {
    CAnalysisStage stage("A---B---C---D---E---F---G\nB---H\nB---I");
    stage.Lay("AB", 300.0);
    stage.Lay("BC", 299.999);
    stage.Lay("CD", 299.999);
    stage.Lay("DE", 400.0);
    stage.net.Set("EF", "PIPE_REF", "group-of-the-test"); // no pipe
    stage.Lay("FG", 100.0);
    stage.Lay("BH", 300.0);
    stage.Lay("BI", 200.0);
    EXPECT_THAT(stage.Run(CFAI_SmallerDiametersDownflow()), ElementsAre(Finding("AB", 10355), Finding("AB", 10355)));
}

TEST(DiameterCheck, InnerDiametersCountNotWalls) {
    CAnalysisStage stage("A---B---C");
    stage.net.Set("AB", "PIPE_REF", CAnalysisStage::AddPipe(300.0, 80.0));
    stage.net.Set("BC", "PIPE_REF", CAnalysisStage::AddPipe(300.0, 10.0));
    EXPECT_THAT(stage.Run(CFAI_SmallerDiametersDownflow()), IsEmpty());
}
