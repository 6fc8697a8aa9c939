// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors

// The dialogs of TalkingPlugin: a panel that logs its life, and a modal dialog that hands over its model.
#include "host/workspace_core/DialogTable.h"
#include "host/workspace_core/WsManager.h"

#include <iterator>
#include <memory>
#include <string_view>
#include <utility>

using namespace OLMGis::Workspace;

namespace {

void Say(std::string_view text) {
    CWsManager::Instance()->LogMessage(CLogLine::Stored, text);
}

class CPanel final : public CWsPanelDialog {
public:
    CPanel(std::unique_ptr<CDialogModel> model, void* parentWindow)
        : CWsPanelDialog("TALKING_PANEL"), m_model(std::move(model)), m_parentWindow(parentWindow) {
        Say("CWsPanelDialog");
    }
    ~CPanel() override { Say("~CWsPanelDialog"); }
    void* GetWidget() const override { return m_parentWindow; }

private:
    std::unique_ptr<CDialogModel> m_model;
    void* m_parentWindow;
};

constexpr CDialogMaker Makers[] = {
    {"TALKING_PANEL",
     [](std::unique_ptr<CDialogModel> model, void* parentWindow) -> std::unique_ptr<CWsPanelDialog> {
         return std::make_unique<CPanel>(std::move(model), parentWindow);
     },
     nullptr},
    {"TALKING_DIALOG", nullptr,
     [](CDialogModel& /*model*/) {
         Say("TALKING_DIALOG");
         return true;
     }},
};

} // namespace

const CDialogTable* OLMDialogTableProvider() {
    static constexpr CDialogTable table{DialogTableVersion, Makers, std::size(Makers)};
    return &table;
}
