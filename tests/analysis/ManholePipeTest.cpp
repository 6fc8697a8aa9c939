// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "analysis/FAI_ManholePipe.h"
#include "tests/support/AnalysisStage.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// Manholes of 1 m inner diameter and H2 of 0.5 m at the named nodes; on every section a pipe of 300 mm with a wall of
/// 50 mm and the level line at the invert, so that its top is 0.35 m above the level line.
struct CManholeStage : CAnalysisStage {
    explicit CManholeStage(std::string_view drawing, std::string_view manholes) : CAnalysisStage(drawing) {
        const std::string manhole = AddManhole({1.0, 0.25, 0.5, 2.0});
        for (const char node : manholes) {
            SetNode(node, "MANHOLE_ID", manhole);
            SetNode(node, "TERRAIN_1", 10.0);
        }
        for (const auto& section : net.Sections()) {
            net.Set(section->GetName(), "PIPE_REF", m_pipe);
            net.Set(section->GetName(), "LEVEL_LINE_POSITION", 0);
            SetLevels(section->GetName(), 9.0, 9.0);
        }
    }
    std::string m_pipe = AddPipe(300.0, 50.0);
    std::string m_wide = AddPipe(901.0, 50.0);
};

} // namespace

TEST(ManholePipeCheck, APipeThatIsTooWideGivesOneFindingAtItsNode) {
    CManholeStage stage("A---B---C\nB---D\nE---B\nF---G", "BF");
    stage.net.Set("FG", "PIPE_REF", CAnalysisStage::AddPipe(900.0, 50.0));
    stage.SetLevels("FG", 8.0, 8.0);
    EXPECT_THAT(stage.Run(CFAI_ManholePipe()), IsEmpty()) << "exactly as wide as the manhole fits";
    for (const char* section : {"AB", "BC", "BD"})
        stage.net.Set(section, "PIPE_REF", stage.m_wide);
    EXPECT_THAT(stage.Run(CFAI_ManholePipe()), ElementsAre(Finding("B", 11021)));
    stage.SetLevels("EB", 9.0, 9.5);
    EXPECT_THAT(stage.Run(CFAI_ManholePipe()), ElementsAre(Finding("B", 11021), Finding("EB", 11010)))
        << "the pipe that fits is still tested for its height";
}

/// The limit at a node is terrain 10.0 minus H2 0.5 = 9.5; the top is the level plus the height of the pipe above it.
TEST(ManholePipeCheck, ThePipesTopMayReachTheLimitButNotExceedIt) {
    const struct {
        const char* name;
        double level;
        int position;
        bool isFound;
    } cases[] = {
        {"invert, at the limit", 9.125, 0, false}, // 375 mm pipe height over the invert, all exact in binary
        {"invert, above", 9.126, 0, true},         {"outside top, at the limit", 9.5, 4, false},
        {"outside top, above", 9.501, 4, true},    {"an unknown position adds nothing", 9.5, 77, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        CManholeStage stage("A---B", "B");
        stage.net.Set("AB", "PIPE_REF", CAnalysisStage::AddPipe(250.0, 125.0));
        stage.net.Set("AB", "LEVEL_LINE_1", c.level);
        stage.net.Set("AB", "LEVEL_LINE_POSITION", c.position);
        EXPECT_EQ(stage.Run(CFAI_ManholePipe()), FindingOrNone("AB", c.isFound ? 11010 : 0));
    }
}

TEST(ManholePipeCheck, ASectionGivesOneFindingAndEachEndIsChecked) {
    CManholeStage stage("A---B", "AB");
    stage.SetLevels("AB", 9.9, 9.9);
    EXPECT_THAT(stage.Run(CFAI_ManholePipe()), ElementsAre(Finding("AB", 11010)));
    stage.SetNode('A', "MANHOLE_ID", CAnalysisStage::AddManhole({0.3, 0.25, 0.5, 2.0}));
    EXPECT_THAT(stage.Run(CFAI_ManholePipe()), ElementsAre(Finding("A", 11021), Finding("AB", 11010)));
}

TEST(ManholePipeCheck, TheTerrainOfTheManholeDecidesAndWithoutItLevelZero) {
    CManholeStage stage("A---B", "B");
    stage.SetNode('B', "TERRAIN_3", 9.0);
    EXPECT_THAT(stage.Run(CFAI_ManholePipe()), IsEmpty()) << "terrain 1 without the attribute";
    stage.SetNode('B', "MANHOLE_RT", 3);
    EXPECT_THAT(stage.Run(CFAI_ManholePipe()), ElementsAre(Finding("AB", 11010)));
    stage.SetNode('B', "MANHOLE_RT", 4);
    EXPECT_THAT(stage.Run(CFAI_ManholePipe()), ElementsAre(Finding("AB", 11010))) << "no height: compared with 0.0";
    stage.net.Set("AB", "LEVEL_LINE_1", -0.35);
    EXPECT_THAT(stage.Run(CFAI_ManholePipe()), IsEmpty()) << "a top at 0.0 or below";
    stage.net.Set("AB", "LEVEL_LINE_1", 9.0);
    stage.SetNode('B', "MANHOLE_RT", 1);
    stage.SetNode('B', "MANHOLE_H2", 0.7);
    EXPECT_THAT(stage.Run(CFAI_ManholePipe()), ElementsAre(Finding("AB", 11010)))
        << "H2 of the node replaces that of the catalogue";
}

TEST(ManholePipeCheck, WhatCannotBeReadIsSkipped) {
    CManholeStage stage("A---B---C---D\nC---E\nC---F", "C");
    stage.SetNode('A', "MANHOLE_ID", "in no catalogue");
    for (const auto& section : stage.net.Sections())
        stage.SetLevels(section->GetName(), 99.0, 99.0);
    stage.net.Set("BC", "LEVEL_LINE_POSITION", {});
    stage.net.Set("CD", "LEVEL_LINE_0", {});
    stage.net.Set("CE", "PIPE_REF", "in no catalogue");
    EXPECT_THAT(stage.Run(CFAI_ManholePipe()), ElementsAre(Finding("CF", 11010)));
    stage.SetNode('C', "MANHOLE_ID", {});
    EXPECT_THAT(stage.Run(CFAI_ManholePipe()), IsEmpty());
}
