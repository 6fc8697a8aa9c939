// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/workspace_core/DialogTable.h"

#include "tests/support/TestProject.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <vector>

using namespace OLMGis::Workspace;

namespace {

std::unique_ptr<CWsPanelDialog> MakePanel(std::unique_ptr<CDialogModel> /*model*/, void* /*parentWindow*/) {
    return nullptr;
}

bool RunDialog(CDialogModel& /*model*/) {
    return true;
}

} // namespace

TEST(DialogTable, AnUnfitTableIsRefusedAndTheFormerOneStays) {
    const struct {
        int version;
        std::vector<CDialogMaker> makers;
        const char* says;
    } cases[] = {
        {DialogTableVersion + 1, {{"OTHER", MakePanel, nullptr}}, "expected version"},
        {DialogTableVersion, {{"A", MakePanel, nullptr}, {nullptr, MakePanel, nullptr}}, "dialog 2: found no id"},
        {DialogTableVersion, {{"", MakePanel, nullptr}}, "dialog 1: found no id"},
        {DialogTableVersion, {{"A", MakePanel, nullptr}, {"a", nullptr, RunDialog}}, "the id a a second time"},
        {DialogTableVersion, {{"A", nullptr, nullptr}}, "dialog A: expected either"},
        {DialogTableVersion, {{"A", MakePanel, RunDialog}}, "dialog A: expected either"},
    };
    const CTestProject project;
    CDialogMakers& makers = *CDialogMakers::Instance();
    const CDialogMaker good[] = {{"PANEL", MakePanel, nullptr}, {"DIALOG", nullptr, RunDialog}};
    const CDialogTable table{DialogTableVersion, good, 2};
    EXPECT_EQ(makers.Find("PANEL"), nullptr);
    ASSERT_TRUE(makers.SetTable(&table));
    for (const auto& [version, list, says] : cases) {
        const CDialogTable unfit{version, list.data(), list.size()};
        const auto status = makers.SetTable(&unfit);
        ASSERT_FALSE(status) << says;
        EXPECT_THAT(status.GetError().message, testing::HasSubstr(says));
    }
    EXPECT_FALSE(makers.SetTable(nullptr));
    EXPECT_EQ(makers.Find("Dialog"), &good[1]) << "case is ignored";
    EXPECT_EQ(makers.Find("A"), nullptr);
    const CDialogTable empty{DialogTableVersion, nullptr, 0};
    EXPECT_TRUE(makers.SetTable(&empty)) << "a module may have no dialogs";
    EXPECT_TRUE(makers.HasTable());
    EXPECT_EQ(makers.Find("PANEL"), nullptr);
}
