// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <string>
#include <string_view>

namespace OLMGis::Workspace {

/// A panel that a module shows in the workspace. Free of any toolkit: the workspace alone knows what the widget is.
/// Owned by CWsManager, which destroys it before the module is released.
class CWsPanelDialog {
public:
    explicit CWsPanelDialog(std::string_view dialogId) : m_dialogId(dialogId) {}
    virtual ~CWsPanelDialog();
    CWsPanelDialog(const CWsPanelDialog&) = delete;
    CWsPanelDialog& operator=(const CWsPanelDialog&) = delete;

    const std::string& GetDialogId() const { return m_dialogId; }

    /// The panel's window in the toolkit of the workspace (a QWidget*); never null. Owned by the panel.
    virtual void* GetWidget() const = 0;

private:
    std::string m_dialogId;
};

} // namespace OLMGis::Workspace
