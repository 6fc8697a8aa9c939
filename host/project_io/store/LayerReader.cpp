// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/store/LayerReader.h"

#include "host/gis_core/DataConfiguration.h"
#include "host/gis_core/ShortName.h"
#include "host/gis_core/Utility.h"
#include "host/network_core/TopologyMultiStorage.h"
#include "host/project_io/base/Failure.h"
#include "host/project_io/base/OperationProgress.h"
#include "host/project_io/store/GeoPackageGeometry.h"
#include "host/project_io/store/RowNumbers.h"

#include <fmt/format.h>

#include <algorithm>
#include <bit>
#include <limits>

namespace OLMGis::ProjectIo {

using Data::CDataDefinition;
using Data::CStoredValue;
using Data::enmDataType;
using Data::enmEntityKind;
using Topology::CNode;
using Topology::CPoint;
using Topology::CRings;
using Topology::CSection;
using Utility::Status;

namespace {

/// Rows of entities are numbered in 32 bits.
constexpr std::size_t MostRows = std::numeric_limits<std::int32_t>::max();

std::string MissingName(const Layout::CLayer& layer, std::int64_t key) {
    return fmt::format("{}-{}", layer.m_table, key);
}

} // namespace

std::string GuidOfRow(const Layout::CLayer& layer, std::int64_t key, std::string_view guid, std::string_view name,
                      bool isNameMissing) {
    if (!guid.empty())
        return std::string(guid);
    const bool isNamed = isNameMissing && layer.m_kind == enmEntityKind::Node;
    return Utility::CUtility::MakeGuid(layer.m_table, isNamed ? MissingName(layer, key) : std::string(name),
                                       static_cast<std::size_t>(key));
}

CLayerReader::CLayerReader(const CSqliteDatabase& database, const CFileTables& tables, enmEntityKind kind,
                           const CTextIds& texts, double metresPerUnit, CWarnings& warnings)
    : m_database(database), m_layer(Layout::GetLayer(kind)), m_texts(texts), m_metresPerUnit(metresPerUnit),
      m_warnings(warnings), m_topology(*Topology::CTopologyMultiStorage::Instance()->GetActiveTopology()),
      m_columns(NamesOf(m_layer.m_columns)) {
    SortColumns(tables.GetColumns(m_layer.m_table, m_layer.m_columns));
    LookAtOrder();
}

/// Separates columns of attributes from unknown ones, which give a warning.
void CLayerReader::SortColumns(const std::vector<std::string>& inFile) {
    const std::vector<std::string> fixed = m_columns;
    for (const std::string& column : inFile) {
        if (std::find(fixed.begin(), fixed.end(), column) != fixed.end())
            continue;
        const CDataDefinition* definition = Data::CDataConfiguration::Instance()->GetDataDefinitionByID(column);
        if (definition == nullptr || definition->m_entityKind != m_layer.m_kind)
            continue; // another program's
        m_columns.push_back(column);
        m_attributes.push_back(
            {definition, &m_topology.GetStore().GetColumn(*definition), Layout::IsSharedText(*definition)});
    }
}

/// Counts the rows and checks whether they are in the order of the network already, as in a file that no other program
/// changed; then they need no sorting.
void CLayerReader::LookAtOrder() {
    const std::vector<std::string> columns = {m_columns[Layout::Fid], m_columns[Layout::NetworkOrder]};
    CSqlReader reader(m_database, m_layer.m_table, columns, Quoted(columns[0]));
    std::int64_t last = std::numeric_limits<std::int64_t>::min();
    while (reader.Next()) {
        if (++m_rowCount > MostRows)
            FailBadInput(
                fmt::format("{}: table {}: found more than {} rows", m_database.GetName(), m_layer.m_table, MostRows));
        reader.GetInteger(0);
        // Rows without a place come last.
        const std::int64_t place = reader.IsNull(1) ? std::numeric_limits<std::int64_t>::max() : reader.GetInteger(1);
        m_isInOrder = m_isInOrder && place >= last;
        last = place;
    }
}

void CLayerReader::Read(COperationProgress& progress) {
    const std::string key = Quoted(m_columns[Layout::Fid]);
    const std::string place = Quoted(m_columns[Layout::NetworkOrder]);
    CSqlReader reader(m_database, m_layer.m_table, m_columns,
                      m_isInOrder ? key : fmt::format("{0} IS NULL, {0}, {1}", place, key));
    m_reader = &reader;
    while (reader.Next()) {
        switch (m_layer.m_kind) {
        case enmEntityKind::Node:
            ReadAttributes(EnterNode());
            break;
        case enmEntityKind::Section:
            ReadAttributes(EnterSection());
            break;
        case enmEntityKind::Catchment:
            ReadAttributes(EnterCatchment());
            break;
        }
        progress.Advance();
    }
    m_reader = nullptr;
    if (reader.GetRepairedCount() > 0)
        m_warnings.Add(fmt::format("{} texts of the layer {} were not UTF-8 and were repaired",
                                   reader.GetRepairedCount(), m_layer.m_table));
}

void CLayerReader::Expect(const Status& status) const {
    if (!status)
        m_reader->Fail(status.GetError().message);
}

template <class Entity>
std::uint32_t CLayerReader::Entered(const Utility::Result<boost::shared_ptr<Entity>>& entity) const {
    if (!entity)
        m_reader->Fail(entity.GetError().message);
    CRowNumbers::Instance()->Note(m_layer.m_kind, entity.Value()->GetRow(), m_reader->GetKey());
    return entity.Value()->GetRow();
}

void CLayerReader::ToMetres(std::span<CPoint> points) const {
    if (m_metresPerUnit == 1.0)
        return;
    for (CPoint& point : points) {
        point.m_x *= m_metresPerUnit;
        point.m_y *= m_metresPerUnit;
    }
}

void CLayerReader::ReadIdentity(bool needsName) {
    m_name = m_reader->GetText(Layout::Name);
    if (needsName && m_reader->IsNull(Layout::Name)) {
        m_name = MissingName(m_layer, m_reader->GetKey());
        m_warnings.Add(fmt::format("row {} of the layer {} had no name and is now {}", m_reader->GetKey(),
                                   m_layer.m_table, Utility::ShortName(m_name)));
    }
    m_guid = GuidOfRow(m_layer, m_reader->GetKey(), m_reader->GetText(Layout::Guid), m_name, false);
}

std::uint32_t CLayerReader::EnterNode() {
    ReadIdentity(true);
    CPoint point;
    Expect(DecodePoint(m_reader->GetBlob(Layout::Geometry), point));
    ToMetres({&point, 1});
    return Entered(m_topology.AddNode(m_guid, m_name, point));
}

std::uint32_t CLayerReader::EnterSection() {
    ReadIdentity(false);
    Expect(DecodeLine(m_reader->GetBlob(Layout::Geometry), m_line));
    ToMetres(m_line);
    CNode* const start = FindNode(Layout::FromNode, Layout::FromGuid);
    CNode* const end = FindNode(Layout::ToNode, Layout::ToGuid);
    return Entered(m_topology.AddSection(m_guid, m_name, start, end, m_line));
}

std::uint32_t CLayerReader::EnterCatchment() {
    ReadIdentity(false);
    CRings rings;
    Expect(DecodePolygon(m_reader->GetBlob(Layout::Geometry), rings));
    for (auto& ring : rings)
        ToMetres(ring);
    CSection* const section = FindSection();
    return Entered(m_topology.AddCatchment(m_guid, m_name, section, std::move(rings)));
}

void CLayerReader::WarnOfOtherName(std::string_view reference, std::string_view found, std::string_view named) {
    if (!named.empty() && named != found)
        m_warnings.Add(fmt::format("row {} of the layer {}: {} names \"{}\" but {} is the GUID of \"{}\", which counts",
                                   m_reader->GetKey(), m_layer.m_table, reference, Utility::ShortName(named), reference,
                                   Utility::ShortName(found)));
}

CNode* CLayerReader::FindNode(int nameColumn, int guidColumn) {
    const std::string_view guid = m_reader->GetText(guidColumn);
    const std::string_view name = m_reader->GetText(nameColumn);
    if (guid.empty() && name.empty())
        return nullptr;
    const auto node = guid.empty() ? m_topology.GetNodeByName(name) : m_topology.GetNodeByGuid(guid);
    if (!node)
        m_reader->Fail(fmt::format("section {}: found the node \"{}\" in {}, expected a node of the layer nodes",
                                   Utility::ShortName(m_name), Utility::ShortName(guid.empty() ? name : guid),
                                   m_columns[static_cast<std::size_t>(guid.empty() ? nameColumn : guidColumn)]));
    WarnOfOtherName(m_columns[static_cast<std::size_t>(nameColumn)], node->GetName(), name);
    return node.get();
}

CSection* CLayerReader::FindSection() {
    const std::string_view name = m_reader->GetText(Layout::SectionName);
    const std::string_view guid = m_reader->GetText(Layout::SectionGuid);
    if (guid.empty()) {
        const auto sections = m_topology.GetSectionsByName(name);
        if (sections.size() != 1)
            m_reader->Fail(fmt::format("found {} sections of the name \"{}\", expected 1, or its GUID in section_guid",
                                       sections.size(), Utility::ShortName(name)));
        return sections.front().get();
    }
    const auto section = m_topology.GetSectionByGuid(guid);
    if (!section)
        m_reader->Fail(fmt::format("found the section \"{}\" in section_guid, expected a section of the layer sections",
                                   Utility::ShortName(guid)));
    WarnOfOtherName("section_name", section->GetName(), name);
    return section.get();
}

void CLayerReader::ReadAttributes(std::uint32_t row) {
    int column = static_cast<int>(m_layer.m_columns.size());
    for (const CAttribute& attribute : m_attributes) {
        if (const auto value = ReadAttribute(column, attribute))
            attribute.m_values->SetStored(row, *value);
        ++column;
    }
}

std::optional<CStoredValue> CLayerReader::ReadAttribute(int column, const CAttribute& attribute) {
    if (m_reader->IsNull(column))
        return std::nullopt;
    switch (attribute.m_definition->m_type) {
    case enmDataType::Double:
        return CStoredValue{std::bit_cast<std::uint64_t>(m_reader->GetReal(column)), true};
    case enmDataType::Int: {
        const std::int64_t value = m_reader->GetInteger(column);
        if (value != static_cast<std::int32_t>(value))
            m_reader->Fail(
                fmt::format("column {}: found {}, expected a number of 32 bits", attribute.m_definition->m_id, value));
        return CStoredValue{static_cast<std::uint32_t>(value), true};
    }
    case enmDataType::Text:
        if (!attribute.m_isShared)
            return CStoredValue{m_topology.GetStore().GetTexts().Intern(m_reader->GetText(column)), true};
        const auto text = m_texts.find(m_reader->GetInteger(column));
        if (text == m_texts.end())
            m_reader->Fail(fmt::format("column {}: found {}, expected a row of {}", attribute.m_definition->m_id,
                                       m_reader->GetInteger(column), Layout::TextsTable));
        return CStoredValue{text->second, true};
    }
    return std::nullopt;
}

} // namespace OLMGis::ProjectIo
