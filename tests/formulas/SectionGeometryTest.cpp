// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/formulas/SectionGeometry.h"

#include "host/formulas/Filling.h"
#include "tests/support/ReferenceTable.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <string>

using namespace OLMGis::Formulas;

namespace {

constexpr double Pi = std::numbers::pi;

CSectionShape Shape(enmSectionShape kind, double width, double height) {
    return {kind, width, height, {}};
}

/// A circle as a table of widths at heights, densest at bottom and top, where the wall is nearly level.
CSectionShape CircleOfLevels(double diameter, int levels) {
    CSectionShape shape = Shape(enmSectionShape::Table, diameter, diameter);
    for (int i = 0; i <= levels; ++i) {
        const double angle = Pi * i / levels;
        shape.m_levels.push_back({0.5 * diameter * (1.0 - std::cos(angle)), diameter * std::abs(std::sin(angle))});
    }
    return shape;
}

} // namespace

TEST(SectionGeometry, PublishedTables) {
    const CSectionShape egg = Shape(enmSectionShape::Egg, 0.8, 1.2);
    const CWetSection full = FullShape(egg);
    for (const auto& row : ReadCases("hydraulics/egg_geometry.txt")) {
        SCOPED_TRACE(row.Name());
        const CWetSection wet = WetShape(egg, row["h/H"] * 1.2);
        EXPECT_NEAR(wet.m_area / full.m_area, row["area"], 0.012); // rounded handbook values
        EXPECT_NEAR(wet.m_area / full.m_area, row["exact_area"], 5.1e-6);
        EXPECT_NEAR(wet.GetHydraulicRadius() / full.GetHydraulicRadius(), row["exact_radius"], 5.1e-6);
    }
    for (const auto& row : ReadCases("hydraulics/circle_geometry.txt")) {
        SCOPED_TRACE(row.Name());
        const CWetSection wet = WetCircle(2.0, row["depth"]);
        const bool isMisprint = row.Text("depth") == "0.05";
        EXPECT_NEAR(wet.GetHydraulicRadius(), row["radius"], (isMisprint ? 0.03 : 0.01) * row["radius"]);
        EXPECT_NEAR(wet.m_area, row["area"], 0.01 * row["area"]);
    }
}

TEST(SectionGeometry, KnownByHand) {
    const CSectionShape ledged{enmSectionShape::Table, 0.0, 0.0, {{0.0, 1.0}, {1.0, 1.0}, {1.0, 3.0}, {2.0, 3.0}}};
    const CSectionShape triangle{enmSectionShape::Table, 0.0, 0.0, {{0.0, 0.0}, {1.0, 2.0}}};
    const CSectionShape roofed{enmSectionShape::Table, 0.0, 0.0, {{0.0, 2.0}, {1.0, 2.0}, {1.0, 1.0}, {1.0, 0.0}}};
    const double root2 = std::numbers::sqrt2;
    const struct {
        const char* name;
        CSectionShape shape;
        double depth, area, perimeter, surface;
    } rows[] = {
        {"half circle", Shape(enmSectionShape::Circle, 2.0, 2.0), 1.0, Pi / 2.0, Pi, 2.0},
        {"full circle", Shape(enmSectionShape::Circle, 2.0, 0.0), 2.0, Pi, 2.0 * Pi, 0.0},
        {"box", Shape(enmSectionShape::Box, 2.0, 1.0), 0.5, 1.0, 3.0, 2.0},
        {"full box", Shape(enmSectionShape::Box, 2.0, 1.0), 1.5, 2.0, 6.0, 0.0},
        {"egg as high as wide is a circle", Shape(enmSectionShape::Egg, 2.0, 2.0), 1.0, Pi / 2.0, Pi, 2.0},
        {"below the ledge", ledged, 0.5, 0.5, 2.0, 1.0},
        {"over the ledge", ledged, 1.5, 2.5, 6.0, 3.0},
        {"full with a ledge", ledged, 2.0, 4.0, 10.0, 0.0},
        {"triangle", triangle, 0.5, 0.25, root2, 1.0},
        {"full triangle", triangle, 1.0, 1.0, 2.0 * root2 + 2.0, 0.0},
        {"roof of ledges", roofed, 1.0, 2.0, 6.0, 0.0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const CWetSection wet = WetShape(row.shape, row.depth);
        EXPECT_NEAR(wet.m_area, row.area, 1e-14);
        EXPECT_NEAR(wet.m_perimeter, row.perimeter, 1e-14);
        EXPECT_NEAR(wet.m_surfaceWidth, row.surface, 1e-14);
    }
}

TEST(SectionGeometry, SurfaceAndWallAreTheGrowthOfAreaAndPerimeter) {
    // Across every depth, the joins of the arcs included: dA/dh is the surface width, dP/dh the stated growth, nothing
    // jumps.
    for (const CSectionShape& shape : {Shape(enmSectionShape::Circle, 0.3, 0.3), Shape(enmSectionShape::Egg, 0.6, 0.9),
                                       Shape(enmSectionShape::Egg, 0.6, 0.7), Shape(enmSectionShape::Egg, 0.6, 2.0),
                                       Shape(enmSectionShape::Box, 2.0, 0.5), CircleOfLevels(1.0, 100)}) {
        const double height = HeightOfShape(shape);
        const double step = 1e-6 * height;
        for (int i = 1; i < 1000; ++i) {
            const double depth = height * i / 1000.0;
            const CWetSection wet = WetShape(shape, depth);
            const CWetSection more = WetShape(shape, depth + step);
            const double kind = static_cast<double>(shape.m_kind);
            ASSERT_NEAR((more.m_area - wet.m_area) / step, wet.m_surfaceWidth, 1e-3 * height) << kind << ' ' << depth;
            ASSERT_NEAR((more.m_perimeter - wet.m_perimeter) / step, wet.m_perimeterGrowth,
                        1e-2 * wet.m_perimeterGrowth)
                << kind << ' ' << depth;
        }
    }
}

TEST(SectionGeometry, PartlyFilledCircleByTheAngleOfItsSurface) {
    // Angles whose sine and cosine are known exactly: P = D a / 2, A = D² (a - sin a) / 8, b = D sin(a / 2).
    const double root2 = std::numbers::sqrt2;
    const double root3 = std::numbers::sqrt3;
    const struct {
        const char* name;
        double angle, sine, depthRatio, widthRatio; ///< a (rad), sin a, h / D, b / D
    } rows[] = {
        {"60 degrees", Pi / 3.0, root3 / 2.0, (2.0 - root3) / 4.0, 0.5},
        {"90 degrees", Pi / 2.0, 1.0, (2.0 - root2) / 4.0, root2 / 2.0},
        {"120 degrees", Pi * 2.0 / 3.0, root3 / 2.0, 0.25, root3 / 2.0},
        {"180 degrees", Pi, 0.0, 0.5, 1.0},
        {"240 degrees", Pi * 4.0 / 3.0, -root3 / 2.0, 0.75, root3 / 2.0},
    };
    const CFlowConditions conditions{0.004, 0.0015, 1.31e-6};
    for (const auto& row : rows)
        for (const double diameter : {0.3, 2.0}) {
            SCOPED_TRACE(testing::Message() << row.name << ", diameter " << diameter);
            const double perimeter = 0.5 * diameter * row.angle;
            const double area = 0.125 * diameter * diameter * (row.angle - row.sine);
            const double flow = area * UniformVelocity(area / perimeter, conditions);
            const CFilling filling = FillCircle(diameter, flow, conditions);
            EXPECT_NEAR(filling.m_depth, row.depthRatio * diameter, 1e-12);
            for (const CWetSection& wet : {WetCircle(diameter, row.depthRatio * diameter), filling.m_wet}) {
                EXPECT_NEAR(wet.m_perimeter, perimeter, 1e-12); // the filling is a root to about 1e-13
                EXPECT_NEAR(wet.m_area, area, 1e-12);
                EXPECT_NEAR(wet.m_surfaceWidth, row.widthRatio * diameter, 1e-12);
            }
        }
}

TEST(SectionGeometry, TableOfACircleIsTheCircle) {
    const CSectionShape table = CircleOfLevels(0.8, 2000);
    for (int i = 1; i <= 100; ++i) {
        const CWetSection wet = WetShape(table, 0.008 * i);
        const CWetSection circle = WetCircle(0.8, 0.008 * i);
        // The polygon's area is less than the circle's by (π/2000)²/1.5, its perimeter by (π/2000)²/6.
        EXPECT_NEAR(wet.m_area, circle.m_area, 2e-6 * Pi * 0.16) << i;
        EXPECT_NEAR(wet.m_perimeter, circle.m_perimeter, 2e-6 * Pi * 0.8) << i;
    }
}

TEST(SectionGeometry, BadInputIsDry) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double bad : {0.0, -1.0, nan, infinity})
        for (const enmSectionShape kind :
             {enmSectionShape::Circle, enmSectionShape::Egg, enmSectionShape::Box, enmSectionShape::Table}) {
            CSectionShape shape = Shape(kind, bad, 1.0);
            shape.m_levels = {{0.0, 1.0}, {bad, bad}};
            EXPECT_EQ(WetShape(shape, 0.5).m_area, 0.0);
            EXPECT_EQ(FullShape(shape).m_perimeter, 0.0);
        }
    EXPECT_EQ(WetCircle(1.0, nan).m_area, 0.0);
    EXPECT_EQ(WetEgg(1.0, 0.9, 0.5).m_area, 0.0); // lower than wide
    EXPECT_EQ(WetTable({}, 0.5).m_area, 0.0);
}
