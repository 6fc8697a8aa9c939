// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/project_io/store/SqlReader.h"

#include <string>

namespace OLMGis::ProjectIo {

class CReadableFile;

/// What other programs put into a project file: tables with their rows, R-trees, indexes, views, triggers, columns of
/// our layers, and what the tables of GeoPackage say of all that. A save writes a new file, so it copies them from the
/// old one.

/// Whether the file has such content. Warns of what a save cannot keep: virtual tables other than R-trees, columns that
/// are computed, that differ from ours only by case, or that are in our own tables.
bool FindForeignContent(const CSqliteDatabase& database, CWarnings& warnings);

/// Copies it into the new file, into which the layers of the active project were just written. source: the file that
/// the project was read from. Columns of layers keep their values by entity. The same content gives the same bytes.
/// Damaged R-trees, and indexes, views and triggers that the new file does not accept, are left out with a line in the
/// log. Throws CFailure where a table or a column cannot be copied. Linear in the content.
void CopyForeignContent(CSqliteDatabase& database, const CReadableFile& source);

} // namespace OLMGis::ProjectIo
