// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/FindingListing.h"

#include "apps/cli/ShownText.h"
#include "apps/cli/Table.h"
#include "host/gis_core/ProjectSettings.h"
#include "host/gis_core/Utility.h"
#include "host/project_io/base/JsonText.h"
#include "host/project_io/tables/CsvWriter.h"

#include <fmt/format.h>

#include <cmath>
#include <string>

namespace Cli {

using OLMGis::Data::CDataBox;
using OLMGis::ProjectIo::AppendJson;
using OLMGis::ProjectIo::AppendRaw;
using OLMGis::System::CProjectSettings;
using OLMGis::Topology::CFinding;
using OLMGis::Topology::CItemFindings;
using OLMGis::Utility::CUtility;
using OLMGis::Utility::Status;

namespace {

using CNumber = std::optional<double>;

std::string ShowNumber(const CNumber& number) {
    constexpr int Decimals = 3;
    return number ? ShowValue(CDataBox(*number), Decimals) : std::string();
}

std::string TextOf(const CNumber& number) {
    return number ? CUtility::ToText(*number) : std::string();
}

void AppendMember(fmt::memory_buffer& line, std::string_view key, const CNumber& number) {
    AppendRaw(line, key);
    if (number)
        AppendJson(line, *number);
    else
        AppendRaw(line, "null");
}

void AppendMember(fmt::memory_buffer& line, std::string_view key, std::string_view text) {
    AppendRaw(line, key);
    AppendJson(line, text);
}

void AppendObject(fmt::memory_buffer& line, const CItemFindings& item, const CFinding& finding) {
    AppendMember(line, "{\"item\": ", item.m_item);
    AppendMember(line, ", \"guid\": ", finding.m_guid);
    AppendMember(line, ", \"name\": ", finding.m_name);
    AppendMember(line, ", \"text\": ", finding.m_text);
    AppendMember(line, ", \"value\": ", finding.m_value);
    AppendMember(line, ", \"limit\": ", finding.m_limit);
    if (finding.m_unit.empty())
        AppendRaw(line, ", \"unit\": null}");
    else {
        AppendMember(line, ", \"unit\": ", finding.m_unit);
        AppendRaw(line, "}");
    }
}

void AppendFeature(fmt::memory_buffer& line, const CItemFindings& item, const CFinding& finding) {
    AppendRaw(line, "{\"type\": \"Feature\", \"properties\": ");
    AppendObject(line, item, finding);
    if (!std::isfinite(finding.m_point.m_x) || !std::isfinite(finding.m_point.m_y))
        return AppendRaw(line, ", \"geometry\": null}");
    AppendRaw(line, ", \"geometry\": {\"type\": \"Point\", \"coordinates\": [");
    AppendJson(line, finding.m_point.m_x);
    AppendRaw(line, ", ");
    AppendJson(line, finding.m_point.m_y);
    AppendRaw(line, "]}}");
}

using CAppend = void(fmt::memory_buffer&, const CItemFindings&, const CFinding&);

/// One entry a line between a head and a foot.
void PrintEntries(std::ostream& stream, const CFindingsByItem& items, std::string_view head, CAppend* append,
                  std::string_view foot) {
    fmt::memory_buffer line;
    AppendRaw(line, head);
    const char* separator = "\n  ";
    for (const CItemFindings& item : items)
        for (const CFinding& finding : item.m_findings) {
            AppendRaw(line, separator);
            append(line, item, finding);
            stream.write(line.data(), static_cast<std::streamsize>(line.size()));
            line.clear();
            separator = ",\n  ";
        }
    AppendRaw(line, foot);
    stream.write(line.data(), static_cast<std::streamsize>(line.size()));
}

} // namespace

std::size_t CountFindings(const CFindingsByItem& items) {
    std::size_t count = 0;
    for (const CItemFindings& item : items)
        count += item.m_findings.size();
    return count;
}

void PrintFindingsAsTable(std::ostream& stream, const CFindingsByItem& items) {
    CTable table;
    for (const char* head : {"check", "name", "finding"})
        table.AddColumn(head);
    for (const char* head : {"value", "limit"})
        table.AddColumn(head, CTable::enmAlign::Right);
    table.AddColumn("unit");
    for (const CItemFindings& item : items)
        for (const CFinding& finding : item.m_findings)
            table.AddRow({item.m_item, std::string(finding.m_name.empty() ? finding.m_guid : finding.m_name),
                          std::string(finding.m_text), ShowNumber(finding.m_value), ShowNumber(finding.m_limit),
                          std::string(finding.m_unit)});
    if (!table.IsEmpty())
        table.Print(stream);
}

Status PrintFindingsAsCsv(std::ostream& stream, const CFindingsByItem& items) {
    OLMGis::ProjectIo::CCsvWriter writer(stream);
    for (const char* head : {"item", "guid", "name", "text", "value", "limit", "unit"})
        writer.Write(head);
    writer.EndRow();
    for (const CItemFindings& item : items)
        for (const CFinding& finding : item.m_findings) {
            for (const std::string_view field :
                 {std::string_view(item.m_item), finding.m_guid, finding.m_name, finding.m_text})
                writer.Write(field);
            writer.Write(TextOf(finding.m_value));
            writer.Write(TextOf(finding.m_limit));
            writer.Write(finding.m_unit);
            writer.EndRow();
        }
    return writer.Finish();
}

void PrintFindingsAsJson(std::ostream& stream, const CFindingsByItem& items) {
    PrintEntries(stream, items, "[", &AppendObject, "\n]\n");
}

void PrintFindingsAsGeoJson(std::ostream& stream, const CFindingsByItem& items) {
    fmt::memory_buffer head;
    AppendRaw(head, "{\"type\": \"FeatureCollection\",\n");
    if (const std::string crs = CProjectSettings::Instance()->Get(CProjectSettings::Crs); !crs.empty()) {
        AppendMember(head, "\"crs\": {\"type\": \"name\", \"properties\": {\"name\": ", std::string_view(crs));
        AppendRaw(head, "}},\n");
    }
    AppendRaw(head, "\"features\": [");
    PrintEntries(stream, items, {head.data(), head.size()}, &AppendFeature, "\n]}\n");
}

} // namespace Cli
