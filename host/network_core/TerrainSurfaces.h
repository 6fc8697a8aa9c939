// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/Geometry.h"

#include <array>
#include <functional>
#include <memory>
#include <span>
#include <utility>
#include <vector>

namespace OLMGis::Topology {

/// The ground as a surface over the plan. Not for several threads at once: reading fills a cache.
class ITerrainSurface {
public:
    virtual ~ITerrainSurface() = default;

    /// Fills height (m) and answers true, or answers false and leaves it where the surface has none.
    virtual bool GetHeight(const CPoint& point, double& height) = 0;

    /// Appends pairs (distance from the first point along the line in m, height in m) in ascending distance: a sample
    /// wherever the line crosses a line on which the surface bends, places without a height left out. Cost: linear in
    /// the samples.
    virtual void AppendCrossings(std::span<const CPoint> line, std::vector<std::pair<double, double>>& samples) = 0;
};

/// The surfaces that are attached to the terrain types of the active project. One per project context.
class CTerrainSurfaces {
public:
    static CTerrainSurfaces* Instance();

    /// Terrain types are numbered from 1 to this.
    static constexpr int TypeCount = 10;

    /// Opens a surface; null when it can't be opened, which the source itself reports to the user.
    using CSource = std::function<std::shared_ptr<ITerrainSurface>()>;

    /// From now on the type has this surface, opened when it is first asked for: most work needs none. An empty source
    /// takes the type's surface away. No effect for a type out of range.
    void Attach(int terrainType, CSource source);

    /// The surface of a type, null when there is none; a failed opening is not tried again.
    ITerrainSurface* Find(int terrainType);

private:
    struct CPlace {
        CSource m_source; ///< until it was asked
        std::shared_ptr<ITerrainSurface> m_surface;
    };

    std::array<CPlace, TypeCount> m_places;
};

} // namespace OLMGis::Topology
