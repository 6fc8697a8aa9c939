// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"
#include "host/project_io/base/ImportSummary.h"

#include <istream>
#include <string>

namespace OLMGis::ProjectIo {

/// Reads a network exchange file (GeoJSON) into the active project, which must be empty; nothing is entered when the
/// answer is an error. name: name of the file in messages. Pipes must be in the catalogue PIPE of the project before.
/// A coordinate system of the file becomes the project's; without one the project's stays. Nothing is derived from
/// other values: an attribute that the file does not give stays null.
///
/// The order of features is the order of the network, whatever refers to what. BadInput names feature, what was found
/// and what was expected, and line and byte for text that is not JSON; Refused when reading fails or the project has
/// entities. Cost: linear in the file; of its text one feature is in memory at a time.
Utility::Result<CImportSummary> ImportExchange(std::istream& stream, const std::string& name);

} // namespace OLMGis::ProjectIo
