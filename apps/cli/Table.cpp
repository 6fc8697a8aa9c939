// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/Table.h"

#include "apps/cli/ShownText.h"

#include <algorithm>
#include <cassert>

namespace Cli {

void CTable::AddColumn(std::string head, enmAlign align) {
    const std::size_t width = DisplayWidth(head);
    m_columns.push_back({std::move(head), align, width});
}

void CTable::AddRow(std::vector<std::string> cells) {
    assert(cells.size() == m_columns.size());
    for (std::size_t i = 0; i < cells.size(); ++i) {
        cells[i] = OnOneLine(cells[i]);
        m_columns[i].m_width = std::max(m_columns[i].m_width, DisplayWidth(cells[i]));
    }
    m_rows.push_back(std::move(cells));
}

void CTable::Print(std::ostream& stream, std::string_view indent) const {
    std::vector<std::string> heads;
    for (const CColumn& column : m_columns)
        heads.push_back(column.m_head);
    if (std::any_of(heads.begin(), heads.end(), [](const std::string& head) { return !head.empty(); }))
        PrintLine(stream, indent, heads);
    for (const auto& row : m_rows)
        PrintLine(stream, indent, row);
}

void CTable::PrintLine(std::ostream& stream, std::string_view indent, const std::vector<std::string>& cells) const {
    std::string line(indent);
    for (std::size_t i = 0; i < cells.size(); ++i) {
        const std::string padding(m_columns[i].m_width - DisplayWidth(cells[i]), ' ');
        line += i == 0 ? "" : "  ";
        line += m_columns[i].m_align == enmAlign::Right ? padding + cells[i] : cells[i] + padding;
    }
    line.erase(line.find_last_not_of(' ') + 1);
    stream << line << '\n';
}

} // namespace Cli
