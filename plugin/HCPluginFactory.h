// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/workspace_core/IWsDialogFactory.h"

/// Makes the calculations panel. The dialog of special structures is listed but opened by its command alone.
class CHCPluginFactory final : public OLMGis::Workspace::IWsDialogFactory {
public:
    /// Null without the module's dialogs, and for every id but WS_HCALCULATION_PANEL.
    std::unique_ptr<OLMGis::Workspace::CWsPanelDialog> CreateWsPanelDialog(void* parentWindow,
                                                                           std::string_view dialogId) override;

    void GetWsDialogIds(std::vector<std::string>& ids) const override;
};
