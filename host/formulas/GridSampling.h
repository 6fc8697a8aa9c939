// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <algorithm>
#include <cmath>

/// Sampling of a grid of heights. Positions are in cells: whole numbers at the cell centres, 0 at the first column and
/// row. Inline because it is called for every sample.
namespace OLMGis::Formulas {

struct CGridPlace {
    double m_column = 0.0;
    double m_row = 0.0;
};

/// Height between four cell centres (unit of the heights): first and second of a row, then those of the next row. right
/// and down: fraction of the distance (-, 0 to 1) from the first. Exact at the centres and along the lines through
/// them. Source: product of two linear interpolations.
inline double BilinearHeight(double first, double second, double nextFirst, double nextSecond, double right,
                             double down) {
    return (first * (1.0 - right) + second * right) * (1.0 - down) +
           (nextFirst * (1.0 - right) + nextSecond * right) * down;
}

/// The nearest whole number if value is within tolerance of it, else value. Moves back what rounding moved off a line
/// through cell centres, so that cells beyond the line do not enter the height.
inline double SnapToCentre(double value, double tolerance) {
    const double nearest = std::round(value);
    return std::abs(value - nearest) <= tolerance ? nearest : value;
}

/// How far (cells) a calculated crossing may be from a line through cell centres and still count as on it. Sections
/// span up to about 100,000 cells, where a calculated position is accurate to about 1e-11.
inline constexpr double CrossingTolerance = 1e-9;

/// The crossings of a straight line with the grid lines through the cell centres of one direction, one after the other.
class CLineCrossings {
public:
    /// from and to: coordinate across the grid lines (cells), which are at 0 to most. Only crossings between the
    /// fractions first and last (-, 0 to 1) count.
    CLineCrossings(double from, double to, double most, double first, double last) : m_from(from), m_step(to - from) {
        if (m_step == 0.0 || first > last)
            return;
        const double begin = std::clamp(SnapToCentre(from + first * m_step, CrossingTolerance), 0.0, most);
        const double end = std::clamp(SnapToCentre(from + last * m_step, CrossingTolerance), 0.0, most);
        m_direction = m_step > 0.0 ? 1.0 : -1.0;
        m_line = m_step > 0.0 ? std::ceil(begin) : std::floor(begin);
        m_left = std::floor((end - m_line) * m_direction) + 1.0;
    }

    bool IsAtEnd() const { return m_left < 1.0; }
    double GetLine() const { return m_line; }
    /// Fraction of the distance (-, 0 to 1).
    double GetPart() const { return std::clamp((m_line - m_from) / m_step, 0.0, 1.0); }
    void Advance() {
        m_line += m_direction;
        m_left -= 1.0;
    }

private:
    double m_from;
    double m_step;
    double m_direction = 1.0;
    double m_line = 0.0;
    double m_left = 0.0;
};

/// The fractions of a straight line (-, 0 to 1) between which it is within 0 and most; first above last where it never
/// is.
inline void ClipToRange(double from, double to, double most, double& first, double& last) {
    const double step = to - from;
    if (step == 0.0) {
        if (from < 0.0 || from > most)
            last = -1.0;
        return;
    }
    const double atZero = (0.0 - from) / step;
    const double atMost = (most - from) / step;
    first = std::max(first, std::min(atZero, atMost));
    last = std::min(last, std::max(atZero, atMost));
}

/// Calls visit(part, place) for every crossing of the straight line between two positions with the grid lines through
/// the cell centres of a grid of columns by rows cells, in ascending part (fraction of the distance, -, 0 to 1). A line
/// through a centre crosses two grid lines there and gives both. Nothing for positions that are not finite. Cost:
/// linear in the crossings.
template <class Visit>
void VisitGridCrossings(const CGridPlace& from, const CGridPlace& to, int columns, int rows, const Visit& visit) {
    if (!std::isfinite(from.m_column + from.m_row + to.m_column + to.m_row))
        return;
    const double mostColumn = columns - 1.0;
    const double mostRow = rows - 1.0;
    double first = 0.0;
    double last = 1.0;
    ClipToRange(from.m_column, to.m_column, mostColumn, first, last);
    ClipToRange(from.m_row, to.m_row, mostRow, first, last);
    CLineCrossings ofColumns(from.m_column, to.m_column, mostColumn, first, last);
    CLineCrossings ofRows(from.m_row, to.m_row, mostRow, first, last);
    const auto along = [](double begin, double end, double part, double most) {
        return std::clamp(SnapToCentre(begin + part * (end - begin), CrossingTolerance), 0.0, most);
    };
    while (!ofColumns.IsAtEnd() || !ofRows.IsAtEnd()) {
        if (ofRows.IsAtEnd() || (!ofColumns.IsAtEnd() && ofColumns.GetPart() <= ofRows.GetPart())) {
            const double part = ofColumns.GetPart();
            visit(part, CGridPlace{ofColumns.GetLine(), along(from.m_row, to.m_row, part, mostRow)});
            ofColumns.Advance();
        } else {
            const double part = ofRows.GetPart();
            visit(part, CGridPlace{along(from.m_column, to.m_column, part, mostColumn), ofRows.GetLine()});
            ofRows.Advance();
        }
    }
}

} // namespace OLMGis::Formulas
