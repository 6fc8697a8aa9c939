// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "reports/RainListing.h"

#include "host/network_core/Catalog.h"
#include "host/network_core/TopologyMultiStorage.h"
#include "rain/explain/RainTraceNames.h"
#include "reports/ShownText.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

namespace Reports {

using OLMGis::Data::CDataBox;
using OLMGis::Topology::CSection;
using OLMGis::Utility::CRunTrace;
using OLMGis::Utility::CTraceTable;

namespace {

constexpr std::string_view PipeAfter = "pipe_after"; // what the project has now; the trace cannot know

/// A column and the name under which the trace has its values.
struct CSource {
    CColumn m_column;
    std::string_view m_trace;
};

std::vector<CSource> GetSources() {
    return {
        {NumberColumn("own_area_ha", "own area", "ha", 4), "own_area"},
        {NumberColumn("area_ha", "area", "ha", 4), "effective_area"},
        {NumberColumn("time_min", "time", "min", 2), "concentration_time"},
        {NumberColumn("intensity_lsha", "intensity", "l/(s·ha)", 2), "intensity"},
        {NumberColumn("flow_m3s", "flow", "m³/s", 5), "flow"},
        {TextColumn("pipe", "pipe"), "pipe"},
        {NumberColumn("inner_diameter_mm", "inside", "mm", 1), "inner_diameter"},
        {NumberColumn("filling_percent", "filling", "%", 1), "filling"},
        {NumberColumn("velocity_ms", "velocity", "m/s", 3), "velocity"},
        {TextColumn("pipe_before", "pipe before"), "pipe_before"},
        {TextColumn("pipe_after", "pipe after"), PipeAfter},
    };
}

constexpr std::size_t Texts = 2; // name and GUID, in front of the columns from the trace

struct CRainRow {
    const CSection* m_section;
    const CTraceTable::CRow* m_values;
};

/// The rows of the trace in the order of the network.
std::vector<CRainRow> GatherRows(const CTraceTable& table) {
    std::vector<CRainRow> rows;
    const auto& topology = *OLMGis::Topology::CTopologyMultiStorage::Instance()->GetActiveTopology();
    for (const CTraceTable::CRow& row : table.m_rows)
        if (const auto section = topology.GetSectionByGuid(row.m_guid))
            rows.push_back({section.get(), &row});
    std::sort(rows.begin(), rows.end(),
              [](const CRainRow& a, const CRainRow& b) { return a.m_section->GetOrder() < b.m_section->GetOrder(); });
    return rows;
}

/// For each source the place of its value in a row of the trace.
std::vector<std::size_t> FindPlaces(const CTraceTable& table, const std::vector<CSource>& sources) {
    std::vector<std::size_t> places;
    for (const CSource& source : sources)
        places.push_back(static_cast<std::size_t>(
            std::find_if(table.m_columns.begin(), table.m_columns.end(),
                         [&source](const auto& column) { return column.m_name == source.m_trace; }) -
            table.m_columns.begin()));
    return places;
}

} // namespace

CTable MakeRainTable(const CRunTrace& trace) {
    const std::vector<CSource> sources = GetSources();
    CTable table({TextColumn("name", "section"), TextColumn("guid", "", enmReader::Programs)});
    for (const CSource& source : sources)
        table.AddColumn(source.m_column);
    const CTraceTable* const traced = trace.FindTable(RainTrace::Sections);
    if (traced == nullptr)
        return table;
    std::vector<CRainRow> rows = GatherRows(*traced);
    const std::size_t count = rows.size();
    table.SetRows(
        count, [rows = std::move(rows), places = FindPlaces(*traced, sources)](std::size_t row, CTable::CRow& values) {
            const auto& [section, traceRow] = rows[row];
            values[0].SetText(section->GetName());
            values[1].SetText(section->GetGuid());
            for (std::size_t i = 0; i < places.size(); ++i)
                if (places[i] < traceRow->m_values.size())
                    values[Texts + i] = traceRow->m_values[places[i]];
            if (const auto pipe = section->GetPipe())
                values.back().SetText(pipe->GetName());
        });
    return table;
}

CRemarks GetRainRemarks(const CRunTrace& trace) {
    constexpr std::size_t MostNames = 5;
    CRemarks remarks;
    if (const CTraceTable* table = trace.FindTable(RainTrace::NotConverged))
        for (const CTraceTable::CRow& row : table->m_rows)
            remarks.push_back({CRemark::enmKind::Warning,
                               OnOneLine(fmt::format("section {}: the iteration does not converge: intensity {} "
                                                     "l/(s·ha), but {} for the times that follow from it",
                                                     row.m_name, ShowValue(row.m_values.at(0), 3),
                                                     ShowValue(row.m_values.at(1), 3)))});
    if (const CTraceTable* table = trace.FindTable(RainTrace::Unreached)) {
        std::vector<std::string_view> names;
        for (const CTraceTable::CRow& row : table->m_rows)
            names.push_back(row.m_name);
        remarks.push_back({CRemark::enmKind::Warning,
                           OnOneLine(fmt::format("{} without results, at a side outlet, below one, or in a ring: {}",
                                                 Count(names.size(), "section"), FirstNames(names, MostNames)))});
    }
    if (const CTraceTable* table = trace.FindTable(RainTrace::Files))
        for (const CTraceTable::CRow& row : table->m_rows)
            remarks.push_back({CRemark::enmKind::Message, fmt::format("{}: written", row.m_name)});
    return remarks;
}

} // namespace Reports
