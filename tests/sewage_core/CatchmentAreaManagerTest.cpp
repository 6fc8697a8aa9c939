// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/sewage_core/CatchmentAreaManager.h"

#include "tests/support/TestProject.h"
#include "tests/support/TextNetwork.h"

#include <gtest/gtest.h>

using OLMGis::Data::CDataBox;
using OLMGis::Sewage::CCatchmentAreaManager;

TEST(CatchmentAreaManager, FiguresByKindAndAbsence) {
    CTestProject project;
    const CTextNetwork net("A-B-C-D-E-F");
    // AB: two households of different density, one rain; BC: one of every kind; CD: household without density;
    // DE: a density over no area; EF: nothing.
    net.AddCatchment("AB", 2, 2.0, 100.0);
    net.AddCatchment("AB", 2, 6.0, 20.0);
    net.AddCatchment("AB", 1, 3.0, {}, 0.5);
    net.AddCatchment("BC", 7, 1.5, 40.0, 0.8);
    net.AddCatchment("BC", 1, 1.0);
    net.AddCatchment("CD", 2, 5.0);
    net.AddCatchment("DE", 2, 0.0, 50.0);
    constexpr double Kept = 77.0;
    constexpr double None = CCatchmentAreaManager::NoDensity;
    const struct {
        const char* section;
        double household, industrial, corrected, density;
    } rows[] = {
        {"AB", 8.0, Kept, 1.5, (2.0 * 100.0 + 6.0 * 20.0) / 8.0},
        {"BC", 1.5, 1.5, 1.5 * 0.8 + 1.0, 40.0}, // without a coefficient the whole area counts
        {"CD", 5.0, Kept, Kept, None},
        {"DE", 0.0, Kept, Kept, None},
        {"EF", Kept, Kept, Kept, None},
    };
    const auto* manager = CCatchmentAreaManager::Instance();
    for (const auto& row : rows) {
        SCOPED_TRACE(row.section);
        const auto section = net.Section(row.section);
        double household = Kept, industrial = Kept, corrected = Kept, density = 0.0;
        EXPECT_EQ(manager->GetCATotalArea(section, household, 2), row.household == Kept ? 0 : 1);
        EXPECT_EQ(manager->GetCATotalArea(section, industrial, 4), row.industrial == Kept ? 0 : 1);
        EXPECT_EQ(manager->GetCATotalCorectedArea(section, corrected), row.corrected == Kept ? 0 : 1);
        manager->GetCAAverageDensityInhab(section, density);
        EXPECT_DOUBLE_EQ(household, row.household);
        EXPECT_DOUBLE_EQ(industrial, row.industrial);
        EXPECT_DOUBLE_EQ(corrected, row.corrected);
        EXPECT_DOUBLE_EQ(density, row.density);
    }
    double untouched = Kept;
    EXPECT_EQ(manager->GetCATotalArea(nullptr, untouched, 2), 0);
    EXPECT_EQ(manager->GetCAAverageDensityInhab(nullptr, untouched), 0);
    EXPECT_EQ(untouched, Kept);
}
