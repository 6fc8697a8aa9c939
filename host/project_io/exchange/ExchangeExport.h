// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"

#include <ostream>

namespace OLMGis::ProjectIo {

/// Writes the network of the active project as an exchange file that ImportExchange reads back to the same network:
/// order, names, GUIDs, geometry, every attribute to its last bit, main outlets, catchments. Pipes are referred to by
/// GUID; the project's own catalogues are members of the collection. One feature per line; the same project gives the
/// same bytes.
///
/// BadInput, and nothing written, when the format cannot express an entity: a section without one of its nodes, a
/// node without a name, a catchment without both area and polygon or of an unknown kind. Refused when writing fails.
/// Linear.
Utility::Status ExportExchange(std::ostream& stream);

} // namespace OLMGis::ProjectIo
