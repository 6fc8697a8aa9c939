// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/gis_core/ModuleScope.h"

#include "host/gis_core/ProjectContext.h"

namespace OLMGis::System {

CModuleScope* CModuleScope::Instance() {
    static const CContextSlot<CModuleScope> slot;
    return slot.Get();
}

void CModuleScope::TakeOutAll() {
    while (!m_notes.empty()) {
        const std::function<void()> takeOut = std::move(m_notes.back());
        m_notes.pop_back();
        takeOut();
    }
}

} // namespace OLMGis::System
