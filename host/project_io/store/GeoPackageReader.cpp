// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/store/GeoPackageReader.h"

#include "host/gis_core/ProjectContext.h"
#include "host/gis_core/ProjectSettings.h"
#include "host/network_core/TopologyMultiStorage.h"
#include "host/project_io/base/CoordinateSystem.h"
#include "host/project_io/base/Failure.h"
#include "host/project_io/base/OperationProgress.h"
#include "host/project_io/store/CatalogStore.h"
#include "host/project_io/store/FindingsLayer.h"
#include "host/project_io/store/LastFormsTable.h"
#include "host/project_io/store/LayerReader.h"
#include "host/project_io/store/ResultOriginStore.h"

#include <fmt/format.h>

#include <algorithm>
#include <memory>

namespace OLMGis::ProjectIo {

using Data::enmEntityKind;

namespace {

/// Warns where another program gave the layers a coordinate system that is not the project's.
void CompareCoordinateSystem(const CSqliteDatabase& database, const CFileTables& tables, CWarnings& warnings) {
    constexpr std::string_view Table = "gpkg_geometry_columns";
    const std::vector<std::string> columns = {"table_name", "srs_id"};
    const std::vector<Layout::CColumn> expected = {{"table_name", "", ""}, {"srs_id", "", ""}};
    tables.GetColumns(Table, expected);
    const std::string setting = System::CProjectSettings::Instance()->Get(System::CProjectSettings::Crs);
    constexpr int UndefinedPlane = -1;
    const int wanted = ParseEpsgCode(setting).value_or(UndefinedPlane);
    const auto& layers = Layout::GetLayers();
    CSqlReader reader(database, Table, columns, "table_name");
    while (reader.Next()) {
        const std::string table(reader.GetText(0));
        const bool isOurs =
            table == Layout::FindingsTable ||
            std::any_of(layers.begin(), layers.end(), [&table](const auto& layer) { return layer.m_table == table; });
        if (isOurs && reader.GetInteger(1) != wanted)
            warnings.Add(fmt::format("the layer {} has the coordinate system {}, the project {}; the project's counts",
                                     table, reader.GetInteger(1), wanted));
    }
}

/// Coordinates are m in memory: for a project in another unit the factor to m, and its setting becomes that of the same
/// system in m. 1 for all others.
double ConvertToMetres(CWarnings& warnings) {
    const std::string setting = System::CProjectSettings::Instance()->Get(System::CProjectSettings::Crs);
    if (setting.empty())
        return 1.0;
    const auto system = ParseCrs(setting);
    if (!system || !system->IsInOtherUnit())
        return 1.0;
    warnings.Add(DescribeConversion(system.Value()));
    System::CProjectSettings::Instance()->Set(System::CProjectSettings::Crs, SettingAfterConversion(system.Value()));
    return system->m_metresPerUnit;
}

void CheckOwnTables(const CFileTables& tables) {
    for (const Layout::CTable& table : Layout::GetTables())
        if (!table.m_isOptional)
            tables.GetColumns(table.m_table, table.m_columns);
}

} // namespace

CProjectMeta ReadGeoPackageMeta(const CSqliteDatabase& database) {
    const CFileTables tables(database);
    if (!tables.Has(Layout::MetaTable))
        FailBadInput(fmt::format("{}: is a GeoPackage but not a project file: found no table {}", database.GetName(),
                                 Layout::MetaTable));
    tables.GetColumns(Layout::MetaTable, Layout::GetTables().front().m_columns);
    return ReadMeta(database);
}

CProjectMeta ReadGeoPackage(const CSqliteDatabase& database, CWarnings& warnings) {
    const CProjectMeta meta = ReadGeoPackageMeta(database);
    const CFileTables tables(database);
    CheckOwnTables(tables);
    ReadSettings(database);
    CompareCoordinateSystem(database, tables, warnings);
    const double metresPerUnit = ConvertToMetres(warnings);
    ReadCatalogs(database);

    Data::CAttributeStore& store = System::CProjectContext::Active().GetAttributes();
    const CLayerReader::CTextIds texts = ReadSharedTexts(database, store.GetTexts());
    CLayerReader nodes(database, tables, enmEntityKind::Node, texts, metresPerUnit, warnings);
    CLayerReader sections(database, tables, enmEntityKind::Section, texts, metresPerUnit, warnings);
    CLayerReader catchments(database, tables, enmEntityKind::Catchment, texts, metresPerUnit, warnings);
    Topology::CTopologyMultiStorage::Instance()->GetActiveTopology()->Reserve(
        nodes.GetRowCount(), sections.GetRowCount(), catchments.GetRowCount());
    const std::size_t rows = nodes.GetRowCount() + sections.GetRowCount() + catchments.GetRowCount();
    COperationProgress progress("Opening the project", static_cast<std::int64_t>(rows));
    nodes.Read(progress);
    sections.Read(progress);
    catchments.Read(progress);
    ReadFindings(database, tables, warnings);
    ReadResultOrigins(database, tables, warnings);
    ReadLastForms(database, tables, warnings);
    progress.Show();
    return meta;
}

} // namespace OLMGis::ProjectIo
