// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"

#include <istream>
#include <ostream>
#include <string>
#include <vector>

namespace OLMGis::ProjectIo {

enum class enmCatalogKind { Pipe, Manhole };
/// Kind of table for ImportCatalogCsv; Detect decides by the head line.
enum class enmCatalogTable { Pipe, Manhole, Detect };
/// Which values are accepted: Usual, the range of real pipes and manholes, for tables by people, where other values are
/// mostly wrong units; Any for tables of our own, because imported networks may contain unusual pipes.
enum class enmCatalogValues { Usual, Any };

/// Reads a table into the pipe or manhole catalogue of the active project; returns the number of items entered. Heads:
///   pipes     group,name,guid,shape,inner_width_mm,inner_height_mm,wall_mm,roughness_mm,type,min_diameter_mm
///   manholes  group,name,guid,inner_diameter_m,h1_m,h2_m,height_m
/// in any order of columns; guid, wall_mm, type and min_diameter_mm may be missing or empty, inner_height_mm for
/// circles. An empty GUID is made from group and name, the same in every import. Shapes: circle, egg (height 1.5 times
/// the width), box, and table with a further column points, "height:width" in mm separated by blanks, heights
/// ascending. A further column group_guid gives the GUID of the group. Groups and items keep the order of the table.
///
/// All or nothing. A row that is equal to an item of the catalogue is skipped, so that a table may be imported twice;
/// any other row for a group that existed before is an error, because a group comes from one table. BadInput names line
/// and column. warnings (may be null) gets one sentence for each column with possible but unusual values. Linear.
Utility::Result<int> ImportCatalogCsv(std::istream& stream, const std::string& name,
                                      enmCatalogTable table = enmCatalogTable::Detect,
                                      enmCatalogValues values = enmCatalogValues::Usual,
                                      std::vector<std::string>* warnings = nullptr);

/// Writes a catalogue of the active project as the table that ImportCatalogCsv reads back; the columns points and
/// group_guid only where they are needed. Refused when writing fails.
Utility::Status ExportCatalogCsv(std::ostream& stream, enmCatalogKind kind);

} // namespace OLMGis::ProjectIo
