// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_core/TopologyMultiStorage.h"

#include "host/gis_core/ProjectContext.h"

namespace OLMGis::Topology {

CTopologyMultiStorage* CTopologyMultiStorage::Instance() {
    static const System::CContextSlot<CTopologyMultiStorage> slot;
    return slot.Get();
}

CTopologyMultiStorage::CTopologyMultiStorage() : m_topology(System::CProjectContext::Active().GetAttributes()) {}

} // namespace OLMGis::Topology
