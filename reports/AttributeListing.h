// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/DataDefinition.h"
#include "reports/EntityChoice.h"
#include "reports/Table.h"

#include <vector>

namespace Reports {

/// Definitions of attributes, no nulls.
using CDefinitionList = std::vector<const OLMGis::Data::CDataDefinition*>;

/// Attribute values of entities: name, GUID and one column per key. People see the GUID where the names alone do not
/// identify the entities. Borrows both lists; values are read when the table is.
CTable MakeAttributeTable(const CEntityList& entities, const CDefinitionList& definitions);

} // namespace Reports
