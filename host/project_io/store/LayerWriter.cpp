// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/store/LayerWriter.h"

#include "host/gis_core/DataConfiguration.h"
#include "host/network_core/TopologyMultiStorage.h"
#include "host/project_io/base/OperationProgress.h"
#include "host/project_io/store/ProjectTables.h"
#include "host/project_io/store/RowNumbers.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace OLMGis::ProjectIo {

using Data::CAttributeColumn;
using Data::CDataDefinition;
using Data::CStoredValue;
using Data::enmDataType;
using Data::enmEntityKind;
using Topology::CCatchment;
using Topology::CNode;
using Topology::CPoint;
using Topology::CSection;
using Topology::CTopologyMultiStorage;
using Topology::CTopologyStorage;

namespace {

CTopologyStorage& ActiveTopology() {
    return *CTopologyMultiStorage::Instance()->GetActiveTopology();
}

/// Whether a value is written: the file keeps not-a-number as null.
bool HasValue(const CAttributeColumn& column, std::uint32_t row) {
    if (!column.IsNotNull(row))
        return false;
    return column.GetType() != enmDataType::Double || !std::isnan(std::bit_cast<double>(column.GetStored(row).m_bits));
}

} // namespace

CLayerWriter::CLayerWriter(CSqliteDatabase& database, enmEntityKind kind, int srsId, CSharedTexts& texts,
                           COperationProgress& progress)
    : m_database(database), m_layer(Layout::GetLayer(kind)), m_texts(texts), m_progress(progress), m_encoder(srsId) {}

CLayerContent CLayerWriter::Write() {
    switch (m_layer.m_kind) {
    case enmEntityKind::Node:
        WriteAll(ActiveTopology().GetNodes());
        break;
    case enmEntityKind::Section:
        WriteAll(ActiveTopology().GetSections());
        break;
    case enmEntityKind::Catchment:
        WriteAll(ActiveTopology().GetCatchments());
        break;
    }
    m_index.Write(m_database, m_layer.m_table, Layout::GeometryColumn);
    CreateSpatialIndexTriggers(m_database, m_layer.m_table, Layout::GeometryColumn);
    CLayerContent content{&m_layer, {}, m_extent};
    for (const CAttribute& attribute : m_attributes)
        content.m_attributes.push_back(attribute.m_definition);
    return content;
}

/// The attributes that at least one of the entities has. Mostly the first entity decides.
template <class Entities>
void CLayerWriter::FindAttributes(const Entities& entities) {
    for (const CDataDefinition* definition : ActiveTopology().GetStore().GetUsedDefinitions(m_layer.m_kind)) {
        const CAttributeColumn* const column = ActiveTopology().GetStore().FindColumn(*definition);
        const auto has = [column](const auto& entity) { return HasValue(*column, entity->GetRow()); };
        if (std::any_of(entities.begin(), entities.end(), has))
            m_attributes.push_back({definition, column, Layout::IsSharedText(*definition)});
    }
}

template <class Entities>
void CLayerWriter::WriteAll(const Entities& entities) {
    FindAttributes(entities);
    std::vector<const CDataDefinition*> definitions;
    for (const CAttribute& attribute : m_attributes)
        definitions.push_back(attribute.m_definition);
    Layout::CreateTable(m_database, m_layer.m_table, m_layer.m_columns, definitions);
    CSqliteStatement insert(m_database,
                            Layout::InsertStatement(m_layer.m_table, m_layer.m_columns.size() + m_attributes.size()));
    m_insert = &insert;
    std::int64_t order = 0;
    for (const auto& entity : entities) {
        const std::int64_t row = CRowNumbers::Instance()->GetKey(m_layer.m_kind, entity->GetRow());
        const CGeometryEncoder::CBlob blob = EncodeGeometry(*entity);
        insert.Bind(Layout::Fid + 1, row);
        if (blob.empty()) {
            insert.BindNull(Layout::Geometry + 1);
        } else {
            insert.Bind(Layout::Geometry + 1, blob);
            m_index.Add(row, m_encoder.GetExtent());
            m_extent.Add(m_encoder.GetExtent());
        }
        insert.Bind(Layout::Guid + 1, entity->GetGuid());
        insert.Bind(Layout::Name + 1, entity->GetName());
        insert.Bind(Layout::NetworkOrder + 1, ++order);
        BindReferences(*entity);
        BindAttributes(entity->GetRow());
        insert.Run();
        m_progress.Advance();
    }
    m_insert = nullptr;
}

CGeometryEncoder::CBlob CLayerWriter::EncodeGeometry(const CNode& node) {
    return m_encoder.Encode(node.GetPoint());
}

CGeometryEncoder::CBlob CLayerWriter::EncodeGeometry(const CSection& section) {
    return m_encoder.Encode(std::span<const CPoint>(section.GetGeometry()));
}

CGeometryEncoder::CBlob CLayerWriter::EncodeGeometry(const CCatchment& catchment) {
    return m_encoder.Encode(catchment.GetRings());
}

template <class Entity>
void CLayerWriter::BindReference(int nameColumn, int guidColumn, const Entity& entity) {
    if (entity) {
        m_insert->Bind(nameColumn + 1, entity->GetName()).Bind(guidColumn + 1, entity->GetGuid());
    } else {
        m_insert->BindNull(nameColumn + 1).BindNull(guidColumn + 1);
    }
}

void CLayerWriter::BindReferences(const CNode& /*node*/) {}

void CLayerWriter::BindReferences(const CSection& section) {
    BindReference(Layout::FromNode, Layout::FromGuid, section.GetStartingNode());
    BindReference(Layout::ToNode, Layout::ToGuid, section.GetEndingNode());
}

void CLayerWriter::BindReferences(const CCatchment& catchment) {
    BindReference(Layout::SectionName, Layout::SectionGuid, catchment.GetSection());
}

void CLayerWriter::BindAttributes(std::uint32_t row) {
    int place = static_cast<int>(m_layer.m_columns.size());
    for (const CAttribute& attribute : m_attributes)
        BindAttribute(++place, attribute, row);
}

void CLayerWriter::BindAttribute(int place, const CAttribute& attribute, std::uint32_t row) {
    const CStoredValue value = attribute.m_values->GetStored(row);
    if (!value.m_isNotNull) {
        m_insert->BindNull(place);
        return;
    }
    switch (attribute.m_definition->m_type) {
    case enmDataType::Double:
        m_insert->Bind(place, std::bit_cast<double>(value.m_bits));
        break;
    case enmDataType::Int:
        m_insert->Bind(place, std::int64_t{static_cast<std::int32_t>(static_cast<std::uint32_t>(value.m_bits))});
        break;
    case enmDataType::Text:
        if (attribute.m_isShared)
            m_insert->Bind(place, m_texts.GetNumber(static_cast<std::uint32_t>(value.m_bits)));
        else
            m_insert->Bind(place, attribute.m_values->ReadText(row));
        break;
    }
}

} // namespace OLMGis::ProjectIo
