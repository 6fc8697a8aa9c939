// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/workspace_core/WsManager.h"

#include "tests/support/TestProject.h"

#include <boost/make_shared.hpp>
#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace OLMGis::Workspace;

namespace {

boost::shared_ptr<CWsPanelDialogMetadata> Panel(const char* id, const char* text) {
    auto metadata = boost::make_shared<CWsPanelDialogMetadata>();
    metadata->SetDialogId(id);
    metadata->SetButtonText(text);
    return metadata;
}

} // namespace

TEST(WsManager, PanelsAreInTheOrderOfRegistrationEachOnce) {
    const CTestProject project;
    CWsManager& manager = *CWsManager::Instance();
    for (const auto& panel : {Panel("PANEL_B", "first"), Panel("PANEL_A", "second"), Panel("panel_b", "taken"),
                              Panel("", "nameless"), boost::shared_ptr<CWsPanelDialogMetadata>()})
        manager.RegisterWsPanelDialog(panel);
    ASSERT_EQ(manager.GetPanelDialogs().size(), 2U);
    EXPECT_EQ(manager.GetPanelDialogs()[0]->GetButtonText(), "first");
    EXPECT_EQ(manager.GetPanelDialogs()[1]->GetButtonText(), "second");
    EXPECT_EQ(manager.GetPanelDialog("Panel_A"), manager.GetPanelDialogs()[1]);
    EXPECT_FALSE(manager.GetPanelDialog("PANEL_C"));
}

TEST(WsManager, LinesAreKeptAndShownAtOnceByTheProjectThatLoggedThem) {
    const CTestProject project;
    CWsManager& manager = *CWsManager::Instance();
    std::vector<std::string> shown;
    manager.LogMessage(CLogLine::NothingStored, "before anybody listens");
    manager.SetLogListener([&shown](const CLogLine& line) { shown.push_back(line.m_text); });
    manager.LogMessage(CLogLine::Stored, "stored", 2, "AB", 77, 6);
    {
        const CTestProject other;
        CWsManager::Instance()->LogMessage(CLogLine::Stored, "elsewhere");
    }
    ASSERT_TRUE(manager.SetLogListener({}));
    manager.LogMessage(CLogLine::Stored, "nobody listens");
    EXPECT_EQ(shown, std::vector<std::string>{"stored"});
    ASSERT_EQ(manager.GetLog().size(), 3U);
    const CLogLine& plain = manager.GetLog()[0];
    EXPECT_EQ(plain.m_type, 4);
    EXPECT_TRUE(plain.m_entityType == 0 && plain.m_entityName.empty() && plain.m_objectId == 0 &&
                plain.m_selectionType == 0);
    const CLogLine& full = manager.GetLog()[1];
    EXPECT_TRUE(full.m_type == 1 && full.m_entityType == 2 && full.m_entityName == "AB" && full.m_objectId == 77 &&
                full.m_selectionType == 6);
}

TEST(WsManager, ALongSessionKeepsTheYoungestLines) {
    const CTestProject project;
    CWsManager& manager = *CWsManager::Instance();
    for (std::size_t i = 0; i < CWsManager::MostLogLines + 3; ++i)
        manager.LogMessage(CLogLine::Stored, std::to_string(i));
    ASSERT_EQ(manager.GetLog().size(), CWsManager::MostLogLines);
    EXPECT_EQ(manager.GetLog().front().m_text, "3");
    EXPECT_EQ(manager.GetLog().back().m_text, std::to_string(CWsManager::MostLogLines + 2));
}

TEST(WsManager, AListenerMayReplaceItselfAndLog) {
    const CTestProject project;
    CWsManager& manager = *CWsManager::Instance();
    manager.SetLogListener([&manager](const CLogLine& line) {
        manager.SetLogListener({});
        manager.LogMessage(CLogLine::Stored, "seen: " + line.m_text);
    });
    manager.LogMessage(CLogLine::Stored, "once");
    ASSERT_EQ(manager.GetLog().size(), 2U);
    EXPECT_EQ(manager.GetLog()[1].m_text, "seen: once");
}
