// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/network_tables/TableImport.h"

#include "host/gis_core/Utility.h"
#include "host/project_io/base/AttributeText.h"
#include "host/project_io/base/Failure.h"
#include "host/project_io/exchange/ExchangeEntry.h"
#include "host/project_io/exchange/ExchangeReader.h"
#include "host/project_io/network_tables/LineText.h"
#include "host/project_io/network_tables/TablePlaces.h"
#include "host/project_io/tables/TableReader.h"

#include <fmt/format.h>

#include <initializer_list>
#include <memory>
#include <utility>

namespace OLMGis::ProjectIo {

using Data::CDataBox;
using Data::enmEntityKind;
using Topology::CPoint;
using Utility::BadInput;
using Utility::Done;
using Utility::Error;
using Utility::Result;
using Utility::Status;

namespace {

constexpr std::string_view MainOutletKey = "MAIN_SECT_OUT";

/// Turns the rows of tables into features for the reader of exchange files.
class CTableImport {
public:
    explicit CTableImport(const CNetworkTables& tables)
        : m_tables(tables), m_places(NamesOf(tables)), m_reader(m_places, GetPipesToReferTo(), m_records, m_summary),
          m_nodes(tables.m_nodes.m_name), m_sections(tables.m_sections.m_name),
          m_catchments(tables.m_catchments.m_name) {}

    Result<CImportSummary> Run();

private:
    static std::string NamesOf(const CNetworkTables& tables);
    Status Open();
    Status OpenTable(const CTableSource& source, CTableReader& table, enmEntityKind kind,
                     std::initializer_list<std::string_view> needed);

    /// readRow completes the feature; false for a row whose faults are known already and from which none is made.
    template <class ReadRow>
    Status ReadRows(CTableReader& table, std::string_view layer, ReadRow readRow);
    Status ReadAll();
    bool ReadNode();
    bool ReadSection();
    bool ReadCatchment();
    Status EnterMainOutlets();

    void AddText(std::string_view key, std::string_view text);
    void AddNumber(std::string_view key, double number);
    void AddOwnTexts(const CTableReader& table);
    void AddAttributes(CTableReader& table);
    void AddValue(const Data::CDataDefinition& definition, const CDataBox& value);
    void DrawPoint(double x, double y);
    void DrawLine(const std::vector<CPoint>& line);
    const CPoint* FindPoint(std::string_view node) const;
    void AddFault(const Error& error) { m_records.m_faults.Add(error.message); }
    void AddMissing(const CTableReader& table, std::string_view key, std::string_view expected);

    struct CMainOutlet {
        std::string m_node;
        std::string m_section;
        std::size_t m_line;
    };

    const CNetworkTables& m_tables;
    CImportSummary m_summary;
    CExchangeRecords m_records;
    CTablePlaces m_places;
    CExchangeReader m_reader;
    CExchangeFeature m_feature; ///< the present row
    CTableReader m_nodes;
    CTableReader m_sections;
    CTableReader m_catchments;
    std::vector<CMainOutlet> m_mainOutlets; ///< they name sections, which are read after the nodes
};

std::string CTableImport::NamesOf(const CNetworkTables& tables) {
    std::string names = tables.m_nodes.m_name + ", " + tables.m_sections.m_name;
    return tables.m_catchments.m_stream == nullptr ? names : names + ", " + tables.m_catchments.m_name;
}

Status CTableImport::OpenTable(const CTableSource& source, CTableReader& table, enmEntityKind kind,
                               std::initializer_list<std::string_view> needed) {
    if (Status opened = table.Open(*source.m_stream, kind, enmTableUse::Network, m_tables.m_map); !opened)
        return opened;
    for (const std::string_view key : needed)
        if (!table.GetRows().FindColumn(key))
            return table.GetRows().Fault(fmt::format("found no column {}, expected one", key));
    return Done();
}

Status CTableImport::Open() {
    if (Status nodes = OpenTable(m_tables.m_nodes, m_nodes, enmEntityKind::Node, {"name", "x", "y"}); !nodes)
        return nodes;
    if (Status sections = OpenTable(m_tables.m_sections, m_sections, enmEntityKind::Section, {"name", "from", "to"});
        !sections)
        return sections;
    if (m_tables.m_catchments.m_stream == nullptr)
        return Done();
    return OpenTable(m_tables.m_catchments, m_catchments, enmEntityKind::Catchment, {"section", "kinds", "area"});
}

template <class ReadRow>
Status CTableImport::ReadRows(CTableReader& table, std::string_view layer, ReadRow readRow) {
    for (Result<bool> next = table.Next(); !next || next.Value(); next = table.Next()) {
        Status taken = next ? Status(Done()) : Status(next.GetError());
        if (next) {
            m_feature.Begin(m_places.Add(table, table.GetRows().GetLine()));
            AddText("layer", layer);
            AddOwnTexts(table);
            if (readRow())
                taken = m_reader.TakeFeature(m_feature);
        }
        if (taken)
            continue;
        if (taken.GetError().kind != Utility::enmErrorKind::BadInput)
            return taken;
        AddFault(taken.GetError());
        if (!next && !table.GetRows().CanGoOn())
            break;
    }
    return Done();
}

void CTableImport::AddText(std::string_view key, std::string_view text) {
    CExchangeProperty& property = m_feature.AddProperty(key);
    property.m_value.m_kind = enmJsonKind::Text;
    property.m_value.m_text = text;
}

void CTableImport::AddNumber(std::string_view key, double number) {
    CExchangeProperty& property = m_feature.AddProperty(key);
    property.m_value.m_kind = enmJsonKind::Number;
    property.m_value.m_number = number;
}

void CTableImport::AddOwnTexts(const CTableReader& table) {
    for (const std::string_view key : {"name", "guid", "from", "to", "section"})
        if (const std::string_view text = table.GetText(key); !text.empty())
            AddText(key, text);
}

void CTableImport::AddMissing(const CTableReader& table, std::string_view key, std::string_view expected) {
    AddFault(table.GetRows().Fault(key, fmt::format("found an empty cell, expected {}", expected)));
}

void CTableImport::AddValue(const Data::CDataDefinition& definition, const CDataBox& value) {
    if (!value.IsNotNull())
        return;
    if (definition.m_id == "PIPE_REF") {
        AddText("pipe", Utility::CUtility::Trim(value.TextView()));
    } else if (definition.m_id == "kinds") {
        CExchangeProperty& kinds = m_feature.AddProperty("kinds");
        kinds.m_value.m_kind = enmJsonKind::List;
        for (const std::string_view name : {"rain", "household", "industrial"})
            if ((value.AsInt() & *KindOfName(name)) != 0)
                kinds.m_items.push_back({{}, {enmJsonKind::Text, 0.0, std::string(name)}});
    } else if (definition.m_id == MainOutletKey) {
        m_mainOutlets.push_back(
            {std::string(m_nodes.GetText("name")), std::string(value.TextView()), m_nodes.GetRows().GetLine()});
    } else if (definition.m_type == Data::enmDataType::Text) {
        AddText(definition.m_id, value.TextView());
    } else if (const std::string_view text = TextOfNonFinite(value.AsDouble()); !text.empty()) {
        AddText(definition.m_id, text);
    } else {
        AddNumber(definition.m_id, value.AsDouble());
    }
}

void CTableImport::AddAttributes(CTableReader& table) {
    for (std::size_t i = 0; i < table.GetColumns().size(); ++i) {
        const Data::CDataDefinition* const definition = table.GetColumns()[i].m_definition;
        if (definition == nullptr)
            continue;
        const Result<CDataBox> value = table.GetValue(i);
        if (value)
            AddValue(*definition, value.Value());
        else
            AddFault(value.GetError());
    }
}

void CTableImport::DrawPoint(double x, double y) {
    CExchangeGeometry& geometry = m_feature.GetGeometry();
    geometry.SetGiven();
    geometry.SetType("Point");
    geometry.OpenList();
    geometry.AddNumber(x);
    geometry.AddNumber(y);
    geometry.CloseList();
}

void CTableImport::DrawLine(const std::vector<CPoint>& line) {
    CExchangeGeometry& geometry = m_feature.GetGeometry();
    geometry.SetGiven();
    geometry.SetType("LineString");
    geometry.OpenList();
    for (const CPoint& point : line) {
        geometry.OpenList();
        geometry.AddNumber(point.m_x);
        geometry.AddNumber(point.m_y);
        geometry.CloseList();
    }
    geometry.CloseList();
}

bool CTableImport::ReadNode() {
    const auto x = m_nodes.GetNumber("x");
    const auto y = m_nodes.GetNumber("y");
    for (const auto* each : {&x, &y})
        if (!*each)
            AddFault(each->GetError());
    const bool isRead = x && y;
    const bool isHalf = isRead && x.Value().has_value() != y.Value().has_value();
    if (isHalf)
        AddMissing(m_nodes, x.Value() ? "y" : "x", "a number, because the node has the other coordinate");
    if (!isRead || isHalf)
        DrawPoint(0.0, 0.0); // any place, so that its sections have no faults for it
    else if (x.Value())
        DrawPoint(*x.Value(), *y.Value());
    AddAttributes(m_nodes);
    return true;
}

const CPoint* CTableImport::FindPoint(std::string_view node) const {
    const std::uint32_t id = m_records.m_nameIds.Find(node);
    const std::uint32_t place = id == NoRecord ? NoRecord : m_records.m_nodeOfName[id];
    return place == NoRecord ? nullptr : &m_records.m_nodePoints[place];
}

bool CTableImport::ReadSection() {
    AddAttributes(m_sections);
    bool hasEnds = true;
    for (const std::string_view key : {"from", "to"})
        if (m_sections.GetText(key).empty()) {
            AddMissing(m_sections, key, "the name of a node");
            hasEnds = false;
        }
    std::vector<CPoint> points;
    if (const std::string_view text = m_sections.GetText("line"); !text.empty()) {
        auto parsed = ParseLineText(text);
        if (parsed)
            points = std::move(parsed.Value());
        else
            AddFault(m_sections.GetRows().Fault("line", parsed.GetError().message));
    }
    const CPoint* const from = FindPoint(m_sections.GetText("from"));
    const CPoint* const to = FindPoint(m_sections.GetText("to"));
    if (from == nullptr || to == nullptr) {
        DrawLine({CPoint{0, 0}, CPoint{0, 0}}); // any, because the linker reports the unknown node
        return hasEnds;
    }
    if (!from->IsKnown() || !to->IsKnown())
        return true;
    const auto line = JoinLine(*from, points, *to);
    if (line)
        DrawLine(line.Value());
    else
        AddFault(m_sections.GetRows().Fault("line", line.GetError().message));
    return static_cast<bool>(line);
}

bool CTableImport::ReadCatchment() {
    AddAttributes(m_catchments);
    bool isComplete = true;
    for (const auto& [key, expected] :
         {std::pair{"section", "the name of a section"},
          std::pair{"kinds", "rain, household, industrial or several of them"}, std::pair{"area", "an area in ha"}}) {
        if (m_catchments.GetText(key).empty())
            AddMissing(m_catchments, key, expected);
        isComplete = isComplete && m_feature.FindProperty(key) != nullptr;
    }
    return isComplete;
}

Status CTableImport::EnterMainOutlets() {
    for (const CMainOutlet& outlet : m_mainOutlets) {
        m_feature.Begin(m_places.Add(m_nodes, outlet.m_line));
        AddText("layer", "main_outlet");
        AddText("node", outlet.m_node);
        AddText("section", outlet.m_section);
        if (Status taken = m_reader.TakeFeature(m_feature); !taken)
            return taken;
    }
    return Done();
}

Status CTableImport::ReadAll() {
    if (Status nodes = ReadRows(m_nodes, "node", [this] { return ReadNode(); }); !nodes)
        return nodes;
    if (Status sections = ReadRows(m_sections, "section", [this] { return ReadSection(); }); !sections)
        return sections;
    if (m_tables.m_catchments.m_stream != nullptr)
        if (Status rows = ReadRows(m_catchments, "catchment", [this] { return ReadCatchment(); }); !rows)
            return rows;
    return EnterMainOutlets();
}

Result<CImportSummary> CTableImport::Run() {
    if (const Status empty = CheckEmptyProject(m_places.GetFileName()); !empty)
        return empty.GetError();
    m_summary.m_format = "tables";
    if (!m_tables.m_crs.empty())
        if (const Status crs = m_reader.TakeCrs(m_tables.m_crs); !crs)
            return crs.GetError();
    if (const Status opened = Open(); !opened)
        return opened.GetError();
    if (const Status read = ReadAll(); !read)
        return read.GetError();
    m_summary.m_readings = {m_nodes.Describe(), m_sections.Describe()};
    if (m_tables.m_catchments.m_stream != nullptr)
        m_summary.m_readings.push_back(m_catchments.Describe());
    if (const Status entered = EnterExchange(m_records, m_reader.GetCoordinateSystem(), m_places, m_summary); !entered)
        return entered.GetError();
    return std::move(m_summary);
}

} // namespace

Result<CImportSummary> ImportTables(const CNetworkTables& tables) {
    return CatchFailures<CImportSummary>(tables.m_nodes.m_name,
                                         [&] { return std::make_unique<CTableImport>(tables)->Run(); });
}

} // namespace OLMGis::ProjectIo
