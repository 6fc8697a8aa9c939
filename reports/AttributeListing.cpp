// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "reports/AttributeListing.h"

#include "host/gis_core/DataRW.h"
#include "host/project_io/base/AttributeText.h"

#include <string>
#include <string_view>
#include <unordered_set>

namespace Reports {

using OLMGis::Data::CDataBox;
using OLMGis::Data::CDataDefinition;
using OLMGis::Data::CDataRW;
using OLMGis::Data::enmDataType;
using OLMGis::Topology::CEntity;

namespace {

bool DoNamesIdentify(const CEntityList& entities) {
    std::unordered_set<std::string_view> names;
    for (const CEntity* entity : entities)
        if (GetShownName(*entity).empty() || !names.insert(GetShownName(*entity)).second)
            return false;
    return true;
}

/// Kinds of catchments are sums of bits.
std::string ShowKinds(const CDataBox& value) {
    return value.IsNotNull() ? OLMGis::ProjectIo::TextOfKinds(value.AsInt(), "+") : std::string();
}

CColumn MakeColumn(const CDataDefinition& definition) {
    CColumn column = definition.m_type == enmDataType::Text
                         ? TextColumn(definition.m_id, definition.m_id)
                         : NumberColumn(definition.m_id, definition.m_id, definition.m_unit, definition.m_decimals);
    column.m_unit = definition.m_unit;
    if (definition.m_id == "kinds")
        column.m_show = ShowKinds;
    return column;
}

} // namespace

CTable MakeAttributeTable(const CEntityList& entities, const CDefinitionList& definitions) {
    CTable table;
    table.AddColumn(TextColumn("name", "name"));
    table.AddColumn(TextColumn("guid", "guid", DoNamesIdentify(entities) ? enmReader::Programs : enmReader::All));
    for (const CDataDefinition* definition : definitions)
        table.AddColumn(MakeColumn(*definition));
    table.SetRows(entities.size(), [&entities, &definitions](std::size_t row, CTable::CRow& values) {
        values[0].SetText(GetShownName(*entities[row]));
        values[1].SetText(entities[row]->GetGuid());
        for (std::size_t i = 0; i < definitions.size(); ++i)
            CDataRW::Read(definitions[i], entities[row], values[i + 2], 0, nullptr);
    });
    return table;
}

} // namespace Reports
