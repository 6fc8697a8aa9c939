// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/gis_core/SystemManager.h"

#include "host/gis_core/ProjectContext.h"

namespace OLMGis::System {

CSystemManager* CSystemManager::Instance() {
    static const CContextSlot<CSystemManager> slot;
    return slot.Get();
}

} // namespace OLMGis::System
