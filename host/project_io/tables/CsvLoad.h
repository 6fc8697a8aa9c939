// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/DataDefinition.h"
#include "host/gis_core/Result.h"

#include <istream>
#include <string>

namespace OLMGis::ProjectIo {

/// Stores attribute values of many entities of the active project from a table with a head line of keys; returns the
/// number of values stored, nulls included. A column `name` or `guid` names the entity; where a row has both, they
/// must agree. An empty cell makes the attribute null. All or nothing: the whole table is checked before anything is
/// stored.
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
/// BadInput names file, line and column: an unknown column or entity, an entity on two rows, a value that the
/// attribute cannot have. Linear.
Utility::Result<int> LoadCsv(std::istream& stream, const std::string& name, Data::enmEntityKind kind);

} // namespace OLMGis::ProjectIo
