// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/exchange/ExchangeExport.h"

#include "host/gis_core/DataConfiguration.h"
#include "host/gis_core/ProjectSettings.h"
#include "host/network_core/CatalogManager.h"
#include "host/network_core/TopologyMultiStorage.h"
#include "host/project_io/base/AttributeText.h"
#include "host/project_io/base/JsonText.h"
#include "host/project_io/base/SectionReferences.h"
#include "host/project_io/exchange/ExchangeParser.h"
#include "host/project_io/tables/CatalogCsv.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <span>
#include <sstream>
#include <vector>

namespace OLMGis::ProjectIo {

using Data::CDataBox;
using Data::CDataDefinition;
using Data::enmEntityKind;
using Topology::CCatchment;
using Topology::CNode;
using Topology::CPoint;
using Topology::CSection;
using Topology::CTopologyStorage;
using Utility::BadInput;
using Utility::Done;
using Utility::Status;

namespace {

const CDataDefinition* Definition(std::string_view id) {
    return Data::CDataConfiguration::Instance()->GetDataDefinitionByID(id);
}

class CExchangeWriter {
public:
    CExchangeWriter(std::ostream& stream, const CTopologyStorage& topology)
        : m_stream(stream), m_topology(topology), m_references(topology) {}

    Status Check() const;
    void WriteAll();

private:
    void WriteHead();
    void WriteCatalog(std::string_view member, std::string_view catalog, enmCatalogKind kind);
    void WriteNode(const CNode& node);
    void WriteSection(const CSection& section);
    void WriteCatchment(const CCatchment& catchment);
    void WriteMainOutlet(const CNode& node, const CSection& section);
    void WriteAttributes(const Data::CAttributeOwner& entity, const std::vector<const CDataDefinition*>& keys);
    void WriteTerrain(const CNode& node);
    void WriteKinds(const CCatchment& catchment);
    void WritePoint(const CPoint& point);
    void WritePoints(std::span<const CPoint> points);

    void BeginFeature(std::string_view layer);
    void EndProperties() { AppendRaw(m_buffer, "},\"geometry\":"); }
    void EndFeature();
    void WriteText(std::string_view key, std::string_view text);
    void WriteKey(std::string_view key);
    void WriteValue(const CDataBox& box);

    /// The section that leaves the node and whose GUID is, letter for letter, its chosen main outlet; else null. Any
    /// other text of the attribute is written as an attribute, so that it comes back as it was.
    const CSection* FindMainOutlet(const CNode& node) const;
    bool HasKnownPipe(const CSection& section) const;
    std::vector<const CDataDefinition*> KeysOf(enmEntityKind kind) const;

    std::ostream& m_stream;
    const CTopologyStorage& m_topology;
    CSectionReferences m_references;
    fmt::memory_buffer m_buffer;
    bool m_isFirst = true;
    mutable CDataBox m_box;

    const CDataDefinition* m_mainOutlet = Definition("MAIN_SECT_OUT");
    const CDataDefinition* m_pipe = Definition("PIPE_REF");
    const CDataDefinition* m_kinds = Definition("kinds");
    std::array<const CDataDefinition*, 10> m_terrains{};
    std::vector<const CDataDefinition*> m_nodeKeys = KeysOf(enmEntityKind::Node);
    std::vector<const CDataDefinition*> m_sectionKeys = KeysOf(enmEntityKind::Section);
    std::vector<const CDataDefinition*> m_catchmentKeys = KeysOf(enmEntityKind::Catchment);
};

std::vector<const CDataDefinition*> CExchangeWriter::KeysOf(enmEntityKind kind) const {
    // The format has properties of its own for these.
    std::vector<const CDataDefinition*> keys = m_topology.GetStore().GetUsedDefinitions(kind);
    std::erase_if(keys, [&](const CDataDefinition* key) {
        return key == m_mainOutlet || key == m_pipe || key == m_kinds || key->m_id.starts_with("TERRAIN_");
    });
    return keys;
}

Status CExchangeWriter::Check() const {
    for (const auto& node : m_topology.GetNodes())
        if (node->GetName().empty())
            return BadInput(fmt::format("node {}: found no name, expected one", node->GetGuid()));
    for (const auto& section : m_topology.GetSections())
        if (section->GetStartingNodeGuid().empty() || section->GetEndingNodeGuid().empty())
            return BadInput(fmt::format("section {} ({}): found no {} node, expected one: the exchange file has no "
                                        "sections with a loose end",
                                        section->GetName(), section->GetGuid(),
                                        section->GetStartingNodeGuid().empty() ? "starting" : "ending"));
    const CDataDefinition* const area = Definition("area");
    for (const auto& catchment : m_topology.GetCatchments()) {
        const auto label = [&] { return fmt::format("catchment {} ({})", catchment->GetName(), catchment->GetGuid()); };
        if (catchment->GetRings().empty() && !m_topology.GetStore().Read(*area, catchment->GetRow(), m_box))
            return BadInput(label() + ": found neither an area nor a polygon, expected one of them");
        m_box.Clear();
        m_topology.GetStore().Read(*m_kinds, catchment->GetRow(), m_box);
        if (const Status sensible = CheckAttribute(*m_kinds, m_box); !sensible)
            return BadInput(fmt::format("{}: {}", label(), sensible.GetError().message));
    }
    return Done();
}

void CExchangeWriter::WriteAll() {
    for (std::size_t type = 0; type < m_terrains.size(); ++type)
        m_terrains[type] = Definition(fmt::format("TERRAIN_{}", type + 1));
    WriteHead();
    for (const auto& node : m_topology.GetNodes())
        WriteNode(*node);
    for (const auto& section : m_topology.GetSections())
        WriteSection(*section);
    for (const auto& catchment : m_topology.GetCatchments())
        WriteCatchment(*catchment);
    for (const auto& node : m_topology.GetNodes())
        if (const CSection* section = FindMainOutlet(*node); section != nullptr)
            WriteMainOutlet(*node, *section);
    AppendRaw(m_buffer, m_isFirst ? "]}\n" : "\n]}\n");
    m_stream.write(m_buffer.data(), static_cast<std::streamsize>(m_buffer.size()));
    m_stream.flush();
}

void CExchangeWriter::WriteHead() {
    AppendRaw(m_buffer, "{\"type\":\"FeatureCollection\",\n");
    const std::string crs = System::CProjectSettings::Instance()->Get(System::CProjectSettings::Crs);
    if (!crs.empty()) {
        AppendRaw(m_buffer, "\"crs\":{\"type\":\"name\",\"properties\":{\"name\":");
        AppendJson(m_buffer, crs);
        AppendRaw(m_buffer, "}},\n");
    }
    WriteCatalog(PipeCatalogMember, Topology::CCatalogManager::PipeCatalog, enmCatalogKind::Pipe);
    WriteCatalog(ManholeCatalogMember, Topology::CCatalogManager::ManholeCatalog, enmCatalogKind::Manhole);
    AppendRaw(m_buffer, "\"features\":[");
}

void CExchangeWriter::WriteCatalog(std::string_view member, std::string_view catalog, enmCatalogKind kind) {
    const auto groups = Topology::CCatalogManager::Instance()->GetCatalog(catalog, 1)->GetOwnGroups();
    if (std::all_of(groups.begin(), groups.end(), [](const auto& group) { return group->GetSubItems().empty(); }))
        return;
    std::ostringstream table;
    if (!ExportCatalogCsv(table, kind))
        return; // cannot fail: the stream is in memory
    AppendJson(m_buffer, member);
    AppendRaw(m_buffer, ":");
    AppendJson(m_buffer, std::string_view(table.str()));
    AppendRaw(m_buffer, ",\n");
}

void CExchangeWriter::BeginFeature(std::string_view layer) {
    AppendRaw(m_buffer, m_isFirst ? "\n" : ",\n");
    m_isFirst = false;
    AppendRaw(m_buffer, "{\"type\":\"Feature\",\"properties\":{\"layer\":");
    AppendJson(m_buffer, layer);
}

void CExchangeWriter::EndFeature() {
    constexpr std::size_t blockSize = std::size_t{1} << 16;
    m_buffer.push_back('}');
    if (m_buffer.size() < blockSize)
        return;
    m_stream.write(m_buffer.data(), static_cast<std::streamsize>(m_buffer.size()));
    m_buffer.clear();
}

void CExchangeWriter::WriteKey(std::string_view key) {
    m_buffer.push_back(',');
    AppendJson(m_buffer, key);
    m_buffer.push_back(':');
}

void CExchangeWriter::WriteText(std::string_view key, std::string_view text) {
    WriteKey(key);
    AppendJson(m_buffer, text);
}

void CExchangeWriter::WriteValue(const CDataBox& box) {
    switch (box.GetKind()) {
    case CDataBox::enmKind::Null:
        return AppendRaw(m_buffer, "null");
    case CDataBox::enmKind::Int:
        return AppendJson(m_buffer, box.AsInt());
    case CDataBox::enmKind::Double:
        return AppendJson(m_buffer, box.AsDouble());
    case CDataBox::enmKind::Text:
        return AppendJson(m_buffer, box.TextView());
    }
}

void CExchangeWriter::WriteAttributes(const Data::CAttributeOwner& entity,
                                      const std::vector<const CDataDefinition*>& keys) {
    for (const CDataDefinition* key : keys) {
        if (!m_topology.GetStore().Read(*key, entity.GetRow(), m_box))
            continue;
        WriteKey(key->m_id);
        WriteValue(m_box);
    }
}

void CExchangeWriter::WritePoint(const CPoint& point) {
    m_buffer.push_back('[');
    AppendJson(m_buffer, point.m_x);
    m_buffer.push_back(',');
    AppendJson(m_buffer, point.m_y);
    m_buffer.push_back(']');
}

void CExchangeWriter::WritePoints(std::span<const CPoint> points) {
    m_buffer.push_back('[');
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (i > 0)
            m_buffer.push_back(',');
        WritePoint(points[i]);
    }
    m_buffer.push_back(']');
}

const CSection* CExchangeWriter::FindMainOutlet(const CNode& node) const {
    const CSection* const section = m_topology.GetChosenMainOutlet(node);
    if (section == nullptr)
        return nullptr;
    m_topology.GetStore().Read(*m_mainOutlet, node.GetRow(), m_box);
    return m_box.TextView() == section->GetGuid() ? section : nullptr;
}

bool CExchangeWriter::HasKnownPipe(const CSection& section) const {
    const auto pipe = section.GetPipe();
    return pipe && pipe->GetPipeData() != nullptr && pipe->GetGUID() == m_box.TextView();
}

void CExchangeWriter::WriteNode(const CNode& node) {
    BeginFeature("node");
    WriteText("name", node.GetName());
    WriteText("guid", node.GetGuid());
    WriteTerrain(node);
    if (m_topology.GetStore().Read(*m_mainOutlet, node.GetRow(), m_box) && FindMainOutlet(node) == nullptr)
        WriteText(m_mainOutlet->m_id, m_box.TextView());
    WriteAttributes(node, m_nodeKeys);
    EndProperties();
    if (node.GetPoint().IsKnown()) {
        AppendRaw(m_buffer, "{\"type\":\"Point\",\"coordinates\":");
        WritePoint(node.GetPoint());
        m_buffer.push_back('}');
    } else {
        AppendRaw(m_buffer, "null");
    }
    EndFeature();
}

void CExchangeWriter::WriteTerrain(const CNode& node) {
    bool isOpen = false;
    for (std::size_t i = 0; i < m_terrains.size(); ++i) {
        if (m_terrains[i] == nullptr || !m_topology.GetStore().Read(*m_terrains[i], node.GetRow(), m_box))
            continue;
        AppendRaw(m_buffer, isOpen ? "," : ",\"terrain\":{");
        isOpen = true;
        AppendJson(m_buffer, std::string_view(fmt::format_int(i + 1).str()));
        m_buffer.push_back(':');
        WriteValue(m_box);
    }
    if (isOpen)
        m_buffer.push_back('}');
}

void CExchangeWriter::WriteSection(const CSection& section) {
    BeginFeature("section");
    WriteText("name", section.GetName());
    WriteText("guid", section.GetGuid());
    WriteText("from", section.GetStartingNode()->GetName());
    WriteText("to", section.GetEndingNode()->GetName());
    if (m_topology.GetStore().Read(*m_pipe, section.GetRow(), m_box))
        WriteText(HasKnownPipe(section) ? std::string_view("pipe") : m_pipe->m_id, m_box.TextView());
    WriteAttributes(section, m_sectionKeys);
    EndProperties();
    if (const std::vector<CPoint> line = section.GetGeometry(); !line.empty()) {
        AppendRaw(m_buffer, "{\"type\":\"LineString\",\"coordinates\":");
        WritePoints(line);
        m_buffer.push_back('}');
    } else {
        AppendRaw(m_buffer, "null");
    }
    EndFeature();
}

void CExchangeWriter::WriteKinds(const CCatchment& catchment) {
    WriteKey("kinds");
    if (!m_topology.GetStore().Read(*m_kinds, catchment.GetRow(), m_box))
        return AppendRaw(m_buffer, "null");
    const std::string names = TextOfKinds(m_box.AsInt(), "\",\"");
    AppendRaw(m_buffer, names.empty() ? "[]" : "[\"" + names + "\"]");
}

void CExchangeWriter::WriteCatchment(const CCatchment& catchment) {
    BeginFeature("catchment");
    WriteText("name", catchment.GetName());
    WriteText("guid", catchment.GetGuid());
    WriteText("section", m_references.ReferenceTo(*catchment.GetSection()));
    WriteKinds(catchment);
    const CDataDefinition& coefficient = *Definition("coefficient");
    if (!m_topology.GetStore().Read(coefficient, catchment.GetRow(), m_box))
        AppendRaw(m_buffer, ",\"coefficient\":null"); // an absent one would be read as the default
    WriteAttributes(catchment, m_catchmentKeys);
    EndProperties();
    const Topology::CRings& rings = catchment.GetRings();
    AppendRaw(m_buffer, rings.empty() ? "null" : "{\"type\":\"Polygon\",\"coordinates\":[");
    for (std::size_t i = 0; i < rings.size(); ++i) {
        if (i > 0)
            m_buffer.push_back(',');
        WritePoints(rings[i]);
    }
    AppendRaw(m_buffer, rings.empty() ? "" : "]}");
    EndFeature();
}

void CExchangeWriter::WriteMainOutlet(const CNode& node, const CSection& section) {
    BeginFeature("main_outlet");
    WriteText("node", node.GetName());
    WriteText("section", m_references.ReferenceTo(section));
    EndProperties();
    AppendRaw(m_buffer, "null");
    EndFeature();
}

} // namespace

Status ExportExchange(std::ostream& stream) {
    try {
        CExchangeWriter writer(stream, *Topology::CTopologyMultiStorage::Instance()->GetActiveTopology());
        if (Status status = writer.Check(); !status)
            return status;
        writer.WriteAll();
    } catch (const std::exception& error) {
        return Utility::Refused(fmt::format("the exchange file could not be written: {}", error.what()));
    }
    if (!stream)
        return Utility::Refused("the exchange file could not be written");
    return Done();
}

} // namespace OLMGis::ProjectIo
