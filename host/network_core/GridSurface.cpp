// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_core/GridSurface.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace OLMGis::Topology {

using Formulas::CGridPlace;

namespace {

constexpr double NotANumber = std::numeric_limits<double>::quiet_NaN();

double Determinant(const CGridFrame& frame) {
    const auto& t = frame.m_transform;
    return t[1] * t[5] - t[2] * t[4];
}

} // namespace

bool CGridFrame::IsUsable() const {
    const double determinant = Determinant(*this);
    return m_columns > 0 && m_rows > 0 && std::isfinite(determinant) && determinant != 0.0 &&
           std::all_of(m_transform.begin(), m_transform.end(), [](double value) { return std::isfinite(value); });
}

CGridSurface::CGridSurface(const CGridFrame& frame, std::unique_ptr<ICellSource> source, std::size_t mostBlocks)
    : m_frame(frame), m_cells(std::move(source), frame.m_columns, frame.m_rows, mostBlocks) {
    const auto& t = frame.m_transform;
    const double determinant = Determinant(frame);
    m_inverse = {t[5] / determinant, -t[2] / determinant, -t[4] / determinant, t[1] / determinant};
    // Coordinates of millions of metres are good to some 1e-9 m; each place is calculated from a few of them.
    const double farthest = std::max(std::abs(t[0]), std::abs(t[3])) +
                            std::max(std::abs(t[1]) + std::abs(t[4]), std::abs(t[2]) + std::abs(t[5])) *
                                std::max(frame.m_columns, frame.m_rows);
    const double cells =
        std::max(std::abs(m_inverse[0]) + std::abs(m_inverse[1]), std::abs(m_inverse[2]) + std::abs(m_inverse[3]));
    constexpr double roundings = 4.0;
    constexpr double mostCells = 1e-6;
    m_tolerance = std::min(roundings * std::numeric_limits<double>::epsilon() * farthest * cells, mostCells);
}

CGridPlace CGridSurface::PlaceOf(const CPoint& point) const {
    constexpr double halfCell = 0.5; // from the corner of a cell to its centre
    const double x = point.m_x - m_frame.m_transform[0];
    const double y = point.m_y - m_frame.m_transform[3];
    return {Formulas::SnapToCentre(m_inverse[0] * x + m_inverse[1] * y - halfCell, m_tolerance),
            Formulas::SnapToCentre(m_inverse[2] * x + m_inverse[3] * y - halfCell, m_tolerance)};
}

/// Not-a-number where there is no height.
double CGridSurface::HeightAt(const CGridPlace& place) {
    if (!(place.m_column >= 0.0 && place.m_column <= m_frame.m_columns - 1.0 && place.m_row >= 0.0 &&
          place.m_row <= m_frame.m_rows - 1.0))
        return NotANumber;
    const int column = static_cast<int>(place.m_column);
    const int row = static_cast<int>(place.m_row);
    const double right = place.m_column - column;
    const double down = place.m_row - row;
    // Cells beyond a line through centres on which the place is have no part in it: they may have no height.
    const int nextColumn = right > 0.0 ? column + 1 : column;
    const int nextRow = down > 0.0 ? row + 1 : row;
    const double first = m_cells.At(column, row);
    const double second = m_cells.At(nextColumn, row);
    return Formulas::BilinearHeight(first, second, m_cells.At(column, nextRow), m_cells.At(nextColumn, nextRow), right,
                                    down);
}

bool CGridSurface::GetHeight(const CPoint& point, double& height) {
    const double found = HeightAt(PlaceOf(point));
    if (std::isnan(found))
        return false;
    height = found;
    return true;
}

void CGridSurface::AppendCrossings(std::span<const CPoint> line, std::vector<std::pair<double, double>>& samples) {
    double before = 0.0; // length of the line before the piece in hand
    for (std::size_t i = 1; i < line.size(); ++i) {
        const double length = Distance(line[i - 1], line[i]);
        Formulas::VisitGridCrossings(PlaceOf(line[i - 1]), PlaceOf(line[i]), m_frame.m_columns, m_frame.m_rows,
                                     [&](double part, const CGridPlace& place) {
                                         const double height = HeightAt(place);
                                         if (!std::isnan(height))
                                             samples.emplace_back(before + part * length, height);
                                     });
        before += length;
    }
}

} // namespace OLMGis::Topology
