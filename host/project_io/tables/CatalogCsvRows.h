// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"
#include "host/network_core/Catalog.h"
#include "host/project_io/tables/CatalogCsv.h"
#include "host/project_io/tables/CsvReader.h"
#include "host/project_io/tables/CsvWriter.h"

#include <string>
#include <string_view>
#include <vector>

namespace OLMGis::ProjectIo {

/// One row of a catalogue table; GUIDs are made where the table has none.
struct CCatalogCsvRow {
    std::string m_group;
    std::string m_groupGuid;
    std::string m_name;
    std::string m_guid;
    Topology::CPipeData m_pipe; ///< in a table of pipes
    Topology::CManholeData m_manhole;

    /// A number that is possible but unusual.
    struct CUnusual {
        std::string_view m_column; ///< of the catalogue's own columns
        double m_value;
        std::string m_usual; ///< the usual values
    };
    std::vector<CUnusual> m_unusual;
};

/// GUIDs for tables without them; the same for the same names.
std::string GuidOfCatalogGroup(enmCatalogKind kind, std::string_view group);
std::string GuidOfCatalogItem(enmCatalogKind kind, std::string_view group, std::string_view name);

/// BadInput for a head line with an unknown column or without a required one.
Utility::Status CheckCatalogHead(const CCsvReader& reader, enmCatalogKind kind);

/// The current row of a table whose head was checked. BadInput for values that no pipe or manhole can have.
Utility::Result<CCatalogCsvRow> ReadCatalogRow(const CCsvReader& reader, enmCatalogKind kind, enmCatalogValues values);

void WriteCatalogHead(CCsvWriter& writer, enmCatalogKind kind, bool hasTables, bool hasGroupGuids);
void WriteCatalogRow(CCsvWriter& writer, const Topology::CCatalogItem& item, enmCatalogKind kind, bool hasTables,
                     bool hasGroupGuids);

} // namespace OLMGis::ProjectIo
