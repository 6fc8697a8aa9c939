// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/store/FindingsLayer.h"

#include "host/network_core/FunctionalAnalysisManager.h"
#include "host/project_io/base/Failure.h"
#include "host/project_io/base/OperationProgress.h"
#include "host/project_io/store/GeoPackageGeometry.h"
#include "host/project_io/store/SpatialIndex.h"

#include <fmt/format.h>

#include <algorithm>

namespace OLMGis::ProjectIo {

using Layout::CLayer;
using Topology::CFinding;
using Topology::CFunctionalAnalysisManager;
using Topology::CItemFindings;

namespace {

/// Writes the rows of the layer; its table exists already.
class CFindingWriter {
public:
    CFindingWriter(CSqliteDatabase& database, int srsId, COperationProgress& progress)
        : m_database(database), m_progress(progress), m_encoder(srsId) {}

    CLayerContent Write(const std::vector<CItemFindings>& items) {
        for (const CItemFindings& item : items)
            for (const CFinding& finding : item.m_findings)
                WriteRow(item, finding);
        m_index.Write(m_database, m_layer.m_table, Layout::GeometryColumn);
        CreateSpatialIndexTriggers(m_database, m_layer.m_table, Layout::GeometryColumn);
        return {&m_layer, {}, m_extent};
    }

private:
    void WriteRow(const CItemFindings& item, const CFinding& finding) {
        m_insert.Bind(Layout::FindingFid + 1, ++m_row);
        const CGeometryEncoder::CBlob blob = m_encoder.Encode(finding.m_point);
        if (blob.empty()) {
            m_insert.BindNull(Layout::FindingGeometry + 1);
        } else {
            m_insert.Bind(Layout::FindingGeometry + 1, blob);
            m_index.Add(m_row, m_encoder.GetExtent());
            m_extent.Add(m_encoder.GetExtent());
        }
        BindText(Layout::FindingItem, item.m_item);
        BindText(Layout::FindingGuid, finding.m_guid);
        BindText(Layout::FindingName, finding.m_name);
        BindText(Layout::FindingText, finding.m_text);
        BindNumber(Layout::FindingValue, finding.m_value);
        BindNumber(Layout::FindingLimit, finding.m_limit);
        BindText(Layout::FindingUnit, finding.m_unit);
        m_insert.Run();
        m_progress.Advance();
    }

    void BindText(int column, std::string_view text) { m_insert.Bind(column + 1, text); }

    void BindNumber(int column, const std::optional<double>& number) {
        if (number)
            m_insert.Bind(column + 1, *number);
        else
            m_insert.BindNull(column + 1);
    }

    CSqliteDatabase& m_database;
    COperationProgress& m_progress;
    const CLayer& m_layer = Layout::GetFindingsLayer();
    CSqliteStatement m_insert{m_database, Layout::InsertStatement(m_layer.m_table, Layout::FindingColumnCount)};
    CGeometryEncoder m_encoder;
    CSpatialIndex m_index;
    CExtent m_extent;
    std::int64_t m_row = 0;
};

std::optional<double> NumberOf(const CSqlReader& reader, int column) {
    return reader.IsNull(column) ? std::nullopt : std::optional(reader.GetReal(column));
}

void ReadRow(CSqlReader& reader, CItemFindings& item) {
    CFinding& finding = item.m_findings.emplace_back();
    finding.m_guid = item.Keep(reader.GetText(Layout::FindingGuid));
    finding.m_name = item.Keep(reader.GetText(Layout::FindingName));
    finding.m_text = item.Keep(reader.GetText(Layout::FindingText));
    finding.m_value = NumberOf(reader, Layout::FindingValue);
    finding.m_limit = NumberOf(reader, Layout::FindingLimit);
    finding.m_unit = item.Keep(reader.GetText(Layout::FindingUnit));
    if (const Utility::Status decoded = DecodePoint(reader.GetBlob(Layout::FindingGeometry), finding.m_point); !decoded)
        reader.Fail(decoded.GetError().message);
}

std::vector<CItemFindings> ReadItems(const CSqliteDatabase& database, const CFileTables& tables, CWarnings& warnings) {
    const CLayer& layer = Layout::GetFindingsLayer();
    const std::vector<std::string> columns = NamesOf(layer.m_columns);
    for (const std::string& column : tables.GetColumns(layer.m_table, layer.m_columns))
        if (std::find(columns.begin(), columns.end(), column) == columns.end() && column != Layout::FormerFindingColumn)
            warnings.Add(fmt::format("the column \"{}\" of the layer {} does not belong to it; saving will drop it",
                                     column, layer.m_table));
    std::vector<CItemFindings> items;
    CSqlReader reader(database, layer.m_table, columns, Quoted(columns[Layout::FindingFid]));
    while (reader.Next()) {
        const std::string_view item = reader.GetText(Layout::FindingItem);
        if (items.empty() || items.back().m_item != item)
            items.push_back({std::string(item)});
        ReadRow(reader, items.back());
    }
    return items;
}

} // namespace

std::size_t CountFindings() {
    std::size_t count = 0;
    if (const auto& findings = CFunctionalAnalysisManager::Instance()->GetFindings())
        for (const CItemFindings& item : *findings)
            count += item.m_findings.size();
    return count;
}

std::optional<CLayerContent> WriteFindings(CSqliteDatabase& database, int srsId, COperationProgress& progress) {
    const auto& findings = CFunctionalAnalysisManager::Instance()->GetFindings();
    if (!findings)
        return std::nullopt;
    Layout::CreateTable(database, Layout::FindingsTable, Layout::GetFindingsLayer().m_columns);
    return CFindingWriter(database, srsId, progress).Write(*findings);
}

void ReadFindings(const CSqliteDatabase& database, const CFileTables& tables, CWarnings& warnings) {
    auto* const manager = CFunctionalAnalysisManager::Instance();
    manager->SetFindings(std::nullopt);
    if (!tables.Has(Layout::FindingsTable))
        return;
    try {
        manager->SetFindings(ReadItems(database, tables, warnings));
    } catch (const CFailure& failure) {
        if (failure.GetError().kind != Utility::enmErrorKind::BadInput)
            throw;
        warnings.Add(fmt::format("the layer {} is not what checks write, and was left out; saving will drop it: {}",
                                 Layout::FindingsTable, failure.GetError().message));
    }
}

} // namespace OLMGis::ProjectIo
