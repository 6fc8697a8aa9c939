// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/NotificationFramework.h"
#include "host/network_core/FunctionalAnalysisManager.h"
#include "host/sewage_calculations/NetworkChecks.h"
#include "host/sewage_core/FlowCalculatorManager.h"
#include "host/sewage_core/IDensityUser.h"
#include "host/workspace_core/DialogTable.h"
#include "host/workspace_core/ModuleLoader.h"
#include "host/workspace_core/WsManager.h"
#include "tests/support/TestProject.h"
#include "tests/support/TextNetwork.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <dlfcn.h>
#include <string>
#include <vector>

using namespace OLMGis;
using Sewage::CFlowCalculatorManager;
using testing::ElementsAre;
using testing::IsEmpty;
using Workspace::CModuleLoader;
using Workspace::CWsManager;

namespace {

std::vector<std::string> CalculatorKeys() {
    std::vector<std::string> keys;
    for (const auto& calculator : CFlowCalculatorManager::Instance()->GetCalculators())
        keys.push_back(calculator->GetKey());
    return keys;
}

std::vector<std::string> ItemKeys() {
    std::vector<std::string> keys;
    for (const auto& item : Topology::CFunctionalAnalysisManager::Instance()->GetItems())
        keys.push_back(item->GetItemKey());
    return keys;
}

std::size_t Responders() {
    return Notification::CNotificationFramework::Instance()->GetResponderCount();
}

/// A project with the module loaded; the test fails when it cannot be loaded.
struct CStage {
    CTestProject project;
    Utility::Result<CModuleLoader> module = CModuleLoader::Load(DRENOVA_MODULE_FILE);

    CStage() { EXPECT_TRUE(module) << (module ? "" : module.GetError().message); }
};

} // namespace

TEST(PluginRegistration, CalculatorsAndChecksAreListedInOrderAndComeAndGoWithTheModule) {
    CStage stage;
    for (int round = 0; round < 2; ++round) {
        EXPECT_THAT(CalculatorKeys(), ElementsAre("001_RAIN_ITP", "00_RAIN_SIMPLE", "01_WASTE_AREAS",
                                                  "01_WASTE_PERCENT", "02_ADDITIONAL", "03_FC_TRANSIT", "04_FC_TOTAL"));
        EXPECT_THAT(ItemKeys(),
                    ElementsAre("0002_MIN_PIPE_DEPTH", "0003_MIN_LL_SLOPE", "0004_MIN_SLOPE", "0006_NEGATIVE_CASCADE",
                                "0005_MULTI_OUTLET_SECT", "0007_SMALLER_DIAMETERS", "0005_MANHOLE_PIPE"));
        EXPECT_EQ(Responders(), 1U);
        EXPECT_TRUE(stage.module->IsUnloadable() && stage.module->IsDocumentAware());
        stage.module->Release();
        EXPECT_THAT(CalculatorKeys(), IsEmpty());
        EXPECT_THAT(ItemKeys(), IsEmpty());
        EXPECT_EQ(Responders(), 0U);
        EXPECT_THAT(CWsManager::Instance()->GetPanelDialogs(), IsEmpty());
        EXPECT_EQ(dlopen(DRENOVA_MODULE_FILE, RTLD_NOW | RTLD_NOLOAD), nullptr) << "the code is unloaded";
        EXPECT_EQ(dlopen(DRENOVA_MODULE_FILE, RTLD_NOW | RTLD_NOLOAD), nullptr) << "the code is no longer in memory";
        stage.module = CModuleLoader::Load(DRENOVA_MODULE_FILE);
        ASSERT_TRUE(stage.module);
    }
}

TEST(PluginRegistration, OurOwnChecksFollowThoseOfTheModule) {
    const CStage stage;
    {
        const Sewage::CNetworkChecks checks;
        const auto keys = ItemKeys();
        ASSERT_EQ(keys.size(), 16U);
        EXPECT_EQ(keys[6], "0005_MANHOLE_PIPE");
        EXPECT_THAT(std::vector(keys.begin() + 7, keys.end()),
                    ElementsAre("0008_LEVEL_SLOPE", "0009_RING", "0010_NO_OUTLET", "0011_COMPONENTS", "0012_OVERFULL",
                                "0013_VELOCITY", "0014_SHEAR_STRESS", "0015_MISSING_INPUT", "0016_OUTDATED_RESULT"));
        for (std::size_t i = 0; i < keys.size(); ++i)
            EXPECT_EQ(Sewage::CNetworkChecks::Has(keys[i]), i >= 7) << keys[i];
    }
    EXPECT_EQ(ItemKeys().size(), 7U) << "they leave the project alone";
}

TEST(PluginRegistration, RegistersThePanelAndTheHandlerOfTerrainTypes) {
    const CStage stage;
    EXPECT_TRUE(Utility::CModuleConfiguration::Instance()->IsMetadataHandlerEnabled("002_TERRAINTYPE"));
    ASSERT_EQ(CWsManager::Instance()->GetPanelDialogs().size(), 1U);
    const auto panel = CWsManager::Instance()->GetPanelDialog("WS_HCALCULATION_PANEL");
    ASSERT_TRUE(panel);
    EXPECT_EQ(panel->GetPanelPosition(), 3);
    EXPECT_EQ(panel->GetButtonIconId(), "IDI_SEWAGE");
    EXPECT_EQ(panel->GetTooltipText(), "Drenova");
    EXPECT_EQ(panel->GetButtonText(), "Drenova");
    EXPECT_NE(Utility::CModuleConfiguration::Instance()->GetIcon(panel->GetButtonIconId()), "") << "there is a picture";
}

TEST(PluginRegistration, WithoutItsDialogsThePanelIsNull) {
    const CStage stage;
    for (const char* id : {"WS_HCALCULATION_PANEL", "ws_hcalculation_panel", "DLG_SBW_SETUP", "OTHER"})
        EXPECT_EQ(CWsManager::Instance()->CreateWsPanelDialog(nullptr, id), nullptr) << id;
}

#ifdef DRENOVA_DIALOGS_FILE
TEST(PluginRegistration, TheDialogsAreLoadedFromTheFileBesideTheModuleAndStay) {
    CStage stage;
    EXPECT_EQ(CModuleLoader::DialogsPath(DRENOVA_MODULE_FILE), DRENOVA_DIALOGS_FILE);
    for (int round = 0; round < 2; ++round) {
        const auto loaded = stage.module->LoadDialogs(DRENOVA_DIALOGS_FILE);
        ASSERT_TRUE(loaded) << loaded.GetError().message;
        EXPECT_TRUE(Workspace::CDialogMakers::Instance()->HasTable());
        stage.module->Release();
        EXPECT_FALSE(Workspace::CDialogMakers::Instance()->HasTable());
        EXPECT_EQ(dlopen(DRENOVA_MODULE_FILE, RTLD_NOW | RTLD_NOLOAD), nullptr) << "the dialogs do not hold the module";
        stage.module = CModuleLoader::Load(DRENOVA_MODULE_FILE);
        ASSERT_TRUE(stage.module);
    }
}
#endif

TEST(PluginRegistration, AProjectOfAnotherEditionLoadsTheModuleAgain) {
    CStage stage;
    const auto firstOutput = [] {
        return CFlowCalculatorManager::Instance()->GetCalculator("01_WASTE_AREAS")->GetOutputDefinitions().at(0)->m_id;
    };
    EXPECT_EQ(firstOutput(), "FLOW_WASTE_HOME");
    stage.module->Release();
    Utility::CModuleConfiguration::Instance()->SetEdition("BLG");
    stage.module = CModuleLoader::Load(DRENOVA_MODULE_FILE);
    ASSERT_TRUE(stage.module) << stage.module.GetError().message;
    EXPECT_EQ(firstOutput(), "FLOW_BLG_WASTE_HOME_KOMAX");
}

TEST(PluginRegistration, ARegisteredCalculatorCalculates) {
    const CStage stage;
    const CTextNetwork net("A---B---C");
    const auto calculator = CFlowCalculatorManager::Instance()->GetCalculator("01_WASTE_PERCENT");
    ASSERT_TRUE(calculator);
    const auto parameters = calculator->CreateParameters();
    EXPECT_EQ(calculator->Calculate(net.Sections(), parameters.get(), 1, nullptr, nullptr), 1);
    EXPECT_GT(net.Get("AB", "FLOW_WASTE_PER").AsDouble(), 0.0);
}

TEST(PluginRegistration, CalculatorsThatUseDensitiesAnswerThroughTheModuleBoundary) {
    const CStage stage;
    std::vector<std::string> keys;
    for (const auto& calculator : CFlowCalculatorManager::Instance()->GetCalculators())
        if (const auto* user = dynamic_cast<const Sewage::IDensityUser*>(calculator.get());
            user != nullptr && user->UsesDensities())
            keys.push_back(calculator->GetKey());
    EXPECT_THAT(keys, ElementsAre("01_WASTE_AREAS", "02_ADDITIONAL"));
}

TEST(PluginRegistration, ANodeLosesItsMainOutletWhenTheSectionIsDeletedAndTheModuleIsLoaded) {
    for (const bool isLoaded : {true, false}) {
        CStage stage;
        if (!isLoaded)
            stage.module->Release();
        CTextNetwork net("A---B---C\nB---D");
        const auto outlet = net.Section("BD");
        ASSERT_NE(Data::CDataRW::Write("MAIN_SECT_OUT", net.Node('B'), outlet->GetGuid(), nullptr), 0);
        ASSERT_EQ(net.Topology().RemoveSection(*outlet), 1);
        Data::CDataBox mainOutlet;
        Data::CDataRW::Read("MAIN_SECT_OUT", net.Node('B'), mainOutlet, 0, nullptr);
        EXPECT_EQ(mainOutlet.IsNotNull(), !isLoaded);
    }
}
