// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors

// A module whose provider gives nothing.
#include "host/workspace_core/ModuleExports.h"

OLMGis::Workspace::IPluginInfo* OLMPluginInfoProvider() {
    return nullptr;
}

void OLMPluginInfoRelease() {}
