// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"
#include "host/project_io/base/ImportSummary.h"
#include "host/project_io/tables/TableColumns.h"

#include <istream>
#include <string>

namespace OLMGis::ProjectIo {

/// One table to read; borrowed.
struct CTableSource {
    std::istream* m_stream = nullptr; ///< null for no such table
    std::string m_name;               ///< of the file in messages
};

/// The tables of a network.
struct CNetworkTables {
    CTableSource m_nodes;              ///< columns name, x, y; terrain and attributes of nodes as wanted
    CTableSource m_sections;           ///< columns name, from, to; length, pipe, line and attributes as wanted
    CTableSource m_catchments;         ///< columns section, kinds, area; coefficient, density as wanted; may be absent
    std::string m_crs;                 ///< "EPSG:n"; empty for plain plane coordinates in m
    const CColumnMap* m_map = nullptr; ///< null for none
};

/// Makes the active project, which must be empty, of tables: what they contain goes the way of an exchange file, by the
/// same rules for names, references, values and coordinates, in the order of nodes, sections, catchments. Sections get
/// a line from node to node by way of the points of `line`, so that one without a length has that of its line. An empty
/// cell is absent. Nothing is entered when the answer is an error: BadInput lists the first 20 faults with file, line
/// and column. The summary says how each table was read. Linear; the tables are in memory.
Utility::Result<CImportSummary> ImportTables(const CNetworkTables& tables);

} // namespace OLMGis::ProjectIo
