// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "plugin/HCPluginFactory.h"

#include "host/gis_core/Utility.h"
#include "host/workspace_core/DialogTable.h"

using OLMGis::Workspace::CDialogMaker;
using OLMGis::Workspace::CDialogMakers;

namespace {

constexpr const char* PanelId = "WS_HCALCULATION_PANEL";
constexpr const char* StructureDialogId = "DLG_SBW_SETUP";

} // namespace

std::unique_ptr<OLMGis::Workspace::CWsPanelDialog> CHCPluginFactory::CreateWsPanelDialog(void* parentWindow,
                                                                                         std::string_view dialogId) {
    if (!OLMGis::Utility::CUtility::EqualIgnoreCase(dialogId, PanelId))
        return nullptr;
    const CDialogMaker* const maker = CDialogMakers::Instance()->Find(PanelId);
    if (maker == nullptr || maker->m_makePanel == nullptr)
        return nullptr;
    return maker->m_makePanel(nullptr, parentWindow);
}

void CHCPluginFactory::GetWsDialogIds(std::vector<std::string>& ids) const {
    ids.emplace_back(PanelId);
    ids.emplace_back(StructureDialogId);
}
