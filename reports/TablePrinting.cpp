// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "reports/TablePrinting.h"

#include "host/project_io/base/AttributeText.h"
#include "host/project_io/base/JsonText.h"
#include "host/project_io/tables/CsvWriter.h"
#include "reports/ShownText.h"

#include <algorithm>
#include <cmath>

namespace Reports {

using OLMGis::Data::CDataBox;
using OLMGis::ProjectIo::AppendJson;
using OLMGis::ProjectIo::AppendRaw;

namespace {

/// Places of the columns that a reader gets.
std::vector<std::size_t> ColumnsFor(enmReader reader, const CTable& table) {
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < table.GetColumns().size(); ++i)
        if (const enmReader of = table.GetColumns()[i].m_reader; of == enmReader::All || of == reader)
            places.push_back(i);
    return places;
}

std::string ShowCell(const CColumn& column, const CDataBox& value) {
    return column.m_show != nullptr ? OnOneLine(column.m_show(value)) : ShowValue(value, column.m_decimals);
}

/// Calls use(cells) for each line of the text: labels, units, rows.
template <class Use>
void ForEachLine(const CTable& table, const std::vector<std::size_t>& places, const Use& use) {
    std::vector<std::string> cells(places.size());
    for (const auto head : {&CColumn::m_label, &CColumn::m_unit}) {
        for (std::size_t i = 0; i < places.size(); ++i)
            cells[i] = OnOneLine(table.GetColumns()[places[i]].*head);
        if (std::any_of(cells.begin(), cells.end(), [](const std::string& cell) { return !cell.empty(); }))
            use(cells);
    }
    CTable::CRow row;
    for (std::size_t i = 0; i < table.GetRowCount(); ++i) {
        table.ReadRow(i, row);
        for (std::size_t j = 0; j < places.size(); ++j)
            cells[j] = ShowCell(table.GetColumns()[places[j]], row[places[j]]);
        use(cells);
    }
}

void AppendValue(fmt::memory_buffer& buffer, const CColumn& column, const CDataBox& value) {
    if (column.m_isFlag && value.IsNotNull())
        return AppendRaw(buffer, value.AsInt() != 0 ? "true" : "false");
    switch (value.GetKind()) {
    case CDataBox::enmKind::Int:
        return AppendJson(buffer, value.AsInt());
    case CDataBox::enmKind::Double:
        return AppendJson(buffer, value.AsDouble());
    case CDataBox::enmKind::Text:
        return AppendJson(buffer, value.TextView());
    case CDataBox::enmKind::Null:
        return AppendRaw(buffer, "null");
    }
}

/// Writes rows as JSON objects, one after the other, into a buffer.
class CObjects {
public:
    explicit CObjects(const CTable& table) : m_table(table) {
        for (const std::size_t place : ColumnsFor(enmReader::Programs, table)) {
            fmt::memory_buffer key;
            AppendRaw(key, m_keys.empty() ? "{" : ", ");
            AppendJson(key, std::string_view(table.GetColumns()[place].m_key));
            AppendRaw(key, ": ");
            m_keys.emplace_back(place, fmt::to_string(key));
        }
    }

    void Append(fmt::memory_buffer& buffer, std::size_t row) {
        m_table.ReadRow(row, m_row);
        for (const auto& [place, key] : m_keys) {
            AppendRaw(buffer, key);
            AppendValue(buffer, m_table.GetColumns()[place], m_row[place]);
        }
        AppendRaw(buffer, "}");
    }

private:
    const CTable& m_table;
    std::vector<std::pair<std::size_t, std::string>> m_keys; ///< place of the column, text in front of its value
    CTable::CRow m_row;
};

/// One entry a line between a head and a foot; append(buffer, row) writes an entry.
template <class Append>
void PrintEntries(std::ostream& stream, std::size_t count, std::string_view head, const Append& append,
                  std::string_view foot) {
    constexpr std::size_t BlockSize = std::size_t{1} << 16;
    fmt::memory_buffer buffer;
    const auto write = [&stream, &buffer] {
        stream.write(buffer.data(), static_cast<std::streamsize>(buffer.size()));
        buffer.clear();
    };
    AppendRaw(buffer, head);
    for (std::size_t row = 0; row < count; ++row) {
        AppendRaw(buffer, row == 0 ? "\n  " : ",\n  ");
        append(buffer, row);
        if (buffer.size() >= BlockSize)
            write();
    }
    AppendRaw(buffer, foot);
    write();
}

} // namespace

void PrintAsText(std::ostream& stream, const CTable& table, std::string_view indent) {
    if (table.IsEmpty())
        return;
    const std::vector<std::size_t> places = ColumnsFor(enmReader::People, table);
    std::vector<std::size_t> widths(places.size());
    ForEachLine(table, places, [&widths](const std::vector<std::string>& cells) {
        for (std::size_t i = 0; i < cells.size(); ++i)
            widths[i] = std::max(widths[i], DisplayWidth(cells[i]));
    });
    ForEachLine(table, places, [&](const std::vector<std::string>& cells) {
        std::string line(indent);
        for (std::size_t i = 0; i < cells.size(); ++i) {
            const std::string padding(widths[i] - DisplayWidth(cells[i]), ' ');
            line += i == 0 ? "" : "  ";
            const bool isRight = table.GetColumns()[places[i]].m_align == enmAlign::Right;
            line += isRight ? padding + cells[i] : cells[i] + padding;
        }
        line.erase(line.find_last_not_of(' ') + 1);
        stream << line << '\n';
    });
}

void PrintAsCsv(std::ostream& stream, const CTable& table) {
    const std::vector<std::size_t> places = ColumnsFor(enmReader::Programs, table);
    OLMGis::ProjectIo::CCsvWriter writer(stream);
    for (const std::size_t place : places)
        writer.Write(table.GetColumns()[place].m_key);
    writer.EndRow();
    CTable::CRow row;
    for (std::size_t i = 0; i < table.GetRowCount(); ++i) {
        table.ReadRow(i, row);
        for (const std::size_t place : places)
            writer.Write(OLMGis::ProjectIo::TextOfAttribute(row[place]));
        writer.EndRow();
    }
    (void)writer.Finish();
}

void PrintAsJson(std::ostream& stream, const CTable& table) {
    CObjects objects(table);
    PrintEntries(
        stream, table.GetRowCount(), "[",
        [&objects](fmt::memory_buffer& buffer, std::size_t row) { objects.Append(buffer, row); }, "\n]\n");
}

void PrintAsGeoJson(std::ostream& stream, const CTable& table, std::string_view crs) {
    fmt::memory_buffer head;
    AppendRaw(head, "{\"type\": \"FeatureCollection\",\n");
    if (!crs.empty()) {
        AppendRaw(head, "\"crs\": {\"type\": \"name\", \"properties\": {\"name\": ");
        AppendJson(head, crs);
        AppendRaw(head, "}},\n");
    }
    AppendRaw(head, "\"features\": [");
    CObjects objects(table);
    const auto append = [&](fmt::memory_buffer& buffer, std::size_t row) {
        AppendRaw(buffer, "{\"type\": \"Feature\", \"properties\": ");
        objects.Append(buffer, row);
        const OLMGis::Topology::CPoint point = table.ReadPoint(row);
        if (!std::isfinite(point.m_x) || !std::isfinite(point.m_y))
            return AppendRaw(buffer, ", \"geometry\": null}");
        AppendRaw(buffer, ", \"geometry\": {\"type\": \"Point\", \"coordinates\": [");
        AppendJson(buffer, point.m_x);
        AppendRaw(buffer, ", ");
        AppendJson(buffer, point.m_y);
        AppendRaw(buffer, "]}}");
    };
    PrintEntries(stream, table.GetRowCount(), {head.data(), head.size()}, append, "\n]}\n");
}

} // namespace Reports
