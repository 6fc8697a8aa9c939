// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

namespace OLMGis::ProjectIo {

class CSqliteDatabase;

/// Writes the catalogues of the active project, groups and items in their order, into tables that are there. Throws
/// CFailure, like the way back.
void WriteCatalogs(CSqliteDatabase& database);

/// Enters what the file's tables hold into the catalogues of the active project.
void ReadCatalogs(const CSqliteDatabase& database);

} // namespace OLMGis::ProjectIo
