// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
//
// Terrain and depths of sections, calculated by hand. A is at x = 0 and B at x = 100; the stored length of AB is 30
// m.
#include "host/network_core/CatalogManager.h"
#include "host/network_core/PipeManager.h"
#include "host/network_core/TerrainSurfaces.h"
#include "tests/support/TestProject.h"
#include "tests/support/TextNetwork.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using OLMGis::Data::CDataBox;
using OLMGis::Data::CDataRW;
using OLMGis::Topology::CCatalogItem;
using OLMGis::Topology::CCatalogManager;
using OLMGis::Topology::CPipeData;
using OLMGis::Topology::CPipeManager;
using OLMGis::Topology::CPoint;
using OLMGis::Topology::CTerrainSurfaces;
using OLMGis::Topology::ITerrainSurface;
using ::testing::DoubleNear;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

namespace {

constexpr double Close = 1e-12; // sums of a few numbers below 1000, and no more

/// Terrain 50 m high everywhere, with the samples that a test gives it along every line.
class CScriptedSurface final : public ITerrainSurface {
public:
    explicit CScriptedSurface(std::vector<std::pair<double, double>> samples) : m_samples(std::move(samples)) {}
    bool GetHeight(const CPoint& point, double& height) override {
        if (point.m_x > 150.0)
            return false;
        height = 50.0;
        return true;
    }
    void AppendCrossings(std::span<const CPoint> /*line*/, std::vector<std::pair<double, double>>& samples) override {
        samples.insert(samples.end(), m_samples.begin(), m_samples.end());
    }

private:
    std::vector<std::pair<double, double>> m_samples;
};

class PipeDepths : public ::testing::Test {
protected:
    PipeDepths() {
        m_network.Set("AB", "LEVEL_LINE_0", 100.0);
        m_network.Set("AB", "LEVEL_LINE_1", 97.0);
        SetTerrain('A', 102.0);
        SetTerrain('B', 101.0);
    }

    void SetTerrain(char node, const CDataBox& height, const char* key = "TERRAIN_1") {
        EXPECT_NE(CDataRW::Write(key, m_network.Node(node), height, nullptr), 0);
    }

    static void Attach(int type, std::vector<std::pair<double, double>> samples) {
        CTerrainSurfaces::Instance()->Attach(
            type, [samples = std::move(samples)] { return std::make_shared<CScriptedSurface>(samples); });
    }

    /// A pipe of DN 500 with a wall of 50 mm laid along AB.
    void LayPipe(int levelLinePosition) {
        auto& catalog = *CCatalogManager::Instance()->GetCatalog(CCatalogManager::PipeCatalog, 1);
        const auto group = catalog.AddGroup("group", "concrete").Value();
        CPipeData data;
        data.m_innerWidth = data.m_innerHeight = 500.0;
        data.m_wall = 50.0;
        ASSERT_TRUE(catalog.AddPipe(*group, "{PIPE-500}", "DN 500", data));
        m_network.Set("AB", "PIPE_REF", "pipe-500");
        m_network.Set("AB", "LEVEL_LINE_POSITION", levelLinePosition);
    }

    int Samples(int type = 1) { return m_network.Section("AB")->GetAllTerrainHeights(type, m_samples, nullptr); }
    int Depths(const std::vector<double>& positions, int type = 1) {
        return CPipeManager::Instance()->GetPipeDepths(m_network.Section("AB"), positions, type, m_first, m_second);
    }

    CTestProject m_project;
    CTextNetwork m_network{"A---B---C"};
    std::vector<std::pair<double, double>> m_samples{{7.0, 7.0}}; // former contents are removed
    std::vector<double> m_first{7.0};
    std::vector<double> m_second{7.0};
};

} // namespace

TEST_F(PipeDepths, SamplesAreTheTwoEndsWithoutARaster) {
    EXPECT_EQ(Samples(), 1);
    EXPECT_THAT(m_samples, ElementsAre(Pair(0.0, 102.0), Pair(30.0, 101.0)));
    EXPECT_EQ(Samples(2), 0);
    EXPECT_THAT(m_samples, IsEmpty());
    SetTerrain('B', {});
    EXPECT_EQ(Samples(), 0);
    EXPECT_THAT(m_samples, IsEmpty());
}

TEST_F(PipeDepths, SamplesOfARasterAreFittedToTheStoredLengthAndComeOnce) {
    // Drawn 100 m, stored 30 m. Those that fall on an end give way to the node; the double one at 20 m comes once.
    Attach(1, {{0.0, 1.0}, {20.0, 60.0}, {20.0 + 1e-10, 60.0}, {70.0, 61.0}, {100.0, 2.0}});
    EXPECT_EQ(Samples(), 1);
    EXPECT_THAT(m_samples, ElementsAre(Pair(0.0, 102.0), Pair(DoubleNear(6.0, Close), 60.0),
                                       Pair(DoubleNear(21.0, Close), 61.0), Pair(30.0, 101.0)));
    // A length of nothing leaves the ends alone.
    m_network.Set("AB", "length", 0.0);
    EXPECT_EQ(Samples(), 1);
    EXPECT_THAT(m_samples, ElementsAre(Pair(0.0, 102.0), Pair(0.0, 101.0)));
}

TEST_F(PipeDepths, NodesTakeTheirOwnHeightBeforeTheRasters) {
    Attach(2, {});
    SetTerrain('A', 88.0, "TERRAIN_2");
    struct CCase {
        char m_node;
        int m_type;
        int m_result;
        double m_height;
    };
    for (const CCase& row : {CCase{'A', 1, 1, 102.0}, CCase{'A', 2, 1, 88.0}, CCase{'B', 2, 1, 50.0},
                             CCase{'C', 2, 0, 7.0} /* beyond the surface */, CCase{'A', 3, 0, 7.0},
                             CCase{'A', 0, 0, 7.0}, CCase{'A', 11, 0, 7.0}}) {
        double height = 7.0;
        EXPECT_EQ(m_network.Node(row.m_node)->GetTerrainHeight(height, row.m_type), row.m_result);
        EXPECT_EQ(height, row.m_height) << row.m_node << ' ' << row.m_type;
    }
    SetTerrain('A', 99.0, "TERRAIN_10");
    double height = 0.0;
    EXPECT_EQ(m_network.Node('A')->GetTerrainHeight(height, 10), 1);
    EXPECT_EQ(height, 99.0);
}

TEST_F(PipeDepths, ASurfaceIsOpenedOnceAndOnlyWhenItIsAskedFor) {
    int opened = 0;
    CTerrainSurfaces::Instance()->Attach(3, [&opened]() -> std::shared_ptr<ITerrainSurface> {
        ++opened;
        return nullptr;
    });
    EXPECT_EQ(opened, 0);
    EXPECT_EQ(Samples(3), 0);
    EXPECT_EQ(Samples(3), 0);
    EXPECT_EQ(opened, 1);
}

TEST_F(PipeDepths, DepthsRunLinearlyBetweenSamples) {
    // Terrain 102 - x/30, level 100 - 3x/30: 2 m at the start, 3 m at 15 m, 4 m at the end.
    EXPECT_EQ(Depths({0.0, 30.0, 15.0, -5.0, 31.0}), 1);
    EXPECT_THAT(m_second, ElementsAre(2.0, 4.0, DoubleNear(3.0, Close), 2.0, 4.0));
    EXPECT_EQ(m_first, m_second); // no pipe
    // A sample at 6 m that is 103 high: 3 m above A's line to it halfway, at 3 m: 102.5 - 99.7; below it, at 18 m
    // halfway to B: 102 - 98.2.
    Attach(1, {{20.0, 103.0}});
    EXPECT_EQ(Depths({3.0, 6.0, 18.0}), 1);
    EXPECT_THAT(m_second, ElementsAre(DoubleNear(2.8, Close), DoubleNear(3.6, Close), DoubleNear(3.8, Close)));
}

// As doubles 101.3 - 100.3 is less than 1, and 100.3 * 0.7 + 100.3 * 0.3 is not 100.3: a limit of 1 m is met all the
// same.
TEST_F(PipeDepths, AreTheDecimalsThatLevelsGive) {
    m_network.Set("AB", "LEVEL_LINE_0", 100.3);
    m_network.Set("AB", "LEVEL_LINE_1", 100.3);
    SetTerrain('A', 101.3);
    SetTerrain('B', 101.3);
    EXPECT_EQ(Depths({0.0, 3.0, 9.0, 20.1, 30.0}), 1);
    EXPECT_THAT(m_second, ElementsAre(1.0, 1.0, 1.0, 1.0, 1.0));
}

TEST_F(PipeDepths, CoverIsCountedFromTheOutsideTopAtEachPositionOfTheLevelLine) {
    LayPipe(0);
    // Outside height 600 mm: from the invert 550 up, from the axis 300, from the inside top 50, from the outside bottom
    // 600, from the outside top nothing. No position means the invert, an unknown one for no pipe.
    const std::pair<CDataBox, double> above[] = {{0, 0.55}, {1, 0.3},   {2, 0.05}, {3, 0.6},
                                                 {4, 0.0},  {{}, 0.55}, {9, 0.0}};
    for (const auto& [position, height] : above) {
        m_network.Set("AB", "LEVEL_LINE_POSITION", position);
        EXPECT_EQ(Depths({0.0, 30.0}), 1);
        EXPECT_THAT(m_second, ElementsAre(2.0, 4.0));
        EXPECT_THAT(m_first, ElementsAre(DoubleNear(2.0 - height, Close), DoubleNear(4.0 - height, Close)))
            << position.AsText();
    }
}

TEST_F(PipeDepths, WithoutSectionPositionsLevelsOrTerrainThereAreNone) {
    const auto expectNone = [this](int result) {
        EXPECT_EQ(result, 0);
        EXPECT_THAT(m_first, IsEmpty());
        EXPECT_THAT(m_second, IsEmpty());
        m_first = m_second = {7.0};
    };
    expectNone(CPipeManager::Instance()->GetPipeDepths(nullptr, {0.0}, 1, m_first, m_second));
    expectNone(Depths({}));
    expectNone(Depths({0.0}, 2));
    m_network.Set("AB", "LEVEL_LINE_1", {});
    expectNone(Depths({0.0}));
    EXPECT_EQ(CPipeManager::Instance()->GetPipeDepths(m_network.Section("BC"), {0.0}, 1, m_first, m_second), 0);
}

TEST_F(PipeDepths, LevelLinesAreFoundByTheNodeAtTheirEnd) {
    const auto section = m_network.Section("AB");
    CDataBox box(7.0);
    EXPECT_NE(section->GetLevelLineAtNode("{NODE-a}", box), 0);
    EXPECT_EQ(box.AsDouble(), 100.0);
    EXPECT_NE(section->GetLevelLineAtNode(m_network.Node('B')->GetGuid(), box), 0);
    EXPECT_EQ(box.AsDouble(), 97.0);
    EXPECT_EQ(section->GetLevelLineAtNode("node-C", box), 0);
    EXPECT_FALSE(box.IsNotNull());
    m_network.Set("AB", "LEVEL_LINE_0", {});
    box = CDataBox(7.0);
    EXPECT_EQ(section->GetLevelLineAtNode("node-A", box), 0);
    EXPECT_FALSE(box.IsNotNull());
    EXPECT_EQ(section->GetPipeReference(), "");
    m_network.Set("AB", "PIPE_REF", "{Some-Pipe}");
    EXPECT_EQ(section->GetPipeReference(), "{Some-Pipe}");
}
