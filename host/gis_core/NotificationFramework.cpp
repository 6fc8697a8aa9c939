// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/gis_core/NotificationFramework.h"

#include "host/gis_core/ModuleScope.h"
#include "host/gis_core/ProjectContext.h"

#include <algorithm>

namespace OLMGis::Notification {

CNotificationFramework* CNotificationFramework::Instance() {
    static const System::CContextSlot<CNotificationFramework> slot;
    return slot.Get();
}

void CNotificationFramework::RegisterEventResponder(IEventResponder* responder) {
    if (responder == nullptr)
        return;
    m_responders.emplace_back(responder);
    System::CModuleScope::Instance()->NoteRegistered([this, responder] {
        std::erase_if(m_responders, [responder](const auto& kept) { return kept.get() == responder; });
    });
}

void CNotificationFramework::Notify(const CEvent& event) {
    for (const auto& responder : m_responders)
        responder->OnEvent(event);
}

} // namespace OLMGis::Notification
