// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/sewage_core/SewageHydraulics.h"

#include "host/network_core/CatalogManager.h"
#include "tests/support/ReferenceTable.h"
#include "tests/support/TestProject.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using OLMGis::Sewage::CSewageHydraulics;
using OLMGis::Topology::CCatalogItem;
using OLMGis::Topology::CCatalogManager;
using OLMGis::Topology::CPipeData;
using OLMGis::Topology::enmPipeShape;

namespace {

/// A project with one pipe of a shape, sizes in mm.
class CPipeProject {
public:
    explicit CPipeProject(CPipeData data) {
        auto* catalog = CCatalogManager::Instance()->GetCatalog("PIPE", 1);
        auto group = catalog->AddGroup("{11111111-0000-0000-0000-000000000000}", "group").Value();
        m_pipe = catalog->AddPipe(*group, Guid, "pipe", std::move(data)).Value();
    }
    static constexpr const char* Guid = "{22222222-0000-0000-0000-00000000000A}";
    boost::shared_ptr<CCatalogItem> m_pipe;

private:
    CTestProject m_project;
};

CPipeData Pipe(enmPipeShape shape, double width, double height) {
    CPipeData data;
    data.m_shape = shape;
    data.m_innerWidth = width;
    data.m_innerHeight = height;
    return data;
}

void Prepare(CSewageHydraulics& hydraulics, double flow, double slope, double roughness, double viscosity) {
    hydraulics.SetDPad(slope);
    hydraulics.SetDProtok(flow);
    hydraulics.SetDHrapavost(roughness);
    hydraulics.SetDViskozitet(viscosity);
}

void Calculate(CSewageHydraulics& hydraulics) {
    hydraulics.CalculateFillingHeight();
    hydraulics.CalculateVelocityForPartiallyFilled();
    hydraulics.CalculateHydraulicsValues();
}

} // namespace

TEST(SewageHydraulics, DerivedFillingsOfCataloguePipes) {
    CSewageHydraulics hydraulics;
    const auto prepare = [&hydraulics](const CCaseRow& row) {
        Prepare(hydraulics, row["flow_l/s"] / 1000.0, row["slope_permille"] / 1000.0, row["roughness_mm"] / 1000.0,
                row["viscosity"]);
    };
    for (const auto& row : ReadCases("hydraulics/depth_of_flow.txt")) {
        SCOPED_TRACE(row.Name());
        const CPipeProject project(Pipe(enmPipeShape::Circle, row["diameter_mm"], row["diameter_mm"]));
        prepare(row);
        hydraulics.SetStrPipeGuid("22222222-0000-0000-0000-00000000000a"); // GUIDs ignore case and braces
        Calculate(hydraulics);
        const double velocity = row["velocity_m/s"];
        EXPECT_NEAR(hydraulics.GetDPostotakIspunjnosti(), 100.0 * row["h/D"], 1e-6 * 100.0 * row["h/D"]);
        EXPECT_NEAR(hydraulics.GetDBrzinaDjelomicnoIsp(), velocity, 1e-6 * velocity);
    }
    for (const auto& row : ReadCases("hydraulics/partly_full_egg.txt")) {
        SCOPED_TRACE(row.Name());
        if (row["h/H"] > 0.9)
            continue; // above the depth that carries the full-pipe capacity
        const CPipeProject project(Pipe(enmPipeShape::Egg, row["width_mm"], row["height_mm"]));
        prepare(row);
        hydraulics.SetPipe(project.m_pipe.get());
        Calculate(hydraulics);
        if (hydraulics.IsOverfull())
            continue;
        const double height = row["height_mm"] / 1000.0;
        EXPECT_NEAR(hydraulics.GetDepth(), row["h/H"] * height, 1e-6 * height);
        EXPECT_NEAR(hydraulics.GetHydraulicRadius(), row["radius_m"], 1e-6 * row["radius_m"]);
        EXPECT_NEAR(hydraulics.GetFullBoreFlow(), row["flow_l/s"] / 1000.0 / row["Q/Qfull"], 1e-6);
    }
}

TEST(SewageHydraulics, ReferenceAndItemGiveTheSameBits) {
    CPipeData table = Pipe(enmPipeShape::Table, 700.0, 900.0);
    table.m_table = {{0.0, 100.0}, {333.0, 700.0}, {900.0, 50.0}};
    for (const CPipeData& data : {Pipe(enmPipeShape::Circle, 297.0, 297.0), Pipe(enmPipeShape::Egg, 700.0, 1050.0),
                                  Pipe(enmPipeShape::Box, 700.0, 300.0), table}) {
        const CPipeProject project(data);
        CSewageHydraulics byGuid, byItem;
        for (CSewageHydraulics* each : {&byGuid, &byItem})
            Prepare(*each, 0.0421, 0.0033, 0.00025, 1e-6);
        byGuid.SetStrPipeGuid(CPipeProject::Guid);
        byItem.SetPipe(project.m_pipe.get());
        Calculate(byGuid);
        Calculate(byItem);
        EXPECT_GT(byGuid.GetDPostotakIspunjnosti(), 0.0);
        EXPECT_EQ(byGuid.GetDPostotakIspunjnosti(), byItem.GetDPostotakIspunjnosti());
        EXPECT_EQ(byGuid.GetDBrzinaDjelomicnoIsp(), byItem.GetDBrzinaDjelomicnoIsp());
    }
}

TEST(SewageHydraulics, LeastDiameterNeedsNoPipe) {
    CSewageHydraulics hydraulics;
    Prepare(hydraulics, 0.1, 0.005, 0.001, 1e-6);
    hydraulics.CalculateMinimumDiameterMinHidRad();
    EXPECT_NEAR(hydraulics.GetDMinPromjerHidRad(), 0.3373175196, 1e-9); // derived at 40 digits
}

TEST(SewageHydraulics, WithoutCapacityAnyFlowIsOverfullAndDoesNotMove) {
    const struct {
        const char* name;
        double diameter, slope;
        bool hasPipe;
    } rows[] = {{"level", 300.0, 0.0, true},
                {"uphill", 300.0, -0.01, true},
                {"no diameter", 0.0, 0.01, true},
                {"no pipe", 300.0, 0.01, false}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const CPipeProject project(Pipe(enmPipeShape::Circle, row.diameter, row.diameter));
        CSewageHydraulics hydraulics;
        Prepare(hydraulics, 0.02, row.slope, 0.001, 1e-6);
        hydraulics.SetStrPipeGuid(CPipeProject::Guid);
        if (!row.hasPipe)
            hydraulics.SetPipe(nullptr);
        Calculate(hydraulics);
        hydraulics.CalculateMinimumDiameterMinHidRad();
        EXPECT_GT(hydraulics.GetDPostotakIspunjnosti(), 100.0);
        EXPECT_EQ(hydraulics.GetDBrzinaDjelomicnoIsp(), 0.0);
        EXPECT_TRUE(hydraulics.IsOverfull());
        EXPECT_EQ(hydraulics.GetFullBoreFlow(), 0.0);
        EXPECT_GT(hydraulics.GetDMinPromjerHidRad(), 0.0);
        hydraulics.SetDProtok(0.0); // no flow is not overfull
        Calculate(hydraulics);
        EXPECT_EQ(hydraulics.GetDPostotakIspunjnosti(), 0.0);
    }
}
