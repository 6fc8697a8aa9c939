// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "apps/cli/AttributeKeys.h"
#include "apps/cli/EntityChoice.h"
#include "host/gis_core/Result.h"

#include <ostream>

namespace Cli {

/// For people: name, then the values rounded to the decimals of their definitions under key and unit; the GUID too
/// where names do not tell the entities apart.
void PrintAttributesAsTable(std::ostream& stream, const CEntityList& entities, const CDefinitionList& definitions);

/// For spreadsheets: a head line "name,guid,KEY,...", fields quoted where they must be, numbers in full, null empty.
/// Refused when writing fails.
OLMGis::Utility::Status PrintAttributesAsCsv(std::ostream& stream, const CEntityList& entities,
                                             const CDefinitionList& definitions);

/// For programs: an array of objects with name, guid and the keys, one a line; numbers in full, null as null.
void PrintAttributesAsJson(std::ostream& stream, const CEntityList& entities, const CDefinitionList& definitions);

} // namespace Cli
