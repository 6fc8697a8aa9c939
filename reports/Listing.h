// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "reports/Table.h"

#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace Reports {

/// A text and a table below it, either of which may be empty.
struct CBlock {
    std::string m_text; ///< lines, without the last line end
    CTable m_table{};
    bool m_isIndented = false; ///< the table
};

/// What a program shows at once: blocks for people; for CSV, GeoJSON and JSON one table, by default that of the first
/// block, or in JSON a document where the data is nested.
struct CListing {
    std::vector<CBlock> m_blocks;
    std::optional<CTable> m_table{}; ///< for programs; nothing for the table of the first block
    std::function<void(std::ostream& stream)> m_printDocument{}; ///< JSON; empty for the first table

    CListing() = default;
    explicit CListing(CTable table) { m_blocks.push_back({{}, std::move(table)}); }
};

enum class enmFormat { Text, Csv, Json, GeoJson };

/// "table", "csv", "json", "geojson"; nothing for another text.
std::optional<enmFormat> FindFormat(std::string_view name);

/// Prints a listing; blocks that have nothing to show are left out, the others are separated by an empty line.
/// Coordinates of GeoJSON are in the coordinate system of the active project.
void Print(std::ostream& stream, const CListing& listing, enmFormat format);

} // namespace Reports
