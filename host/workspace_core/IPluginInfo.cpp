// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/workspace_core/IPluginInfo.h"

namespace OLMGis::Workspace {

// Out of line, so that the table of operations exists once, in this library, and outlives every module.
IPluginInfo::~IPluginInfo() = default;

} // namespace OLMGis::Workspace
