// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/store/GeoPackageLayout.h"

#include "host/gis_core/Utility.h"
#include "host/project_io/store/SqliteDatabase.h"

#include <fmt/format.h>

#include <algorithm>

namespace OLMGis::ProjectIo::Layout {

using Data::CDataDefinition;
using Data::enmDataType;
using Data::enmEntityKind;

namespace {

constexpr std::string_view KeyType = "INTEGER PRIMARY KEY AUTOINCREMENT NOT NULL";

/// The common columns, the geometry of this type, and then the layer's own columns.
std::vector<CColumn> LayerColumns(std::string_view geometryType, std::vector<CColumn> own) {
    std::vector<CColumn> columns = {{"fid", KeyType, ""},
                                    {GeometryColumn, geometryType, ""},
                                    {"guid", "TEXT", "Identity, kept for life"},
                                    {"name", "TEXT", "Name"},
                                    {"network_order", "INTEGER", "Place in the order of the network"}};
    columns.insert(columns.end(), own.begin(), own.end());
    return columns;
}

} // namespace

const std::vector<CLayer>& GetLayers() {
    static const std::vector<CLayer> layers = {
        {enmEntityKind::Node, "nodes", "POINT", "Nodes of the sewer network", LayerColumns("POINT", {})},
        {enmEntityKind::Section, "sections", "LINESTRING", "Sections of the sewer network, from upper to lower node",
         LayerColumns("LINESTRING", {{"from_node", "TEXT", "Name of the starting node"},
                                     {"to_node", "TEXT", "Name of the ending node"},
                                     {"from_guid", "TEXT", "Identity of the starting node, goes before its name"},
                                     {"to_guid", "TEXT", "Identity of the ending node, goes before its name"}})},
        {enmEntityKind::Catchment, "catchments", "POLYGON", "Areas that drain to a section",
         LayerColumns("POLYGON", {{"section_name", "TEXT", "Name of the section"},
                                  {"section_guid", "TEXT", "Identity of the section, goes before its name"}})}};
    return layers;
}

const CLayer& GetLayer(enmEntityKind kind) {
    return GetLayers()[static_cast<std::size_t>(kind)];
}

const CLayer& GetFindingsLayer() {
    static const CLayer layer = {enmEntityKind::Node,
                                 FindingsTable,
                                 "POINT",
                                 "What the checks found at their last run",
                                 {{"fid", KeyType, ""},
                                  {GeometryColumn, "POINT", ""},
                                  {"item", "TEXT", "Key of the check"},
                                  {"guid", "TEXT", "Identity of the node or section"},
                                  {"name", "TEXT", "Name of the node or section"},
                                  {"text", "TEXT", "Finding"},
                                  {"value", "REAL", "What was found"},
                                  {"limit", "REAL", "What it was compared with"},
                                  {"unit", "TEXT", "Unit of value and limit"}}};
    return layer;
}

const std::vector<CTable>& GetTables() {
    static const std::vector<CTable> tables = {
        {MetaTable,
         "About the project file",
         {{"id", KeyType, ""}, {"name", "TEXT NOT NULL", ""}, {"value", "TEXT", ""}}},
        {SettingsTable,
         "Settings of the project",
         {{"id", KeyType, ""}, {"name", "TEXT NOT NULL", ""}, {"value", "TEXT", ""}}},
        {TextsTable, "Texts that many rows of the layers share", {{"id", KeyType, ""}, {"text", "TEXT", ""}}},
        {CatalogTable,
         "Pipes and manholes of the project, groups and their items",
         {{"id", KeyType, ""},
          {"parent", "INTEGER", "Row of the group, null for a group"},
          {"catalog", "TEXT", "PIPE or MANHOLE"},
          {"guid", "TEXT", "Identity, kept for life"},
          {"name", "TEXT", "Name"},
          {"shape", "TEXT", "Inside shape of a pipe: circle, egg, box, table"},
          {"inner_width", "REAL", "Greatest inside width of a pipe, mm"},
          {"inner_height", "REAL", "Inside height of a pipe, mm"},
          {"wall", "REAL", "Wall thickness of a pipe, mm"},
          {"roughness", "REAL", "Equivalent sand roughness of a pipe, mm"},
          {"type", "TEXT", "Type of a pipe"},
          {"min_diameter", "REAL", "Least diameter that the type of a pipe allows, mm"},
          {"inner_diameter", "REAL", "Inner diameter of a manhole, m"},
          {"h1", "REAL", "Height of a manhole's cover and adjusting rings, m"},
          {"h2", "REAL", "From terrain down to the lower edge of a manhole's cone or slab, m"},
          {"height", "REAL", "Height of a manhole, m"}}},
        {ShapesTable,
         "Points of the inside shapes of pipes that are given by a table",
         {{"id", KeyType, ""},
          {"item", "INTEGER NOT NULL", "Row of the pipe in drenova_catalog"},
          {"height", "REAL", "Height above the invert, mm"},
          {"width", "REAL", "Inside width, mm"}}},
        {ResultOriginsTable,
         "What the stored results were made of, to see which are outdated",
         {{"id", KeyType, ""},
          {"calculator", "TEXT NOT NULL", "Key of the calculator"},
          {"kind", "TEXT NOT NULL", "result or input"},
          {"name", "TEXT NOT NULL", "Attribute key, or name of another input"},
          {"detail", "TEXT", "Which part of the input"},
          {"hash", "TEXT", "Hash of the input when the result was stored, hexadecimal"}},
         true}};
    return tables;
}

const CTable& GetLastFormsTable() {
    static const CTable table = {LastFormsTable,
                                 "Values of the input forms of the last runs that stored results",
                                 {{"id", KeyType, ""},
                                  {"calculator", "TEXT NOT NULL", "Key of the calculator"},
                                  {"form", "TEXT", "Tags and values (JSON); paths relative to this file"},
                                  {"files", "TEXT", "Tags whose values are paths, separated by blanks"}}};
    return table;
}

bool IsOwnTable(std::string_view name) {
    const auto isNamed = [name](const auto& table) { return Utility::CUtility::EqualIgnoreCase(table.m_table, name); };
    return isNamed(GetFindingsLayer()) || isNamed(GetLastFormsTable()) ||
           std::any_of(GetLayers().begin(), GetLayers().end(), isNamed) ||
           std::any_of(GetTables().begin(), GetTables().end(), isNamed);
}

const CTable& TableOf(std::string_view name) {
    const auto& tables = GetTables();
    return *std::find_if(tables.begin(), tables.end(), [name](const auto& table) { return table.m_table == name; });
}

bool IsSharedText(const CDataDefinition& definition) {
    return definition.m_type == enmDataType::Text && definition.m_id.ends_with("_S");
}

std::string_view TypeOf(const CDataDefinition& definition) {
    switch (definition.m_type) {
    case enmDataType::Double:
        return "REAL";
    case enmDataType::Int:
        return "INTEGER";
    case enmDataType::Text:
        return IsSharedText(definition) ? "INTEGER" : "TEXT";
    }
    return "";
}

void CreateTable(CSqliteDatabase& database, std::string_view table, std::span<const CColumn> columns,
                 std::span<const CDataDefinition* const> attributes) {
    std::string sql;
    const auto add = [&sql](std::string_view name, std::string_view type) {
        sql += fmt::format("{}{} {}", sql.empty() ? "" : ", ", Quoted(name), type);
    };
    for (const CColumn& column : columns)
        add(column.m_name, column.m_type);
    for (const CDataDefinition* attribute : attributes)
        add(attribute->m_id, TypeOf(*attribute));
    database.Execute(fmt::format("CREATE TABLE {} ({})", Quoted(table), sql));
}

std::string InsertStatement(std::string_view table, std::size_t columnCount) {
    std::string places = "?";
    for (std::size_t i = 1; i < columnCount; ++i)
        places += ",?";
    return fmt::format("INSERT INTO {} VALUES ({})", Quoted(table), places);
}

} // namespace OLMGis::ProjectIo::Layout
