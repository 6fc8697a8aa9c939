// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors

// A module whose application does not want to be loaded.
#include "host/workspace_core/ModuleExports.h"

static OLMGis::Workspace::IPluginInfo theInfo;

int acrxEntryPoint(unsigned /*message*/, void* /*packet*/) {
    return 3;
}

OLMGis::Workspace::IPluginInfo* OLMPluginInfoProvider() {
    return &theInfo;
}

void OLMPluginInfoRelease() {}
