// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/store/ForeignContent.h"

#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/Utility.h"
#include "host/project_io/base/Failure.h"
#include "host/project_io/store/ForeignColumns.h"
#include "host/project_io/store/ReadableFile.h"
#include "host/workspace_core/WsManager.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <array>

namespace OLMGis::ProjectIo {

using Utility::CUtility;

namespace {

constexpr int NotKeptMessage = 70301;

/// Tables of GeoPackage that every save makes: rows about foreign content are added to ours. condition: which rows of
/// the source s; empty for all. {own} is the list of our tables, {column} whether s is about a foreign column of ours.
struct CSystemTable {
    std::string_view m_table;
    std::size_t m_columnCount; ///< as we make it; other versions of the format have further columns
    std::string_view m_condition;
};
constexpr std::array<CSystemTable, 6> SystemTables{
    {{"gpkg_spatial_ref_sys", 6, ""},
     {"gpkg_contents", 10, "lower(s.table_name) NOT IN ({own})"},
     {"gpkg_geometry_columns", 6, "lower(s.table_name) NOT IN ({own})"},
     {"gpkg_extensions", 5,
      "(s.table_name IS NULL OR lower(s.table_name) NOT IN ({own}) OR {column}) AND NOT EXISTS (SELECT 1 FROM "
      "main.gpkg_extensions m WHERE m.table_name IS s.table_name AND m.column_name IS s.column_name AND "
      "m.extension_name = s.extension_name)"},
     {"gpkg_data_columns", 7, "(lower(s.table_name) NOT IN ({own}) OR {column})"},
     {"gpkg_data_column_constraints", 8, ""}}};

bool IsSystemTable(std::string_view name) {
    return std::any_of(SystemTables.begin(), SystemTables.end(),
                       [name](const CSystemTable& table) { return CUtility::EqualIgnoreCase(table.m_table, name); });
}

/// Whether a name belongs to the R-tree of one of our layers: the tree itself, its tables, its triggers.
bool IsOfOwnIndex(std::string_view name) {
    const auto isOf = [&name](const Layout::CLayer& layer) {
        return CUtility::ToLower(name).starts_with(fmt::format("rtree_{}_{}", layer.m_table, Layout::GeometryColumn));
    };
    return std::any_of(Layout::GetLayers().begin(), Layout::GetLayers().end(), isOf) ||
           isOf(Layout::GetFindingsLayer());
}

/// An entry of the schema that is not ours.
struct CForeignObject {
    std::string m_type; ///< table, index, view, trigger
    std::string m_name;
    std::string m_sql;
    bool m_isVirtual = false;
    bool m_isTree = false; ///< an R-tree

    bool IsTable() const { return m_type == "table" && !m_isVirtual; }
};

/// In the order in which they were created, which is one in which they can be created.
std::vector<CForeignObject> ListObjects(const CSqliteDatabase& database, std::string_view schema) {
    std::vector<CForeignObject> objects;
    CSqliteStatement list(database, fmt::format("SELECT type, name, sql, rootpage FROM {}.sqlite_schema WHERE sql NOT "
                                                "NULL AND name NOT LIKE 'sqlite\\_%' ESCAPE '\\' ORDER BY rowid",
                                                schema));
    while (list.Step()) {
        CForeignObject object{std::string(list.GetText(0)), std::string(list.GetText(1)), std::string(list.GetText(2))};
        if (IsOfOwnIndex(object.m_name))
            continue;
        if (object.m_type == "table" && (Layout::IsOwnTable(object.m_name) || IsSystemTable(object.m_name)))
            continue;
        object.m_isVirtual = object.m_type == "table" && list.GetInteger(3) == 0;
        object.m_isTree =
            object.m_isVirtual && CUtility::ToLower(object.m_sql).find(" using rtree") != std::string::npos;
        objects.push_back(std::move(object));
    }
    // The tables behind a virtual table are its own matter.
    const std::vector<CForeignObject> all = objects;
    std::erase_if(objects, [&all](const CForeignObject& object) {
        return object.m_type != "view" && !object.m_isVirtual && object.m_type != "trigger" &&
               std::any_of(all.begin(), all.end(), [&object](const CForeignObject& other) {
                   return other.m_isVirtual && object.m_name.starts_with(other.m_name + "_");
               });
    });
    return objects;
}

class CForeignCopy {
public:
    explicit CForeignCopy(CSqliteDatabase& database) : m_database(database) {
        for (const Layout::CLayer& layer : Layout::GetLayers())
            AddOwn(layer.m_table);
        AddOwn(Layout::FindingsTable);
        AddOwn(Layout::LastFormsTable);
        for (const Layout::CTable& table : Layout::GetTables())
            AddOwn(table.m_table);
    }

    void Run() {
        m_database.Execute("PRAGMA temp_store = MEMORY; PRAGMA ignore_check_constraints = ON; "
                           "CREATE TEMP TABLE kept (tab TEXT, col TEXT)");
        const std::vector<CForeignObject> objects = ListObjects(m_database, "source");
        for (const CForeignObject& object : objects)
            if (object.IsTable())
                CopyTable(object);
        for (const CForeignObject& object : objects)
            if (object.m_isTree)
                CopyTree(object);
        CopyColumns();
        for (const CSystemTable& table : SystemTables)
            CopySystemRows(table);
        CorrectCounts();
        for (const std::string_view type : {"index", "view", "trigger"})
            for (const CForeignObject& object : objects)
                if (object.m_type == type)
                    CopyDefinition(object);
        m_database.Execute("DROP TABLE temp.kept");
    }

private:
    void AddOwn(std::string_view table) { m_own += fmt::format("{}'{}'", m_own.empty() ? "" : ", ", table); }

    bool Has(std::string_view schema, std::string_view table) {
        CSqliteStatement find(m_database,
                              fmt::format("SELECT 1 FROM {}.sqlite_schema WHERE type = 'table' AND name = ?", schema));
        return find.Bind(1, table).Step();
    }

    /// One statement, whatever follows it in the text.
    void Create(const std::string& sql) {
        if (!CUtility::ToLower(sql.substr(0, 7)).starts_with("create "))
            FailRefused(fmt::format("{}: found \"{}\" as a definition", m_database.GetName(), sql.substr(0, 40)));
        CSqliteStatement(m_database, sql).Run();
    }

    void CopyTable(const CForeignObject& table) {
        try {
            Create(table.m_sql);
            CopyRows(table.m_name, "");
        } catch (const CFailure& failure) {
            FailRefused(fmt::format("{}; the table \"{}\" of another program cannot be kept: remove it there, or save "
                                    "elsewhere after an export",
                                    failure.GetError().message, table.m_name));
        }
    }

    /// A GIS makes a missing index again from its layer; a damaged one is worth less than a save.
    void CopyTree(const CForeignObject& tree) {
        try {
            Create(tree.m_sql);
            CopyRows(tree.m_name, "");
        } catch (const CFailure& failure) {
            LogLost(tree, failure);
            m_database.Execute(fmt::format("DROP TABLE IF EXISTS main.{}", Quoted(tree.m_name)));
        }
    }

    /// The columns that both tables have.
    void CopyRows(std::string_view table, std::string_view condition) {
        const std::vector<CSqlColumn> mine = ListColumns(m_database, "main", table);
        std::vector<std::string> columns;
        for (const CSqlColumn& column : ListColumns(m_database, "source", table))
            if (!column.m_isComputed && FindColumn(mine, column.m_name) != nullptr)
                columns.push_back(Quoted(column.m_name));
        m_database.Execute(fmt::format("INSERT OR IGNORE INTO main.{0} ({1}) SELECT {1} FROM source.{0} s{2}{3}",
                                       Quoted(table), fmt::join(columns, ", "), condition.empty() ? "" : " WHERE ",
                                       condition));
    }

    void CopyColumns() {
        for (const Layout::CLayer& layer : Layout::GetLayers())
            for (const std::string& column : CopyForeignColumns(m_database, layer)) {
                CSqliteStatement insert(m_database, "INSERT INTO temp.kept VALUES (?, ?)");
                insert.Bind(1, layer.m_table).Bind(2, std::string_view(CUtility::ToLower(column))).Run();
            }
    }

    void CopySystemRows(const CSystemTable& table) {
        if (!Has("source", table.m_table))
            return;
        const std::vector<std::string> added = AddMissingColumns(m_database, table.m_table);
        CopyRows(
            table.m_table,
            fmt::format(fmt::runtime(std::string(table.m_condition)), fmt::arg("own", m_own),
                        fmt::arg("column", "EXISTS (SELECT 1 FROM temp.kept k WHERE k.tab = lower(s.table_name) AND "
                                           "k.col = lower(s.column_name))")));
        if (table.m_table != "gpkg_spatial_ref_sys")
            return;
        for (const std::string& column : added)
            m_database.Execute(fmt::format("UPDATE main.gpkg_spatial_ref_sys AS m SET {0} = s.{0} FROM "
                                           "source.gpkg_spatial_ref_sys s WHERE s.srs_id = m.srs_id",
                                           Quoted(column)));
    }

    /// Numbers that other programs keep for themselves: rows of our layers, and the last key of their own tables.
    void CorrectCounts() {
        if (Has("main", "gpkg_ogr_contents"))
            for (const Layout::CLayer& layer : Layout::GetLayers())
                m_database.Execute(
                    fmt::format("UPDATE main.gpkg_ogr_contents SET feature_count = (SELECT count(*) FROM "
                                "main.{0}) WHERE lower(table_name) = '{0}'",
                                layer.m_table));
        if (Has("main", "sqlite_sequence") && Has("source", "sqlite_sequence"))
            m_database.Execute(fmt::format("DELETE FROM main.sqlite_sequence WHERE lower(name) NOT IN ({0}); "
                                           "INSERT INTO main.sqlite_sequence (name, seq) SELECT name, seq FROM "
                                           "source.sqlite_sequence WHERE lower(name) NOT IN ({0}) AND name IN (SELECT "
                                           "name FROM main.sqlite_schema)",
                                           m_own));
    }

    /// An index of a column without values fails: the new file does not have the column.
    void CopyDefinition(const CForeignObject& object) {
        try {
            Create(object.m_sql);
        } catch (const CFailure& failure) {
            LogLost(object, failure);
        }
    }

    static void LogLost(const CForeignObject& object, const CFailure& failure) {
        Workspace::CWsManager::Instance()->LogMessage(
            Workspace::CLogLine::NothingStored,
            CUtility::Format(Utility::Msg(NotKeptMessage), object.m_type, object.m_name, failure.GetError().message));
    }

    CSqliteDatabase& m_database;
    std::string m_own; ///< our tables as a list of SQL texts
};

} // namespace

bool FindForeignContent(const CSqliteDatabase& database, CWarnings& warnings) {
    bool hasAny = false;
    for (const CForeignObject& object : ListObjects(database, "main")) {
        hasAny = true;
        if (object.m_isVirtual && !object.m_isTree)
            warnings.Add(fmt::format("the table \"{}\" is a virtual table of another program; saving will drop it",
                                     object.m_name));
    }
    for (const CSystemTable& table : SystemTables)
        hasAny = hasAny || ListColumns(database, "main", table.m_table).size() > table.m_columnCount;
    for (const Layout::CLayer& layer : Layout::GetLayers())
        hasAny = FindForeignColumns(database, layer, warnings) || hasAny;
    for (const Layout::CTable& table : Layout::GetTables())
        WarnOfColumnsIn(database, table, warnings);
    CSqliteStatement encoding(database, "PRAGMA encoding");
    if (hasAny && encoding.Step() && encoding.GetText(0) != "UTF-8") {
        warnings.Add(fmt::format("the file stores texts in {}, expected UTF-8; saving will drop the tables and columns "
                                 "of other programs",
                                 encoding.GetText(0)));
        return false;
    }
    return hasAny;
}

void CopyForeignContent(CSqliteDatabase& database, const CReadableFile& source) {
    // The pages of a damaged source may be linked in a circle, and then its rows never end.
    database.LimitGrowth(3 * source.GetIdentity().m_size);
    CForeignCopy(database).Run();
}

} // namespace OLMGis::ProjectIo
