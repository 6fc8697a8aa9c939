// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/workspace_core/ModuleExports.h"

#include "host/workspace_core/ModuleApplication.h"
#include "host/workspace_core/ModuleFile.h"

#include <gtest/gtest.h>

#include <string>
#include <typeinfo>

using namespace OLMGis::Workspace;

namespace {

/// The module's file with its exports, looked up as any loader does.
class ModuleExports : public testing::Test {
protected:
    OLMGis::Utility::Result<CModuleFile> m_file = CModuleFile::Open(DRENOVA_MODULE_FILE);
    decltype(&acrxEntryPoint) m_entryPoint = m_file->Find<decltype(acrxEntryPoint)>("acrxEntryPoint");
    decltype(&OLMPluginInfoProvider) m_provide = m_file->Find<decltype(OLMPluginInfoProvider)>("OLMPluginInfoProvider");
    decltype(&OLMPluginInfoRelease) m_release = m_file->Find<decltype(OLMPluginInfoRelease)>("OLMPluginInfoRelease");
};

class CLinker final : public AcRxDynamicLinker {
public:
    std::string m_declared;
    void UnlockApplication() override { m_declared += "unlock "; }
    void RegisterAppDocumentAware() override { m_declared += "documents "; }
};

} // namespace

TEST_F(ModuleExports, TheProviderKeepsItsObjectUntilTheRelease) {
    m_release(); // without a provider call it does nothing
    IPluginInfo* const first = m_provide();
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(m_provide(), first);
    m_release();
    IPluginInfo* const second = m_provide();
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(second->GetTopologyName(1), "") << "an object that works";
    m_release();
    m_release();
}

TEST_F(ModuleExports, TheApplicationDeclaresItselfWhenItIsLoadedAndDoesNothingElse) {
    CLinker linker;
    CApplicationPacket packet{&linker, m_file->GetHandle()};
    for (const unsigned message : {0U, 2U, 3U, 4U, 5U, 6U, 7U, 8U, 9U, 10U, 11U, 12U, 13U, 14U, 15U, 16U, 0xFFFFFFFFU})
        EXPECT_EQ(m_entryPoint(message, &packet), 0) << message;
    EXPECT_EQ(linker.m_declared, "");
    EXPECT_EQ(m_entryPoint(LoadMessage, &packet), 0);
    EXPECT_EQ(linker.m_declared, "unlock documents ");
    EXPECT_EQ(m_entryPoint(LoadMessage, nullptr), 0);
}

TEST_F(ModuleExports, NothingElseIsSeenFromOutside) {
    const auto getVersion = m_file->Find<decltype(acrxGetApiVersion)>("acrxGetApiVersion");
    ASSERT_NE(getVersion, nullptr);
    EXPECT_EQ(getVersion(), ModuleApiVersion);
    // A visible class would have its virtual table and type information under these names.
    const IPluginInfo& info = *m_provide();
    const std::string name = typeid(info).name();
    EXPECT_EQ(m_file->Find<void()>(("_ZTV" + name).c_str()), nullptr) << name;
    EXPECT_EQ(m_file->Find<void()>(("_ZTI" + name).c_str()), nullptr) << name;
    m_release();
}
