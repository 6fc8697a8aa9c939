// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/network_tables/TableTemplate.h"

#include "host/gis_core/DataConfiguration.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "host/project_io/tables/TableColumns.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <system_error>
#include <utility>

namespace OLMGis::ProjectIo {

using Data::CDataDefinition;
using Data::enmEntityKind;
using Utility::Msg;
using Utility::Refused;
using Utility::Result;

namespace {

struct CTable {
    enmEntityKind m_kind;
    std::string_view m_file;
    std::string_view m_about;
};
constexpr std::array Tables = {
    CTable{enmEntityKind::Node, "nodes.csv", "one row for each manhole or other node"},
    CTable{enmEntityKind::Section, "sections.csv", "one row for each pipe run between two nodes"},
    CTable{enmEntityKind::Catchment, "catchments.csv", "one row for each area that drains to a section"},
};

/// What a person should know of a column beside its label.
struct CRemark {
    enmEntityKind m_kind;
    std::string_view m_key;
    std::string_view m_text;
};
constexpr std::array Remarks = {
    CRemark{enmEntityKind::Node, "name", "needed; no two nodes have the same"},
    CRemark{enmEntityKind::Node, "x",
            "needed; in the coordinate system (--crs EPSG:n), else plain plane coordinates in m"},
    CRemark{enmEntityKind::Node, "y", "needed; as x"},
    CRemark{enmEntityKind::Section, "name", "needed"},
    CRemark{enmEntityKind::Section, "from", "needed; name of the upper node"},
    CRemark{enmEntityKind::Section, "to", "needed; name of the lower node"},
    CRemark{enmEntityKind::Section, "line", "points between the nodes, LINESTRING (x y, x y); empty: straight"},
    CRemark{enmEntityKind::Section, "length", "empty: from the coordinates"},
    CRemark{enmEntityKind::Section, "pipe", "name or GUID of a pipe of the catalogue; drenova catalog list"},
    CRemark{enmEntityKind::Catchment, "section", "needed; name of the section that takes the flow"},
    CRemark{enmEntityKind::Catchment, "kinds", "needed; rain, household, industrial or several separated by blanks"},
    CRemark{enmEntityKind::Catchment, "area", "needed"},
    CRemark{enmEntityKind::Catchment, "coefficient", "empty: 1"},
    CRemark{enmEntityKind::Catchment, "name", "empty: made from that of the section"},
};

struct CColumn {
    std::string m_key;
    std::string m_line; ///< of the text that explains it
};

std::string_view RemarkOf(enmEntityKind kind, std::string_view key) {
    for (const CRemark& remark : Remarks)
        if (remark.m_kind == kind && remark.m_key == key)
            return remark.m_text;
    return key == "guid" ? "empty: made from the name and its place" : std::string_view();
}

std::string Explain(enmEntityKind kind, std::string_view key, int label, std::string_view values) {
    const std::string_view remark = RemarkOf(kind, key);
    return fmt::format("  {:<20} {}{}{}{}{}\n", key, Msg(label), values.empty() ? "" : "; ", values,
                       remark.empty() ? "" : "; ", remark);
}

std::string ValuesOf(const CDataDefinition& definition) {
    if (definition.m_id == "kinds" || definition.m_type == Data::enmDataType::Text)
        return {};
    const std::string unit =
        definition.m_unit.empty() || definition.m_unit == "-" ? "" : " [" + definition.m_unit + "]";
    return Data::PossibleValues(definition.m_range, "") + unit;
}

/// Columns that a person fills in: not results of runs, and of the terrains the first.
std::vector<CColumn> ColumnsOf(enmEntityKind kind) {
    std::vector<CColumn> columns;
    for (const COwnColumn& own : GetOwnColumns(kind))
        columns.push_back({std::string(own.m_key), Explain(kind, own.m_key, own.m_labelMessage, "")});
    for (const auto& definition : Data::CDataConfiguration::Instance()->GetDataDefinitions()) {
        const bool isLaterTerrain = definition->m_id.starts_with("TERRAIN_") && definition->m_id != "TERRAIN_1";
        if (definition->m_entityKind != kind || definition->m_range.m_isResult || !definition->m_isEditable ||
            isLaterTerrain)
            continue;
        const std::string key = definition->m_id == "TERRAIN_1"  ? "terrain"
                                : definition->m_id == "PIPE_REF" ? "pipe"
                                                                 : definition->m_id;
        columns.push_back({key, Explain(kind, key, definition->m_labelMessage, ValuesOf(*definition))});
    }
    return columns;
}

std::string MakeHead(const std::vector<CColumn>& columns) {
    std::string head;
    for (const CColumn& column : columns)
        head += (head.empty() ? "" : ",") + column.m_key;
    return head + "\n";
}

std::string MakeReadme() {
    std::string text =
        "Tables of a sewer network\n\n"
        "Fill in the tables with a spreadsheet or an editor and make a project of them:\n\n"
        "  drenova import --nodes nodes.csv --sections sections.csv --catchments catchments.csv -o town.gpkg\n\n"
        "Columns may have any order, and those that you do not need may be removed. The separator may be a comma, a\n"
        "semicolon or a tab, the decimal sign a point or a comma. A head may have a unit in brackets, such as\n"
        "\"length [cm]\": the values are converted. An empty cell means that there is no value.\n";
    for (const CTable& table : Tables) {
        text += fmt::format("\n{}: {}\n\n", table.m_file, table.m_about);
        for (const CColumn& column : ColumnsOf(table.m_kind))
            text += column.m_line;
    }
    return text;
}

} // namespace

Result<std::vector<std::string>> WriteTableTemplate(const std::string& folder) {
    std::vector<std::pair<std::string, std::string>> files; // path, content
    for (const CTable& table : Tables)
        files.emplace_back((std::filesystem::path(folder) / table.m_file).string(), MakeHead(ColumnsOf(table.m_kind)));
    files.emplace_back((std::filesystem::path(folder) / "README.txt").string(), MakeReadme());
    std::error_code error;
    for (const auto& [path, content] : files)
        if (std::filesystem::exists(std::filesystem::symlink_status(path, error)))
            return Refused(path + ": exists already, expected a folder without it; nothing was written");
    std::filesystem::create_directories(folder, error);
    if (error)
        return Refused(fmt::format("{}: the folder cannot be made: {}", folder, error.message()));
    std::vector<std::string> written;
    for (const auto& [path, content] : files) {
        std::ofstream file(path, std::ios::binary);
        written.push_back(path);
        file << content << std::flush;
        if (file)
            continue;
        for (const std::string& each : written)
            std::filesystem::remove(each, error);
        return Refused(path + ": cannot be written");
    }
    return written;
}

} // namespace OLMGis::ProjectIo
