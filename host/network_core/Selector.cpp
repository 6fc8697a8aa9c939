// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_core/Selector.h"

#include "host/gis_core/ProjectContext.h"
#include "host/network_core/TopologyMultiStorage.h"

namespace OLMGis::Selection {

CSelector* CSelector::LoopInstance() {
    static const System::CContextSlot<CSelector> slot;
    return slot.Get();
}

int CSelector::selectActSysAllElements(CSelectionSet& set) const {
    const Topology::CTopologyStorage& topology = *Topology::CTopologyMultiStorage::Instance()->GetActiveTopology();
    const auto& nodes = topology.GetNodes();
    const auto& sections = topology.GetSections();
    const auto& catchments = topology.GetCatchments();
    set.Clear();
    set.Reserve(nodes.size() + sections.size() + catchments.size());
    for (const auto& node : nodes)
        set.Add(node);
    for (const auto& section : sections)
        set.Add(section);
    for (const auto& catchment : catchments)
        set.Add(catchment);
    return static_cast<int>(set.GetEntities().size());
}

} // namespace OLMGis::Selection
