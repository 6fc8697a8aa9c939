// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/DataDefinition.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace OLMGis::ProjectIo {

class CSqliteDatabase;

/// The layout of a project file: an OGC GeoPackage 1.3 with the layers nodes, sections and catchments, whose columns
/// are the fixed ones below and then one for each attribute that has a value, named by its key; and tables of our own,
/// whose names begin with drenova_.
namespace Layout {

inline constexpr std::uint32_t ApplicationId = 0x47504B47; ///< "GPKG"
inline constexpr int GeoPackageVersion = 10300;            ///< 1.3.0
inline constexpr int SchemaVersion = 1;                    ///< of the columns and of our own tables

inline constexpr std::string_view MetaTable = "drenova_meta";         ///< about the file itself
inline constexpr std::string_view SettingsTable = "drenova_settings"; ///< of the project
inline constexpr std::string_view TextsTable = "drenova_texts";       ///< long texts that many rows share
inline constexpr std::string_view CatalogTable = "drenova_catalog";   ///< groups and items, a group before its items
inline constexpr std::string_view ShapesTable = "drenova_catalog_shapes";        ///< points of table shapes
inline constexpr std::string_view ResultOriginsTable = "drenova_result_origins"; ///< what results were made of
inline constexpr std::string_view FindingsTable = "findings";                    ///< layer of what checks found
inline constexpr std::string_view LastFormsTable = "last_forms"; ///< values of each calculator's last run

inline constexpr std::string_view SchemaVersionName = "schema_version"; ///< names in MetaTable
inline constexpr std::string_view SaveCounterName = "save_counter";
inline constexpr std::string_view ProgramVersionName = "program_version";

inline constexpr std::string_view GeometryColumn = "geom";

/// A column that every file has.
struct CColumn {
    std::string_view m_name;
    std::string_view m_type;        ///< as SQL has it
    std::string_view m_description; ///< for the user of a GIS; empty where the name is enough
};

/// The first columns of every layer, in this order.
enum enmCommonColumn : int { Fid, Geometry, Guid, Name, NetworkOrder, CommonColumnCount };

/// The columns that follow them in a layer.
enum enmSectionColumn : int { FromNode = CommonColumnCount, ToNode, FromGuid, ToGuid };
enum enmCatchmentColumn : int { SectionName = CommonColumnCount, SectionGuid };

struct CLayer {
    Data::enmEntityKind m_kind{};
    std::string_view m_table;
    std::string_view m_geometryType;
    std::string_view m_description;
    std::vector<CColumn> m_columns; ///< fixed ones, in the order of the enums above
};

/// The layers in the order in which they are written and read: a layer comes after those that it refers to.
const std::vector<CLayer>& GetLayers();
const CLayer& GetLayer(Data::enmEntityKind kind);

/// The layer of findings; its m_kind has no meaning: a row is a finding of a check at a node or a section. Optional: a
/// project on which no checks ran has none, so that it needs no schema version of its own.
const CLayer& GetFindingsLayer();

/// A column that older files have in the layer of findings; left out, so that a run twice gives the same bytes.
inline constexpr std::string_view FormerFindingColumn = "time";

/// The columns of the layer of findings, in this order.
enum enmFindingColumn : int {
    FindingFid,
    FindingGeometry,
    FindingItem,
    FindingGuid,
    FindingName,
    FindingText,
    FindingValue,
    FindingLimit,
    FindingUnit,
    FindingColumnCount
};

/// A table of our own.
struct CTable {
    std::string_view m_table;
    std::string_view m_description;
    std::vector<CColumn> m_columns;
    bool m_isOptional = false; ///< files of earlier versions lack it; its reader checks it
};
const std::vector<CTable>& GetTables();

/// One of them, by its name.
const CTable& TableOf(std::string_view name);

/// The table of last forms. Optional, as the layer of findings.
const CTable& GetLastFormsTable();
enum enmLastFormColumn : int { LastFormId, LastFormCalculator, LastFormValues, LastFormFiles, LastFormColumnCount };

/// Whether a table of this name, case ignored, is a layer or another table that a save writes.
bool IsOwnTable(std::string_view name);

/// Whether a text attribute is kept in TextsTable, with the row there in its column: true for serialised parameters,
/// because a million sections may have the same long text.
bool IsSharedText(const Data::CDataDefinition& definition);

/// The SQL type of an attribute's column.
std::string_view TypeOf(const Data::CDataDefinition& definition);

/// Makes a table with these columns and those of the attributes.
void CreateTable(CSqliteDatabase& database, std::string_view table, std::span<const CColumn> columns,
                 std::span<const Data::CDataDefinition* const> attributes = {});

/// INSERT with a placeholder for each column, in order.
std::string InsertStatement(std::string_view table, std::size_t columnCount);

} // namespace Layout
} // namespace OLMGis::ProjectIo
