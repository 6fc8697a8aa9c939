// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/workspace_core/IPluginInfo.h"

namespace OLMGis::Workspace {

// Out of line, all of them: the table of operations stands in this library once, and not in each module anew.
IPluginInfo::~IPluginInfo() = default;

void IPluginInfo::EnableMetadataHandlers() {}
void IPluginInfo::RegisterTopologyTypes() {}
void IPluginInfo::RegisterEntityTypes() {}
void IPluginInfo::RegisterCommands() {}
void IPluginInfo::RegisterDialogFactories() {}
void IPluginInfo::RegisterListeners() {}
void IPluginInfo::RegisterCalculationItems() {}
void IPluginInfo::RegisterImporters() {}
void IPluginInfo::RegisterExporters() {}
void IPluginInfo::RegisterPanelDialogs() {}

std::string IPluginInfo::GetTopologyName(int /*topologyType*/) const {
    return {};
}

std::string IPluginInfo::GetSystemFunctionName(int /*systemFunction*/) const {
    return {};
}

std::string IPluginInfo::GetEntityTypeName(int /*entityType*/) const {
    return {};
}

std::string IPluginInfo::GetEntityTypeIcon(int /*entityType*/) const {
    return {};
}

std::string IPluginInfo::GetSelectionTypeName(int /*selectionType*/) const {
    return {};
}

std::string IPluginInfo::GetSelectionToolTip(int /*selectionType*/) const {
    return {};
}

} // namespace OLMGis::Workspace
