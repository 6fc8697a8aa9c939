// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
//
// Outlines of cross-sections against geometry: areas from closed formulas, widths at heights known by hand.
#include "host/project_io/inp/InpShape.h"

#include "host/project_io/inp/InpOutline.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

using namespace OLMGis::ProjectIo;
using OLMGis::Topology::CShapePoint;
using OLMGis::Topology::enmPipeShape;

namespace {

/// Area of an outline with straight lines between its points, mm².
double AreaOf(const CInpOutline& outline) {
    double area = 0.0;
    for (std::size_t i = 1; i < outline.size(); ++i)
        area += (outline[i].m_height - outline[i - 1].m_height) * (outline[i].m_width + outline[i - 1].m_width) / 2.0;
    return area;
}

bool IsGrowing(const CInpOutline& outline) {
    for (std::size_t i = 1; i < outline.size(); ++i)
        if (!(outline[i].m_height > outline[i - 1].m_height) || outline[i].m_width < 0.0)
            return false;
    return !outline.empty() && outline.front().m_height == 0.0;
}

CInpCrossSection Section(enmInpShape shape, std::array<double, 4> dimensions, std::string_view text = {}) {
    CInpCrossSection section;
    section.m_shape = shape;
    section.m_dimensions = dimensions;
    section.m_text = text;
    return section;
}

} // namespace

TEST(InpShape, AreasOfTablesAgreeWithGeometry) {
    constexpr double Pi = std::numbers::pi;
    const struct {
        const char* name;
        CInpCrossSection section; // m
        double area;              // mm²
        double width;             // greatest, mm
        double tolerance;         // relative; 0.001 where chords follow a curve, else rounding
    } cases[] = {
        // (1000 + (1000 + 2000 · (1 + 0.5))) / 2 · 2000
        {"trapezoid", Section(enmInpShape::Trapezoidal, {2.0, 1.0, 1.0, 0.5}), 5.0e6, 4000.0, 1e-12},
        {"triangle", Section(enmInpShape::Triangular, {1.5, 2.0}), 1.5e6, 2000.0, 1e-12},
        // triangle of 500 and a box of 1500 above it, 1200 wide
        {"box on a triangle", Section(enmInpShape::RectTriangular, {2.0, 1.2, 0.5}), 2.1e6, 1200.0, 1e-12},
        {"parabola: 2/3 of the box", Section(enmInpShape::Parabolic, {1.2, 3.0}), 2.4e6, 3000.0, 1e-3},
        // 1 / (1 + 1/m) of the box
        {"power 3: 3/4 of the box", Section(enmInpShape::Power, {1.0, 2.0, 3.0}), 1.5e6, 2000.0, 1e-3},
        {"power 0.5: 1/3 of the box", Section(enmInpShape::Power, {1.0, 3.0, 0.5}), 1.0e6, 3000.0, 1e-3},
        // half circle of 500 and a box of 500 above it
        {"half round bottom", Section(enmInpShape::RectRound, {1.0, 1.0, 0.5}), 0.5e6 + Pi * 0.125e6, 1000.0, 1e-3},
        {"half round top", Section(enmInpShape::ModBasketHandle, {1.0, 1.0, 0.5}), 0.5e6 + Pi * 0.125e6, 1000.0, 1e-3},
        // radius = width: segment r²(π/6 - √3/4), its height r(1 - √3/2)
        {"flat bottom arc", Section(enmInpShape::RectRound, {1.0, 1.0, 1.0}),
         1e6 * (Pi / 6 - std::sqrt(3.0) / 4 + std::sqrt(3.0) / 2), 1000.0, 1e-3},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const auto pipe = MakeInpPipe(c.section, nullptr, nullptr);
        ASSERT_TRUE(pipe);
        EXPECT_EQ(pipe->m_shape, enmPipeShape::Table);
        EXPECT_TRUE(IsGrowing(pipe->m_table));
        EXPECT_NEAR(AreaOf(pipe->m_table), c.area, c.area * c.tolerance);
        EXPECT_DOUBLE_EQ(pipe->m_innerWidth, c.width);
        EXPECT_DOUBLE_EQ(pipe->m_innerHeight, c.section.m_dimensions[0] * 1000.0);
    }
}

TEST(InpShape, PlainShapesAndNames) {
    const struct {
        CInpCrossSection section;
        enmPipeShape shape;
        double width;
        double height;
        const char* name;
    } cases[] = {
        {Section(enmInpShape::Circular, {1.1}), enmPipeShape::Circle, 1100, 1100, "DN 1100"},
        {Section(enmInpShape::Circular, {1.5 * 0.3048}), enmPipeShape::Circle, 457.2, 457.2, "DN 457.2"},
        {Section(enmInpShape::ForceMain, {0.18, 100.0}), enmPipeShape::Circle, 180, 180, "DN 180"},
        {Section(enmInpShape::FilledCircular, {0.4, 0.1}), enmPipeShape::Circle, 400, 400, "DN 400"},
        {Section(enmInpShape::Egg, {1.2}), enmPipeShape::Egg, 800, 1200, "EGG 800x1200"},
        {Section(enmInpShape::RectClosed, {1.5, 2.0}), enmPipeShape::Box, 2000, 1500, "BOX 2000x1500"},
        {Section(enmInpShape::RectOpen, {1.5, 2.0}), enmPipeShape::Box, 2000, 1500, "BOX 2000x1500"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const auto pipe = MakeInpPipe(c.section, nullptr, nullptr);
        ASSERT_TRUE(pipe);
        EXPECT_EQ(pipe->m_shape, c.shape);
        EXPECT_EQ(pipe->m_innerWidth, c.width);
        EXPECT_EQ(pipe->m_innerHeight, c.height);
        EXPECT_EQ(NameInpShape(c.section)->m_name, c.name);
    }
}

TEST(InpShape, NumbersThatCloseToNoOutlineGiveNoPipe) {
    const struct {
        const char* name;
        CInpCrossSection section;
    } cases[] = {
        {"radius smaller than half the width", Section(enmInpShape::RectRound, {1.0, 1.0, 0.4})},
        {"arc higher than the pipe", Section(enmInpShape::ModBasketHandle, {0.3, 1.0, 0.5})},
        {"triangle higher than the pipe", Section(enmInpShape::RectTriangular, {1.0, 1.0, 1.1})},
        {"trapezoid of no width", Section(enmInpShape::Trapezoidal, {1.0})},
        {"slit", Section(enmInpShape::Power, {1.0, 1.0, 1000.0})},
        {"a maker's table", Section(enmInpShape::Arch, {1.0, 1.5})},
        {"a maker's table", Section(enmInpShape::Horseshoe, {1.0})},
        {"no shape at all", Section(enmInpShape::Dummy, {})},
        {"curve that is not there", Section(enmInpShape::Custom, {1.0}, "S1")},
        {"transect that is not there", Section(enmInpShape::Irregular, {}, "T1")},
    };
    for (const auto& c : cases)
        EXPECT_FALSE(MakeInpPipe(c.section, nullptr, nullptr)) << c.name;
}

TEST(InpShape, CurvesAreCompletedAtBothEnds) {
    const std::vector<CShapePoint> completed{{0.0, 0.0}, {500.0, 2000.0}, {1500.0, 1000.0}, {2000.0, 1000.0}};
    EXPECT_EQ(CurveOutline({{0.25, 1.0}, {0.75, 0.5}}, 2000.0), completed);
    const std::vector<CShapePoint> whole{{0.0, 400.0}, {2000.0, 800.0}};
    EXPECT_EQ(CurveOutline({{0.0, 0.2}, {1.0, 0.4}}, 2000.0), whole);
    EXPECT_TRUE(CurveOutline({}, 2000.0).empty());
    EXPECT_TRUE(CurveOutline({{0.5, 1.0}, {0.5, 2.0}}, 2000.0).empty()) << "depths that do not grow";
    EXPECT_TRUE(CurveOutline({{0.0, 1.0}, {1.5, 2.0}}, 2000.0).empty()) << "above the full depth";
}

TEST(InpShape, ChannelsKeepTheirWidthAtEachLevel) {
    // A channel of 2 m between sides of 1:1, and a bank of 3 m on its right at 1 m above the bed, walls to 2 m:
    // bed 2 m; just below the bank 4 m, just above 7 m; the left side ends at 2 m with 1 m more.
    const auto bed = ChannelOutline({{0, 12}, {2, 10}, {4, 10}, {5, 11}, {8, 11}, {8, 12}}, 1.0);
    ASSERT_EQ(bed.size(), 4U);
    EXPECT_TRUE(IsGrowing(bed));
    const std::vector<CShapePoint> expected{{0.0, 2000.0}, {1000.0, 4000.0}, {1000.01, 7000.0}, {2000.0, 8000.0}};
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_NEAR(bed[i].m_height, expected[i].m_height, 1e-6);
        EXPECT_NEAR(bed[i].m_width, expected[i].m_width, 1e-6);
    }
    // Two beds with an island between them fill one after the other: 0.5 m up the deeper one alone.
    const auto island = ChannelOutline({{0, 2}, {1, 0}, {2, 2}, {3, 1}, {4, 2}}, 2.0);
    ASSERT_EQ(island.size(), 3U);
    EXPECT_NEAR(island[1].m_height, 1000.0, 1e-6);
    EXPECT_NEAR(island[1].m_width, 2000.0, 1e-6);
    EXPECT_NEAR(island[2].m_width, 8000.0, 1e-6);
    EXPECT_TRUE(ChannelOutline({{0, 1}}, 1.0).empty());
}
