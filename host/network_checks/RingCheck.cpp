// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_checks/RingCheck.h"

#include "host/gis_core/CoreProgressBar.h"
#include "host/network_checks/Rings.h"
#include "host/network_core/TopologyStorage.h"

namespace OLMGis::NetworkChecks {

namespace {

constexpr int NameMessage = 70433;
constexpr int InRing = 70434;

} // namespace

CRingCheck::CRingCheck() : CNetworkCheck("0009_RING", NameMessage, "FAI_RING") {}

void CRingCheck::Run(const Topology::CPropertiesEx& /*form*/, const Topology::CAnalysedNetwork& network,
                     Topology::CFindingList& findings) {
    Utility::CProgress progress(GetItemName(), network.m_nodes.size());
    if (network.m_sections.empty())
        return;
    const auto ways = network.m_sections.front()->GetTopology().GetConnectivity();
    const CRings rings(*ways, [&progress](std::size_t done) { return progress.GoOn(done); });
    if (!rings.IsComplete())
        return;
    for (const auto& section : network.m_sections)
        if (const auto ring = rings.GetRing(section->GetRow()); ring != Topology::CConnectivity::None)
            findings.AddWithCount(*section, InRing, rings.GetSectionCount(ring));
}

} // namespace OLMGis::NetworkChecks
