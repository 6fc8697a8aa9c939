// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"
#include "host/network_core/Finding.h"

#include <ostream>
#include <vector>

namespace Cli {

using CFindingsByItem = std::vector<OLMGis::Topology::CItemFindings>;

std::size_t CountFindings(const CFindingsByItem& items);

/// For people; nothing at all without a finding.
void PrintFindingsAsTable(std::ostream& stream, const CFindingsByItem& items);

/// For spreadsheets: a head line "item,guid,name,text,value,limit,unit", numbers in full, absent values empty. Refused
/// when writing fails.
OLMGis::Utility::Status PrintFindingsAsCsv(std::ostream& stream, const CFindingsByItem& items);

/// For programs: an array of objects with the same keys, one a line; absent values as null.
void PrintFindingsAsJson(std::ostream& stream, const CFindingsByItem& items);

/// For maps: a feature collection of points in the project's coordinate system with the same properties; a null
/// geometry where nothing is drawn.
void PrintFindingsAsGeoJson(std::ostream& stream, const CFindingsByItem& items);

} // namespace Cli
