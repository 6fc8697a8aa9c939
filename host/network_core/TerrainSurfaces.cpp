// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_core/TerrainSurfaces.h"

#include "host/gis_core/ProjectContext.h"

namespace OLMGis::Topology {

CTerrainSurfaces* CTerrainSurfaces::Instance() {
    static const System::CContextSlot<CTerrainSurfaces> slot;
    return slot.Get();
}

void CTerrainSurfaces::Attach(int terrainType, CSource source) {
    if (terrainType >= 1 && terrainType <= TypeCount)
        m_places[static_cast<std::size_t>(terrainType - 1)] = CPlace{std::move(source), nullptr};
}

ITerrainSurface* CTerrainSurfaces::Find(int terrainType) {
    if (terrainType < 1 || terrainType > TypeCount)
        return nullptr;
    CPlace& place = m_places[static_cast<std::size_t>(terrainType - 1)];
    if (place.m_source) {
        const CSource source = std::exchange(place.m_source, {});
        place.m_surface = source();
    }
    return place.m_surface.get();
}

} // namespace OLMGis::Topology
