// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_core/CatalogManager.h"

#include "host/gis_core/ProjectContext.h"

namespace OLMGis::Topology {

CCatalogManager* CCatalogManager::Instance() {
    static const System::CContextSlot<CCatalogManager> slot;
    return slot.Get();
}

CCatalog* CCatalogManager::GetCatalog(std::string_view id, int /*useDisk*/) {
    if (id == PipeCatalog)
        return &m_pipes;
    return id == ManholeCatalog ? &m_manholes : nullptr;
}

boost::shared_ptr<CCatalogItem> CCatalogManager::GetItemByGuid(std::string_view catalog, std::string_view guid) {
    const CCatalog* found = GetCatalog(catalog, 1);
    return found == nullptr ? nullptr : found->GetItembyGuid(guid);
}

} // namespace OLMGis::Topology
