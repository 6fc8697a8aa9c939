// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/workspace_core/ModuleExports.h"

#include "plugin/HCPluginInfo.h"
#include "plugin/HydraulicCalculationsWsPluginApp.h"

namespace {

/// The one application object of the module.
CHydraulicCalculationsWsPluginApp theApplication;

/// What the provider hands out: made when first asked for, at most one. Main thread only.
CHCPluginInfo* thePluginInfo = nullptr;

} // namespace

extern "C" {

int acrxEntryPoint(unsigned message, void* packet) {
    return theApplication.EntryPoint(message, packet);
}

int acrxGetApiVersion() {
    return OLMGis::Workspace::ModuleApiVersion;
}

OLMGis::Workspace::IPluginInfo* OLMPluginInfoProvider() {
    if (thePluginInfo == nullptr)
        thePluginInfo = new CHCPluginInfo;
    return thePluginInfo;
}

void OLMPluginInfoRelease() {
    delete thePluginInfo;
    thePluginInfo = nullptr;
}
}
