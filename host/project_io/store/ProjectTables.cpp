// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/store/ProjectTables.h"

#include "host/gis_core/ProjectSettings.h"
#include "host/gis_core/TextPool.h"
#include "host/gis_core/Utility.h"
#include "host/project_io/base/DiskFile.h"
#include "host/project_io/base/Failure.h"
#include "host/project_io/store/GeoPackageLayout.h"
#include "host/project_io/store/SqlReader.h"

#include <fmt/format.h>

#include <map>

namespace OLMGis::ProjectIo {

namespace {

/// Columns of the tables of names and values.
enum enmColumn : int { Id, Name, Value, ColumnCount };
const std::vector<std::string> NameAndValue = {"id", "name", "value"};
const std::vector<std::string> TextColumns = {"id", "text"};

/// Writes names and values in order.
template <class Pairs>
void WritePairs(CSqliteDatabase& database, std::string_view table, const Pairs& pairs) {
    CSqliteStatement insert(database, Layout::InsertStatement(table, ColumnCount));
    std::int64_t row = 0;
    for (const auto& [name, value] : pairs)
        insert.Bind(Id + 1, ++row)
            .Bind(Name + 1, std::string_view(name))
            .Bind(Value + 1, std::string_view(value))
            .Run();
}

/// A number of the meta table, above 0.
int NumberOf(const CSqliteDatabase& database, const std::map<std::string, std::string, std::less<>>& notes,
             std::string_view name) {
    const auto found = notes.find(name);
    const std::string_view text = found == notes.end() ? std::string_view() : found->second;
    const auto number = Utility::CUtility::ParseInt(text);
    if (!number || *number < 1)
        FailBadInput(fmt::format("{}: table {}: found \"{}\" as {}, expected a number above 0", database.GetName(),
                                 Layout::MetaTable, text, name));
    return *number;
}

} // namespace

std::int64_t CSharedTexts::GetNumber(std::uint32_t poolId) {
    const auto [entry, isNew] = m_numbers.emplace(poolId, static_cast<std::int64_t>(m_poolIds.size()) + 1);
    if (isNew)
        m_poolIds.push_back(poolId);
    return entry->second;
}

std::filesystem::path FolderOf(const CSqliteDatabase& database) {
    return ResolvedPath(database.GetName()).parent_path();
}

void WriteMeta(CSqliteDatabase& database, int saveCounter) {
    using CPair = std::pair<std::string_view, std::string>;
    WritePairs(database, Layout::MetaTable,
               std::vector<CPair>{{Layout::SchemaVersionName, std::to_string(Layout::SchemaVersion)},
                                  {Layout::SaveCounterName, std::to_string(saveCounter)},
                                  {Layout::ProgramVersionName, DRENOVA_VERSION}});
}

void WriteSettings(CSqliteDatabase& database) {
    WritePairs(database, Layout::SettingsTable, System::CProjectSettings::Instance()->GetAll());
}

void WriteSharedTexts(CSqliteDatabase& database, const CSharedTexts& texts, const Data::CTextPool& pool) {
    CSqliteStatement insert(database, Layout::InsertStatement(Layout::TextsTable, TextColumns.size()));
    std::int64_t row = 0;
    for (const std::uint32_t poolId : texts.GetPoolIds())
        insert.Bind(1, ++row).Bind(2, pool.Get(poolId)).Run();
}

CProjectMeta ReadMeta(const CSqliteDatabase& database) {
    std::map<std::string, std::string, std::less<>> notes;
    CSqlReader reader(database, Layout::MetaTable, NameAndValue, "id");
    while (reader.Next())
        notes.insert_or_assign(std::string(reader.GetText(Name)), reader.GetText(Value));
    CProjectMeta meta;
    meta.m_schemaVersion = NumberOf(database, notes, Layout::SchemaVersionName);
    if (meta.m_schemaVersion != Layout::SchemaVersion)
        FailBadInput(fmt::format("{}: was saved by {} program: found schema version {}, expected {}",
                                 database.GetName(),
                                 meta.m_schemaVersion > Layout::SchemaVersion ? "a newer" : "another",
                                 meta.m_schemaVersion, Layout::SchemaVersion));
    meta.m_saveCounter = NumberOf(database, notes, Layout::SaveCounterName);
    return meta;
}

void ReadSettings(const CSqliteDatabase& database) {
    CSqlReader reader(database, Layout::SettingsTable, NameAndValue, "id");
    while (reader.Next())
        System::CProjectSettings::Instance()->Set(reader.GetText(Name), reader.GetText(Value));
}

std::unordered_map<std::int64_t, std::uint32_t> ReadSharedTexts(const CSqliteDatabase& database,
                                                                Data::CTextPool& pool) {
    std::unordered_map<std::int64_t, std::uint32_t> poolIds;
    CSqlReader reader(database, Layout::TextsTable, TextColumns, "id");
    while (reader.Next())
        poolIds.emplace(reader.GetKey(), pool.Intern(reader.GetText(1)));
    return poolIds;
}

} // namespace OLMGis::ProjectIo
