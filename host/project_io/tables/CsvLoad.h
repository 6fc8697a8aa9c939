// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/DataDefinition.h"
#include "host/gis_core/Result.h"
#include "host/project_io/tables/TableColumns.h"

#include <istream>
#include <string>

namespace OLMGis::ProjectIo {

/// What a load did.
struct CCsvLoaded {
    int m_count = 0;       ///< values stored or removed
    std::string m_reading; ///< how the table was read, see CTableReader::Describe
};

/// Stores attribute values of many entities of the active project from a table with a head line of keys or labels (see
/// CTableReader). A column `name` or `guid` names the entity; where a row has both, they must agree. An empty cell
/// leaves the value as it is, the word `null` removes it. All or nothing: the whole table is checked before anything
/// is stored. map: null for no mapping file.
///
/// A table of sections may have the columns `from` and `to`, as ExportCsv writes them; they must name the nodes of the
/// section. A repeated name must be given as GUID, in either column.
///
/// Catchments are found by `guid`, or by their section (name or GUID, in the column `section` or, without that, `name`)
/// and their kinds: the one catchment of the section with the same kinds, or, in a table without kinds, its only one.
/// Several are an error that asks for the GUID. A row without a match becomes a new catchment of the section, with
/// kinds and area, coefficient 1 where none is given, and a GUID made from that of the section. Beside `section` a
/// column `name` contains the catchment's own name.
///
/// BadInput lists the first places, with line and column: an unknown column or entity, an entity on two rows, a value
/// that the attribute cannot have. Linear.
Utility::Result<CCsvLoaded> LoadCsv(std::istream& stream, const std::string& name, Data::enmEntityKind kind,
                                    const CColumnMap* map = nullptr);

} // namespace OLMGis::ProjectIo
