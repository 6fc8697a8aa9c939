// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_core/CellBlocks.h"

#include <algorithm>
#include <limits>

namespace OLMGis::Topology {

void CCellBlocks::Turn(std::uint64_t key) {
    const auto found = m_places.find(key);
    const std::size_t place = found != m_places.end() ? found->second : FindPlace();
    CBlock& block = m_blocks[place];
    if (block.m_key != key) {
        block.m_key = key;
        Read(block);
        m_places[key] = place;
    }
    block.m_lastUse = ++m_uses;
    m_lastKey = key;
    m_lastCells = block.m_cells.data();
}

/// A free block: a new one, or that not used for longest, which is forgotten.
std::size_t CCellBlocks::FindPlace() {
    m_lastKey = NoKey;
    if (m_blocks.size() < m_mostBlocks) {
        m_blocks.emplace_back().m_cells.resize(static_cast<std::size_t>(Side) * Side);
        return m_blocks.size() - 1;
    }
    const auto oldest = std::min_element(m_blocks.begin(), m_blocks.end(),
                                         [](const CBlock& a, const CBlock& b) { return a.m_lastUse < b.m_lastUse; });
    m_places.erase(oldest->m_key);
    oldest->m_key = NoKey;
    return static_cast<std::size_t>(oldest - m_blocks.begin());
}

void CCellBlocks::Read(CBlock& block) {
    const int row = static_cast<int>(block.m_key >> 32U) * Side;
    const int column = static_cast<int>(block.m_key & 0xFFFFFFFFU) * Side;
    if (!m_source->ReadCells(column, row, std::min<int>(Side, m_columns - column), std::min<int>(Side, m_rows - row),
                             block.m_cells.data(), Side))
        std::fill(block.m_cells.begin(), block.m_cells.end(), std::numeric_limits<double>::quiet_NaN());
}

} // namespace OLMGis::Topology
