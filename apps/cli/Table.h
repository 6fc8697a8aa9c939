// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace Cli {

/// A table for people: columns aligned by what a terminal shows, separated by two blanks, each cell on one line.
class CTable {
public:
    enum class enmAlign { Left, Right };

    void AddColumn(std::string head, enmAlign align = enmAlign::Left);

    /// As many cells as columns.
    void AddRow(std::vector<std::string> cells);

    bool IsEmpty() const { return m_rows.empty(); }

    /// The head line (left out when all heads are empty), then the rows, each line behind indent. Cost: the cells.
    void Print(std::ostream& stream, std::string_view indent = {}) const;

private:
    struct CColumn {
        std::string m_head;
        enmAlign m_align;
        std::size_t m_width;
    };

    void PrintLine(std::ostream& stream, std::string_view indent, const std::vector<std::string>& cells) const;

    std::vector<CColumn> m_columns;
    std::vector<std::vector<std::string>> m_rows;
};

} // namespace Cli
