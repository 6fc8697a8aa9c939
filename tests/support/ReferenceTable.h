// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Utility.h"

#include <fstream>
#include <string>
#include <vector>

/// Rows of a table of the reference data: the cells of its lines but comments and the head line. Empty where the
/// reference data are not there.
inline std::vector<std::vector<std::string>> ReadReferenceTable(const std::string& path) {
    std::ifstream table(DRENOVA_REFERENCE_DATA "/" + path);
    std::vector<std::vector<std::string>> rows;
    bool isHead = true;
    for (std::string line; std::getline(table, line);) {
        if (line.empty() || line[0] == '#')
            continue;
        if (!isHead)
            OLMGis::Utility::CUtility::SplitString(line, rows.emplace_back(), ',');
        isHead = false;
    }
    return rows;
}

inline double Cell(const std::vector<std::string>& row, std::size_t column) {
    return OLMGis::Utility::CUtility::ToDouble(row.at(column));
}
