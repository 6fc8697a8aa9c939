// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "reports/ProjectDigest.h"

#include "host/gis_core/DataRW.h"
#include "host/gis_core/ProjectContext.h"
#include "host/network_core/CatalogManager.h"
#include "host/network_core/Catchment.h"
#include "host/network_core/Node.h"
#include "host/network_core/Section.h"
#include "host/network_core/TopologyMultiStorage.h"

#include <algorithm>

namespace Reports {

using OLMGis::Data::CDataBox;
using OLMGis::Data::CDataConfiguration;
using OLMGis::Data::CDataDefinition;
using OLMGis::Data::CDataRW;
using OLMGis::Topology::CCatalogManager;
using OLMGis::Topology::CPoint;
using OLMGis::Topology::CTopologyMultiStorage;
using OLMGis::Topology::CTopologyStorage;

namespace {

void Extend(std::optional<CProjectDigest::CExtent>& extent, const CPoint& point) {
    if (!point.IsKnown())
        return;
    if (!extent)
        extent = {point.m_x, point.m_y, point.m_x, point.m_y};
    extent->m_minX = std::min(extent->m_minX, point.m_x);
    extent->m_minY = std::min(extent->m_minY, point.m_y);
    extent->m_maxX = std::max(extent->m_maxX, point.m_x);
    extent->m_maxY = std::max(extent->m_maxY, point.m_y);
}

void DigestNetwork(CTopologyStorage& topology, CProjectDigest& digest) {
    digest.m_nodeCount = topology.GetNodes().size();
    digest.m_sectionCount = topology.GetSections().size();
    for (const auto& node : topology.GetNodes())
        Extend(digest.m_extent, node->GetPoint());
    for (const auto& section : topology.GetSections()) {
        digest.m_length += section->GetLength2D();
        for (const CPoint& point : section->GetGeometry())
            Extend(digest.m_extent, point);
    }
}

void DigestCatchments(CTopologyStorage& topology, CProjectDigest& digest) {
    using OLMGis::Topology::CatchmentHousehold;
    using OLMGis::Topology::CatchmentIndustrial;
    using OLMGis::Topology::CatchmentRain;
    digest.m_kinds = {
        {{"rain", CatchmentRain}, {"household", CatchmentHousehold}, {"industrial", CatchmentIndustrial}}};
    const auto definition = [](const char* key) { return CDataConfiguration::Instance()->GetDataDefinitionByID(key); };
    const CDataDefinition* const kindsKey = definition("kinds");
    const CDataDefinition* const areaKey = definition("area");
    digest.m_catchmentCount = topology.GetCatchments().size();
    for (const auto& catchment : topology.GetCatchments()) {
        CDataBox box;
        const int kinds = CDataRW::Read(kindsKey, catchment, box, 0, nullptr) != 0 ? box.AsInt() : 0;
        const double area = CDataRW::Read(areaKey, catchment, box, 0, nullptr) != 0 ? box.AsDouble() : 0.0;
        digest.m_area += area;
        for (auto& kind : digest.m_kinds)
            if ((kinds & kind.m_kind) != 0) {
                ++kind.m_count;
                kind.m_area += area;
            }
        for (const auto& ring : catchment->GetRings())
            for (const CPoint& point : ring)
                Extend(digest.m_extent, point);
    }
}

void DigestValues(CProjectDigest& digest) {
    const auto& store = OLMGis::System::CProjectContext::Active().GetAttributes();
    for (const auto& definition : CDataConfiguration::Instance()->GetDataDefinitions()) {
        const auto* const column = store.FindColumn(*definition);
        const std::size_t count = column == nullptr ? 0 : column->CountNotNull();
        if (count > 0)
            (definition->m_isEditable ? digest.m_values : digest.m_calculated).push_back({definition.get(), count});
    }
}

void DigestCatalogues(CProjectDigest& digest) {
    CCatalogManager& manager = *CCatalogManager::Instance();
    if (const auto* pipes = manager.GetCatalog(CCatalogManager::PipeCatalog, 1)) {
        digest.m_pipeGroupCount = pipes->GetOwnGroups().size();
        for (const auto& group : pipes->GetOwnGroups())
            digest.m_pipeCount += group->GetSubItems().size();
    }
    if (const auto* manholes = manager.GetCatalog(CCatalogManager::ManholeCatalog, 1))
        for (const auto& group : manholes->GetOwnGroups())
            digest.m_manholeCount += group->GetSubItems().size();
}

} // namespace

CProjectDigest MakeProjectDigest() {
    CProjectDigest digest;
    CTopologyStorage& topology = *CTopologyMultiStorage::Instance()->GetActiveTopology();
    DigestNetwork(topology, digest);
    DigestCatchments(topology, digest);
    DigestValues(digest);
    DigestCatalogues(digest);
    digest.m_outdated = OLMGis::Sewage::FindOutdatedResults();
    return digest;
}

} // namespace Reports
