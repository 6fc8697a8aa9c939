// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
//
// Networks that others published: their counts, totals summed in a spreadsheet, and values calculated by hand.
#include "host/network_core/SectionSlopes.h"
#include "tests/project_io/InpTestProject.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>

using namespace OLMGis;

namespace {

class CReferenceNetwork : public CInpTestProject {
public:
    explicit CReferenceNetwork(const std::string& file)
        : CInpTestProject(std::ifstream(Path(file), std::ios::binary)) {}

    static std::string Path(const std::string& file) { return DRENOVA_REFERENCE_DATA "/networks/" + file; }
};

double SumOf(const auto& entities, std::string_view key) {
    double sum = 0.0;
    for (const auto& entity : entities) {
        Data::CDataBox box;
        if (Data::CDataRW::Read(key, entity, box, 0, nullptr) != 0)
            sum += box.AsDouble();
    }
    return sum;
}

class InpReference : public testing::Test {
protected:
    void SetUp() override {
        if (!std::filesystem::exists(CReferenceNetwork::Path("01_epa_example1.inp")))
            GTEST_SKIP() << "the reference data are not here";
    }
};

} // namespace

TEST_F(InpReference, CountsAndTotals) {
    // Totals: sums of columns of the files, times 0.3048 m/ft and 0.40468564224 ha/acre where they are in feet.
    const struct {
        const char* file;
        std::size_t nodes;
        std::size_t sections;
        std::size_t withPipe;
        std::size_t catchments;
        double length; // m
        double area;   // ha
    } cases[] = {
        {"01_epa_example1.inp", 14, 13, 13, 8, 4300 * 0.3048, 71 * 0.40468564224},
        {"02_epa_user1.inp", 60, 59, 59, 58, 8020.0, 174.7},
        {"04_epa_user4.inp", 209, 209, 209, 112, 30502.26 * 0.3048, 528.37 * 0.40468564224},
        {"05_bellinge_small.inp", 16, 15, 15, 13, 675.3577594272816, 3.8607021749510495},
        {"06_barcelona_1e.inp", 116, 118, 113, 106, 5269.321, 30.109878},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.file);
        const CReferenceNetwork net(c.file);
        ASSERT_TRUE(net.IsImported()) << net.Message();
        const auto& sections = net.Topology().GetSections();
        EXPECT_EQ(net.Topology().GetNodes().size(), c.nodes);
        EXPECT_EQ(sections.size(), c.sections);
        EXPECT_EQ(net.Topology().GetCatchments().size(), c.catchments);
        EXPECT_EQ(
            std::count_if(sections.begin(), sections.end(), [](const auto& s) { return s->GetPipe() != nullptr; }),
            static_cast<std::ptrdiff_t>(c.withPipe));
        EXPECT_NEAR(SumOf(sections, "length"), c.length, 1e-8);
        EXPECT_NEAR(SumOf(net.Topology().GetCatchments(), "area"), c.area, 1e-8);
        EXPECT_EQ(net.Noted("nodes without coordinates"), 0U);
    }
}

TEST_F(InpReference, ValuesByHand) {
    const struct {
        const char* file;
        const char* section;
        double length; // m
        double upper;  // m
        double lower;  // m
        double slope;  // 1/1000
        const char* pipe;
    } cases[] = {
        {"01_epa_example1.inp", "6", 121.92, 303.276, 302.0568, 10.0, "DN 304.8 k 0.309"}, // 400; 995; 990 + 1 ft
        {"02_epa_user1.inp", "3", 150.0, 4.52, 0.85, 3.67 / 0.15, "DN 1200 k 1.491"},      // 0.25 + 0.6
        {"04_epa_user4.inp", "20704016-20704017", 69.918072, 266.495784, 265.425936, 3.51 / 0.22939,
         "DN 304.8 k 3.519"}, // 229.39; 874.33; 870.82 ft
        {"05_bellinge_small.inp", "G72F820_G72F810_l1", 47.4492480509699, 23.3691, 22.8791, 0.49 / 0.0474492480509699,
         "DN 350 k 0.309"},
        {"06_barcelona_1e.inp", "20603", 39.798, 37.83, 37.29, 0.54 / 0.039798, "DN 800 k 2.326"},
        {"06_barcelona_1e.inp", "245", 605.964, 14.5, 43.5, -29.0 / 0.605964, "DN 180 k 0.547"}, // climbs
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.file) + " " + c.section);
        const CReferenceNetwork net(c.file);
        ASSERT_TRUE(net.IsImported()) << net.Message();
        EXPECT_NEAR(net.OfSection(c.section, "length").AsDouble(), c.length, 1e-9);
        EXPECT_NEAR(net.OfSection(c.section, "LEVEL_LINE_0").AsDouble(), c.upper, 1e-9);
        EXPECT_NEAR(net.OfSection(c.section, "LEVEL_LINE_1").AsDouble(), c.lower, 1e-9);
        EXPECT_NEAR(net.OfSection(c.section, "SECTION_SLOPE").AsDouble(), c.slope, 1e-9);
        EXPECT_EQ(net.PipeName(c.section), c.pipe);
    }
}

TEST_F(InpReference, NodesCatchmentsAndOtherLinks) {
    {
        const CReferenceNetwork net("01_epa_example1.inp");
        ASSERT_TRUE(net.IsImported()) << net.Message();
        EXPECT_NEAR(net.OfNode("9", "TERRAIN_1").AsDouble(), 1003 * 0.3048, 1e-9);
        EXPECT_NEAR(net.OfNode("18", "TERRAIN_1").AsDouble(), 977 * 0.3048, 1e-9) << "outfall: crown of 2 ft";
        EXPECT_EQ(net.HangsOn("8"), "10") << "at the outfall, on what enters it";
        EXPECT_NEAR(net.OfCatchment("8", "coefficient").AsDouble(), 0.1, 1e-12);
        EXPECT_EQ(net.Noted("lines of TIMESERIES"), 11U);
    }
    {
        const CReferenceNetwork net("04_epa_user4.inp");
        ASSERT_TRUE(net.IsImported()) << net.Message();
        EXPECT_EQ(net.HangsOn("GMMC19CC0101"), "23916007-23916003");
        EXPECT_EQ(net.Noted("lines of INFLOWS"), 112U);
    }
    const CReferenceNetwork net("06_barcelona_1e.inp");
    ASSERT_TRUE(net.IsImported()) << net.Message();
    EXPECT_EQ(net.PipeName("144").substr(0, 13), "EGG 1000x1500");
    EXPECT_EQ(net.PipeName("146").substr(0, 13), "BOX 1500x1500");
    EXPECT_NEAR(net.OfSection("2385", "LEVEL_LINE_0").AsDouble(), 16.35, 1e-12) << "a weir's crest as a level";
    EXPECT_FALSE(net.OfSection("2385", "PIPE_REF").IsNotNull());
    EXPECT_NEAR(net.OfNode("236", "TERRAIN_1").AsDouble(), 43.55, 1e-9) << "outfall: 43.15 + 0.4";
    EXPECT_NEAR(net.OfNode("238", "TERRAIN_1").AsDouble(), 19.0, 1e-9) << "storage: 14.25 + 4.75";
    EXPECT_EQ(net.Section("207")->GetGeometry().size(), 6U) << "four vertices between its ends";
    EXPECT_EQ(net.Noted("pumps"), 3U);
    EXPECT_EQ(net.Noted("weirs"), 2U);
    EXPECT_EQ(net.Noted("conduits with adverse slope"), 1U);
}

TEST_F(InpReference, SlopesFollowFromLevelsAndLengthsOfTheFile) {
    // All have levels and lengths. The sum of slope times length is the fall of all sections together.
    for (const char* file : {"02_epa_user1.inp", "05_bellinge_small.inp"}) {
        SCOPED_TRACE(file);
        const CReferenceNetwork net(file);
        ASSERT_TRUE(net.IsImported()) << net.Message();
        const auto& sections = net.Topology().GetSections();
        for (const auto& section : sections)
            Data::CDataRW::Write("SECTION_SLOPE_CAL", section, Data::CDataBox(), nullptr);
        const auto summary = Topology::StoreSlopes(net.Topology(), {});
        EXPECT_EQ(summary.m_calculated, sections.size());
        EXPECT_TRUE(summary.m_withoutLevels.empty() && summary.m_withoutLength.empty());
        double fall = 0.0;
        for (const auto& section : sections)
            fall += net.OfSection(section->GetName(), "SECTION_SLOPE_CAL").AsDouble() * section->GetLength2D() / 1000.0;
        EXPECT_NEAR(fall, SumOf(sections, "LEVEL_LINE_0") - SumOf(sections, "LEVEL_LINE_1"), 1e-9);
    }
}
