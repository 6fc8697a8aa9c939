// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "reports/Table.h"

#include <ostream>
#include <string_view>

namespace Reports {

/// For people: labels (left out when all are empty), units (likewise), rows; columns aligned by what a terminal shows,
/// separated by two blanks, numbers with the decimals of their column, each line after indent. Nothing for a table
/// without rows. Reads the rows twice, the first time for the widths.
void PrintAsText(std::ostream& stream, const CTable& table, std::string_view indent = {});

/// For spreadsheets: a head line of keys, fields quoted where they must be, numbers in full, null empty, flags 1 or 0.
/// A stream that fails is the caller's to notice.
void PrintAsCsv(std::ostream& stream, const CTable& table);

/// For programs: an array of objects, one a line, numbers in full, null as null, flags true or false.
void PrintAsJson(std::ostream& stream, const CTable& table);

/// For maps: a feature collection of points with the same members as properties, and a null geometry for a row without
/// a point. crs: "EPSG:n", empty for plain plane coordinates.
void PrintAsGeoJson(std::ostream& stream, const CTable& table, std::string_view crs);

} // namespace Reports
