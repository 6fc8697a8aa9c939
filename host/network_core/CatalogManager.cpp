// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_core/CatalogManager.h"

#include "host/gis_core/ProjectContext.h"
#include "host/network_core/BuiltInCatalog.h"

namespace OLMGis::Topology {

CCatalogManager* CCatalogManager::Instance() {
    static const System::CContextSlot<CCatalogManager> slot;
    return slot.Get();
}

CCatalog* CCatalogManager::GetCatalog(std::string_view id, int /*useDisk*/) {
    if (id != PipeCatalog && id != ManholeCatalog)
        return nullptr;
    std::optional<CCatalog>& catalog = id == PipeCatalog ? m_pipes : m_manholes;
    if (!catalog) {
        catalog.emplace(std::string(id));
        if (const auto& builtIn = CBuiltInCatalogs::Instance()->GetGroups(id))
            catalog->AddBuiltIn(builtIn.Value());
    }
    return &*catalog;
}

std::string CCatalogManager::GetLoadError() {
    for (const std::string_view id : {PipeCatalog, ManholeCatalog})
        if (const auto& builtIn = CBuiltInCatalogs::Instance()->GetGroups(id); !builtIn)
            return builtIn.GetError().message;
    return {};
}

boost::shared_ptr<CCatalogItem> CCatalogManager::GetItemByGuid(std::string_view catalog, std::string_view guid) {
    const CCatalog* found = GetCatalog(catalog, 1);
    return found == nullptr ? nullptr : found->GetItembyGuid(guid);
}

} // namespace OLMGis::Topology
