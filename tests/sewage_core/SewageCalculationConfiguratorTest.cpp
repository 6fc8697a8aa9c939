// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/sewage_core/SewageCalculationConfigurator.h"

#include "host/gis_core/ProjectSettings.h"
#include "tests/support/TestProject.h"

#include <gtest/gtest.h>

#include <utility>

using namespace OLMGis;

TEST(SewageCalculationConfigurator, TheProjectAllowsTheTurkishExtension) {
    for (const auto& [setting, expected] : {std::pair{"", 0}, {"0", 0}, {"1", 1}, {" 2 ", 1}, {"yes", 0}}) {
        CTestProject project;
        EXPECT_EQ(Sewage::CSewageCalculationConfigurator::IsTurkishExtensionAllowed(), 0) << "never set";
        System::CProjectSettings::Instance()->Set(System::CProjectSettings::Turkish, setting);
        EXPECT_EQ(Sewage::CSewageCalculationConfigurator::IsTurkishExtensionAllowed(), expected) << setting;
    }
}
