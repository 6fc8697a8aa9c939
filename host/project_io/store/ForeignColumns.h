// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/project_io/store/SqlReader.h"

#include <string>
#include <string_view>
#include <vector>

namespace OLMGis::ProjectIo {

/// A column as a table declares it.
struct CSqlColumn {
    std::string m_name;
    std::string m_type;    ///< as SQL has it; empty for none
    std::string m_default; ///< the expression; empty for none
    bool m_isComputed = false;
};

/// The columns of a table; none where there is no such table. schema: main or source.
std::vector<CSqlColumn> ListColumns(const CSqliteDatabase& database, std::string_view schema, std::string_view table);

/// The column of a name, case ignored; null when there is none.
const CSqlColumn* FindColumn(const std::vector<CSqlColumn>& columns, std::string_view name);

/// Whether a layer has columns of other programs that a save keeps. Warns of those that it cannot keep.
bool FindForeignColumns(const CSqliteDatabase& database, const Layout::CLayer& layer, CWarnings& warnings);

/// Warns of columns that a table of our own should not have: saving drops them.
void WarnOfColumnsIn(const CSqliteDatabase& database, const Layout::CTable& table, CWarnings& warnings);

/// Adds the columns to main's table that source's has and main's lacks. Their conditions are left out: main's rows
/// have no values yet. Returns their names.
std::vector<std::string> AddMissingColumns(CSqliteDatabase& database, std::string_view table);

/// Copies the foreign columns of a layer from source to main, where the layer of the active project was just written.
/// Rows go together by the entity: its GUID. Returns their names.
std::vector<std::string> CopyForeignColumns(CSqliteDatabase& database, const Layout::CLayer& layer);

} // namespace OLMGis::ProjectIo
