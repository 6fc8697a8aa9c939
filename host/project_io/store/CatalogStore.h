// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

namespace OLMGis::ProjectIo {

class CSqliteDatabase;

/// Writes the catalogues of the active project, groups and items in their order, into tables that exist already. Throws
/// CFailure.
void WriteCatalogs(CSqliteDatabase& database);

/// Enters the content of these tables into the catalogues of the active project. Throws CFailure.
void ReadCatalogs(const CSqliteDatabase& database);

} // namespace OLMGis::ProjectIo
