// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/workspace_core/WsPanelDialog.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace OLMGis::Workspace {

/// Makes the dialogs of a module for the workspace, which asks for them by id. Ids compare without case. What a factory
/// does not fill does nothing.
class IWsDialogFactory {
public:
    IWsDialogFactory() = default;
    virtual ~IWsDialogFactory();
    IWsDialogFactory(const IWsDialogFactory&) = delete;
    IWsDialogFactory& operator=(const IWsDialogFactory&) = delete;

    /// Opens a dialog that is no panel; 0 when the factory makes none of this id.
    virtual int CreateWsDialog(std::string_view /*dialogId*/) { return 0; }

    /// Brings an open dialog to the front.
    virtual void ActivateWsDialog(std::string_view /*dialogId*/) {}

    /// A new panel; null for an id that is not the factory's and where the dialogs of the module are not loaded.
    /// parentWindow: in the toolkit of the workspace (a QWidget*), may be null.
    virtual std::unique_ptr<CWsPanelDialog> CreateWsPanelDialog(void* /*parentWindow*/, std::string_view /*dialogId*/) {
        return nullptr;
    }

    /// Appends the ids of all dialogs that the factory knows.
    virtual void GetWsDialogIds(std::vector<std::string>& /*ids*/) const {}
};

} // namespace OLMGis::Workspace
