// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_core/DDCache.h"

#include "host/gis_core/DataConfiguration.h"

namespace OLMGis::Data {

CDDCache::CDDCache() : m_manholeTerrainType(CDataConfiguration::Instance()->GetDataDefinitionByID("MANHOLE_RT")) {}

CDDCache* CDDCache::Instance() {
    static CDDCache cache;
    return &cache;
}

} // namespace OLMGis::Data
