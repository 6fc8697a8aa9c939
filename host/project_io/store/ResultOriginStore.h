// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

namespace OLMGis::ProjectIo {

class CFileTables;
class CSqliteDatabase;
class CWarnings;

/// Write the origins of the active project's results into their table, which exists, or read them back. Paths of files
/// are stored relative to the folder of the project file, so that both can be moved together. A missing table is none;
/// a damaged one is left out, with a warning. Throw CFailure.
void WriteResultOrigins(CSqliteDatabase& database);
void ReadResultOrigins(const CSqliteDatabase& database, const CFileTables& tables, CWarnings& warnings);

} // namespace OLMGis::ProjectIo
