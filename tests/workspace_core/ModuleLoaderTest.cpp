// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/workspace_core/ModuleLoader.h"

#include "host/gis_core/ModuleScope.h"
#include "host/gis_core/NotificationFramework.h"
#include "host/workspace_core/DialogTable.h"
#include "host/workspace_core/WsManager.h"
#include "tests/support/TestProject.h"

#include <boost/make_shared.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <dlfcn.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <sys/stat.h>
#include <vector>

using namespace OLMGis;
using Notification::CNotificationFramework;
using testing::ElementsAre;
using testing::HasSubstr;
using Utility::enmErrorKind;
using Utility::Result;
using Workspace::CModuleLoader;
using Workspace::CWsManager;

namespace {

std::string Fixture(const std::string& name) {
    return DRENOVA_FIXTURES "/" + name;
}

bool IsInMemory(const std::string& path) {
    void* const handle = dlopen(path.c_str(), RTLD_NOW | RTLD_NOLOAD);
    if (handle != nullptr)
        dlclose(handle);
    return handle != nullptr;
}

/// Ids of the registered panels.
std::vector<std::string> Panels() {
    std::vector<std::string> ids;
    for (const auto& panel : CWsManager::Instance()->GetPanelDialogs())
        ids.push_back(panel->GetDialogId());
    return ids;
}

std::vector<std::string> LoggedTexts() {
    std::vector<std::string> texts;
    for (const auto& line : CWsManager::Instance()->GetLog())
        texts.push_back(line.m_text);
    return texts;
}

std::size_t Responders() {
    return CNotificationFramework::Instance()->GetResponderCount();
}

void RegisterHostPanel() {
    const auto panel = boost::make_shared<Workspace::CWsPanelDialogMetadata>();
    panel->SetDialogId("HOST_PANEL");
    CWsManager::Instance()->RegisterWsPanelDialog(panel);
}

} // namespace

TEST(ModuleLoader, BrokenFilesAreRefusedWithAReasonAndLeaveNothing) {
    const struct {
        const char* name;
        enmErrorKind kind;
        const char* says;
    } cases[] = {
        {"Missing.so", enmErrorKind::Refused, "No such file"},
        {"Text.so/below", enmErrorKind::Refused, "Not a directory"},
        {"Folder.so", enmErrorKind::Refused, "no regular file"},
        {"Text.so", enmErrorKind::BadInput, "expected a module"},
        {"Empty.so", enmErrorKind::BadInput, "expected a module"},
        {"NoExports.so", enmErrorKind::BadInput, "without the function OLMPluginInfoProvider"},
        {"NoRelease.so", enmErrorKind::BadInput, "without the function OLMPluginInfoRelease"},
        {"NullProvider.so", enmErrorKind::BadInput, "OLMPluginInfoProvider of the module gave nothing"},
        {"ThrowingRegistration.so", enmErrorKind::BadInput, "RegisterCalculationItems of the module failed: no curves"},
        {"RefusingApplication.so", enmErrorKind::BadInput, "answered 3 to the load message, expected 0"},
        {"OtherVersion.so", enmErrorKind::BadInput, "found a module for version 999"},
    };
    const CTestProject project;
    RegisterHostPanel();
    for (const auto& [name, kind, says] : cases) {
        SCOPED_TRACE(name);
        const Result<CModuleLoader> loaded = CModuleLoader::Load(Fixture(name));
        ASSERT_FALSE(loaded);
        EXPECT_EQ(loaded.GetError().kind, kind);
        EXPECT_THAT(loaded.GetError().message, testing::StartsWith(Fixture(name) + ": "));
        EXPECT_THAT(loaded.GetError().message, HasSubstr(says));
        EXPECT_THAT(Panels(), ElementsAre("HOST_PANEL"));
        EXPECT_EQ(Responders(), 0U);
        EXPECT_FALSE(IsInMemory(Fixture(name)));
    }
    EXPECT_THAT(LoggedTexts(), ElementsAre(HasSubstr("OLMPluginInfoRelease of the module failed with an unknown")));
    EXPECT_TRUE(CModuleLoader::Load(Fixture("MinimalPlugin.so"))) << "after the failed ones";
    EXPECT_FALSE(CModuleLoader::Load(""));
}

TEST(ModuleLoader, AFileThatWasCutShortIsNoModule) {
    std::ifstream whole(Fixture("MinimalPlugin.so"), std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(whole), {}};
    ASSERT_GT(bytes.size(), 5000U);
    const CTestProject project;
    for (const std::size_t size : {std::size_t{20}, std::size_t{100}, std::size_t{4000}, bytes.size() / 4}) {
        const std::string path = Fixture("Cut.so");
        std::ofstream(path, std::ios::binary | std::ios::trunc).write(bytes.data(), static_cast<std::streamsize>(size));
        const Result<CModuleLoader> loaded = CModuleLoader::Load(path);
        ASSERT_FALSE(loaded) << size;
        EXPECT_EQ(loaded.GetError().kind, enmErrorKind::BadInput) << size;
    }
}

TEST(ModuleLoader, APipeIsNotWaitedFor) {
    const std::string path = Fixture("Pipe.so");
    std::filesystem::remove(path);
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    const CTestProject project;
    EXPECT_FALSE(CModuleLoader::Load(path));
}

TEST(ModuleLoader, TheLifeOfAModuleRunsInOrder) {
    const CTestProject project;
    {
        const Result<CModuleLoader> loaded = CModuleLoader::Load(Fixture("TalkingPlugin.so"));
        ASSERT_TRUE(loaded) << loaded.GetError().message;
        EXPECT_FALSE(loaded.Value().IsUnloadable());
        EXPECT_FALSE(loaded.Value().IsDocumentAware());
    }
    EXPECT_THAT(LoggedTexts(), ElementsAre("load", "OLMPluginInfoProvider", "EnableMetadataHandlers",
                                           "RegisterTopologyTypes", "RegisterEntityTypes", "RegisterCommands",
                                           "RegisterDialogFactories", "RegisterListeners", "RegisterCalculationItems",
                                           "RegisterImporters", "RegisterExporters", "RegisterPanelDialogs",
                                           "~IPluginInfo", "OLMPluginInfoRelease", "~IWsDialogFactory", "unload"));
    EXPECT_TRUE(IsInMemory(Fixture("TalkingPlugin.so"))) << "a locked application keeps its code";
}

TEST(ModuleLoader, ItsDialogsComeAfterAModuleAndItsPanelsEndBeforeIt) {
    const std::string path = Fixture("TalkingPlugin.so");
    const std::string dialogs = CModuleLoader::DialogsPath(path);
    EXPECT_EQ(dialogs, Fixture("TalkingPluginDesktop.so"));
    int window = 0;
    for (int round = 0; round < 2; ++round) {
        const CTestProject project;
        CWsManager& manager = *CWsManager::Instance();
        Result<CModuleLoader> loaded = CModuleLoader::Load(path);
        ASSERT_TRUE(loaded) << loaded.GetError().message;
        EXPECT_EQ(manager.CreateWsPanelDialog(&window, "TALKING_PANEL"), nullptr) << "without the dialogs";
        const auto status = loaded->LoadDialogs(dialogs);
        ASSERT_TRUE(status) << status.GetError().message;
        Workspace::CWsPanelDialog* const panel = manager.CreateWsPanelDialog(&window, "talking_panel");
        ASSERT_NE(panel, nullptr);
        EXPECT_EQ(panel->GetWidget(), &window);
        EXPECT_EQ(manager.CreateWsPanelDialog(nullptr, "TALKING_PANEL"), panel) << "the one made before";
        EXPECT_EQ(manager.CreateWsPanelDialog(&window, "OTHER_PANEL"), nullptr);
        Workspace::CDialogModel model;
        EXPECT_TRUE(Workspace::CDialogMakers::Instance()->Find("TALKING_DIALOG")->m_runDialog(model));
        const auto again = loaded->LoadDialogs(dialogs);
        ASSERT_FALSE(again);
        EXPECT_THAT(again.GetError().message, HasSubstr("has its dialogs already"));
        {
            const CTestProject other; // the module goes in its own project, whichever is active
            loaded->Release();
        }
        std::vector<std::string> end = LoggedTexts();
        end.erase(end.begin(), std::find(end.begin(), end.end(), "CWsPanelDialog"));
        EXPECT_THAT(end, ElementsAre("CWsPanelDialog", "TALKING_DIALOG", "~CWsPanelDialog", "~IPluginInfo",
                                     "OLMPluginInfoRelease", "~IWsDialogFactory", "unload"));
        EXPECT_EQ(manager.CreateWsPanelDialog(&window, "TALKING_PANEL"), nullptr);
        EXPECT_FALSE(Workspace::CDialogMakers::Instance()->HasTable());
        EXPECT_TRUE(IsInMemory(dialogs)) << "the toolkit may still have addresses in it";
        EXPECT_FALSE(loaded->LoadDialogs(dialogs)) << "without a module";
    }
}

TEST(ModuleLoader, AFileWithoutFittingDialogsIsRefusedAndTheModuleStays) {
    const struct {
        const char* name;
        enmErrorKind kind;
        const char* says;
    } cases[] = {
        {"Missing.so", enmErrorKind::Refused, "No such file"},
        {"Text.so", enmErrorKind::BadInput, "expected a module"},
        {"MinimalPlugin.so", enmErrorKind::BadInput, "without the function OLMDialogTableProvider"},
        {"OtherDialogs.so", enmErrorKind::BadInput, "found dialogs of version 999"},
    };
    const CTestProject project;
    Result<CModuleLoader> loaded = CModuleLoader::Load(Fixture("TalkingPlugin.so"));
    ASSERT_TRUE(loaded);
    for (const auto& [name, kind, says] : cases) {
        const auto status = loaded->LoadDialogs(Fixture(name));
        ASSERT_FALSE(status) << name;
        EXPECT_EQ(status.GetError().kind, kind) << name;
        EXPECT_THAT(status.GetError().message, testing::AllOf(testing::StartsWith(Fixture(name)), HasSubstr(says)));
        EXPECT_FALSE(Workspace::CDialogMakers::Instance()->HasTable()) << name;
    }
    EXPECT_TRUE(loaded->LoadDialogs(Fixture("TalkingPluginDesktop.so"))) << "after the failed ones";
}

TEST(ModuleLoader, APanelEndsWithAProjectThatEndsBeforeItsModule) {
    auto project = std::make_unique<CTestProject>();
    Result<CModuleLoader> loaded = CModuleLoader::Load(Fixture("TalkingPlugin.so"));
    ASSERT_TRUE(loaded && loaded->LoadDialogs(Fixture("TalkingPluginDesktop.so")));
    ASSERT_NE(CWsManager::Instance()->CreateWsPanelDialog(nullptr, "TALKING_PANEL"), nullptr);
    project.reset();
    const auto late = loaded->LoadDialogs(Fixture("TalkingPluginDesktop.so"));
    ASSERT_FALSE(late);
    EXPECT_THAT(late.GetError().message, HasSubstr("the project of the module has ended"));
}

TEST(ModuleLoader, WhatAModuleRegisteredGoesWithItAndComesAgain) {
    const CTestProject project;
    RegisterHostPanel();
    const std::string path = Fixture("MinimalPlugin.so");
    for (int round = 0; round < 2; ++round) {
        Result<CModuleLoader> loaded = CModuleLoader::Load(path);
        ASSERT_TRUE(loaded) << loaded.GetError().message;
        EXPECT_TRUE(loaded->IsLoaded() && loaded->IsUnloadable());
        EXPECT_EQ(loaded->GetPath(), path);
        EXPECT_THAT(Panels(), ElementsAre("HOST_PANEL", "MINIMAL_PANEL"));
        CNotificationFramework::Instance()->Notify({Notification::enmEvent::EntityDeleted, "AB", ""});
        EXPECT_EQ(LoggedTexts().back(), "minimal: gone: AB");
        loaded->Release();
        EXPECT_FALSE(loaded->IsLoaded() || loaded->IsUnloadable());
        EXPECT_EQ(loaded->GetPath(), "");
        EXPECT_THAT(Panels(), ElementsAre("HOST_PANEL"));
        EXPECT_EQ(Responders(), 0U);
        EXPECT_FALSE(IsInMemory(path));
        loaded->Release();
    }
}

TEST(ModuleLoader, OneModuleAProject) {
    const CTestProject project;
    const Result<CModuleLoader> first = CModuleLoader::Load(Fixture("MinimalPlugin.so"));
    ASSERT_TRUE(first);
    const Result<CModuleLoader> second = CModuleLoader::Load(Fixture("TalkingPlugin.so"));
    ASSERT_FALSE(second);
    EXPECT_THAT(second.GetError().message, HasSubstr("TalkingPlugin.so"));
    EXPECT_THAT(second.GetError().message, HasSubstr("already"));
    EXPECT_THAT(Panels(), ElementsAre("MINIMAL_PANEL"));
}

TEST(ModuleLoader, TwoProjectsLoadTheSameFileEachForItself) {
    const std::string path = Fixture("MinimalPlugin.so");
    const CTestProject project;
    Result<CModuleLoader> ours = CModuleLoader::Load(path);
    ASSERT_TRUE(ours);
    {
        const CTestProject other;
        Result<CModuleLoader> theirs = CModuleLoader::Load(path);
        ASSERT_TRUE(theirs) << theirs.GetError().message;
        EXPECT_THAT(Panels(), ElementsAre("MINIMAL_PANEL"));
        ours->Release();
        EXPECT_THAT(Panels(), ElementsAre("MINIMAL_PANEL")) << "released in the project that it was loaded into";
        EXPECT_TRUE(IsInMemory(path));
    }
    EXPECT_TRUE(Panels().empty());
    EXPECT_FALSE(IsInMemory(path));
}

TEST(ModuleLoader, AProjectMayEndBeforeItsModule) {
    auto project = std::make_unique<CTestProject>();
    Result<CModuleLoader> loaded = CModuleLoader::Load(Fixture("MinimalPlugin.so"));
    ASSERT_TRUE(loaded);
    project.reset();
    loaded->Release();
    EXPECT_FALSE(IsInMemory(Fixture("MinimalPlugin.so")));
}

TEST(ModuleLoader, MovingHandsTheModuleOn) {
    const CTestProject project;
    Result<CModuleLoader> loaded = CModuleLoader::Load(Fixture("MinimalPlugin.so"));
    ASSERT_TRUE(loaded);
    CModuleLoader moved = std::move(loaded.Value());
    EXPECT_FALSE(loaded->IsLoaded());
    loaded->Release();
    EXPECT_THAT(Panels(), ElementsAre("MINIMAL_PANEL"));
    moved = std::move(loaded.Value());
    EXPECT_FALSE(moved.IsLoaded());
    EXPECT_TRUE(Panels().empty()) << "assigning an empty one lets the module go";
}

TEST(ModuleLoader, ARelativePathStartsAtTheCurrentFolder) {
    const CTestProject project;
    const auto former = std::filesystem::current_path();
    std::filesystem::current_path(DRENOVA_FIXTURES);
    EXPECT_TRUE(CModuleLoader::Load("MinimalPlugin.so"));
    std::filesystem::current_path(former);
    EXPECT_FALSE(CModuleLoader::Load("MinimalPlugin.so")) << "libraries are not searched for";
}

TEST(ModuleLoader, TheDefaultModuleIsBesideTheLibraries) {
    const std::filesystem::path path = CModuleLoader::DefaultModulePath();
    EXPECT_EQ(path.filename(), "OLMXSewageCalculationsWsPlugin.so");
    EXPECT_TRUE(std::filesystem::exists(path.parent_path() / "libdrenova_workspace_core.so"));
}
