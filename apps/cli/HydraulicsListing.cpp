// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/HydraulicsListing.h"

#include "apps/cli/ShownText.h"
#include "apps/cli/Table.h"
#include "host/gis_core/DataBox.h"
#include "host/project_io/base/AttributeText.h"
#include "host/project_io/base/JsonText.h"
#include "host/project_io/tables/CsvWriter.h"

#include <fmt/format.h>

#include <array>
#include <string>
#include <string_view>

namespace Cli {

using OLMGis::Data::CDataBox;
using OLMGis::Sewage::CSectionHydraulics;

namespace {

/// A column of numbers: its key for programs, its head and unit for people.
struct CColumn {
    const char* m_key;
    const char* m_head;
    const char* m_unit;
    int m_decimals;
    double CSectionHydraulics::*m_value;
};

constexpr std::array Columns = {
    CColumn{"flow_m3s", "flow", "m³/s", 6, &CSectionHydraulics::m_flow},
    CColumn{"slope_permille", "slope", "1/1000", 3, &CSectionHydraulics::m_slope},
    CColumn{"roughness_mm", "roughness", "mm", 3, &CSectionHydraulics::m_roughness},
    CColumn{"filling_percent", "filling", "%", 1, &CSectionHydraulics::m_filling},
    CColumn{"depth_m", "depth", "m", 3, &CSectionHydraulics::m_depth},
    CColumn{"velocity_ms", "velocity", "m/s", 3, &CSectionHydraulics::m_velocity},
    CColumn{"capacity_m3s", "capacity", "m³/s", 6, &CSectionHydraulics::m_capacity},
};

CDataBox BoxOf(double value) {
    CDataBox box;
    box.SetDouble(value);
    return box;
}

} // namespace

void PrintHydraulicsAsTable(std::ostream& stream, const std::vector<CHydraulicsRow>& rows) {
    CTable table;
    std::vector<std::string> units(3);
    for (const char* head : {"section", "pipe", "flow from"})
        table.AddColumn(head);
    for (const CColumn& column : Columns) {
        table.AddColumn(column.m_head, CTable::enmAlign::Right);
        units.emplace_back(column.m_unit);
    }
    table.AddColumn("");
    units.emplace_back();
    table.AddRow(std::move(units));
    for (const CHydraulicsRow& row : rows) {
        std::vector<std::string> cells{std::string(row.m_section->GetName()), row.m_figures.m_pipe->GetName(),
                                       row.m_figures.m_flowKey->m_id};
        for (const CColumn& column : Columns)
            cells.push_back(ShowValue(BoxOf(row.m_figures.*column.m_value), column.m_decimals));
        cells.emplace_back(row.m_figures.m_isOverfull ? "overfull" : "");
        table.AddRow(std::move(cells));
    }
    table.Print(stream);
}

OLMGis::Utility::Status PrintHydraulicsAsCsv(std::ostream& stream, const std::vector<CHydraulicsRow>& rows) {
    OLMGis::ProjectIo::CCsvWriter writer(stream);
    for (const char* head : {"name", "guid", "pipe", "flow_key"})
        writer.Write(head);
    for (const CColumn& column : Columns)
        writer.Write(column.m_key);
    writer.Write("overfull");
    writer.EndRow();
    for (const CHydraulicsRow& row : rows) {
        writer.Write(row.m_section->GetName());
        writer.Write(row.m_section->GetGuid());
        writer.Write(row.m_figures.m_pipe->GetName());
        writer.Write(row.m_figures.m_flowKey->m_id);
        for (const CColumn& column : Columns)
            writer.Write(OLMGis::ProjectIo::TextOfAttribute(BoxOf(row.m_figures.*column.m_value)));
        writer.Write(row.m_figures.m_isOverfull ? "1" : "0");
        writer.EndRow();
    }
    return writer.Finish();
}

void PrintHydraulicsAsJson(std::ostream& stream, const std::vector<CHydraulicsRow>& rows) {
    using OLMGis::ProjectIo::AppendJson;
    using OLMGis::ProjectIo::AppendRaw;
    fmt::memory_buffer line;
    AppendRaw(line, "[");
    const char* separator = "\n";
    for (const CHydraulicsRow& row : rows) {
        AppendRaw(line, separator);
        const std::pair<const char*, std::string_view> texts[] = {{"  {\"name\": ", row.m_section->GetName()},
                                                                  {", \"guid\": ", row.m_section->GetGuid()},
                                                                  {", \"pipe\": ", row.m_figures.m_pipe->GetName()},
                                                                  {", \"flow_key\": ", row.m_figures.m_flowKey->m_id}};
        for (const auto& [key, text] : texts) {
            AppendRaw(line, key);
            AppendJson(line, text);
        }
        for (const CColumn& column : Columns) {
            AppendRaw(line, fmt::format(", \"{}\": ", column.m_key));
            AppendJson(line, row.m_figures.*column.m_value);
        }
        AppendRaw(line, row.m_figures.m_isOverfull ? ", \"overfull\": true}" : ", \"overfull\": false}");
        stream.write(line.data(), static_cast<std::streamsize>(line.size()));
        line.clear();
        separator = ",\n";
    }
    AppendRaw(line, "\n]\n");
    stream.write(line.data(), static_cast<std::streamsize>(line.size()));
}

} // namespace Cli
