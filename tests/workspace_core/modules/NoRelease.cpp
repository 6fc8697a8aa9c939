// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors

// A module without the function that ends it.
#include "host/workspace_core/ModuleExports.h"

OLMGis::Workspace::IPluginInfo* OLMPluginInfoProvider() {
    static OLMGis::Workspace::IPluginInfo info;
    return &info;
}
