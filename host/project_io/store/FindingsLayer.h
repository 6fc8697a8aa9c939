// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/project_io/store/LayerWriter.h"
#include "host/project_io/store/SqlReader.h"

#include <cstddef>
#include <optional>

namespace OLMGis::ProjectIo {

/// Number of findings that the active project keeps.
std::size_t CountFindings();

/// Writes the findings of the active project as a layer with its spatial index, in their order; nothing when no check
/// ran. Throws CFailure.
std::optional<CLayerContent> WriteFindings(CSqliteDatabase& database, int srsId, COperationProgress& progress);

/// Puts the findings of a file into the active project; none when the file has no such layer. A layer that cannot be
/// read gives a warning and is left out: the checks can be run again, and a project must open without them. Findings of
/// one item come back as one run of it, without the parameters of the run.
void ReadFindings(const CSqliteDatabase& database, const CFileTables& tables, CWarnings& warnings);

} // namespace OLMGis::ProjectIo
