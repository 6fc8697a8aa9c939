// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors

// A whole module in one file, to begin a new one from. It brings a panel and listens to the network. Built as
//
//     add_library(my_plugin MODULE MinimalPlugin.cpp)
//     target_link_libraries(my_plugin PRIVATE drenova_workspace_core)
//
// with hidden visibility, so that nothing but its exports is seen from outside.
#include "host/gis_core/NotificationFramework.h"
#include "host/workspace_core/ModuleExports.h"
#include "host/workspace_core/WsManager.h"

#include <boost/make_shared.hpp>

using namespace OLMGis;

namespace {

class CResponder final : public Notification::IEventResponder {
public:
    void OnEvent(const Notification::CEvent& event) override {
        Workspace::CWsManager::Instance()->LogMessage(Workspace::CLogLine::Stored, "minimal: gone: " + event.m_guid);
    }
};

/// What is not registered here is not needed: every operation of the base does nothing.
class CMinimalPluginInfo final : public Workspace::IPluginInfo {
public:
    void RegisterListeners() override {
        // The framework takes the responder over.
        Notification::CNotificationFramework::Instance()->RegisterEventResponder(new CResponder);
    }

    void RegisterPanelDialogs() override {
        const auto metadata = boost::make_shared<Workspace::CWsPanelDialogMetadata>();
        metadata->SetDialogId("MINIMAL_PANEL");
        metadata->SetButtonText("Minimal");
        Workspace::CWsManager::Instance()->RegisterWsPanelDialog(metadata);
    }
};

CMinimalPluginInfo* thePluginInfo = nullptr;

} // namespace

extern "C" {

Workspace::IPluginInfo* OLMPluginInfoProvider() {
    if (thePluginInfo == nullptr)
        thePluginInfo = new CMinimalPluginInfo;
    return thePluginInfo;
}

void OLMPluginInfoRelease() {
    delete thePluginInfo;
    thePluginInfo = nullptr;
}
}
