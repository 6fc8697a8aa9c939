// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <cstdint>
#include <vector>

namespace Analysis {

/// A set of entities of one kind and one topology, by row: an entity has its row for life and shares it with no other.
/// A bit an entity, whatever the number of members.
class CRowSet {
public:
    /// Whether the row was not in the set yet; it is from now on.
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
