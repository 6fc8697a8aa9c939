// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <string>

namespace OLMGis::Workspace {

/// What a module hands to the workspace: operations that register everything it brings. The loader calls the
/// registering ones once, in the order of their declaration, which is the order of their slots and is fixed: modules
/// rely on it. Each does nothing unless a module fills it; none reports a result. A module unregisters nothing: see
/// CModuleScope.
class IPluginInfo {
public:
    IPluginInfo() = default;
    virtual ~IPluginInfo();
    IPluginInfo(const IPluginInfo&) = delete;
    IPluginInfo& operator=(const IPluginInfo&) = delete;

    virtual void EnableMetadataHandlers() {}
    virtual void RegisterTopologyTypes() {}
    virtual void RegisterEntityTypes() {}
    virtual void RegisterCommands() {}
    virtual void RegisterDialogFactories() {}
    virtual void RegisterListeners() {}
    virtual void RegisterCalculationItems() {}
    virtual void RegisterImporters() {}
    virtual void RegisterExporters() {}
    virtual void RegisterPanelDialogs() {}

    /// Texts and icon ids for types that the module brings to the workspace, by the type's number. Empty for a type
    /// that isn't the module's; so by default for all.
    virtual std::string GetTopologyName(int /*topologyType*/) const { return {}; }
    virtual std::string GetSystemFunctionName(int /*systemFunction*/) const { return {}; }
    virtual std::string GetEntityTypeName(int /*entityType*/) const { return {}; }
    virtual std::string GetEntityTypeIcon(int /*entityType*/) const { return {}; }
    virtual std::string GetSelectionTypeName(int /*selectionType*/) const { return {}; }
    virtual std::string GetSelectionToolTip(int /*selectionType*/) const { return {}; }
};

} // namespace OLMGis::Workspace
