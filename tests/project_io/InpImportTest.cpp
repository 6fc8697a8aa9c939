// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
//
// Small storm-water networks whose values are calculated by hand.
#include "host/network_core/CatalogManager.h"
#include "tests/project_io/InpTestProject.h"

#include <gtest/gtest.h>

#include <optional>

using namespace OLMGis;

namespace {

/// Rounding of the conversion from feet, and of sums of levels.
constexpr double Exact = 1e-9;

/// A line of conduits A - B - O in feet with two areas.
const char* const UsNetwork = R"([TITLE]
A line
[OPTIONS]
FLOW_UNITS CFS
INFILTRATION HORTON
[JUNCTIONS]
A 100 10 0 0 0
B 95 0 0 0 0
[OUTFALLS]
O 90 FREE NO
[CONDUITS]
c1 A B 200 0.013 1 0.5 0 0
c2 B O 100 0.010 0 0 0 0
[XSECTIONS]
c1 CIRCULAR 2 0 0 0 1
c2 CIRCULAR 3 0 0 0 1
[SUBCATCHMENTS]
s1 rg A 10 35 500 0.5 0
s2 rg O 1 100 500 0.5 0
[SUBAREAS]
s1 0.01 0.1 0.05 0.05 25 OUTLET
[COORDINATES]
A 1000 2000
B 1200 2000
O 1300 2000
[Polygons]
s1 0 0
s1 100 0
s1 100 100
)";

/// One conduit between two nodes of invert 10 and 9 with what a test adds.
std::string OneConduit(std::string_view options, std::string_view conduit, std::string_view shape) {
    return "[OPTIONS]\nFLOW_UNITS CMS\n" + std::string(options) + "\n[JUNCTIONS]\nA 10 2\n[OUTFALLS]\nO 9 FREE\n" +
           "[CONDUITS]\n" + std::string(conduit) + "\n[XSECTIONS]\nc " + std::string(shape) + "\n";
}

} // namespace

TEST(InpImport, FeetAndAcresBecomeMetresAndHectares) {
    const CInpTestProject net(UsNetwork);
    ASSERT_TRUE(net.IsImported()) << net.Message();
    EXPECT_EQ(net.Summary().m_nodeCount, 3U);
    EXPECT_EQ(net.Summary().m_sectionCount, 2U);
    EXPECT_EQ(net.Summary().m_catchmentCount, 2U);
    EXPECT_EQ(net.Summary().m_pipeCount, 2U);
    const struct {
        const char* section;
        const char* key;
        double value;
    } sections[] = {
        {"c1", "length", 60.96},         // 200 ft
        {"c1", "LEVEL_LINE_0", 30.7848}, // 100 + 1 ft
        {"c1", "LEVEL_LINE_1", 29.1084}, // 95 + 0.5 ft
        {"c1", "LEVEL_LINE_POSITION", 0.0},
        {"c1", "SECTION_SLOPE", 27.5}, // (101 - 95.5) / 200
        {"c1", "SECTION_SLOPE_CAL", 27.5},
        {"c1", "MANNING_N", 0.013},
        {"c2", "SECTION_SLOPE", 50.0},          // 5 / 100
        {"c2", "PIPE_ROUGHNESS", 0.3089157760}, // (26 · 0.010)^6 m
    };
    for (const auto& [section, key, value] : sections)
        EXPECT_NEAR(net.OfSection(section, key).AsDouble(), value, Exact) << section << " " << key;
    EXPECT_NEAR(net.OfNode("A", "TERRAIN_1").AsDouble(), 33.528, Exact) << "100 + 10 ft";
    EXPECT_NEAR(net.OfNode("B", "TERRAIN_1").AsDouble(), 29.8704, Exact) << "crown of c2: 95 + 3 ft, above c1's 97.5";
    EXPECT_NEAR(net.OfNode("O", "TERRAIN_1").AsDouble(), 28.3464, Exact) << "crown of c2: 90 + 3 ft";
    EXPECT_NEAR(net.OfCatchment("s1", "area").AsDouble(), 4.0468564224, Exact) << "10 acres";
    EXPECT_NEAR(net.OfCatchment("s1", "coefficient").AsDouble(), 0.35, Exact);
    EXPECT_EQ(net.OfCatchment("s1", "kinds").AsInt(), Topology::CatchmentRain);
    EXPECT_FALSE(net.OfCatchment("s1", "density").IsNotNull());
    EXPECT_EQ(net.HangsOn("s1"), "c1");
    EXPECT_EQ(net.HangsOn("s2"), "c2") << "at an outfall the section that enters";
    EXPECT_EQ(net.Topology().GetNodeByName("B")->GetPoint(), (Topology::CPoint{1200, 2000})) << "map units stay";
    EXPECT_EQ(net.PipeName("c1"), "DN 609.6 k 1.491");
    EXPECT_EQ(net.PipeName("c2"), "DN 914.4 k 0.309");
}

TEST(InpImport, EverythingNotTakenOverIsCounted) {
    const CInpTestProject net(std::string(UsNetwork) +
                              "[LOSSES]\nc1 0.5 1 0 NO 0\n[MYSTERY]\nx\ny\n[timeseries]\nt 0 1\n");
    ASSERT_TRUE(net.IsImported()) << net.Message();
    EXPECT_EQ(net.Noted("lines of TITLE"), 1U);
    EXPECT_EQ(net.Noted("lines of OPTIONS"), 1U);
    EXPECT_EQ(net.Noted("lines of SUBAREAS"), 1U);
    EXPECT_EQ(net.Noted("lines of LOSSES"), 1U);
    EXPECT_EQ(net.Noted("lines of \"MYSTERY\""), 2U);
    EXPECT_EQ(net.Noted("lines of TIMESERIES"), 1U);
    EXPECT_EQ(net.Noted("subcatchments without a polygon"), 1U);
    EXPECT_EQ(net.Noted("nodes without a depth"), 2U);
    EXPECT_EQ(net.Noted("roughness k derived from Manning's n: n 0.01 to 0.013, k 0.309 to 1.49 mm "
                        "(k = (26 n)^6 in m, sound for n 0.009 to 0.03)"),
              2U);
    EXPECT_EQ(net.Summary().m_notes.size(), 9U) << "and nothing else";
}

TEST(InpImport, RoughnessBeyondTheRangeOfItsFormulaIsCounted) {
    const CInpTestProject net("[JUNCTIONS]\nA 1\nB 0\n[CONDUITS]\nsmooth A B 10 0.005 0 0\nsound A B 10 0.013 0 0\n"
                              "rough A B 10 0.02 0 0\nditch A B 10 0.99 0 0\n[XSECTIONS]\nsmooth CIRCULAR 0.3\n"
                              "sound CIRCULAR 0.3\nrough CIRCULAR 0.15\nditch CIRCULAR 1\n");
    ASSERT_TRUE(net.IsImported()) << net.Message();
    EXPECT_EQ(net.Noted("conduits whose Manning's n is outside 0.009 to 0.03: set PIPE_ROUGHNESS of them"), 2U);
    EXPECT_EQ(net.Noted("conduits whose roughness k is above a tenth of their height, which is unusual: the formula "
                        "for pipes calculates too little flow in them"),
              2U);
    EXPECT_EQ(net.Noted("conduits whose roughness k was limited to 1000000 mm"), 1U);
    EXPECT_EQ(net.OfSection("ditch", "PIPE_ROUGHNESS").AsDouble(), 1e6);
}

TEST(InpImport, PolygonsThatCrossThemselvesAreLeftOut) {
    const CInpTestProject net(std::string(UsNetwork) + "[POLYGONS]\ns1 0 0\ns1 9 9\ns1 9 0\ns1 0 9\n");
    ASSERT_TRUE(net.IsImported()) << net.Message();
    EXPECT_EQ(net.Noted("subcatchments whose polygon crosses itself, left without it"), 1U);
}

TEST(InpImport, OffsetsGiveLevels) {
    const struct {
        const char* options;
        const char* conduit;
        double upper;
        double lower;
        double slope; // 1/1000
    } cases[] = {
        {"", "c A O 100 0.013 0.5 0.25", 10.5, 9.25, 12.5},
        {"LINK_OFFSETS DEPTH", "c A O 100 0.013 * *", 10.0, 9.0, 10.0},
        {"", "c A O 100 0.013", 10.0, 9.0, 10.0},
        {"LINK_OFFSETS ELEVATION", "c A O 100 0.013 10.5 9.25", 10.5, 9.25, 12.5},
        {"LINK_OFFSETS ELEVATION", "c A O 60 0.013 10.56 10.26", 10.56, 10.26, 5.0},
        {"LINK_OFFSETS elevation", "c A O 100 0.013 * 9.5", 10.0, 9.5, 5.0},
        {"", "c O A 100 0.013 0 0", 9.0, 10.0, -10.0}, // climbs and keeps its direction
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.conduit);
        const CInpTestProject net(OneConduit(c.options, c.conduit, "CIRCULAR 0.3"));
        ASSERT_TRUE(net.IsImported()) << net.Message();
        EXPECT_NEAR(net.OfSection("c", "LEVEL_LINE_0").AsDouble(), c.upper, Exact);
        EXPECT_NEAR(net.OfSection("c", "LEVEL_LINE_1").AsDouble(), c.lower, Exact);
        EXPECT_EQ(net.OfSection("c", "SECTION_SLOPE").AsDouble(), c.slope) << "a limit met exactly is met";
        EXPECT_EQ(net.Noted("conduits with adverse slope"), c.slope < 0 ? 1U : 0U);
    }
}

TEST(InpImport, ZeroLengthLeavesTheSlopeOpen) {
    const CInpTestProject net(OneConduit("", "c A O 0 0 0 0", "CIRCULAR 0.3"));
    ASSERT_TRUE(net.IsImported()) << net.Message();
    EXPECT_FALSE(net.OfSection("c", "SECTION_SLOPE").IsNotNull());
    EXPECT_FALSE(net.OfSection("c", "SECTION_SLOPE_CAL").IsNotNull());
    EXPECT_FALSE(net.OfSection("c", "PIPE_ROUGHNESS").IsNotNull());
    EXPECT_EQ(net.Noted("conduits of length 0"), 1U);
    EXPECT_EQ(net.Noted("conduits without a roughness"), 1U);
}

TEST(InpImport, CrossSectionsThatAreNotTakenWholeAreNamed) {
    const struct {
        const char* shape;
        const char* pipe;
        const char* note;
    } cases[] = {
        {"ARCH 1 1.5 0 0 1", "", "conduits of shape ARCH, left without a pipe"},
        {"DUMMY 0 0 0 0 1", "", "conduits of shape DUMMY"},
        {"RECT_ROUND 1 1 0.2 0 1", "", "conduits of shape RECT_ROUND"},
        {"CUSTOM 1 nocurve 0 0 1", "", "conduits of shape CUSTOM"},
        {"STREET Main", "", "conduits of shape STREET"},
        {"CIRCULAR 0.3 0 0 0 3", "DN 300 k 1.491", "conduits with another number of barrels"},
        {"FILLED_CIRCULAR 0.3 0.1 0 0 1", "DN 300 k 1.491", "conduits filled with sediment"},
        {"FORCE_MAIN 0.3 120 0 0 1", "DN 300 k 1.491", "force mains"},
        {"RECT_OPEN 1 2 0 0 1", "BOX 2000x1000 k 1.491", "open rectangular channels"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.shape);
        const CInpTestProject net(OneConduit("", "c A O 100 0.013 0 0", c.shape));
        ASSERT_TRUE(net.IsImported()) << net.Message();
        EXPECT_EQ(net.PipeName("c"), c.pipe);
        EXPECT_EQ(net.Noted(c.note), 1U);
    }
}

TEST(InpImport, CurvesAndTransectsBecomeTables) {
    const CInpTestProject net(R"([OPTIONS]
FLOW_UNITS CMS
[OUTFALLS]
O 9 FREE
[JUNCTIONS]
A 10 0
[CURVES]
pump1 PUMP1 0 1 2 3
egg SHAPE 0 0.2
egg 0.5 1 1 0.2
[TRANSECTS]
NC 0.05 0.05 0.02
X1 ditch 4 0 10 0 0 0 0 2 0
GR 12 0 10 2 10 4 12 6
[XSECTIONS]
custom CUSTOM 2 EGG 0 0 1
ditch IRREGULAR Ditch 0 0 0 1
[CONDUITS]
custom A O 100 0.013 0 0
ditch A O 100 0.013 0 0
)");
    ASSERT_TRUE(net.IsImported()) << net.Message();
    using CTable = std::vector<Topology::CShapePoint>;
    const auto custom = net.Section("custom")->GetPipe();
    ASSERT_TRUE(custom);
    EXPECT_EQ(custom->GetPipeData()->m_table, (CTable{{0, 400}, {1000, 2000}, {2000, 400}}));
    const auto ditch = net.Section("ditch")->GetPipe();
    ASSERT_TRUE(ditch);
    // Stations are multiplied by 2: a bed of 2 m becomes 4 m, 6 m becomes 12 m.
    EXPECT_EQ(ditch->GetPipeData()->m_table, (CTable{{0, 4000}, {2000, 12000}}));
    EXPECT_EQ(net.OfSection("ditch", "MANNING_N").AsDouble(), 0.02) << "that of the channel, not of the conduit";
    EXPECT_EQ(net.Noted("channels whose banks"), 1U);
    EXPECT_EQ(net.Noted("lines of CURVES"), 1U);
    EXPECT_NEAR(net.OfNode("A", "TERRAIN_1").AsDouble(), 12.0, Exact) << "both crowns are 2 m above the invert";
}

TEST(InpImport, PipesAreInTheCatalogueOnceAndBySize) {
    const std::string text = R"([OPTIONS]
FLOW_UNITS LPS
[JUNCTIONS]
A 10 0
B 9 0
[CONDUITS]
c1 A B 10 0.013
c2 A B 10 0.010
c3 A B 10 0.013
c4 A B 10 0.013
c5 A B 10 0.013
c6 A B 10 0.013
[XSECTIONS]
c1 CIRCULAR 0.5
c2 CIRCULAR 0.5
c3 CIRCULAR 0.3
c4 CIRCULAR 0.5
c5 RECT_CLOSED 1 2
c6 EGG 1.5
)";
    const CInpTestProject net(text);
    ASSERT_TRUE(net.IsImported()) << net.Message();
    Topology::CCatalog& catalog = *Topology::CCatalogManager::Instance()->GetCatalog("PIPE", 1);
    std::string tree;
    for (const auto& group : catalog.GetOwnGroups()) {
        tree += group->GetName() + ":";
        for (const auto& item : group->GetSubItems())
            tree += " " + item->GetName() + ";";
        tree += "\n";
    }
    EXPECT_EQ(tree, "Imported box: BOX 2000x1000 k 1.491;\n"
                    "Imported circular: DN 300 k 1.491; DN 500 k 0.309; DN 500 k 1.491;\n"
                    "Imported egg: EGG 1000x1500 k 1.491;\n");
    EXPECT_EQ(net.Section("c1")->GetPipe(), net.Section("c4")->GetPipe());
    EXPECT_EQ(net.Section("c2")->GetPipe()->GetPipeData()->m_roughness, 0.309);
    const std::string guid = net.OfSection("c6", "PIPE_REF").AsText();
    const CInpTestProject again(text);
    EXPECT_EQ(again.OfSection("c6", "PIPE_REF").AsText(), guid) << "the same GUIDs on every import";
    EXPECT_EQ(again.Section("c1")->GetGuid(), net.Section("c1")->GetGuid());
}

TEST(InpImport, OtherLinksKeepTheNetworkConnected) {
    const CInpTestProject net(R"([OPTIONS]
FLOW_UNITS CMS
LINK_OFFSETS ELEVATION
[STORAGE]
T 10 4 0 FUNCTIONAL 1000 0 0
[DIVIDERS]
D 8 w OVERFLOW 3
E 7 w CUTOFF 0.5 2.5
F 6 w WEIR 1 2 3 1.5
[OUTFALLS]
O 5 FIXED 6 NO
[PUMPS]
p T D curve ON
[ORIFICES]
o T D SIDE 10.5 0.65 NO 0
[WEIRS]
w D E TRANSVERSE 9 1.8 NO
[OUTLETS]
u E F 7.5 FUNCTIONAL/DEPTH 10 0.5 NO
[CONDUITS]
c F O 100 0.013 6 5
[XSECTIONS]
o CIRCULAR 0.3 0 0 0
w RECT_OPEN 1 2 0 0
c CIRCULAR 1 0 0 0 1
)");
    ASSERT_TRUE(net.IsImported()) << net.Message();
    EXPECT_EQ(net.Summary().m_sectionCount, 5U);
    const struct {
        const char* section;
        std::optional<double> level;
        const char* note;
    } links[] = {{"p", {}, "pumps"}, {"o", 10.5, "orifices"}, {"w", 9.0, "weirs"}, {"u", 7.5, "outlet devices"}};
    for (const auto& [section, level, note] : links) {
        SCOPED_TRACE(section);
        EXPECT_EQ(net.OfSection(section, "LEVEL_LINE_0").IsNotNull(), level.has_value());
        EXPECT_EQ(net.OfSection(section, "LEVEL_LINE_0").AsDouble(), level.value_or(0.0));
        EXPECT_EQ(net.Section(section)->GetLength2D(), 0.0) << "the map's distance is no length of a device";
        for (const char* key : {"LEVEL_LINE_1", "SECTION_SLOPE", "PIPE_REF", "PIPE_ROUGHNESS"})
            EXPECT_FALSE(net.OfSection(section, key).IsNotNull()) << key;
        EXPECT_EQ(net.Noted(note), 1U);
    }
    const struct {
        const char* node;
        double terrain;
    } nodes[] = {{"T", 14.0}, {"D", 11.0}, {"E", 9.5}, {"F", 7.5}, {"O", 6.0}};
    for (const auto& [node, terrain] : nodes)
        EXPECT_NEAR(net.OfNode(node, "TERRAIN_1").AsDouble(), terrain, Exact) << node;
}

TEST(InpImport, SubcatchmentsHangOnTheSectionThatTakesTheirWater) {
    // At B a weir leaves first, then two conduits.
    const CInpTestProject net(R"([OPTIONS]
FLOW_UNITS CMS
[JUNCTIONS]
A 10 2
B 9 2
LONELY 8 2
[OUTFALLS]
O 5 FREE
[WEIRS]
w B O TRANSVERSE 1 1.8
[CONDUITS]
ab A B 100 0.013
first B O 100 0.013
second B O 100 0.013
[XSECTIONS]
ab CIRCULAR 1
first CIRCULAR 1
second CIRCULAR 2
[SUBCATCHMENTS]
head rg A 1 0
fork rg B 1 10
outfall rg O 1 20
onto rg HEAD 1 30
chain rg onto 1 40
ring1 rg ring2 1 50
ring2 rg ring3 1 50
ring3 rg ring2 1 50
self rg self 1 50
lonely rg LONELY 1 60
)");
    ASSERT_TRUE(net.IsImported()) << net.Message();
    const struct {
        const char* area;
        const char* section;
    } cases[] = {{"head", "ab"}, {"fork", "w"},  {"outfall", "w"}, {"onto", "ab"}, {"chain", "ab"},
                 {"ring1", "-"}, {"ring2", "-"}, {"ring3", "-"},   {"self", "-"},  {"lonely", "-"}};
    for (const auto& [area, section] : cases)
        EXPECT_EQ(net.HangsOn(area), section) << area;
    EXPECT_EQ(net.Summary().m_catchmentCount, 5U);
    EXPECT_EQ(net.Noted("subcatchments whose outlet no section serves"), 5U);
}

TEST(InpImport, LongChainsOfSubcatchmentsAreWalkedWithoutRecursion) {
    constexpr int Count = 200000;
    std::string text = "[OUTFALLS]\nO 5 FREE\n[JUNCTIONS]\nA 10 2\n[CONDUITS]\nc A O 100 0.013\n"
                       "[XSECTIONS]\nc CIRCULAR 1\n[SUBCATCHMENTS]\n";
    for (int i = 0; i < Count; ++i)
        text += "s" + std::to_string(i) + " rg " + (i + 1 < Count ? "s" + std::to_string(i + 1) : "A") + " 1 50\n";
    const CInpTestProject net(text);
    ASSERT_TRUE(net.IsImported()) << net.Message();
    EXPECT_EQ(net.Summary().m_catchmentCount, static_cast<std::size_t>(Count));
    EXPECT_EQ(net.HangsOn("s0"), "c");
}

TEST(InpImport, LinesAndPolygons) {
    const CInpTestProject net(R"([JUNCTIONS]
A 10 2
B 9 2
NOWHERE 8 2
[CONDUITS]
bent A B 100 0.013
straight A B 100 0.013
half A NOWHERE 100 0.013
[XSECTIONS]
bent CIRCULAR 1
straight CIRCULAR 1
half CIRCULAR 1
[SUBCATCHMENTS]
open rg A 1 50
closed rg A 1 50
flat rg A 1 50
[COORDINATES]
A 0 0
B 30 0
GONE 5 5
[VERTICES]
bent 10 5
half 0 7
BENT 20 5
half 0 9
[Polygons]
open 0 0
open 4 0
open 0 3
closed 0 0
closed 4 0
closed 0 3
closed 0 0
closed 0 0
flat 0 0
flat 4 0
other 1 1
)");
    ASSERT_TRUE(net.IsImported()) << net.Message();
    using CLine = std::vector<Topology::CPoint>;
    EXPECT_EQ(net.Section("bent")->GetGeometry(), (CLine{{0, 0}, {10, 5}, {20, 5}, {30, 0}}));
    EXPECT_EQ(net.Section("straight")->GetGeometry(), (CLine{{0, 0}, {30, 0}}));
    EXPECT_EQ(net.Section("half")->GetGeometry(), (CLine{{0, 0}, {0, 7}, {0, 9}}));
    EXPECT_FALSE(net.Topology().GetNodeByName("NOWHERE")->GetPoint().IsKnown());
    const CLine triangle{{0, 0}, {4, 0}, {0, 3}, {0, 0}};
    for (const char* area : {"open", "closed"}) {
        ASSERT_EQ(net.Catchment(area)->GetRings().size(), 1U) << area;
        EXPECT_EQ(net.Catchment(area)->GetRings()[0], triangle) << area;
    }
    EXPECT_TRUE(net.Catchment("flat")->GetRings().empty());
    EXPECT_EQ(net.Noted("nodes without coordinates"), 1U);
    EXPECT_EQ(net.Noted("coordinates of unknown nodes"), 1U);
    EXPECT_EQ(net.Noted("polygons of other objects"), 1U);
    EXPECT_EQ(net.Noted("subcatchments whose polygon has fewer"), 1U);
}

TEST(InpImport, FormIsFree) {
    // Any order of headings and any case, shortened headings, CR LF, a byte order mark, tabs, quotation marks, comments
    // at the ends of lines and in another encoding, no line end at the end.
    const CInpTestProject net("\xEF\xBB\xBF; Stra\xDF"
                              "e\r\n[xsect]\r\n\"link 1\"\tcircular\t.4;Gr\xF6\xDF"
                              "e\r\n[Conduits]\r\n"
                              "\"Link 1\" a \"\xC3\x96st\" 1e2 .013 0 +0\r\n[junc]\r\n  A 1.5e1 2\r\n[OUTFALL]\r\n"
                              "\xC3\x96st 14 free\r\n[labels]\r\n0 0 \"Stra\xDF"
                              "e\"\r\n[opt]\r\n[OPTIONS]\r\n"
                              "flow_units mld");
    ASSERT_TRUE(net.IsImported()) << net.Message();
    const auto section = net.Section("Link 1");
    ASSERT_TRUE(section);
    EXPECT_EQ(section->GetStartingNode()->GetName(), "A");
    EXPECT_EQ(section->GetEndingNode()->GetName(), "\xC3\x96st");
    EXPECT_EQ(net.OfSection("Link 1", "length").AsDouble(), 100.0);
    EXPECT_EQ(net.PipeName("Link 1"), "DN 400 k 1.491");
    EXPECT_NEAR(net.OfSection("Link 1", "SECTION_SLOPE").AsDouble(), 10.0, Exact);
}
