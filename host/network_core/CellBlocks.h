// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <absl/container/flat_hash_map.h>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace OLMGis::Topology {

/// Where the heights of a grid come from.
class ICellSource {
public:
    virtual ~ICellSource() = default;

    /// Fills a window of the grid: rows of columns heights (m), not-a-number where there is none, each row beginning
    /// stride cells after the one before. The window is within the grid. False, with undefined cells,
    /// when they can't be read; the source itself reports it to the user.
    virtual bool ReadCells(int column, int row, int columns, int rows, double* cells, std::size_t stride) = 0;
};

/// The cells of a grid by square blocks, read when they are first asked for. A bounded number stays in memory, so that
/// grids up to that size are read once; of larger ones the blocks that were not used for longest go first.
class CCellBlocks {
public:
    static constexpr int Side = 256;                      ///< cells; a block takes half a megabyte
    static constexpr std::size_t DefaultMostBlocks = 128; ///< 64 MB, some 8 million cells

    /// columns and rows of the whole grid, each above 0; mostBlocks above 0.
    CCellBlocks(std::unique_ptr<ICellSource> source, int columns, int rows, std::size_t mostBlocks = DefaultMostBlocks)
        : m_source(std::move(source)), m_columns(columns), m_rows(rows), m_mostBlocks(mostBlocks) {}

    /// The height of a cell (m), not-a-number where there is none; within the grid.
    double At(int column, int row) {
        const std::uint64_t key = KeyOf(column, row);
        if (key != m_lastKey)
            Turn(key);
        return m_lastCells[static_cast<std::size_t>(row % Side) * Side + static_cast<std::size_t>(column % Side)];
    }

    int GetColumns() const { return m_columns; }
    int GetRows() const { return m_rows; }

private:
    static constexpr std::uint64_t NoKey = ~std::uint64_t{0};

    struct CBlock {
        std::uint64_t m_key = NoKey;
        std::uint64_t m_lastUse = 0;
        std::vector<double> m_cells;
    };

    static std::uint64_t KeyOf(int column, int row) {
        return (static_cast<std::uint64_t>(row / Side) << 32U) | static_cast<std::uint64_t>(column / Side);
    }
    void Turn(std::uint64_t key);
    std::size_t FindPlace();
    void Read(CBlock& block);

    std::unique_ptr<ICellSource> m_source;
    int m_columns;
    int m_rows;
    std::size_t m_mostBlocks;
    std::vector<CBlock> m_blocks;
    absl::flat_hash_map<std::uint64_t, std::size_t> m_places; ///< of blocks by key
    std::uint64_t m_uses = 0;
    std::uint64_t m_lastKey = NoKey;
    const double* m_lastCells = nullptr;
};

} // namespace OLMGis::Topology
