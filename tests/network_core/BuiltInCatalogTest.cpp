// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_core/BuiltInCatalog.h"

#include "host/network_core/CatalogManager.h"
#include "tests/support/TestProject.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <set>
#include <sstream>
#include <utility>

using namespace OLMGis;
using namespace OLMGis::Topology;
using ::testing::HasSubstr;

namespace {

const CCatalog& Catalog(std::string_view id) {
    return *CCatalogManager::Instance()->GetCatalog(id, 1);
}

/// Nominal sizes of a series, and the wall (mm) that its rule asks for by nominal size and outside diameter (mm).
struct CSeries {
    std::string m_group;
    std::string m_item; ///< name of an item up to its nominal size
    std::vector<int> m_sizes;
    enum { Outside, Inside, About } m_nominal; ///< what the nominal size is
    double (*m_wall)(double nominal, double outside);
    double m_below; ///< how far a wall may be below and above its rule (mm): rounding of the published tables
    double m_above;
};

const std::vector<int> Plastic = {110, 125, 160, 200, 250, 315, 355, 400, 450, 500, 630, 710, 800, 900, 1000};
const std::vector<int> LargePlastic = {110, 125, 160, 200, 250, 315,  355,  400,  450,
                                       500, 630, 710, 800, 900, 1000, 1200, 1400, 1600};
const std::vector<int> Grp = {100, 125,  150,  200,  250,  300,  350,  400,  450,  500,  600,  700, 800,
                              900, 1000, 1200, 1400, 1600, 1800, 2000, 2200, 2400, 2600, 2800, 3000};

/// Wall series of plastics: e = d / (2 S + 1), S of the series of preferred numbers R 20.
template <int Step>
double OfSeries(double /*nominal*/, double outside) {
    return std::max(outside / (2.0 * std::pow(10.0, Step / 20.0) + 1.0), 3.2);
}

/// Ring stiffness of a plain wall, E e³ / (12 d³) with d to the middle of the wall, turned round; E 12 000 N/mm².
template <int Stiffness>
double OfStiffness(double /*nominal*/, double outside) {
    double wall = 0.0;
    for (int pass = 0; pass < 50; ++pass)
        wall = (outside - wall) * std::cbrt(12.0 * Stiffness / 12e9);
    return wall;
}

double OfConcrete(double nominal, double /*outside*/) {
    return nominal / 12.0 + 25.0;
}

/// Iron of class K 7 and the nominal lining of cement mortar.
double OfIron(double nominal, double /*outside*/) {
    const double lining = nominal <= 300 ? 4.0 : nominal <= 600 ? 5.0 : nominal <= 1200 ? 6.0 : 9.0;
    return std::max(4.8, 7.0 * (0.5 + 0.001 * nominal)) + lining;
}

/// Crushing load F by class, bending moment 0.318 F r, stress 17 N/mm² in a wall of unit length.
double OfClay(double nominal, double outside) {
    const double load = nominal <= 150 ? 34.0 : nominal <= 600 ? 0.16 * nominal : 0.12 * nominal; // N/mm
    const double radius = (nominal + outside) / 4.0;
    return std::sqrt(6.0 * 0.318 * load * radius / 17.0);
}

std::vector<CSeries> AllCircles() {
    return {
        {"PVC-U EN 1401 SN 2 (SDR 51)",
         "PVC-U SN 2 DN/OD",
         {160, 200, 250, 315, 355, 400, 450, 500, 630, 710, 800, 900, 1000}, // below 160 the least wall makes it SN 4
         CSeries::Outside,
         OfSeries<28>,
         0.01,
         0.15},
        {"PVC-U EN 1401 SN 4 (SDR 41)", "PVC-U SN 4 DN/OD", Plastic, CSeries::Outside, OfSeries<26>, 0.01, 0.15},
        {"PVC-U EN 1401 SN 8 (SDR 34)",
         "PVC-U SN 8 DN/OD",
         {110, 125, 160, 200, 250, 315, 355, 400, 450, 500, 630},
         CSeries::Outside,
         [](double, double outside) { return outside / 34.4; },
         0.01,
         0.15},
        {"PE EN 12666 SN 4 (SDR 26)", "PE SN 4 DN/OD", LargePlastic, CSeries::Outside, OfSeries<22>, 0.01, 0.1},
        {"PE EN 12666 SN 8 (SDR 21)", "PE SN 8 DN/OD", LargePlastic, CSeries::Outside, OfSeries<20>, 0.01, 0.1},
        {"PP EN 1852 SDR 33 (S 16)", "PP SDR 33 DN/OD", LargePlastic, CSeries::Outside, OfSeries<24>, 0.01, 0.1},
        {"PP EN 1852 SDR 29 (S 14)", "PP SDR 29 DN/OD", LargePlastic, CSeries::Outside, OfSeries<23>, 0.01, 0.1},
        {"GRP EN 14364 SN 5000", "GRP SN 5000 DN", Grp, CSeries::About, OfStiffness<5000>, 0.001, 0.1},
        {"GRP EN 14364 SN 10000", "GRP SN 10000 DN", Grp, CSeries::About, OfStiffness<10000>, 0.001, 0.1},
        {"Vitrified clay EN 295",
         "Clay DN",
         {100, 125, 150, 200, 225, 250, 300, 350, 400, 450, 500, 600, 700, 800, 900, 1000, 1200, 1400},
         CSeries::Inside,
         OfClay,
         2.5, // usual walls are on both sides of the strength that is needed
         9.0},
        {"Concrete EN 1916 class 135",
         "Concrete DN",
         {300, 400, 500, 600, 700, 800, 900, 1000, 1100, 1200, 1300, 1400, 1500, 1600},
         CSeries::Inside,
         OfConcrete,
         0.001,
         5.0},
        {"Concrete large bore",
         "Concrete DN",
         {1800, 2000, 2200, 2400, 2600, 2800, 3000},
         CSeries::Inside,
         OfConcrete,
         0.001,
         5.0},
        {"Ductile iron EN 598",
         "Ductile iron DN",
         {80,  100, 125, 150,  200,  250,  300,  350,  400,  450,  500, 600,
          700, 800, 900, 1000, 1100, 1200, 1400, 1500, 1600, 1800, 2000},
         CSeries::About,
         OfIron,
         0.051, // rounded to 0.1 mm
         0.051},
    };
}

} // namespace

TEST(BuiltInCatalog, SeriesHaveTheirSizesAndWalls) {
    CTestProject project;
    for (const CSeries& series : AllCircles()) {
        SCOPED_TRACE(series.m_group);
        const auto group = Catalog("PIPE").GetGroupByName(series.m_group);
        ASSERT_NE(group, nullptr);
        EXPECT_FALSE(group->GetStandard().empty());
        ASSERT_EQ(group->GetSubItems().size(), series.m_sizes.size());
        for (std::size_t i = 0; i < series.m_sizes.size(); ++i) {
            const CCatalogItem& item = *group->GetSubItems()[i];
            const int size = series.m_sizes[i];
            EXPECT_EQ(item.GetName(), series.m_item + " " + std::to_string(size));
            const CPipeData& pipe = *item.GetPipeData();
            const double outside = pipe.m_innerWidth + 2.0 * pipe.m_wall;
            const double rule = series.m_wall(size, outside);
            EXPECT_GE(pipe.m_wall, rule - series.m_below) << size;
            EXPECT_LE(pipe.m_wall, rule + series.m_above) << size;
            const double nominal = series.m_nominal == CSeries::Outside ? outside : pipe.m_innerWidth;
            EXPECT_NEAR(nominal, size, series.m_nominal == CSeries::About ? 0.13 * size : 1e-9);
        }
    }
}

/// Numbers read from published tables, not from our files: a maker's walls to EN 1401-1, walls of pressure pipes of the
/// same series after ISO 4065, iron after EN 545 and ISO 2531, outside diameters of glass fibre pipes of GB/T 21238.
TEST(BuiltInCatalog, PublishedTablesAgree) {
    CTestProject project;
    const auto data = [](const std::string& name) {
        const auto items = Catalog("PIPE").GetItemsByName(name);
        EXPECT_EQ(items.size(), 1U) << name;
        return items.empty() ? CPipeData() : *items.front()->GetPipeData();
    };
    struct CWalls {
        std::string m_item;
        std::vector<int> m_sizes;
        std::vector<double> m_walls; ///< mm, of the first sizes
    };
    const std::vector<int> made = {110, 125, 160, 200, 250, 315, 400, 500, 630};
    const CWalls walls[] = {
        {"PVC-U SN 2 DN/OD ", {160, 200, 250, 315, 400, 500, 630}, {3.2, 3.9, 4.9, 6.2, 7.9, 9.8, 12.3}},
        {"PVC-U SN 4 DN/OD ", made, {3.2, 3.2, 4.0, 4.9, 6.2, 7.7, 9.8, 12.3, 15.4}},
        {"PVC-U SN 8 DN/OD ", made, {3.2, 3.7, 4.7, 5.9, 7.3, 9.2, 11.7, 14.6, 18.4}},
        {"PVC-U SN 4 DN/OD ", {355, 450, 710, 800, 900, 1000}, {8.7, 11.0, 17.4, 19.6, 22.0, 24.5}},
        {"PE SN 4 DN/OD ",
         LargePlastic,
         {4.2, 4.8, 6.2, 7.7, 9.6, 12.1, 13.6, 15.3, 17.2, 19.1, 24.1, 27.2, 30.6, 34.4, 38.2, 45.9}},
        {"PE SN 8 DN/OD ",
         LargePlastic,
         {5.3, 6.0, 7.7, 9.6, 11.9, 15.0, 16.9, 19.1, 21.5, 23.9, 30.0, 33.9, 38.1, 42.9, 47.7, 57.2, 66.7, 76.2}},
        {"PP SDR 33 DN/OD ",
         LargePlastic,
         {3.4, 3.9, 4.9, 6.2, 7.7, 9.7, 10.9, 12.3, 13.8, 15.3, 19.3, 21.8, 24.5, 27.6, 30.6, 36.7, 42.9, 49.0}},
        // Iron of class K 7 and the lining: the two add up to what narrows the inside.
        {"Ductile iron DN ", {400, 500, 600}, {6.3 + 5.0, 7.0 + 5.0, 7.7 + 5.0}},
    };
    for (const CWalls& series : walls)
        for (std::size_t i = 0; i < series.m_walls.size(); ++i) {
            const std::string item = series.m_item + std::to_string(series.m_sizes[i]);
            EXPECT_NEAR(data(item).m_wall, series.m_walls[i], 1e-9) << item;
        }

    const std::pair<int, double> iron[] = {
        {80, 98},     {100, 118},   {125, 144},   {150, 170},   {200, 222},   {250, 274},   {300, 326},  {350, 378},
        {400, 429},   {450, 480},   {500, 532},   {600, 635},   {700, 738},   {800, 842},   {900, 945},  {1000, 1048},
        {1100, 1152}, {1200, 1255}, {1400, 1462}, {1500, 1565}, {1600, 1668}, {1800, 1875}, {2000, 2082}};
    for (const auto& [size, outside] : iron) {
        const CPipeData pipe = data("Ductile iron DN " + std::to_string(size));
        EXPECT_NEAR(pipe.m_innerWidth + 2.0 * pipe.m_wall, outside, 1e-9) << size;
    }
    const std::pair<int, double> glass[] = {{600, 616},   {700, 718},   {800, 820},   {900, 924},   {1000, 1026},
                                            {1200, 1229}, {1400, 1434}, {1600, 1638}, {1800, 1842}, {2000, 2046},
                                            {2200, 2250}, {2400, 2453}, {2600, 2658}, {2800, 2861}, {3000, 3066}};
    for (const char* stiffness : {"GRP SN 5000 DN ", "GRP SN 10000 DN "})
        for (const auto& [size, outside] : glass) {
            const CPipeData pipe = data(stiffness + std::to_string(size));
            EXPECT_NEAR(pipe.m_innerWidth + 2.0 * pipe.m_wall, outside, 1.0 + 1e-9) << stiffness << size;
        }
    EXPECT_EQ(data("PVC-U SN 8 DN/OD 315").m_innerWidth, 296.6) << "two walls are taken off";
    EXPECT_EQ(data("Concrete DN 600").m_innerWidth, 600.0);
}

TEST(BuiltInCatalog, EggsBoxesAndManholesHaveTheirSizes) {
    CTestProject project;
    const auto eggs = Catalog("PIPE").GetGroupByName("Concrete egg 2:3");
    ASSERT_NE(eggs, nullptr);
    ASSERT_EQ(eggs->GetSubItems().size(), 11U);
    for (int i = 0; i < 11; ++i) {
        const CPipeData& egg = *eggs->GetSubItems()[static_cast<std::size_t>(i)]->GetPipeData();
        EXPECT_EQ(egg.m_shape, enmPipeShape::Egg);
        EXPECT_EQ(egg.m_innerWidth, 400.0 + 100.0 * i);
        EXPECT_EQ(egg.m_innerHeight, 600.0 + 150.0 * i);
    }
    const auto boxes = Catalog("PIPE").GetGroupByName("Concrete box EN 14844");
    ASSERT_NE(boxes, nullptr);
    for (const auto& item : boxes->GetSubItems()) {
        const CPipeData& box = *item->GetPipeData();
        EXPECT_EQ(box.m_shape, enmPipeShape::Box);
        EXPECT_EQ(item->GetName(), "Concrete box " + std::to_string(static_cast<int>(box.m_innerWidth)) + "/" +
                                       std::to_string(static_cast<int>(box.m_innerHeight)));
    }
    const auto& groups = Catalog("MANHOLE").GetGroups();
    ASSERT_EQ(groups.size(), 4U);
    const double diameters[] = {1.0, 1.2, 1.5, 2.0};
    for (std::size_t i = 0; i < groups.size(); ++i)
        for (const auto& item : groups[i]->GetSubItems()) {
            const CManholeData& manhole = *item->GetManholeData();
            EXPECT_EQ(manhole.m_innerDiameter, diameters[i]);
            EXPECT_GT(manhole.m_h1, 0.1); // a cover is some 0.16 m high
            EXPECT_GT(manhole.m_h2, manhole.m_h1);
            EXPECT_GT(manhole.m_height, manhole.m_h2);
        }
}

TEST(BuiltInCatalog, EntriesAreSaneUniqueAndKeepTheirGuids) {
    CTestProject project;
    ASSERT_EQ(CCatalogManager::Instance()->GetLoadError(), "");
    std::set<std::string> guids;
    std::set<std::string> names;
    for (const char* id : {"PIPE", "MANHOLE"})
        for (const auto& group : Catalog(id).GetGroups()) {
            EXPECT_TRUE(group->IsBuiltIn());
            EXPECT_TRUE(guids.insert(group->GetGUID()).second);
            EXPECT_TRUE(names.insert(group->GetName()).second);
            double formerWidth = 0.0;
            double formerHeight = 0.0;
            for (const auto& item : group->GetSubItems()) {
                SCOPED_TRACE(item->GetName());
                EXPECT_TRUE(item->IsBuiltIn());
                EXPECT_TRUE(guids.insert(item->GetGUID()).second);
                EXPECT_TRUE(names.insert(item->GetName()).second) << "a name alone must find an item";
                const CPipeData* pipe = item->GetPipeData();
                if (pipe == nullptr)
                    continue;
                EXPECT_TRUE(pipe->m_innerWidth > formerWidth ||
                            (pipe->m_innerWidth == formerWidth && pipe->m_innerHeight > formerHeight));
                formerWidth = pipe->m_innerWidth;
                formerHeight = pipe->m_innerHeight;
                EXPECT_FALSE(pipe->m_type.empty());
                // From drawn plastic to rough concrete; a thousandth or a tenfold would be a slip of units.
                EXPECT_GE(pipe->m_roughness, 0.01);
                EXPECT_LE(pipe->m_roughness, 3.0);
                EXPECT_GT(pipe->m_wall, 0.01 * pipe->m_innerWidth);
                EXPECT_LT(pipe->m_wall, 0.2 * pipe->m_innerWidth);
            }
        }
    // Projects refer to these for ever.
    EXPECT_EQ(Catalog("PIPE").GetItembyGuid("6781181c-5187-5c62-b887-4cec06167872")->GetName(),
              "Concrete EN 1916 class 135");
    EXPECT_EQ(Catalog("PIPE").GetItembyGuid("5c044b6a-c6bd-5a5f-a0e2-af5f1680678f")->GetName(), "PVC-U SN 8 DN/OD 315");
    EXPECT_EQ(Catalog("MANHOLE").GetItembyGuid("705ea2a0-954a-5a1a-a5f4-9a394c80bdea")->GetName(),
              "Manhole DN 1000 H 2.50");
}

/// A project's own groups come after the built-in ones, and neither replaces the other.
TEST(BuiltInCatalog, OwnGroupsDoNotMixWithBuiltInOnes) {
    CTestProject project;
    CCatalog& pipes = *CCatalogManager::Instance()->GetCatalog("PIPE", 1);
    const std::size_t builtIn = pipes.GetGroups().size();
    const CCatalogItem& first = *pipes.GetGroups().front();
    const auto own = pipes.AddGroup("own", "Own").Value();
    EXPECT_FALSE(own->IsBuiltIn());
    EXPECT_FALSE(pipes.AddPipe(*own, "p", "P", {}).Value()->IsBuiltIn());
    ASSERT_EQ(pipes.GetOwnGroups().size(), 1U);
    EXPECT_EQ(pipes.GetOwnGroups()[0], own);
    EXPECT_EQ(pipes.GetGroups().size(), builtIn + 1);
    const std::string name = "\"" + first.GetName() + "\"";
    EXPECT_THAT(pipes.AddGroup("new", first.GetName()).GetError().message,
                HasSubstr("catalogue group " + name + ": the built-in group " + name + " has its name"));
    EXPECT_THAT(pipes.AddGroup("{" + first.GetGUID() + "}", "Fresh").GetError().message,
                HasSubstr("catalogue group \"Fresh\": the built-in group " + name + " has its GUID"));
    EXPECT_THAT(pipes.AddPipe(*own, first.GetSubItems()[0]->GetGUID(), "Q", {}).GetError().message,
                HasSubstr("catalogue item \"Q\": the built-in item"));
    EXPECT_FALSE(pipes.AddPipe(*pipes.GetGroups().front(), "q", "Q", {}));
    EXPECT_EQ(pipes.GetGroups().size(), builtIn + 1);
    CTestProject other;
    EXPECT_EQ(Catalog("PIPE").GetGroups().size(), builtIn) << "another project has its own groups";
}

TEST(BuiltInCatalog, DamagedFilesAreRefusedWhole) {
    const std::string head = R"({"catalog": "PIPE", "groups": [{"name": "G", "standard": "s", "source": "s", )";
    const std::string pipe = R"({"name": "A", "outside_mm": 110, "wall_mm": 3, "roughness_mm": 0.1})";
    struct CCase {
        std::string m_text;
        std::string m_message;
    };
    const auto circles = [&head](const std::string& pipes) {
        return head + R"("shape": "circle", "type": "t", "pipes": [)" + pipes + "]}]}";
    };
    const CCase cases[] = {
        {"", "not a catalogue"},
        {circles(pipe).substr(0, 80), "not a catalogue"},
        {"[]", "the file: found array, expected an object"},
        {R"({"catalog": "MANHOLE", "groups": []})", "found the catalogue \"MANHOLE\", expected PIPE"},
        {R"({"catalog": "PIPE", "groups": []})", "groups: expected a list that is not empty"},
        {R"({"catalog": "PIPE"})", "found no member \"groups\""},
        {circles(""), "group \"G\": pipes: expected a list"},
        {circles(pipe + "," + pipe), "group \"G\", \"A\": the name occurs twice"},
        {circles(R"({"name": "A", "outside_mm": "110", "wall_mm": 3, "roughness_mm": 0.1})"),
         "outside_mm: found \"110\""},
        {circles(R"({"name": "A", "outside_mm": 110, "wall_mm": 55, "roughness_mm": 0.1})"), "found walls of 55 mm"},
        {circles(R"({"name": "A", "outside_mm": 110, "wall_mm": -1, "roughness_mm": 0.1})"), "wall_mm: found -1"},
        {circles(R"({"name": "A", "outside_mm": 110, "wall_mm": 3, "roughness_mm": 100})"), "roughness_mm: found 100"},
        {circles(R"({"name": "A", "outside_mm": 110, "wall_mm": 3})"), "found no member \"roughness_mm\""},
        {circles(R"({"name": "A", "outside_mm": 1, "wall_mm": 0, "roughness_mm": 0, "x": 0})"),
         "found the member \"x\""},
        {circles(R"({"outside_mm": 110})"), "found an entry without a name"},
        {head + R"("shape": "oval", "type": "t", "pipes": []}]})", "found the shape \"oval\""},
        {head + R"("shape": "egg", "type": "t", "pipes": [{"name": "E", "outside_width_mm": 700,
            "outside_height_mm": 950, "wall_mm": 50, "roughness_mm": 1}]}]})",
         "found an inside of 600 by 850 mm, expected the shape egg"},
    };
    for (const CCase& each : cases) {
        std::istringstream stream(each.m_text);
        const auto result = ParseBuiltInCatalog(stream, "pipes.json", "PIPE");
        ASSERT_FALSE(result) << each.m_text;
        EXPECT_THAT(result.GetError().message, HasSubstr("pipes.json: "));
        EXPECT_THAT(result.GetError().message, HasSubstr(each.m_message));
    }
    std::istringstream good(circles(pipe));
    const auto groups = ParseBuiltInCatalog(good, "pipes.json", "PIPE");
    ASSERT_TRUE(groups);
    EXPECT_EQ(groups.Value()[0].m_items[0].m_pipe->m_innerWidth, 104.0);
}
