// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors

// A module for other tables of operations than ours: none of them may be called.
#include "host/workspace_core/ModuleExports.h"

#include <cstdlib>

int acrxGetApiVersion() {
    return 999;
}

int acrxEntryPoint(unsigned /*message*/, void* /*packet*/) {
    std::abort();
}

OLMGis::Workspace::IPluginInfo* OLMPluginInfoProvider() {
    std::abort();
}

void OLMPluginInfoRelease() {
    std::abort();
}
