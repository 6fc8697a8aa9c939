// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/formulas/GridSampling.h"
#include "host/network_core/CellBlocks.h"
#include "host/network_core/TerrainSurfaces.h"

#include <array>
#include <memory>
#include <span>
#include <utility>
#include <vector>

namespace OLMGis::Topology {

/// Position, size and cell size of a grid in the plan.
struct CGridFrame {
    /// x = t[0] + t[1] column + t[2] row, y = t[3] + t[4] column + t[5] row (m), with column and row counted from the
    /// outer corner of the first cell. A grid may be turned.
    std::array<double, 6> m_transform{};
    int m_columns = 0;
    int m_rows = 0;

    /// Whether the cells have an extent in both directions, and there are any.
    bool IsUsable() const;
};

/// The ground as a grid of heights at cell centres, bilinear between them. There is no height outside the outermost
/// centres, nor where one of the cells that take part in it has none; on a line through centres only the cells on that
/// line take part.
class CGridSurface final : public ITerrainSurface {
public:
    /// The frame must be usable.
    CGridSurface(const CGridFrame& frame, std::unique_ptr<ICellSource> source,
                 std::size_t mostBlocks = CCellBlocks::DefaultMostBlocks);

    bool GetHeight(const CPoint& point, double& height) override;

    /// Crossings with the lines through the cell centres. A line through a centre crosses two there and gives both.
    void AppendCrossings(std::span<const CPoint> line, std::vector<std::pair<double, double>>& samples) override;

private:
    Formulas::CGridPlace PlaceOf(const CPoint& point) const;
    double HeightAt(const Formulas::CGridPlace& place);

    CGridFrame m_frame;
    std::array<double, 4> m_inverse{}; ///< cells a metre: column of x and of y, row of x and of y
    double m_tolerance = 0.0;          ///< what the coordinates' own rounding is worth (cells)
    CCellBlocks m_cells;
};

} // namespace OLMGis::Topology
