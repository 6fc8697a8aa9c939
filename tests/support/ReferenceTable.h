// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Utility.h"

#include <algorithm>
#include <fstream>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

/// The path of a file of tests/cases.
inline std::string CasePath(const std::string& name) {
    return DRENOVA_SOURCE_DIR "/tests/cases/" + name;
}

/// One row of a case table; its cells are found by the name of their column.
class CCaseRow {
public:
    CCaseRow(std::shared_ptr<const std::vector<std::string>> head, std::vector<std::string> cells)
        : m_head(std::move(head)), m_cells(std::move(cells)) {}

    /// Throws for a column that the table does not have.
    const std::string& Text(const std::string& column) const {
        const auto found = std::find(m_head->begin(), m_head->end(), column);
        if (found == m_head->end())
            throw std::runtime_error("no column " + column);
        return m_cells[static_cast<std::size_t>(found - m_head->begin())];
    }
    double operator[](const std::string& column) const { return OLMGis::Utility::CUtility::ToDouble(Text(column)); }

    /// All cells, to name the row in a failure.
    std::string Name() const {
        std::string name;
        for (const std::string& cell : m_cells)
            name += cell + ' ';
        return name;
    }

private:
    std::shared_ptr<const std::vector<std::string>> m_head;
    std::vector<std::string> m_cells;
};

/// The rows of a table of tests/cases: cells between blanks, the first line that is no comment names the columns.
/// Throws, and so fails the test, for a table that is missing, has no rows, or a row of another length.
inline std::vector<CCaseRow> ReadCases(const std::string& name) {
    std::ifstream table(CasePath(name));
    std::shared_ptr<const std::vector<std::string>> head;
    std::vector<CCaseRow> rows;
    for (std::string line; std::getline(table, line);) {
        if (line.starts_with('#'))
            continue;
        std::istringstream input(line);
        std::vector<std::string> cells;
        for (std::string cell; input >> cell;)
            cells.push_back(cell);
        if (!head) {
            head = std::make_shared<const std::vector<std::string>>(std::move(cells));
        } else {
            if (cells.size() != head->size())
                throw std::runtime_error(name + ": a row has not as many cells as the head: " + line);
            rows.emplace_back(head, std::move(cells));
        }
    }
    if (rows.empty())
        throw std::runtime_error(name + ": no rows");
    return rows;
}
