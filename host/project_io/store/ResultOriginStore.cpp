// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/store/ResultOriginStore.h"

#include "host/gis_core/InputNotes.h"
#include "host/gis_core/ResultOrigins.h"
#include "host/project_io/base/Failure.h"
#include "host/project_io/base/StoredPath.h"
#include "host/project_io/store/GeoPackageLayout.h"
#include "host/project_io/store/ProjectTables.h"
#include "host/project_io/store/SqlReader.h"
#include "host/project_io/store/SqliteDatabase.h"

#include <fmt/format.h>

#include <charconv>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace OLMGis::ProjectIo {

using Data::CResultInput;
using Data::CResultOrigin;
using Data::CResultOrigins;

namespace {

enum enmColumn : int { Id, Calculator, Kind, Name, Detail, Hash, ColumnCount };
const std::vector<std::string> Columns = {"id", "calculator", "kind", "name", "detail", "hash"};

constexpr std::string_view Result = "result";
constexpr std::string_view Input = "input";

std::string ToStored(const CResultInput& input, const std::filesystem::path& folder) {
    if (input.m_name != Data::Inputs::File)
        return input.m_detail;
    return StoredPath(input.m_detail, folder);
}

std::string FromStored(std::string_view name, std::string_view detail, const std::filesystem::path& folder) {
    if (name != Data::Inputs::File)
        return std::string(detail);
    return (folder / detail).lexically_normal().string();
}

std::uint64_t ReadHash(const CSqlReader& reader, std::string_view text) {
    constexpr int Hexadecimal = 16;
    std::uint64_t hash = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), hash, Hexadecimal);
    if (read.ec != std::errc() || read.ptr != text.data() + text.size())
        reader.Fail(fmt::format("found the hash \"{}\", expected hexadecimal digits", text));
    return hash;
}

} // namespace

void WriteResultOrigins(CSqliteDatabase& database) {
    const std::filesystem::path folder = FolderOf(database);
    CSqliteStatement insert(database, Layout::InsertStatement(Layout::ResultOriginsTable, ColumnCount));
    std::int64_t row = 0;
    const auto write = [&](const CResultOrigin& origin, std::string_view kind, std::string_view name,
                           std::string_view detail, std::string_view hash) {
        insert.Bind(Id + 1, ++row).Bind(Calculator + 1, std::string_view(origin.m_calculator));
        insert.Bind(Kind + 1, kind).Bind(Name + 1, name).Bind(Detail + 1, detail).Bind(Hash + 1, hash).Run();
    };
    for (const CResultOrigin& origin : CResultOrigins::Instance()->GetAll()) {
        for (const std::string& key : origin.m_results)
            write(origin, Result, key, {}, {});
        for (const CResultInput& input : origin.m_inputs)
            write(origin, Input, input.m_name, ToStored(input, folder), fmt::format("{:016x}", input.m_hash));
    }
}

namespace {

std::vector<CResultOrigin> ReadOrigins(const CSqliteDatabase& database) {
    const std::filesystem::path folder = FolderOf(database);
    std::vector<CResultOrigin> origins;
    CSqlReader reader(database, Layout::ResultOriginsTable, Columns, "id");
    while (reader.Next()) {
        const std::string_view calculator = reader.GetText(Calculator);
        if (origins.empty() || origins.back().m_calculator != calculator)
            origins.push_back({std::string(calculator), {}, {}});
        const std::string name(reader.GetText(Name));
        const std::string_view kind = reader.GetText(Kind);
        if (kind == Result)
            origins.back().m_results.push_back(name);
        else if (kind == Input)
            origins.back().m_inputs.push_back(
                {name, FromStored(name, reader.GetText(Detail), folder), ReadHash(reader, reader.GetText(Hash))});
        else
            reader.Fail(fmt::format("found the kind \"{}\", expected {} or {}", kind, Result, Input));
    }
    return origins;
}

} // namespace

void ReadResultOrigins(const CSqliteDatabase& database, const CFileTables& tables, CWarnings& warnings) {
    if (!tables.Has(Layout::ResultOriginsTable))
        return;
    try {
        tables.GetColumns(Layout::ResultOriginsTable, Layout::TableOf(Layout::ResultOriginsTable).m_columns);
        CResultOrigins::Instance()->SetAll(ReadOrigins(database));
    } catch (const CFailure& failure) {
        if (failure.GetError().kind != Utility::enmErrorKind::BadInput)
            throw;
        warnings.Add(fmt::format("the table {} is not what runs write: it is not known which results are outdated, run "
                                 "their calculators again; saving will drop the table: {}",
                                 Layout::ResultOriginsTable, failure.GetError().message));
    }
}

} // namespace OLMGis::ProjectIo
