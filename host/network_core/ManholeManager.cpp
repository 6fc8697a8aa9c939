// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_core/ManholeManager.h"

#include "host/gis_core/DataRW.h"
#include "host/gis_core/ProjectContext.h"
#include "host/network_core/CatalogManager.h"
#include "host/network_core/Node.h"

namespace OLMGis::Topology {

namespace {

const CManholeData* DataOf(const boost::shared_ptr<CCatalogItem>& manhole) {
    return manhole ? manhole->GetManholeData() : nullptr;
}

double AttributeOr(const Data::CDataDefinition* definition, const CNode& node, double fallback) {
    Data::CDataBox box;
    return Data::CDataRW::Read(definition, &node, box, 0, nullptr) != 0 ? box.AsDouble() : fallback;
}

} // namespace

CManholeManager* CManholeManager::Instance() {
    static const System::CContextSlot<CManholeManager> slot;
    return slot.Get();
}

boost::shared_ptr<CCatalogItem> CManholeManager::GetManhole(std::string_view id) {
    auto found = CCatalogManager::Instance()->GetItemByGuid(CCatalogManager::ManholeCatalog, id);
    return DataOf(found) == nullptr ? nullptr : found;
}

double CManholeManager::GetManholeInnerDiameter(const boost::shared_ptr<CCatalogItem>& manhole) {
    const CManholeData* data = DataOf(manhole);
    return data == nullptr ? 0.0 : data->m_innerDiameter;
}

double CManholeManager::GetManholeH1(const CNode* node, const boost::shared_ptr<CCatalogItem>& manhole) {
    const CManholeData* data = DataOf(manhole);
    static const auto* const definition = Data::CDataConfiguration::Instance()->GetDataDefinitionByID("MANHOLE_H1");
    return data == nullptr || node == nullptr ? 0.0 : AttributeOr(definition, *node, data->m_h1);
}

double CManholeManager::GetManholeH2(const CNode* node, const boost::shared_ptr<CCatalogItem>& manhole) {
    const CManholeData* data = DataOf(manhole);
    static const auto* const definition = Data::CDataConfiguration::Instance()->GetDataDefinitionByID("MANHOLE_H2");
    return data == nullptr || node == nullptr ? 0.0 : AttributeOr(definition, *node, data->m_h2);
}

double CManholeManager::GetManholeHeight(const boost::shared_ptr<CNode>& node,
                                         const boost::shared_ptr<CCatalogItem>& manhole) {
    const CManholeData* data = DataOf(manhole);
    return data == nullptr || !node ? 0.0 : data->m_height;
}

} // namespace OLMGis::Topology
