// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/store/GeoPackageWriter.h"

#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/ProjectContext.h"
#include "host/gis_core/ProjectSettings.h"
#include "host/network_core/TopologyMultiStorage.h"
#include "host/project_io/base/CoordinateSystem.h"
#include "host/project_io/base/OperationProgress.h"
#include "host/project_io/store/CatalogStore.h"
#include "host/project_io/store/FindingsLayer.h"
#include "host/project_io/store/ForeignContent.h"
#include "host/project_io/store/LastFormsTable.h"
#include "host/project_io/store/LayerWriter.h"
#include "host/project_io/store/ProjectTables.h"
#include "host/project_io/store/ReadableFile.h"
#include "host/project_io/store/ResultOriginStore.h"

#include <fmt/format.h>

#include <array>

namespace OLMGis::ProjectIo {

using Data::CDataDefinition;
using Layout::CColumn;
using Layout::CLayer;
using Layout::CTable;

namespace {

// A fixed time: the same project must give the same bytes.
constexpr std::string_view LastChange = "1970-01-01T00:00:00.000Z";

constexpr const char* SystemTables = R"(
CREATE TABLE gpkg_spatial_ref_sys (
  srs_name TEXT NOT NULL,
  srs_id INTEGER NOT NULL PRIMARY KEY,
  organization TEXT NOT NULL,
  organization_coordsys_id INTEGER NOT NULL,
  definition TEXT NOT NULL,
  description TEXT
);
CREATE TABLE gpkg_contents (
  table_name TEXT NOT NULL PRIMARY KEY,
  data_type TEXT NOT NULL,
  identifier TEXT UNIQUE,
  description TEXT DEFAULT '',
  last_change DATETIME NOT NULL DEFAULT (strftime('%Y-%m-%dT%H:%M:%fZ','now')),
  min_x DOUBLE,
  min_y DOUBLE,
  max_x DOUBLE,
  max_y DOUBLE,
  srs_id INTEGER,
  CONSTRAINT fk_gc_r_srs_id FOREIGN KEY (srs_id) REFERENCES gpkg_spatial_ref_sys(srs_id)
);
CREATE TABLE gpkg_geometry_columns (
  table_name TEXT NOT NULL,
  column_name TEXT NOT NULL,
  geometry_type_name TEXT NOT NULL,
  srs_id INTEGER NOT NULL,
  z TINYINT NOT NULL,
  m TINYINT NOT NULL,
  CONSTRAINT pk_geom_cols PRIMARY KEY (table_name, column_name),
  CONSTRAINT uk_gc_table_name UNIQUE (table_name),
  CONSTRAINT fk_gc_tn FOREIGN KEY (table_name) REFERENCES gpkg_contents(table_name),
  CONSTRAINT fk_gc_srs FOREIGN KEY (srs_id) REFERENCES gpkg_spatial_ref_sys (srs_id)
);
CREATE TABLE gpkg_extensions (
  table_name TEXT,
  column_name TEXT,
  extension_name TEXT NOT NULL,
  definition TEXT NOT NULL,
  scope TEXT NOT NULL,
  CONSTRAINT ge_tce UNIQUE (table_name, column_name, extension_name)
);
CREATE TABLE gpkg_data_columns (
  table_name TEXT NOT NULL,
  column_name TEXT NOT NULL,
  name TEXT,
  title TEXT,
  description TEXT,
  mime_type TEXT,
  constraint_name TEXT,
  CONSTRAINT pk_gdc PRIMARY KEY (table_name, column_name),
  CONSTRAINT gdc_tn UNIQUE (table_name, name)
);
CREATE TABLE gpkg_data_column_constraints (
  constraint_name TEXT NOT NULL,
  constraint_type TEXT NOT NULL,
  value TEXT,
  min NUMERIC,
  min_is_inclusive BOOLEAN,
  max NUMERIC,
  max_is_inclusive BOOLEAN,
  description TEXT,
  CONSTRAINT gdcc_ntv UNIQUE (constraint_name, constraint_type, value)
);)";

constexpr const char* Wgs84 =
    R"(GEOGCS["WGS 84",DATUM["WGS_1984",SPHEROID["WGS 84",6378137,298.257223563,AUTHORITY["EPSG","7030"]],)"
    R"(AUTHORITY["EPSG","6326"]],PRIMEM["Greenwich",0,AUTHORITY["EPSG","8901"]],UNIT["degree",0.0174532925199433,)"
    R"(AUTHORITY["EPSG","9122"]],AXIS["Latitude",NORTH],AXIS["Longitude",EAST],AUTHORITY["EPSG","4326"]])";

constexpr int UndefinedPlane = -1; ///< numbers of coordinate systems that the format requires in every file
constexpr int UndefinedGlobe = 0;
constexpr int Wgs84Code = 4326;

/// Fills one GeoPackage; its system tables exist already.
class CGeoPackageWriter {
public:
    CGeoPackageWriter(CSqliteDatabase& database, COperationProgress& progress)
        : m_database(database), m_progress(progress) {}

    void Write(int saveCounter) {
        WriteCoordinateSystems();
        for (const CTable& table : Layout::GetTables())
            WriteOwnTable(table);
        WriteMeta(m_database, saveCounter);
        WriteSettings(m_database);
        WriteCatalogs(m_database);
        WriteResultOrigins(m_database);
        DescribeExtension("gpkg_data_columns", "", "gpkg_schema", "schema", "read-write");
        DescribeExtension("gpkg_data_column_constraints", "", "gpkg_schema", "schema", "read-write");
        CSharedTexts texts;
        for (const CLayer& layer : Layout::GetLayers())
            DescribeLayer(CLayerWriter(m_database, layer.m_kind, m_srsId, texts, m_progress).Write());
        if (const auto findings = WriteFindings(m_database, m_srsId, m_progress))
            DescribeLayer(*findings);
        if (HasLastForms()) {
            WriteOwnTable(Layout::GetLastFormsTable());
            WriteLastForms(m_database);
        }
        WriteSharedTexts(m_database, texts, System::CProjectContext::Active().GetAttributes().GetTexts());
    }

private:
    void PutCoordinateSystem(std::string_view name, int id, std::string_view organization,
                             std::string_view definition) {
        m_srs.Bind(1, name).Bind(2, std::int64_t{id}).Bind(3, organization).Bind(4, std::int64_t{id});
        m_srs.Bind(5, definition).Run();
    }

    /// Those that the format requires, and the project's.
    void WriteCoordinateSystems() {
        PutCoordinateSystem("Undefined Cartesian SRS", UndefinedPlane, "NONE", "undefined");
        PutCoordinateSystem("Undefined geographic SRS", UndefinedGlobe, "NONE", "undefined");
        PutCoordinateSystem("WGS 84 geodetic", Wgs84Code, "EPSG", Wgs84);
        const std::string setting = System::CProjectSettings::Instance()->Get(System::CProjectSettings::Crs);
        const auto code = ParseEpsgCode(setting);
        m_srsId = code.value_or(UndefinedPlane);
        if (!code || *code == Wgs84Code)
            return;
        // A missing EPSG register must not prevent a save: the number alone identifies the system.
        const auto system = ParseCrs(setting);
        PutCoordinateSystem(system ? system->m_name : fmt::format("EPSG:{}", *code), *code, "EPSG",
                            system ? system->m_wkt : "undefined");
    }

    void DescribeContents(std::string_view table, std::string_view type, std::string_view description) {
        for (int place = 1; place <= 10; ++place)
            m_contents.BindNull(place);
        m_contents.Bind(1, table).Bind(2, type).Bind(3, table).Bind(4, description).Bind(5, LastChange);
    }

    void DescribeColumn(std::string_view table, std::string_view column, std::string_view title,
                        std::string_view description) {
        m_column.Bind(1, table).Bind(2, column).Bind(3, title).Bind(4, description).Run();
    }

    void DescribeColumns(std::string_view table, const std::vector<CColumn>& columns) {
        for (const CColumn& column : columns)
            if (!column.m_description.empty())
                DescribeColumn(table, column.m_name, column.m_description, column.m_description);
    }

    void DescribeExtension(std::string_view table, std::string_view column, std::string_view name,
                           std::string_view chapter, std::string_view scope) {
        m_extension.Bind(1, table);
        if (column.empty())
            m_extension.BindNull(2);
        else
            m_extension.Bind(2, column);
        const std::string definition = fmt::format("http://www.geopackage.org/spec120/#extension_{}", chapter);
        m_extension.Bind(3, name).Bind(4, std::string_view(definition)).Bind(5, scope).Run();
    }

    void WriteOwnTable(const CTable& table) {
        Layout::CreateTable(m_database, table.m_table, table.m_columns);
        DescribeContents(table.m_table, "attributes", table.m_description);
        m_contents.Run();
        DescribeColumns(table.m_table, table.m_columns);
    }

    void DescribeLayer(const CLayerContent& content) {
        const CLayer& layer = *content.m_layer;
        DescribeContents(layer.m_table, "features", layer.m_description);
        if (const CExtent& extent = content.m_extent; !extent.IsEmpty())
            m_contents.Bind(6, extent.m_minX).Bind(7, extent.m_minY).Bind(8, extent.m_maxX).Bind(9, extent.m_maxY);
        m_contents.Bind(10, std::int64_t{m_srsId}).Run();
        m_geometryColumn.Bind(1, layer.m_table).Bind(2, Layout::GeometryColumn).Bind(3, layer.m_geometryType);
        m_geometryColumn.Bind(4, std::int64_t{m_srsId}).Run();
        DescribeExtension(layer.m_table, Layout::GeometryColumn, "gpkg_rtree_index", "rtree", "write-only");
        DescribeColumns(layer.m_table, layer.m_columns);
        for (const CDataDefinition* attribute : content.m_attributes)
            DescribeAttribute(layer, *attribute);
    }

    /// Title: the label. Description: label and unit.
    void DescribeAttribute(const CLayer& layer, const CDataDefinition& attribute) {
        auto& texts = *Utility::CModuleConfiguration::Instance();
        const bool hasLabel = texts.HasMsg(attribute.m_labelMessage);
        const std::string& label = hasLabel ? texts.GetMsg(attribute.m_labelMessage) : attribute.m_id;
        const std::string description =
            attribute.m_unit.empty() ? label : fmt::format("{}, {}", label, attribute.m_unit);
        DescribeColumn(layer.m_table, attribute.m_id, label, description);
    }

    CSqliteDatabase& m_database;
    COperationProgress& m_progress;
    CSqliteStatement m_srs{m_database, "INSERT INTO gpkg_spatial_ref_sys VALUES (?, ?, ?, ?, ?, NULL)"};
    CSqliteStatement m_contents{m_database, "INSERT INTO gpkg_contents VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"};
    CSqliteStatement m_geometryColumn{m_database, "INSERT INTO gpkg_geometry_columns VALUES (?, ?, ?, ?, 0, 0)"};
    CSqliteStatement m_column{m_database, "INSERT INTO gpkg_data_columns VALUES (?, ?, NULL, ?, ?, NULL, NULL)"};
    CSqliteStatement m_extension{m_database, "INSERT INTO gpkg_extensions VALUES (?, ?, ?, ?, ?)"};
    int m_srsId = UndefinedPlane;
};

std::int64_t RowCount() {
    const Topology::CTopologyStorage& topology = *Topology::CTopologyMultiStorage::Instance()->GetActiveTopology();
    return static_cast<std::int64_t>(topology.GetNodes().size() + topology.GetSections().size() +
                                     topology.GetCatchments().size() + CountFindings());
}

} // namespace

void WriteGeoPackage(const std::string& path, const std::string& name, int saveCounter, const CReadableFile* source) {
    COperationProgress progress("Saving the project", RowCount());
    CSqliteDatabase database(path, name, CSqliteDatabase::enmAccess::Write);
    database.Execute(fmt::format("PRAGMA page_size = 4096; PRAGMA encoding = 'UTF-8'; PRAGMA application_id = {}; "
                                 "PRAGMA user_version = {}",
                                 Layout::ApplicationId, Layout::GeoPackageVersion));
    if (source != nullptr)
        database.AttachSource(source->GetPath(), source->GetAccess());
    database.Execute("BEGIN");
    database.Execute(SystemTables);
    CGeoPackageWriter(database, progress).Write(saveCounter);
    if (source != nullptr)
        CopyForeignContent(database, *source);
    database.Execute("COMMIT");
    database.Close();
    progress.Show();
}

} // namespace OLMGis::ProjectIo
