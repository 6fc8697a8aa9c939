// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors

// Logs what it is asked to do. Its application does not unlock itself, so that its code stays in memory.
#include "host/workspace_core/DialogTable.h"
#include "host/workspace_core/ModuleApplication.h"
#include "host/workspace_core/ModuleExports.h"
#include "host/workspace_core/WsManager.h"

#include <boost/make_shared.hpp>

using namespace OLMGis;

namespace {

void Say(std::string_view text) {
    Workspace::CWsManager::Instance()->LogMessage(Workspace::CLogLine::Stored, text);
}

class CApplication final : public AcRxArxApp {
    int OnLoad(void* packet) override {
        AcRxArxApp::OnLoad(packet);
        Say(GetInstance() == nullptr ? "load without a handle" : "load");
        return 0;
    }
    int OnUnload(void* /*packet*/) override {
        Say("unload");
        return 0;
    }
} theApplication;

class CFactory final : public Workspace::IWsDialogFactory {
public:
    ~CFactory() override { Say("~IWsDialogFactory"); }
    std::unique_ptr<Workspace::CWsPanelDialog> CreateWsPanelDialog(void* parentWindow, std::string_view id) override {
        const Workspace::CDialogMaker* const maker = Workspace::CDialogMakers::Instance()->Find(id);
        return maker == nullptr ? nullptr : maker->m_makePanel(nullptr, parentWindow);
    }
};

class CPluginInfo final : public Workspace::IPluginInfo {
public:
    ~CPluginInfo() override { Say("~IPluginInfo"); }
    void EnableMetadataHandlers() override { Say("EnableMetadataHandlers"); }
    void RegisterTopologyTypes() override { Say("RegisterTopologyTypes"); }
    void RegisterEntityTypes() override { Say("RegisterEntityTypes"); }
    void RegisterCommands() override { Say("RegisterCommands"); }
    void RegisterDialogFactories() override {
        Say("RegisterDialogFactories");
        Workspace::CWsManager::Instance()->RegisterWsDialogFactory(boost::make_shared<CFactory>());
    }
    void RegisterListeners() override { Say("RegisterListeners"); }
    void RegisterCalculationItems() override { Say("RegisterCalculationItems"); }
    void RegisterImporters() override { Say("RegisterImporters"); }
    void RegisterExporters() override { Say("RegisterExporters"); }
    void RegisterPanelDialogs() override { Say("RegisterPanelDialogs"); }
};

CPluginInfo* thePluginInfo = nullptr;

} // namespace

extern "C" {

int acrxEntryPoint(unsigned message, void* packet) {
    return theApplication.EntryPoint(message, packet);
}

Workspace::IPluginInfo* OLMPluginInfoProvider() {
    Say("OLMPluginInfoProvider");
    return thePluginInfo = new CPluginInfo;
}

void OLMPluginInfoRelease() {
    delete thePluginInfo;
    Say("OLMPluginInfoRelease");
}
}
