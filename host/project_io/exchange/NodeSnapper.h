// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/Geometry.h"

#include <absl/container/flat_hash_map.h>
#include <cstdint>
#include <span>
#include <vector>

namespace OLMGis::ProjectIo {

/// Finds the node at the end of a drawn line: the one at exactly that place, else the nearest within a tolerance.
/// Uses a grid of cells as wide as the tolerance: linear in the nodes, constant per question for any drawing.
class CNodeSnapper {
public:
    struct CFound {
        std::uint32_t m_place = 0;  ///< in the list of points, NoRecord where no point is near enough
        bool m_isAmbiguous = false; ///< several points have exactly the place of the one that was found
    };

    /// The points are borrowed; unknown ones are skipped. tolerance: m, > 0.
    CNodeSnapper(std::span<const Topology::CPoint> points, double tolerance);

    /// Of several points at exactly the same place the first one of the list.
    CFound Find(const Topology::CPoint& point) const;

private:
    /// Limits the cost of a drawing that is finer than the tolerance: further points of a cell are found only at
    /// exactly their place.
    static constexpr int MostInCell = 16;

    struct CKey {
        double m_x;
        double m_y;
        friend bool operator==(const CKey&, const CKey&) = default;
    };
    struct KeyHash {
        std::size_t operator()(const CKey& key) const;
    };
    struct CExact {
        std::uint32_t m_place;
        bool m_isRepeated;
    };

    CKey CellOf(const Topology::CPoint& point) const;
    void EnterCell(std::uint32_t place);

    std::span<const Topology::CPoint> m_points;
    double m_tolerance;
    absl::flat_hash_map<CKey, CExact, KeyHash> m_exact;
    absl::flat_hash_map<CKey, std::uint32_t, KeyHash> m_cells; ///< last point of a cell, from which a chain leads on
    std::vector<std::uint32_t> m_next;                         ///< by point: the one before it in its cell
};

} // namespace OLMGis::ProjectIo
