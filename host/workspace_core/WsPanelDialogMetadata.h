// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <string>
#include <string_view>

namespace OLMGis::Workspace {

/// What the workspace must know of a panel before the panel exists: by which id to ask for it and how its button looks.
class CWsPanelDialogMetadata {
public:
    /// The id that the dialog factory knows. Ids compare without case.
    void SetDialogId(std::string_view id) { m_dialogId = id; }
    const std::string& GetDialogId() const { return m_dialogId; }

    /// Place among the panels' buttons, counted by the workspace; lower ones come first.
    void SetPanelPosition(int position) { m_panelPosition = position; }
    int GetPanelPosition() const { return m_panelPosition; }

    /// Icon id of the installation, see CModuleConfiguration::GetIcon.
    void SetButtonIconId(std::string_view id) { m_buttonIconId = id; }
    const std::string& GetButtonIconId() const { return m_buttonIconId; }

    void SetTooltipText(std::string_view text) { m_tooltipText = text; }
    const std::string& GetTooltipText() const { return m_tooltipText; }

    void SetButtonText(std::string_view text) { m_buttonText = text; }
    const std::string& GetButtonText() const { return m_buttonText; }

private:
    std::string m_dialogId;
    std::string m_buttonIconId;
    std::string m_tooltipText;
    std::string m_buttonText;
    int m_panelPosition = 0;
};

} // namespace OLMGis::Workspace
