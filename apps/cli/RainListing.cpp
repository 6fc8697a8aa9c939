// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/RainListing.h"

#include "apps/cli/ShownText.h"
#include "host/network_core/Catalog.h"
#include "host/network_core/TopologyMultiStorage.h"
#include "host/project_io/base/AttributeText.h"
#include "host/project_io/base/JsonText.h"
#include "host/project_io/tables/CsvWriter.h"
#include "rain/explain/RainTraceNames.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

namespace Cli {

using OLMGis::Data::CDataBox;
using OLMGis::Topology::CSection;
using OLMGis::Utility::CRunTrace;
using OLMGis::Utility::CTraceTable;

namespace {

constexpr std::string_view PipeAfter = "pipe_after"; // what the project holds now; the trace cannot know

/// A column: its key for programs, its head and unit for people, and where the trace has it.
struct CColumn {
    const char* m_key;
    const char* m_head;
    const char* m_unit;
    int m_decimals; ///< of a number; -1 for texts
    std::string_view m_trace;
};

constexpr std::array Columns = {
    CColumn{"own_area_ha", "own area", "ha", 4, "own_area"},
    CColumn{"area_ha", "area", "ha", 4, "effective_area"},
    CColumn{"time_min", "time", "min", 2, "concentration_time"},
    CColumn{"intensity_lsha", "intensity", "l/(s·ha)", 2, "intensity"},
    CColumn{"flow_m3s", "flow", "m³/s", 5, "flow"},
    CColumn{"pipe", "pipe", "", -1, "pipe"},
    CColumn{"inner_diameter_mm", "inside", "mm", 1, "inner_diameter"},
    CColumn{"filling_percent", "filling", "%", 1, "filling"},
    CColumn{"velocity_ms", "velocity", "m/s", 3, "velocity"},
    CColumn{"pipe_before", "pipe before", "", -1, "pipe_before"},
    CColumn{"pipe_after", "pipe after", "", -1, PipeAfter},
};

/// The rows of a trace in the order of the network.
class CRows {
public:
    explicit CRows(const CRunTrace& trace) : m_table(trace.FindTable(RainTrace::Sections)) {
        if (m_table == nullptr)
            return;
        for (std::size_t i = 0; i < Columns.size(); ++i)
            m_places[i] = PlaceOf(Columns[i].m_trace);
        const auto& topology = *OLMGis::Topology::CTopologyMultiStorage::Instance()->GetActiveTopology();
        for (const CTraceTable::CRow& row : m_table->m_rows)
            if (const auto section = topology.GetSectionByGuid(row.m_guid))
                m_rows.emplace_back(section.get(), &row);
        std::sort(m_rows.begin(), m_rows.end(),
                  [](const auto& a, const auto& b) { return a.first->GetOrder() < b.first->GetOrder(); });
    }

    /// Calls use(section, value) for each section; value(i) is the box of column i.
    template <class Use>
    void ForEach(const Use& use) const {
        for (const auto& [section, row] : m_rows)
            use(*section, [this, section = section, row = row](std::size_t column) {
                if (Columns[column].m_trace != PipeAfter)
                    return m_places[column] < row->m_values.size() ? row->m_values[m_places[column]] : CDataBox();
                const auto pipe = section->GetPipe();
                return pipe ? CDataBox(pipe->GetName()) : CDataBox();
            });
    }

private:
    std::size_t PlaceOf(std::string_view name) const {
        const auto& columns = m_table->m_columns;
        return static_cast<std::size_t>(
            std::find_if(columns.begin(), columns.end(), [&](const auto& c) { return c.m_name == name; }) -
            columns.begin());
    }

    const CTraceTable* m_table;
    std::array<std::size_t, Columns.size()> m_places{};
    std::vector<std::pair<const CSection*, const CTraceTable::CRow*>> m_rows;
};

/// Two passes over the rows, the first for the widths: a network may have a million sections, whose cells are not kept.
void PrintAsTable(std::ostream& stream, const CRows& rows) {
    constexpr std::size_t Count = Columns.size() + 1;
    using CCells = std::array<std::string, Count>;
    CCells heads{"section"};
    CCells units;
    for (std::size_t i = 0; i < Columns.size(); ++i) {
        heads[i + 1] = Columns[i].m_head;
        units[i + 1] = Columns[i].m_unit;
    }
    const auto forEachLine = [&](const auto& use) {
        use(heads);
        use(units);
        rows.ForEach([&use](const CSection& section, const auto& value) {
            CCells cells{OnOneLine(section.GetName())};
            for (std::size_t i = 0; i < Columns.size(); ++i)
                cells[i + 1] = ShowValue(value(i), Columns[i].m_decimals);
            use(cells);
        });
    };
    std::array<std::size_t, Count> widths{};
    forEachLine([&widths](const CCells& cells) {
        for (std::size_t i = 0; i < Count; ++i)
            widths[i] = std::max(widths[i], DisplayWidth(cells[i]));
    });
    forEachLine([&](const CCells& cells) {
        std::string line;
        for (std::size_t i = 0; i < Count; ++i) {
            const std::string padding(widths[i] - DisplayWidth(cells[i]), ' ');
            const bool isNumber = i > 0 && Columns[i - 1].m_decimals >= 0;
            line += i == 0 ? "" : "  ";
            line += isNumber ? padding + cells[i] : cells[i] + padding;
        }
        line.erase(line.find_last_not_of(' ') + 1);
        stream << line << '\n';
    });
}

void PrintAsCsv(std::ostream& stream, const CRows& rows) {
    OLMGis::ProjectIo::CCsvWriter writer(stream);
    writer.Write("name");
    writer.Write("guid");
    for (const CColumn& column : Columns)
        writer.Write(column.m_key);
    writer.EndRow();
    rows.ForEach([&writer](const CSection& section, const auto& value) {
        writer.Write(section.GetName());
        writer.Write(section.GetGuid());
        for (std::size_t i = 0; i < Columns.size(); ++i)
            writer.Write(OLMGis::ProjectIo::TextOfAttribute(value(i)));
        writer.EndRow();
    });
    // What standard output does not take is the program's matter, once for all verbs.
    (void)writer.Finish();
}

void PrintAsJson(std::ostream& stream, const CRows& rows) {
    using OLMGis::ProjectIo::AppendJson;
    using OLMGis::ProjectIo::AppendRaw;
    fmt::memory_buffer line;
    AppendRaw(line, "[");
    const char* separator = "\n";
    rows.ForEach([&](const CSection& section, const auto& value) {
        AppendRaw(line, separator);
        AppendRaw(line, "  {\"name\": ");
        AppendJson(line, section.GetName());
        AppendRaw(line, ", \"guid\": ");
        AppendJson(line, section.GetGuid());
        for (std::size_t i = 0; i < Columns.size(); ++i) {
            AppendRaw(line, fmt::format(", \"{}\": ", Columns[i].m_key));
            const CDataBox box = value(i);
            if (box.GetKind() == CDataBox::enmKind::Text)
                AppendJson(line, box.TextView());
            else if (box.IsNotNull())
                AppendJson(line, box.AsDouble());
            else
                AppendRaw(line, "null");
        }
        AppendRaw(line, "}");
        stream.write(line.data(), static_cast<std::streamsize>(line.size()));
        line.clear();
        separator = ",\n";
    });
    AppendRaw(line, "\n]\n");
    stream.write(line.data(), static_cast<std::streamsize>(line.size()));
}

std::string FirstNames(const std::vector<CTraceTable::CRow>& rows) {
    constexpr std::size_t MostNames = 5;
    std::string names;
    for (std::size_t i = 0; i < std::min(rows.size(), MostNames); ++i)
        names += (i == 0 ? "" : ", ") + rows[i].m_name;
    return rows.size() > MostNames ? names + ", ..." : names;
}

} // namespace

void PrintRainSections(std::ostream& stream, const CRunTrace& trace, const std::string& format) {
    const CRows rows(trace);
    if (format == "csv")
        PrintAsCsv(stream, rows);
    else if (format == "json")
        PrintAsJson(stream, rows);
    else
        PrintAsTable(stream, rows);
}

void TellOfRain(CTerminal& terminal, const CRunTrace& trace) {
    if (const CTraceTable* table = trace.FindTable(RainTrace::NotConverged))
        for (const CTraceTable::CRow& row : table->m_rows)
            terminal.Warn(OnOneLine(fmt::format(
                "section {}: the passes do not meet: intensity {} l/(s·ha) and, for the times that it brings, {}",
                row.m_name, ShowValue(row.m_values.at(0), 3), ShowValue(row.m_values.at(1), 3))));
    if (const CTraceTable* table = trace.FindTable(RainTrace::Unreached))
        terminal.Warn(OnOneLine(fmt::format("{} without results, at a side outlet, below one, or in a ring: {}",
                                            Count(table->m_rows.size(), "section"), FirstNames(table->m_rows))));
    if (const CTraceTable* table = trace.FindTable(RainTrace::Files))
        for (const CTraceTable::CRow& row : table->m_rows)
            terminal.Tell(fmt::format("{}: written", row.m_name));
}

} // namespace Cli
