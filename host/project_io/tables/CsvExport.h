// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/DataDefinition.h"
#include "host/gis_core/Result.h"

#include <ostream>

namespace OLMGis::ProjectIo {

/// Writes a table of all entities of a kind of the active project in the order of the network: name, guid, of sections
/// from and to, of catchments section, then every attribute that has a value anywhere, in the order of their
/// definitions; null is empty, kinds are names joined by "+". LoadCsv reads it back. Refused when writing fails.
/// Linear.
Utility::Status ExportCsv(std::ostream& stream, Data::enmEntityKind kind);

} // namespace OLMGis::ProjectIo
