// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/workspace_core/IPluginInfo.h"

/// The functions that a module defines and the loader looks up by name. Everything else of a module stays hidden.
/// Called from the main thread only.
extern "C" {

/// Needed. The module's information object, made when there is none. Owned by the module; null is an error.
__attribute__((visibility("default"))) OLMGis::Workspace::IPluginInfo* OLMPluginInfoProvider();

/// Needed. Destroys the information object when there is one; a later provider call makes a new one.
__attribute__((visibility("default"))) void OLMPluginInfoRelease();

/// Optional. Hands a message to the application object (see AcRxDbxApp::EntryPoint). The answer 0 to the load message
/// means "done", any other that the module refuses to be loaded.
__attribute__((visibility("default"))) int acrxEntryPoint(unsigned message, void* packet);

/// Optional. The ModuleApiVersion that the module was built with.
__attribute__((visibility("default"))) int acrxGetApiVersion();
}
