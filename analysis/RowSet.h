// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <cstdint>
#include <vector>

namespace Analysis {

/// A set of entities of one kind and one topology, by row: an entity keeps its row for life and no other has it. One
/// bit per row.
class CRowSet {
public:
    /// Adds the row; true if it was not in the set before.
    bool Insert(std::uint32_t row) {
        if (row >= m_bits.size())
            m_bits.resize(row + 1);
        if (m_bits[row])
            return false;
        m_bits[row] = true;
        return true;
    }

private:
    std::vector<bool> m_bits;
};

} // namespace Analysis
