// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/store/ForeignColumns.h"

#include "host/gis_core/DataConfiguration.h"
#include "host/gis_core/Utility.h"
#include "host/network_core/Catchment.h"
#include "host/network_core/Node.h"
#include "host/network_core/Section.h"
#include "host/network_core/TopologyMultiStorage.h"
#include "host/project_io/store/LayerReader.h"
#include "host/project_io/store/RowNumbers.h"

#include <fmt/format.h>

#include <algorithm>

namespace OLMGis::ProjectIo {

using Data::enmEntityKind;
using Utility::CUtility;

namespace {

/// Whether the reader takes the column as ours, to the letter.
bool IsOwnColumn(const Layout::CLayer& layer, std::string_view name) {
    const auto* const definition = Data::CDataConfiguration::Instance()->GetDataDefinitionByID(name);
    return (definition != nullptr && definition->m_entityKind == layer.m_kind) ||
           std::any_of(layer.m_columns.begin(), layer.m_columns.end(),
                       [name](const Layout::CColumn& column) { return column.m_name == name; });
}

/// Whether the name is that of a column of ours, but for the case. SQL ignores the case, so that no table has both.
bool LooksLikeOurs(const Layout::CLayer& layer, std::string_view name) {
    if (IsOwnColumn(layer, name))
        return false;
    return IsOwnColumn(layer, CUtility::ToLower(name)) || IsOwnColumn(layer, CUtility::ToUpper(name)) ||
           std::any_of(layer.m_columns.begin(), layer.m_columns.end(), [name](const Layout::CColumn& column) {
               return CUtility::EqualIgnoreCase(column.m_name, name);
           });
}

bool IsKept(const Layout::CLayer& layer, const CSqlColumn& column) {
    return !column.m_isComputed && !IsOwnColumn(layer, column.m_name) && !LooksLikeOurs(layer, column.m_name);
}

/// A type that can be put into SQL as it is.
std::string PlainType(const std::string& type) {
    const bool isPlain = std::all_of(type.begin(), type.end(), [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' || c == ' ' ||
               c == '(' || c == ')' || c == ',';
    });
    return isPlain ? type : std::string();
}

/// A default that is a number or a text: others may not be added to a table with rows.
std::string PlainDefault(const std::string& text) {
    if (CUtility::ParseDouble(text))
        return " DEFAULT " + text;
    const bool isText =
        text.size() >= 2 && text.front() == '\'' && text.back() == '\'' && text.find('\'', 1) == text.size() - 1;
    return isText ? " DEFAULT " + text : std::string();
}

void AddColumn(CSqliteDatabase& database, std::string_view table, const CSqlColumn& column) {
    database.Execute(fmt::format("ALTER TABLE main.{} ADD COLUMN {} {}{}", Quoted(table), Quoted(column.m_name),
                                 PlainType(column.m_type), PlainDefault(column.m_default)));
}

constexpr std::int64_t NoRow = 0;

/// By row of the store, the key of the entity's row in the layer as it is written.
template <class Entities>
std::vector<std::int64_t> NewRows(enmEntityKind kind, const Entities& entities) {
    std::vector<std::int64_t> rows;
    for (const auto& entity : entities) {
        if (rows.size() <= entity->GetRow())
            rows.resize(entity->GetRow() + std::size_t{1}, NoRow);
        rows[entity->GetRow()] = CRowNumbers::Instance()->GetKey(kind, entity->GetRow());
    }
    return rows;
}

std::vector<std::int64_t> NewRowsOf(const Topology::CTopologyStorage& topology, enmEntityKind kind) {
    switch (kind) {
    case enmEntityKind::Node:
        return NewRows(kind, topology.GetNodes());
    case enmEntityKind::Section:
        return NewRows(kind, topology.GetSections());
    case enmEntityKind::Catchment:
        return NewRows(kind, topology.GetCatchments());
    }
    return {};
}

std::optional<std::uint32_t> FindRow(const Topology::CTopologyStorage& topology, enmEntityKind kind,
                                     std::string_view guid) {
    const auto rowOf = [](const auto& entity) {
        return entity ? std::optional<std::uint32_t>(entity->GetRow()) : std::nullopt;
    };
    switch (kind) {
    case enmEntityKind::Node:
        return rowOf(topology.GetNodeByGuid(guid));
    case enmEntityKind::Section:
        return rowOf(topology.GetSectionByGuid(guid));
    case enmEntityKind::Catchment:
        return rowOf(topology.GetCatchmentByGuid(guid));
    }
    return std::nullopt;
}

/// Fills the table temp.link with the rows of a layer, old and new.
void LinkRows(CSqliteDatabase& database, const Layout::CLayer& layer) {
    const auto& topology = *Topology::CTopologyMultiStorage::Instance()->GetActiveTopology();
    const std::vector<std::int64_t> newRows = NewRowsOf(topology, layer.m_kind);
    CSqliteStatement read(database, fmt::format("SELECT fid, guid, name FROM source.{}", Quoted(layer.m_table)));
    CSqliteStatement insert(database, "INSERT OR IGNORE INTO temp.link VALUES (?, ?)");
    while (read.Step()) {
        const std::int64_t old = read.GetInteger(0);
        const std::string guid = GuidOfRow(layer, old, read.GetText(1), read.GetText(2), read.IsNull(2));
        const auto row = FindRow(topology, layer.m_kind, guid);
        if (row && *row < newRows.size() && newRows[*row] != NoRow)
            insert.Bind(1, newRows[*row]).Bind(2, old).Run();
    }
}

} // namespace

std::vector<CSqlColumn> ListColumns(const CSqliteDatabase& database, std::string_view schema, std::string_view table) {
    std::vector<CSqlColumn> columns;
    CSqliteStatement list(database, "SELECT name, type, dflt_value, hidden FROM pragma_table_xinfo(?, ?)");
    list.Bind(1, table).Bind(2, schema);
    while (list.Step())
        columns.push_back({std::string(list.GetText(0)), std::string(list.GetText(1)), std::string(list.GetText(2)),
                           list.GetInteger(3) != 0});
    return columns;
}

const CSqlColumn* FindColumn(const std::vector<CSqlColumn>& columns, std::string_view name) {
    const auto found = std::find_if(columns.begin(), columns.end(), [name](const CSqlColumn& column) {
        return CUtility::EqualIgnoreCase(column.m_name, name);
    });
    return found == columns.end() ? nullptr : &*found;
}

bool FindForeignColumns(const CSqliteDatabase& database, const Layout::CLayer& layer, CWarnings& warnings) {
    bool hasAny = false;
    for (const CSqlColumn& column : ListColumns(database, "main", layer.m_table)) {
        if (column.m_isComputed)
            warnings.Add(
                fmt::format("the column \"{}\" of the layer {} is computed and is not read; saving will drop it",
                            column.m_name, layer.m_table));
        else if (LooksLikeOurs(layer, column.m_name))
            warnings.Add(fmt::format("the column \"{}\" of the layer {} differs from an attribute only by case and is "
                                     "not read; saving will drop it",
                                     column.m_name, layer.m_table));
        hasAny = hasAny || IsKept(layer, column);
    }
    return hasAny;
}

void WarnOfColumnsIn(const CSqliteDatabase& database, const Layout::CTable& table, CWarnings& warnings) {
    for (const CSqlColumn& column : ListColumns(database, "main", table.m_table))
        if (std::none_of(table.m_columns.begin(), table.m_columns.end(),
                         [&column](const Layout::CColumn& own) { return own.m_name == column.m_name; }))
            warnings.Add(fmt::format("the column \"{}\" of the table {} does not belong to it; saving will drop it",
                                     column.m_name, table.m_table));
}

std::vector<std::string> AddMissingColumns(CSqliteDatabase& database, std::string_view table) {
    const std::vector<CSqlColumn> present = ListColumns(database, "main", table);
    std::vector<std::string> added;
    for (const CSqlColumn& column : ListColumns(database, "source", table)) {
        if (column.m_isComputed || FindColumn(present, column.m_name) != nullptr)
            continue;
        AddColumn(database, table, column);
        added.push_back(column.m_name);
    }
    return added;
}

std::vector<std::string> CopyForeignColumns(CSqliteDatabase& database, const Layout::CLayer& layer) {
    std::vector<std::string> kept;
    std::string assignments;
    for (const CSqlColumn& column : ListColumns(database, "source", layer.m_table)) {
        if (!IsKept(layer, column))
            continue;
        AddColumn(database, layer.m_table, column);
        kept.push_back(column.m_name);
        assignments +=
            fmt::format("{}{} = s.{}", assignments.empty() ? "" : ", ", Quoted(column.m_name), Quoted(column.m_name));
    }
    if (kept.empty())
        return kept;
    database.Execute("CREATE TEMP TABLE link (new INTEGER PRIMARY KEY, old INTEGER)");
    LinkRows(database, layer);
    database.Execute(fmt::format("UPDATE main.{0} AS m SET {1} FROM temp.link l JOIN source.{0} s ON s.fid = l.old "
                                 "WHERE m.fid = l.new; DROP TABLE temp.link",
                                 Quoted(layer.m_table), assignments));
    return kept;
}

} // namespace OLMGis::ProjectIo
