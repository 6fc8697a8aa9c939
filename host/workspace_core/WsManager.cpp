// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/workspace_core/WsManager.h"

#include "host/gis_core/ModuleScope.h"
#include "host/gis_core/ProjectContext.h"
#include "host/gis_core/Utility.h"

#include <algorithm>
#include <string>
#include <utility>

namespace OLMGis::Workspace {

CWsManager* CWsManager::Instance() {
    static const System::CContextSlot<CWsManager> slot;
    return slot.Get();
}

void CWsManager::RegisterWsPanelDialog(const boost::shared_ptr<CWsPanelDialogMetadata>& metadata) {
    if (!metadata || metadata->GetDialogId().empty() || GetPanelDialog(metadata->GetDialogId()))
        return;
    m_panelDialogs.push_back(metadata);
    System::CModuleScope::Instance()->NoteRegistered([this, registered = metadata.get()] {
        std::erase_if(m_panelDialogs, [registered](const auto& kept) { return kept.get() == registered; });
    });
}

boost::shared_ptr<CWsPanelDialogMetadata> CWsManager::GetPanelDialog(std::string_view dialogId) const {
    const auto found = std::find_if(m_panelDialogs.begin(), m_panelDialogs.end(), [dialogId](const auto& kept) {
        return Utility::CUtility::EqualIgnoreCase(kept->GetDialogId(), dialogId);
    });
    return found == m_panelDialogs.end() ? nullptr : *found;
}

void CWsManager::RegisterWsDialogFactory(const boost::shared_ptr<IWsDialogFactory>& factory) {
    if (!factory)
        return;
    m_dialogFactories.push_back(factory);
    System::CModuleScope::Instance()->NoteRegistered([this, registered = factory.get()] {
        std::erase_if(m_dialogFactories, [registered](const auto& kept) { return kept.get() == registered; });
    });
}

CWsPanelDialog* CWsManager::CreateWsPanelDialog(void* parentWindow, std::string_view dialogId) {
    for (const auto& panel : m_panels)
        if (Utility::CUtility::EqualIgnoreCase(panel->GetDialogId(), dialogId))
            return panel.get();
    for (const auto& factory : m_dialogFactories)
        if (auto panel = factory->CreateWsPanelDialog(parentWindow, dialogId)) {
            m_panels.push_back(std::move(panel));
            return m_panels.back().get();
        }
    return nullptr;
}

void CWsManager::DestroyPanels() {
    while (!m_panels.empty()) {
        // Out of the list first: the end of a panel may ask for panels.
        const std::unique_ptr<CWsPanelDialog> last = std::move(m_panels.back());
        m_panels.pop_back();
    }
}

void CWsManager::LogMessage(int type, std::string_view text, int entityType, std::string_view entityName,
                            std::uint64_t objectId, int selectionType) {
    const CLogLine line{type, std::string(text), entityType, std::string(entityName), objectId, selectionType};
    if (m_log.size() == MostLogLines)
        m_log.pop_front();
    m_log.push_back(line);
    // A copy: the listener may log itself, or put another in its place.
    if (const CLogListener listener = m_logListener)
        listener(line);
}

CWsManager::CLogListener CWsManager::SetLogListener(CLogListener listener) {
    return std::exchange(m_logListener, std::move(listener));
}

} // namespace OLMGis::Workspace
