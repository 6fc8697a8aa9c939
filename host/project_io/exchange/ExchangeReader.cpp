// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/exchange/ExchangeReader.h"

#include "host/gis_core/DataConfiguration.h"
#include "host/gis_core/Utility.h"
#include "host/network_core/Catalog.h"
#include "host/network_core/Catchment.h"
#include "host/project_io/base/AttributeText.h"
#include "host/project_io/base/CoordinateSystem.h"
#include "host/project_io/base/EpsgName.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <sstream>

namespace OLMGis::ProjectIo {

using Data::CDataBox;
using Data::CDataDefinition;
using Data::enmDataType;
using Data::enmEntityKind;
using Utility::BadInput;
using Utility::CUtility;
using Utility::Done;
using Utility::Error;
using Utility::Status;

namespace {

const CDataDefinition* Definition(std::string_view id) {
    return Data::CDataConfiguration::Instance()->GetDataDefinitionByID(id);
}

std::string_view PluralOf(enmEntityKind kind) {
    constexpr std::array<std::string_view, Data::EntityKindCount> names = {"nodes", "sections", "catchments"};
    return names[static_cast<std::size_t>(kind)];
}

bool IsWhole(double number) {
    return std::trunc(number) == number && std::abs(number) <= 2147483647.0;
}

} // namespace

Error CExchangeReader::Fault(std::string_view key, std::string_view text) const {
    return BadInput(m_places.Fault(m_feature->GetNumber(), m_feature->Label(), key, text));
}

Status CExchangeReader::TakeCatalog(enmCatalogTable kind, std::string_view table) {
    std::istringstream stream{std::string(table)};
    const auto entered = ImportCatalogCsv(stream, m_places.GetFileName() + ", catalogue", kind, enmCatalogValues::Any);
    if (!entered)
        return entered.GetError();
    if (kind == enmCatalogTable::Pipe)
        m_summary.m_pipeCount += static_cast<std::size_t>(entered.Value());
    return Done();
}

Status CExchangeReader::TakeCrs(std::string_view name) {
    const std::string crs = EpsgOfName(name);
    if (crs.empty())
        return BadInput(fmt::format("{}: crs: found {}, expected an EPSG name such as \"EPSG:3765\", or no crs for "
                                    "plain plane coordinates in m",
                                    m_places.GetFileName(), Quote(name)));
    auto system = ParseCrs(crs);
    if (!system)
        return Error{system.GetError().kind, fmt::format("{}: {}", m_places.GetFileName(), system.GetError().message)};
    m_system = std::move(system.Value());
    return Done();
}

Status CExchangeReader::TakeFeature(const CExchangeFeature& feature) {
    m_feature = &feature;
    if (!feature.GetFault().empty())
        return Fault(feature.GetFault());
    if (feature.GetNumber() >= NoRecord)
        return Fault("found more features than can be numbered, expected fewer");
    std::string_view layer;
    if (const Status status = ReadText("layer", true, layer); !status)
        return status;
    if (layer == "node")
        return ReadNode();
    if (layer == "section")
        return ReadSection();
    if (layer == "catchment")
        return ReadCatchment();
    if (layer == "main_outlet")
        return ReadMainOutlet();
    return Fault(fmt::format("found the layer {}, expected node, section, catchment or main_outlet", Quote(layer)));
}

Status CExchangeReader::ReadText(std::string_view key, bool isRequired, std::string_view& text) {
    text = {};
    const CExchangeProperty* property = m_feature->FindProperty(key);
    if (property == nullptr || property->m_value.m_kind == enmJsonKind::Null) {
        if (isRequired)
            return Fault(fmt::format("found no {}, expected one", key));
        return Done();
    }
    if (property->m_value.m_kind != enmJsonKind::Text)
        return Fault(key, fmt::format("found {}, expected a text", property->m_value.Describe()));
    text = property->m_value.m_text;
    return Done();
}

Status CExchangeReader::ReadGuid(std::string_view layer, std::string_view name, std::vector<Data::CKeptText>& guids,
                                 CGuidIndex& index) {
    std::string_view given;
    if (const Status status = ReadText("guid", false, given); !status)
        return status;
    const CExchangeProperty* property = m_feature->FindProperty("guid");
    if (property != nullptr && property->m_value.m_kind == enmJsonKind::Text && given.empty())
        return Fault("guid", "found an empty text, expected a GUID or none");
    const std::string made = given.empty() ? CUtility::MakeGuid(layer, name, m_feature->GetNumber()) : std::string();
    guids.push_back(m_records.m_texts.Keep(given.empty() ? made : given));
    if (index.Insert(m_record))
        return Done();
    return Fault("guid", fmt::format("found {}, which another {} has already (case and braces do not count), expected "
                                     "GUIDs that occur once",
                                     Quote(guids.back().View()), layer));
}

std::uint32_t CExchangeReader::NameId(std::string_view name) {
    const std::uint32_t known = m_records.m_nameIds.Find(name);
    if (known != NoRecord)
        return known;
    const auto id = static_cast<std::uint32_t>(m_records.m_nodeNames.size());
    m_records.m_nodeNames.push_back(m_records.m_texts.Keep(name));
    m_records.m_nodeOfName.push_back(NoRecord);
    m_records.m_nameIds.Insert(id);
    return id;
}

Status CExchangeReader::CheckGeometry(std::string_view type, bool isRequired) {
    const CExchangeGeometry& geometry = m_feature->GetGeometry();
    if (!geometry.IsGiven()) {
        if (isRequired)
            return Fault(fmt::format("found no geometry, expected a {}", type));
        return Done();
    }
    if (const std::string fault = geometry.FindFault(type); !fault.empty())
        return Fault("geometry", fault);
    if (geometry.HasHeights())
        m_summary.Count("geometry with heights, which are not imported (terrain and levels are attributes)", Label());
    return Done();
}

Status CExchangeReader::ReadNode() {
    std::string_view name;
    if (const Status status = ReadText("name", true, name); !status)
        return status;
    if (name.empty())
        return Fault("name", "found an empty text, expected the name of the node");
    m_record = static_cast<std::uint32_t>(m_records.m_nodes.size());
    const std::uint32_t id = NameId(name);
    if (m_records.m_nodeOfName[id] != NoRecord) {
        const std::size_t other = m_records.m_nodes[m_records.m_nodeOfName[id]].m_feature;
        return Fault(fmt::format("found a name that {} has already, expected names of nodes that occur once",
                                 m_places.Label(other, fmt::format("feature {}", other))));
    }
    m_records.m_nodeOfName[id] = m_record;
    if (const Status status = CheckGeometry("Point", false); !status)
        return status;
    const bool isDrawn = m_feature->GetGeometry().IsGiven();
    if (!isDrawn)
        m_summary.Count("node without a point, which no plan can show", Label());
    m_records.m_nodes.push_back({id, FeatureNumber()});
    m_records.m_nodePoints.push_back(isDrawn ? m_feature->GetGeometry().GetPoints().front() : Topology::CPoint());
    if (const Status status = ReadGuid("node", name, m_records.m_nodeGuids, m_records.m_nodesByGuid); !status)
        return status;
    if (const Status status = ReadTerrain(); !status)
        return status;
    return ReadAttributes(enmEntityKind::Node, {"layer", "name", "guid", "terrain"});
}

Status CExchangeReader::ReadTerrain() {
    const CExchangeProperty* terrain = m_feature->FindProperty("terrain");
    if (terrain == nullptr || terrain->m_value.m_kind == enmJsonKind::Null)
        return Done();
    if (terrain->m_value.m_kind != enmJsonKind::Object)
        return Fault(
            fmt::format("terrain: found {}, expected an object such as {{\"1\": 120.5}}", terrain->m_value.Describe()));
    for (const CExchangeProperty::CItem& item : terrain->m_items) {
        const auto type = CUtility::ParseInt(item.m_key);
        const CDataDefinition* definition = type ? Definition(fmt::format("TERRAIN_{}", *type)) : nullptr;
        if (definition == nullptr)
            return Fault(fmt::format("terrain: found the type {}, expected 1 to 10", Quote(item.m_key)));
        if (const Status status = ReadAttribute(*definition, item.m_value); !status)
            return status;
    }
    return Done();
}

Status CExchangeReader::ReadSection() {
    std::string_view name;
    std::string_view from;
    std::string_view to;
    if (const Status status = ReadText("name", true, name); !status)
        return status;
    if (const Status status = ReadText("from", false, from); !status)
        return status;
    if (const Status status = ReadText("to", false, to); !status)
        return status;
    if (const Status status = CheckGeometry("LineString", from.empty() || to.empty()); !status)
        return status;
    m_record = static_cast<std::uint32_t>(m_records.m_sections.size());
    CExchangeRecords::CSection section;
    section.m_feature = FeatureNumber();
    section.m_from = from.empty() ? NoRecord : NameId(from);
    section.m_to = to.empty() ? NoRecord : NameId(to);
    if (m_feature->GetGeometry().IsGiven())
        section.m_line = m_records.KeepPoints(m_feature->GetGeometry().GetPoints());
    m_records.m_sections.push_back(section);
    m_records.m_sectionNames.push_back(m_records.m_texts.Keep(name));
    m_records.m_isNameRepeated.push_back(false);
    if (!m_records.m_sectionsByName.Insert(m_record))
        m_records.m_isNameRepeated[m_records.m_sectionsByName.Find(name)] = true;
    if (const Status status = ReadGuid("section", name, m_records.m_sectionGuids, m_records.m_sectionsByGuid); !status)
        return status;
    if (const Status status = ReadPipe(); !status)
        return status;
    if (const Status status = ReadAttributes(enmEntityKind::Section, {"layer", "name", "guid", "from", "to", "pipe"});
        !status)
        return status;
    if (!m_feature->GetGeometry().IsGiven() && !m_records.m_attributes.IsNotNull(*Definition("length"), m_record))
        return Fault("found neither a geometry nor a length, expected one of them");
    return Done();
}

Status CExchangeReader::ReadPipe() {
    std::string_view text;
    if (const Status status = ReadText("pipe", false, text); !status)
        return status;
    if (text.empty())
        return Done();
    if (m_lastPipeGuid.empty() || text != m_lastPipeText) {
        auto item = m_pipes.GetItembyGuid(text);
        if (!item || item->GetPipeData() == nullptr) {
            const auto named = m_pipes.GetItemsByName(text);
            if (named.size() > 1)
                return Fault("pipe", fmt::format("found {}, a name that {} pipes of the catalogue have, expected the "
                                                 "GUID of one of them",
                                                 Quote(text), named.size()));
            if (named.empty())
                return Fault(
                    "pipe",
                    fmt::format("found {}, expected the name or GUID of a pipe of the catalogue; give the catalogue "
                                "with import --catalog FILE.csv, or import it afterwards and set PIPE_REF=GUID",
                                Quote(text)));
            item = named.front();
        }
        m_lastPipeText = text;
        m_lastPipeGuid = item->GetGUID();
    }
    return Stage(*Definition("PIPE_REF"), CDataBox(m_lastPipeGuid));
}

Status CExchangeReader::ReadCatchment() {
    std::string_view name;
    std::string_view section;
    if (const Status status = ReadText("name", false, name); !status)
        return status;
    if (const Status status = ReadText("section", true, section); !status)
        return status;
    m_record = static_cast<std::uint32_t>(m_records.m_catchments.size());
    CExchangeRecords::CCatchment catchment;
    catchment.m_feature = FeatureNumber();
    // Catchments of one section follow each other in most files: the text is kept once.
    const bool isRepeated =
        !m_records.m_catchments.empty() && m_records.m_catchments.back().m_sectionText.View() == section;
    catchment.m_sectionText =
        isRepeated ? m_records.m_catchments.back().m_sectionText : m_records.m_texts.Keep(section);
    m_records.m_catchments.push_back(catchment);
    m_records.m_catchmentNames.push_back(name.empty() ? Data::CKeptText() : m_records.m_texts.Keep(name));
    if (const Status status = ReadGuid("catchment", name.empty() ? section : name, m_records.m_catchmentGuids,
                                       m_records.m_catchmentsByGuid);
        !status)
        return status;
    if (const Status status = ReadKinds(); !status)
        return status;
    if (m_feature->FindProperty("coefficient") == nullptr)
        m_records.m_attributes.Set(*Definition("coefficient"), m_record, CDataBox(1.0));
    if (const Status status = ReadAttributes(enmEntityKind::Catchment, {"layer", "name", "guid", "section", "kinds"});
        !status)
        return status;
    return ReadRings();
}

Status CExchangeReader::ReadKinds() {
    const CExchangeProperty* kinds = m_feature->FindProperty("kinds");
    if (kinds == nullptr)
        return Fault("found no kinds, expected a list of rain, household and industrial");
    const bool isList = kinds->m_value.m_kind == enmJsonKind::List;
    if (!isList && kinds->m_value.m_kind != enmJsonKind::Null)
        return Fault("kinds", fmt::format("found {}, expected a list of rain, household and industrial",
                                          kinds->m_value.Describe()));
    int sum = 0;
    for (const CExchangeProperty::CItem& item : kinds->m_items) {
        const auto kind = KindOfName(item.m_value.m_text);
        if (!kind)
            return Fault("kinds",
                         fmt::format("found {}, expected rain, household or industrial", item.m_value.Describe()));
        sum |= *kind;
    }
    if (sum == 0)
        m_summary.Count("catchment of no kind, from which nothing flows", Label());
    return isList ? Stage(*Definition("kinds"), CDataBox(sum)) : Status(Done());
}

Status CExchangeReader::ReadRings() {
    if (const Status status = CheckGeometry("Polygon", false); !status)
        return status;
    const CExchangeGeometry& geometry = m_feature->GetGeometry();
    if (!geometry.IsGiven()) {
        if (m_records.m_attributes.IsNotNull(*Definition("area"), m_record))
            return Done();
        return Fault("found neither an area nor a polygon, expected one of them");
    }
    CExchangeRecords::CCatchment& catchment = m_records.m_catchments.back();
    catchment.m_firstRing = m_records.m_rings.size();
    catchment.m_ringCount = static_cast<std::uint32_t>(geometry.GetRingCount());
    for (std::size_t i = 0; i < geometry.GetRingCount(); ++i)
        m_records.m_rings.push_back(m_records.KeepPoints(geometry.GetRing(i)));
    return Done();
}

Status CExchangeReader::ReadMainOutlet() {
    std::string_view node;
    std::string_view section;
    if (const Status status = ReadText("node", true, node); !status)
        return status;
    if (const Status status = ReadText("section", true, section); !status)
        return status;
    for (const CExchangeProperty& property : m_feature->GetProperties())
        if (property.m_key != "layer" && property.m_key != "node" && property.m_key != "section")
            return Fault(fmt::format("found the key {}, expected node and section", Quote(property.m_key)));
    if (m_feature->GetGeometry().IsGiven())
        return Fault("found a geometry, expected null");
    m_records.m_mainOutlets.push_back({NameId(node), FeatureNumber(), m_records.m_texts.Keep(section)});
    return Done();
}

Status CExchangeReader::ReadAttributes(enmEntityKind kind, std::initializer_list<std::string_view> ownKeys) {
    for (const CExchangeProperty& property : m_feature->GetProperties()) {
        if (std::find(ownKeys.begin(), ownKeys.end(), property.m_key) != ownKeys.end())
            continue;
        const CDataDefinition* definition = Definition(property.m_key);
        if (definition == nullptr)
            return Fault(fmt::format("found the unknown key {}, expected the key of an attribute of {}",
                                     Quote(property.m_key), PluralOf(kind)));
        if (definition->m_entityKind != kind)
            return Fault(fmt::format("found the key {}, which is an attribute of {}, expected one of {}",
                                     Quote(property.m_key), PluralOf(definition->m_entityKind), PluralOf(kind)));
        if (const Status status = ReadAttribute(*definition, property.m_value); !status)
            return status;
    }
    return Done();
}

Status CExchangeReader::ReadAttribute(const CDataDefinition& definition, const CJsonValue& value) {
    const auto fault = [&](std::string_view expected) {
        return Fault(definition.m_id, fmt::format("found {}, expected {}", value.Describe(), expected));
    };
    if (value.m_kind == enmJsonKind::Null)
        return Done();
    switch (definition.m_type) {
    case enmDataType::Text:
        if (value.m_kind != enmJsonKind::Text)
            return fault("a text");
        return Stage(definition, CDataBox(value.m_text));
    case enmDataType::Int:
        if (value.m_kind != enmJsonKind::Number || !IsWhole(value.m_number))
            return fault("a whole number");
        return Stage(definition, CDataBox(static_cast<int>(value.m_number)));
    case enmDataType::Double:
        if (value.m_kind == enmJsonKind::Number)
            return Stage(definition, CDataBox(value.m_number));
        if (value.m_kind == enmJsonKind::Text)
            if (const auto number = NonFiniteOfText(value.m_text))
                return Stage(definition, CDataBox(*number));
        return fault("a number");
    }
    return Done();
}

void CExchangeReader::AddFault(const CDataDefinition& definition, double value) {
    const bool isCatchment = definition.m_entityKind == enmEntityKind::Catchment;
    const std::string_view name = m_feature->FindText(isCatchment ? "section" : "name");
    m_records.m_faults.Add(m_records.m_faults.IsListed() ? m_places.Listed(m_feature->GetNumber(), definition.m_id,
                                                                           PlaceOfValue(definition, name, value))
                                                         : std::string());
}

Status CExchangeReader::Stage(const CDataDefinition& definition, const CDataBox& box) {
    if (definition.m_type != enmDataType::Text &&
        Data::Judge(definition.m_range, box.AsDouble()) == Data::enmJudgement::Impossible)
        AddFault(definition, box.AsDouble());
    if (m_records.m_attributes.IsNotNull(definition, m_record))
        return Fault(fmt::format("found {} twice, by its key and in another way, expected it once", definition.m_id));
    m_records.m_attributes.Set(definition, m_record, box);
    return Done();
}

} // namespace OLMGis::ProjectIo
