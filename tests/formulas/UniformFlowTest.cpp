// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
//
// Against published full-bore tables, and tables derived independently at 40 digits.
#include "host/formulas/Filling.h"
#include "tests/support/ReferenceTable.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

using namespace OLMGis::Formulas;

namespace {

constexpr double Derived = 1e-6; ///< the derived tables have ten digits
constexpr double Infinity = std::numeric_limits<double>::infinity();
constexpr double NotANumber = std::numeric_limits<double>::quiet_NaN();

CSectionShape Circle(double diameter) {
    return {enmSectionShape::Circle, diameter, diameter, {}};
}

const CSectionShape Egg{enmSectionShape::Egg, 0.8, 1.2, {}};
const CSectionShape Box{enmSectionShape::Box, 1.5, 0.9, {}};
const CSectionShape Ledged{enmSectionShape::Table, 0.0, 0.0, {{0.0, 0.2}, {0.4, 0.2}, {0.4, 2.0}, {1.5, 2.4}}};

void ExpectNear(double value, double expected, double relative) {
    EXPECT_NEAR(value, expected, relative * std::abs(expected));
}

CFlowConditions ConditionsOf(const CCaseRow& row) {
    return {row["slope_permille"] / 1000.0, row["roughness_mm"] / 1000.0, row["viscosity"]};
}

} // namespace

TEST(UniformFlow, PublishedFullBore) {
    for (const auto& row : ReadCases("hydraulics/published_full_bore.txt")) {
        SCOPED_TRACE(row.Name());
        const double diameter = row["diameter_mm"] / 1000.0;
        const CFlowConditions conditions{1.0 / row["slope_one_in"], row["roughness_mm"] / 1000.0, row["viscosity"]};
        // A flow of four digits where the table has one; velocities beside it have three.
        if (row.Text("flow_l/s") != "-")
            ExpectNear(FullBoreFlow(Circle(diameter), conditions), row["flow_l/s"] / 1000.0, 1e-3);
        else
            ExpectNear(UniformVelocity(diameter / 4.0, conditions), row["velocity_m/s"], 1e-3);
    }
}

TEST(UniformFlow, DerivedTables) {
    for (const auto& row : ReadCases("hydraulics/full_bore.txt")) {
        SCOPED_TRACE(row.Name());
        ExpectNear(FullBoreFlow(Circle(row["diameter_mm"] / 1000.0), ConditionsOf(row)), row["flow_l/s"] / 1000.0,
                   Derived);
    }
    for (const auto& row : ReadCases("hydraulics/partly_full_circle.txt")) {
        SCOPED_TRACE(row.Name());
        const double diameter = row["diameter_mm"] / 1000.0;
        const CWetSection wet = WetCircle(diameter, row["h/D"] * diameter);
        ExpectNear(wet.m_area, row["area_m2"], Derived);
        ExpectNear(wet.GetHydraulicRadius(), row["radius_m"], Derived); // and with it the wetted perimeter
        ExpectNear(UniformVelocity(wet.GetHydraulicRadius(), ConditionsOf(row)), row["velocity_m/s"], Derived);
        ExpectNear(UniformFlow(Circle(diameter), row["h/D"] * diameter, ConditionsOf(row)), row["flow_l/s"] / 1000.0,
                   Derived);
    }
    for (const auto& row : ReadCases("hydraulics/partly_full_egg.txt")) {
        SCOPED_TRACE(row.Name());
        const CSectionShape egg{enmSectionShape::Egg, row["width_mm"] / 1000.0, row["height_mm"] / 1000.0, {}};
        const double depth = row["h/H"] * egg.m_height;
        ExpectNear(WetShape(egg, depth).m_perimeter, row["perimeter_m"], Derived);
        ExpectNear(UniformFlow(egg, depth, ConditionsOf(row)), row["flow_l/s"] / 1000.0, Derived);
        if (row["Q/Qfull"] < 0.9999 && row["h/H"] < 0.9) // on the rising branch the flow has this depth
            ExpectNear(FillShape(egg, row["flow_l/s"] / 1000.0, ConditionsOf(row)).m_percent, 100.0 * row["h/H"],
                       Derived);
    }
    for (const auto& row : ReadCases("hydraulics/least_diameter.txt")) {
        SCOPED_TRACE(row.Name());
        ExpectNear(LeastDiameter(row["flow_l/s"] / 1000.0, ConditionsOf(row)), row["diameter_mm"] / 1000.0, Derived);
    }
}

TEST(UniformFlow, DerivedMaximaOverDepth) {
    for (const auto& row : ReadCases("hydraulics/greatest_flow.txt")) {
        SCOPED_TRACE(row.Name());
        const CSectionShape circle = Circle(row["diameter_mm"] / 1000.0);
        const CFlowConditions conditions = ConditionsOf(row);
        const CMaximum flow = GreatestFlow(circle, conditions);
        const CMaximum velocity = GreatestVelocity(circle, conditions);
        const double fullFlow = FullBoreFlow(circle, conditions);
        ExpectNear(flow.m_depth / circle.m_width, row["h/D_of_Qmax"], Derived);
        ExpectNear(flow.m_value / fullFlow, row["Qmax/Qfull"], Derived);
        ExpectNear(velocity.m_depth / circle.m_width, row["h/D_of_vmax"], Derived);
        ExpectNear(velocity.m_value / UniformVelocity(circle.m_width / 4.0, conditions), row["vmax/vfull"], Derived);
        ExpectNear(FillShape(circle, fullFlow, conditions).m_percent, 100.0 * row["h/D_of_Qfull"], Derived);
    }
}

TEST(Filling, DerivedDepths) {
    for (const auto& row : ReadCases("hydraulics/depth_of_flow.txt")) {
        SCOPED_TRACE(row.Name());
        const CFilling filling =
            FillShape(Circle(row["diameter_mm"] / 1000.0), row["flow_l/s"] / 1000.0, ConditionsOf(row));
        ExpectNear(filling.m_percent, 100.0 * row["h/D"], Derived);
        ExpectNear(filling.m_velocity, row["velocity_m/s"], Derived);
    }
}

TEST(Filling, SmallestDepthOfTheFlowInEveryShape) {
    const CSectionShape triangle{enmSectionShape::Table, 0.0, 0.0, {{0.0, 0.0}, {1.0, 2.0}}};
    for (const CSectionShape& shape : {Circle(0.02), Circle(0.3), Circle(6.0), Egg, Box, Ledged, triangle})
        for (const double slope : {1e-6, 1e-3, 0.3}) {
            const CFlowConditions conditions{slope, 0.0004, 1.31e-6};
            const double full = FullBoreFlow(shape, conditions);
            double below = 0.0;
            for (const double part : {1e-9, 1e-4, 0.01, 0.2, 0.5, 0.9, 0.999999, 1.0}) {
                SCOPED_TRACE(testing::Message() << static_cast<int>(shape.m_kind) << ' ' << slope << ' ' << part);
                const CFilling filling = FillShape(shape, part * full, conditions);
                EXPECT_FALSE(filling.m_isOverfull);
                // A film just thick enough to move doubles its flow within about 1e-9 of its depth.
                const double tolerance = part < 1e-4 ? 1e-6 : 1e-10;
                ExpectNear(UniformFlow(shape, filling.m_depth, conditions), part * full, tolerance);
                ExpectNear(filling.m_velocity * filling.m_wet.m_area, part * full, tolerance);
                EXPECT_GE(filling.m_percent, below);
                below = filling.m_percent;
                for (int i = 1; i < 200; ++i) // no lower depth carries as much
                    ASSERT_LT(UniformFlow(shape, filling.m_depth * i / 200.0, conditions), part * full);
            }
            EXPECT_FALSE(FillShape(shape, full * (1.0 + 1e-12), conditions).m_isOverfull); // rounding
            EXPECT_TRUE(FillShape(shape, full * (1.0 + 1e-10), conditions).m_isOverfull);
            const CFilling over = FillShape(shape, 1.5 * full, conditions);
            EXPECT_TRUE(over.m_isOverfull);
            ExpectNear(over.m_percent, 150.0, 1e-14);
            ExpectNear(over.m_velocity, 1.5 * full / FullShape(shape).m_area, 1e-14);
        }
}

TEST(Filling, MonotoneInFlowSlopeAndDiameter) {
    CFilling last;
    double lastDiameter = 0.0;
    for (int i = 1; i <= 2000; ++i) {
        const CFlowConditions conditions{0.004, 0.001, 1e-6};
        const CFilling filling = FillCircle(0.3, 1e-4 * i, conditions);
        ASSERT_GT(filling.m_percent, last.m_percent) << i;
        ASSERT_LT(FillCircle(0.3, 1e-4 * i, {0.005, 0.001, 1e-6}).m_percent, filling.m_percent) << i;
        ASSERT_LT(FillCircle(0.31, 1e-4 * i, conditions).m_percent, filling.m_percent) << i;
        const double diameter = LeastDiameter(1e-4 * i, conditions);
        ASSERT_GT(diameter, lastDiameter) << i;
        ASSERT_LT(LeastDiameter(1e-4 * i, {0.005, 0.001, 1e-6}), diameter) << i;
        last = filling;
        lastDiameter = diameter;
    }
}

TEST(LeastDiameter, CarriesTheFlowToTwelveDigits) {
    for (const double flow : {1e-9, 1e-6, 1e-3, 0.04, 1.0, 50.0})
        for (const double slope : {1e-6, 1e-4, 0.01, 0.5})
            for (const double roughness : {0.0, 1e-5, 1.5e-3}) {
                const CFlowConditions conditions{slope, roughness, 1e-6};
                const double diameter = LeastDiameter(flow, conditions);
                EXPECT_LE(FullBoreFlow(Circle(diameter * (1.0 - 1e-12)), conditions), flow) << flow << ' ' << slope;
                EXPECT_GE(FullBoreFlow(Circle(diameter * (1.0 + 1e-12)), conditions), flow) << flow << ' ' << slope;
            }
}

TEST(Filling, NothingThatCannotFlowIsNaN) {
    const double awkward[] = {NotANumber, -Infinity, -1.0, 0.0, 1e-300, 1e-6, 1.0, 1e300, Infinity};
    for (const double flow : awkward)
        for (const double slope : awkward)
            for (const double roughness : awkward)
                for (const double viscosity : awkward) {
                    const CFlowConditions conditions{slope, roughness, viscosity};
                    EXPECT_GE(LeastDiameter(flow, conditions), 0.0);
                    for (const CSectionShape& shape : {CSectionShape(), Circle(0.3), Circle(slope), Egg, Box, Ledged}) {
                        const CFilling filling = FillShape(shape, flow, conditions);
                        ASSERT_GE(filling.m_percent, 0.0) << flow << ' ' << slope << ' ' << roughness;
                        ASSERT_GE(filling.m_velocity, 0.0) << flow << ' ' << slope << ' ' << roughness;
                        ASSERT_EQ(filling.m_percent == 0.0, !(flow > 0.0));
                    }
                }
    const CFilling flat = FillShape(Circle(0.3), 0.01, {0.0, 0.001, 1e-6});
    EXPECT_TRUE(flat.m_isOverfull);
    EXPECT_EQ(flat.m_percent, Infinity);
    EXPECT_EQ(flat.m_velocity, 0.0);
    EXPECT_EQ(LeastDiameter(0.01, {0.0, 0.001, 1e-6}), Infinity);
    // A film of water thinner than k / 14.84 does not move by this formula.
    EXPECT_EQ(UniformVelocity(0.001 / 14.84, {0.01, 0.001, 1e-6}), 0.0);
}
