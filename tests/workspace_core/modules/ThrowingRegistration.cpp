// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors

// A module that fails half-way: objects of its own are registered already, and what it throws is of a type of its own.
#include "host/gis_core/NotificationFramework.h"
#include "host/workspace_core/ModuleExports.h"
#include "host/workspace_core/WsManager.h"

#include <boost/make_shared.hpp>

#include <exception>

using namespace OLMGis;

namespace {

class CResponder final : public Notification::IEventResponder {
public:
    void OnEvent(const Notification::CEvent& /*event*/) override {}
};

class CFailure final : public std::exception {
public:
    const char* what() const noexcept override { return "no curves for Rivertown"; }
};

class CPluginInfo final : public Workspace::IPluginInfo {
public:
    void RegisterListeners() override {
        Notification::CNotificationFramework::Instance()->RegisterEventResponder(new CResponder);
        const auto metadata = boost::make_shared<Workspace::CWsPanelDialogMetadata>();
        metadata->SetDialogId("FAILING_PANEL");
        Workspace::CWsManager::Instance()->RegisterWsPanelDialog(metadata);
    }
    void RegisterCalculationItems() override { throw CFailure(); }
};

CPluginInfo theInfo;

} // namespace

Workspace::IPluginInfo* OLMPluginInfoProvider() {
    return &theInfo;
}

void OLMPluginInfoRelease() {
    throw 42; // not an exception class at all, and in the middle of cleaning up
}
