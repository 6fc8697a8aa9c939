// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/AttributeListing.h"

#include "apps/cli/ShownText.h"
#include "apps/cli/Table.h"
#include "host/gis_core/DataRW.h"
#include "host/project_io/base/AttributeText.h"
#include "host/project_io/base/JsonText.h"
#include "host/project_io/tables/CsvWriter.h"

#include <fmt/format.h>

#include <string>
#include <unordered_set>

namespace Cli {

using OLMGis::Data::CDataBox;
using OLMGis::Data::CDataDefinition;
using OLMGis::Data::CDataRW;
using OLMGis::Data::enmDataType;
using OLMGis::Topology::CEntity;
using OLMGis::Utility::Status;

namespace {

bool DoNamesTellApart(const CEntityList& entities) {
    std::unordered_set<std::string_view> names;
    for (const CEntity* entity : entities)
        if (GetShownName(*entity).empty() || !names.insert(GetShownName(*entity)).second)
            return false;
    return true;
}

/// Kinds of catchments are sums of bits, which people do not read.
std::string ShowCell(const CDataDefinition& definition, const CDataBox& value) {
    if (definition.m_id == "kinds" && value.IsNotNull())
        return OLMGis::ProjectIo::TextOfKinds(value.AsInt(), "+");
    return ShowValue(value, definition.m_decimals);
}

void AppendJson(fmt::memory_buffer& buffer, const CDataBox& value) {
    switch (value.GetKind()) {
    case CDataBox::enmKind::Int:
        return OLMGis::ProjectIo::AppendJson(buffer, value.AsInt());
    case CDataBox::enmKind::Double:
        return OLMGis::ProjectIo::AppendJson(buffer, value.AsDouble());
    case CDataBox::enmKind::Text:
        return OLMGis::ProjectIo::AppendJson(buffer, value.TextView());
    case CDataBox::enmKind::Null:
        return OLMGis::ProjectIo::AppendRaw(buffer, "null");
    }
}

} // namespace

void PrintAttributesAsTable(std::ostream& stream, const CEntityList& entities, const CDefinitionList& definitions) {
    const bool hasGuid = !DoNamesTellApart(entities);
    CTable table;
    std::vector<std::string> units{""};
    table.AddColumn("name");
    if (hasGuid) {
        table.AddColumn("guid");
        units.emplace_back();
    }
    bool hasUnit = false;
    for (const CDataDefinition* definition : definitions) {
        const bool isText = definition->m_type == enmDataType::Text;
        table.AddColumn(definition->m_id, isText ? CTable::enmAlign::Left : CTable::enmAlign::Right);
        units.push_back(definition->m_unit);
        hasUnit = hasUnit || !definition->m_unit.empty();
    }
    if (hasUnit)
        table.AddRow(units);
    for (const CEntity* entity : entities) {
        std::vector<std::string> cells{std::string(GetShownName(*entity))};
        if (hasGuid)
            cells.emplace_back(entity->GetGuid());
        CDataBox value;
        for (const CDataDefinition* definition : definitions) {
            CDataRW::Read(definition, entity, value, 0, nullptr);
            cells.push_back(ShowCell(*definition, value));
        }
        table.AddRow(std::move(cells));
    }
    table.Print(stream);
}

Status PrintAttributesAsCsv(std::ostream& stream, const CEntityList& entities, const CDefinitionList& definitions) {
    OLMGis::ProjectIo::CCsvWriter writer(stream);
    writer.Write("name");
    writer.Write("guid");
    for (const CDataDefinition* definition : definitions)
        writer.Write(definition->m_id);
    writer.EndRow();
    CDataBox value;
    for (const CEntity* entity : entities) {
        writer.Write(GetShownName(*entity));
        writer.Write(entity->GetGuid());
        for (const CDataDefinition* definition : definitions) {
            CDataRW::Read(definition, entity, value, 0, nullptr);
            writer.Write(OLMGis::ProjectIo::TextOfAttribute(value));
        }
        writer.EndRow();
    }
    return writer.Finish();
}

void PrintAttributesAsJson(std::ostream& stream, const CEntityList& entities, const CDefinitionList& definitions) {
    using OLMGis::ProjectIo::AppendRaw;
    fmt::memory_buffer line;
    AppendRaw(line, "[");
    const char* separator = "\n";
    CDataBox value;
    for (const CEntity* entity : entities) {
        AppendRaw(line, separator);
        AppendRaw(line, "  {\"name\": ");
        OLMGis::ProjectIo::AppendJson(line, GetShownName(*entity));
        AppendRaw(line, ", \"guid\": ");
        OLMGis::ProjectIo::AppendJson(line, entity->GetGuid());
        for (const CDataDefinition* definition : definitions) {
            CDataRW::Read(definition, entity, value, 0, nullptr);
            AppendRaw(line, ", ");
            OLMGis::ProjectIo::AppendJson(line, std::string_view(definition->m_id));
            AppendRaw(line, ": ");
            AppendJson(line, value);
        }
        AppendRaw(line, "}");
        stream.write(line.data(), static_cast<std::streamsize>(line.size()));
        line.clear();
        separator = ",\n";
    }
    AppendRaw(line, "\n]\n");
    stream.write(line.data(), static_cast<std::streamsize>(line.size()));
}

} // namespace Cli
