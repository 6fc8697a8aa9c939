// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_core/PipeManager.h"

#include "host/gis_core/DataRW.h"
#include "host/network_core/CatalogManager.h"
#include "host/network_core/ManholeManager.h"
#include "host/network_core/Node.h"
#include "host/network_core/NominalDiameter.h"
#include "tests/support/TestProject.h"
#include "tests/support/TextNetwork.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

using namespace OLMGis;
using namespace OLMGis::Topology;

namespace {

CCatalog& Pipes() {
    return *CCatalogManager::Instance()->GetCatalog(CCatalogManager::PipeCatalog, 1);
}

CPipeData Circle(double diameter) {
    CPipeData pipe;
    pipe.m_innerWidth = pipe.m_innerHeight = diameter;
    return pipe;
}

} // namespace

TEST(PipeManager, MeasuresPipesFromEachLevelLine) {
    CTestProject project;
    CPipeManager& manager = *CPipeManager::Instance();
    const auto group = Pipes().AddGroup("g", "Group").Value();
    const auto egg =
        Pipes().AddPipe(*group, "{Egg}", "E", {enmPipeShape::Egg, 600.0, 900.0, 80.0, 1.5, "egg", 0.0, {}}).Value();
    EXPECT_EQ(manager.GetPipe("egg"), egg);
    EXPECT_EQ(manager.GetPipe("g"), nullptr) << "a group is no pipe";
    EXPECT_EQ(manager.GetInnerDiameter(egg), 600.0);
    EXPECT_EQ(manager.GetPipeWidth(egg), 760.0);
    EXPECT_EQ(manager.GetPipeRoughness(egg), 1.5);
    EXPECT_EQ(manager.GetPipeTypeID(egg), "egg");
    struct CCase {
        int m_position;
        double m_above;
        double m_below;
    };
    for (const CCase& each : {CCase{LevelLineInsideBottom, 980.0, 80.0}, CCase{LevelLineAxis, 530.0, 530.0},
                              CCase{LevelLineInsideTop, 80.0, 980.0}, CCase{LevelLineOutsideBottom, 1060.0, 0.0},
                              CCase{LevelLineOutsideTop, 0.0, 1060.0}}) {
        double above = -1.0;
        double below = -1.0;
        EXPECT_NE(manager.GetPipeHeight(egg, each.m_position, above, below), 0);
        EXPECT_EQ(above, each.m_above) << each.m_position;
        EXPECT_EQ(below, each.m_below) << each.m_position;
    }
    double above = 7.0;
    double below = 8.0;
    for (const auto& [pipe, position] : {std::pair{egg, 5}, {egg, -1}, {group, 0}, {{}, 0}}) {
        EXPECT_EQ(manager.GetPipeHeight(pipe, position, above, below), 0);
        EXPECT_EQ(above + below, 15.0) << "untouched";
    }
    for (const auto& none : {group, {}}) {
        EXPECT_EQ(manager.GetInnerDiameter(none) + manager.GetPipeRoughness(none) + manager.GetPipeWidth(none), 0.0);
        EXPECT_EQ(manager.GetPipeTypeID(none), "");
    }
}

/// The index answers what a walk through the group answers, whatever the order of sizes, with repeats, and after each
/// further addition.
TEST(PipeManager, FindsTheLeastPipeThatIsWideEnough) {
    CTestProject project;
    CPipeManager& manager = *CPipeManager::Instance();
    const auto group = Pipes().AddGroup("g", "Mine").Value();
    const auto other = Pipes().AddGroup("h", "Other").Value();
    std::mt19937 dice(7);
    for (int i = 0; i < 60; ++i) {
        const double size = 100.0 + 25.0 * static_cast<double>(dice() % 30);
        for (const auto& each : {group, other})
            ASSERT_TRUE(Pipes().AddPipe(*each, each->GetGUID() + std::to_string(i), std::to_string(i),
                                        Circle(each == group ? size : size + 10.0)));
        if (i % 7 != 0)
            continue;
        for (double asked = 50.0; asked < 900.0; asked += 12.5) {
            boost::shared_ptr<CCatalogItem> expected;
            for (const auto& pipe : group->GetSubItems())
                if (manager.GetInnerDiameter(pipe) >= asked &&
                    (!expected || manager.GetInnerDiameter(pipe) < manager.GetInnerDiameter(expected)))
                    expected = pipe;
            ASSERT_EQ(manager.GetPipeByInnerDiameter("Mine", asked, 1), expected) << asked << " after " << i;
        }
    }
    EXPECT_EQ(manager.GetPipeByInnerDiameter("mine", 0.0, 1), nullptr) << "names count by plain characters";
    EXPECT_EQ(manager.GetPipeByInnerDiameter("Mine", std::numeric_limits<double>::quiet_NaN(), 1), nullptr);
    EXPECT_NE(manager.GetPipeByInnerDiameter("Mine", -std::numeric_limits<double>::infinity(), 1), nullptr);
}

TEST(PipeManager, LeastDiametersBelongToPipeTypes) {
    CTestProject project;
    CPipeManager& manager = *CPipeManager::Instance();
    const auto group = Pipes().AddGroup("g", "Group").Value();
    int number = 0;
    for (const auto& [type, least] : {std::pair{"storm", 300.0}, {"storm", 250.0}, {"foul", 0.0}, {"", 400.0}}) {
        CPipeData pipe = Circle(500.0);
        pipe.m_type = type;
        pipe.m_minDiameter = least;
        ASSERT_TRUE(Pipes().AddPipe(*group, "p" + std::to_string(number), std::to_string(number), pipe));
        ++number;
    }
    struct CCase {
        const char* m_type;
        double m_asked;
        double m_expected;
    };
    for (const CCase& each : {CCase{"storm", 100.0, 250.0}, CCase{"storm", 251.5, 251.5}, CCase{"foul", 100.0, 100.0},
                              CCase{"", 100.0, 100.0}, CCase{"unknown", 100.0, 100.0}, CCase{"unknown", -1.0, 0.0}})
        EXPECT_EQ(manager.CalculateMinDiameter(each.m_type, each.m_asked), each.m_expected) << each.m_type;
}

TEST(ManholeManager, HeightsOfANodeWinOverTheItem) {
    CTestProject project;
    CManholeManager& manager = *CManholeManager::Instance();
    CCatalog& manholes = *CCatalogManager::Instance()->GetCatalog(CCatalogManager::ManholeCatalog, 1);
    const auto group = manholes.AddGroup("g", "Group").Value();
    const auto item = manholes.AddManhole(*group, "m", "M", {1.2, 0.3, 0.9, 2.5}).Value();
    CTextNetwork network("A---B");
    const auto a = network.Node('A');
    const auto b = network.Node('B');
    ASSERT_NE(Data::CDataRW::Write("MANHOLE_H2", b, Data::CDataBox(0.75), nullptr), 0);
    ASSERT_NE(Data::CDataRW::Write("MANHOLE_H1", b, Data::CDataBox(0.0), nullptr), 0);
    EXPECT_EQ(manager.GetManhole("{M}"), item);
    EXPECT_EQ(manager.GetManhole("g"), nullptr);
    EXPECT_EQ(manager.GetManholeInnerDiameter(item), 1.2);
    EXPECT_EQ(manager.GetManholeH1(a.get(), item), 0.3);
    EXPECT_EQ(manager.GetManholeH2(a.get(), item), 0.9);
    EXPECT_EQ(manager.GetManholeH1(b.get(), item), 0.0);
    EXPECT_EQ(manager.GetManholeH2(b.get(), item), 0.75);
    EXPECT_EQ(manager.GetManholeHeight(b, item), 2.5);
    EXPECT_EQ(manager.GetManholeH2(b.get(), {}) + manager.GetManholeH2(nullptr, item) +
                  manager.GetManholeHeight({}, item) + manager.GetManholeInnerDiameter({}),
              0.0);
}

TEST(PipeManager, NominalDiametersAreThoseOfTheNames) {
    const CTestProject project;
    const auto group = Pipes().AddGroup("g", "Group").Value();
    const struct {
        const char* m_name;
        double m_diameter;
    } rows[] = {
        {"PVC-U SN 8 DN/OD 315", 315.0},
        {"DN/ID 300 SN 8", 300.0},
        {"Clay DN 150", 150.0},
        {"DN250", 250.0},
        {"DN 10 SDR 17 DN 12.5", 12.5},
        // Without a number of its own: the inside width.
        {"Concrete 300", 777.0},
        {"DN", 777.0},
        {"DN unknown", 777.0},
        {"DN 0", 777.0},
    };
    for (const auto& row : rows) {
        const auto pipe = Pipes().AddPipe(*group, std::string("guid") + row.m_name, row.m_name, Circle(777.0)).Value();
        EXPECT_EQ(NominalDiameter(*pipe), row.m_diameter) << row.m_name;
    }
    EXPECT_EQ(NominalDiameter(*group), 0.0) << "a group is no pipe";
}
