// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/gis_core/DataConfiguration.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "tests/support/TestProject.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <fstream>
#include <set>
#include <sstream>

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

TEST(Messages, NoTextIsItsNumberOrEmpty) {
    std::ifstream stream(DRENOVA_SOURCE_DIR "/data/messages/en.json");
    const auto catalogue = nlohmann::json::parse(stream);
    ASSERT_GT(catalogue.size(), 200U);
    for (const auto& [number, text] : catalogue.items()) {
        EXPECT_NE(number, text.get<std::string>());
        EXPECT_FALSE(text.get<std::string>().empty()) << number;
    }
}
