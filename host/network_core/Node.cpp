// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_core/Node.h"

#include "host/gis_core/DataConfiguration.h"
#include "host/gis_core/DataRW.h"
#include "host/network_core/Section.h"
#include "host/network_core/TerrainSurfaces.h"

#include <algorithm>
#include <array>
#include <string>

namespace OLMGis::Topology {

namespace {

using CTerrainDefinitions = std::array<const Data::CDataDefinition*, CTerrainSurfaces::TypeCount>;

CTerrainDefinitions FindTerrainDefinitions() {
    CTerrainDefinitions found{};
    for (std::size_t i = 0; i < found.size(); ++i)
        found[i] = Data::CDataConfiguration::Instance()->GetDataDefinitionByID("TERRAIN_" + std::to_string(i + 1));
    return found;
}

} // namespace

int CNode::GetConnectedSections(std::vector<boost::shared_ptr<CSection>>& list) const {
    return ListConnectedSections(list, [](const CSection* section) { return section->GetShared(); });
}

int CNode::GetConnectedSections(std::vector<const CSection*>& list) const {
    return ListConnectedSections(list, [](const CSection* section) { return section; });
}

template <class List, class ToEntry>
int CNode::ListConnectedSections(List& list, ToEntry toEntry) const {
    list.clear();
    auto in = m_in.begin();
    auto out = m_out.begin();
    while (in != m_in.end() || out != m_out.end()) {
        const bool takeIn = out == m_out.end() || (in != m_in.end() && (*in)->GetOrder() <= (*out)->GetOrder());
        const CSection* const section = takeIn ? *in : *out;
        // A section that returns to its own start is in both lists.
        if (!takeIn || out == m_out.end() || *out != section)
            list.push_back(toEntry(section));
        ++(takeIn ? in : out);
    }
    return static_cast<int>(list.size());
}

int CNode::GetSectionsOut(std::vector<boost::shared_ptr<CSection>>& list) const {
    list.clear();
    for (const CSection* section : m_out)
        list.push_back(section->GetShared());
    return static_cast<int>(list.size());
}

int CNode::GetSectionsIn(std::vector<boost::shared_ptr<CSection>>& list) const {
    list.clear();
    for (const CSection* section : m_in)
        list.push_back(section->GetShared());
    return static_cast<int>(list.size());
}

int CNode::GetSectionsIn(std::vector<const CSection*>& list) const {
    list.assign(m_in.begin(), m_in.end());
    return static_cast<int>(list.size());
}

int CNode::GetTerrainHeight(double& height, int terrainType) const {
    static const CTerrainDefinitions definitions = FindTerrainDefinitions();
    if (terrainType < 1 || terrainType > CTerrainSurfaces::TypeCount)
        return 0;
    Data::CDataBox box;
    if (Data::CDataRW::Read(definitions[static_cast<std::size_t>(terrainType - 1)], this, box, 0, nullptr) != 0) {
        height = box.AsDouble();
        return 1;
    }
    ITerrainSurface* const surface = CTerrainSurfaces::Instance()->Find(terrainType);
    return surface != nullptr && m_point.IsKnown() && surface->GetHeight(m_point, height) ? 1 : 0;
}

} // namespace OLMGis::Topology
