// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/workspace_core/IPluginInfo.h"

/// Registers everything that the module provides; the only list of all of it.
class CHCPluginInfo final : public OLMGis::Workspace::IPluginInfo {
public:
    void EnableMetadataHandlers() override;
    void RegisterDialogFactories() override;

    /// Data definitions, edition and language of the project must be in force: constructors of calculators read them.
    void RegisterCalculationItems() override;

    void RegisterPanelDialogs() override;
};
