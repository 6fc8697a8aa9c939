// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"
#include "host/project_io/base/ImportSummary.h"

#include <istream>
#include <string>

namespace OLMGis::ProjectIo {

/// Reads a network of the open storm-water format (.inp) into the active project, which must be empty; after an error
/// the caller discards the project. name: name of the file in messages.
///
/// Nodes get TERRAIN_1 (m). Conduits become sections with length (m), levels of the invert (m), both slopes (1/1000,
/// negative for a conduit that climbs), MANNING_N, PIPE_ROUGHNESS (mm) and a pipe of the project's catalogue where the
/// outline of their cross-section is known; pumps, orifices, weirs and outlet devices become sections without a pipe,
/// so that the network stays connected. Subcatchments become rain catchments (ha, coefficient from the imperviousness)
/// of the section that takes what drains to their outlet. Files in feet and acres are converted; map coordinates stay
/// as they are, and no coordinate system is set because the format names none.
///
/// What is not imported is counted in the notes of the summary: headings of the file with their number of lines,
/// objects by what was wrong with them. BadInput, naming line, what was found and what was expected, for text of
/// another format and for a network that contradicts itself; Refused when reading fails. Linear in the file; the text
/// is never in memory as a whole.
Utility::Result<CImportSummary> ImportInp(std::istream& stream, const std::string& name);

} // namespace OLMGis::ProjectIo
