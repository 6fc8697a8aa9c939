// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/gis_core/DataConfiguration.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "tests/support/TestProject.h"

#include <gtest/gtest.h>

using namespace OLMGis;

TEST(DataConfiguration, EveryDefinitionHasATextAndKeysAreFound) {
    CTestProject project;
    const auto* configuration = Data::CDataConfiguration::Instance();
    ASSERT_EQ(configuration->GetLoadError(), "");
    ASSERT_GT(configuration->GetDataDefinitions().size(), 60U);
    for (const auto& definition : configuration->GetDataDefinitions()) {
        EXPECT_EQ(configuration->GetDataDefinitionByID(definition->m_id), definition.get());
        const std::string& label = Utility::CModuleConfiguration::Instance()->GetMsg(definition->m_labelMessage);
        EXPECT_NE(label, definition->m_id) << "no text may be its own key";
        EXPECT_NE(label[0], '#') << definition->m_id;
    }
    EXPECT_EQ(configuration->GetDataDefinitionByID("flow_total"), nullptr) << "case counts";
}
