// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/project_io/store/SqlReader.h"

namespace OLMGis::ProjectIo {

/// Whether the active project keeps values of a run.
bool HasLastForms();

/// Writes the last forms of the active project into their table, which exists already: paths relative to the folder of
/// the file. Throws CFailure.
void WriteLastForms(CSqliteDatabase& database);

/// Puts the last forms of a file into the active project, with full paths; none when the file has no such table. What
/// cannot be read gives a warning and is left out: nothing but convenience depends on it.
void ReadLastForms(const CSqliteDatabase& database, const CFileTables& tables, CWarnings& warnings);

} // namespace OLMGis::ProjectIo
