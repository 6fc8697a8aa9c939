// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

namespace OLMGis::ProjectIo {

class CSqliteDatabase;

/// Write the origins of the active project's results into their table, which exists, or read them back. Paths of files
/// are stored relative to the folder of the project file, so that both can be moved together. Throw CFailure.
void WriteResultOrigins(CSqliteDatabase& database);
void ReadResultOrigins(const CSqliteDatabase& database);

} // namespace OLMGis::ProjectIo
