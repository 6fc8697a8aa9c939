// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/Geometry.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace OLMGis::ProjectIo {

/// Shapes of invented networks.
enum class enmNetworkShape {
    Line, ///< one section after the other
    Tree, ///< branches on a grid that join on the way to one outfall
    Comb, ///< a line with a side branch of one section at every second node
    City, ///< several trees on street grids, with a few nodes that have two ways out
    Star, ///< all sections but the last meet in one node
};

/// The names of all shapes.
std::vector<std::string> GetNetworkShapeNames();

/// The shape of a name; nothing for another text.
std::optional<enmNetworkShape> NetworkShapeOfName(std::string_view name);

/// Random numbers that are the same on every machine. Source: Steele, Lea, Flood 2014, SplitMix64.
class CSplitMix {
public:
    explicit CSplitMix(std::uint64_t seed) : m_state(seed) {}

    std::uint64_t Next();

    /// From 0 to below 1.
    double Unit() { return static_cast<double>(Next() >> 11) * 0x1p-53; }

    /// Between two bounds, rounded to a number of decimals.
    double Between(double least, double greatest, int decimals);

private:
    std::uint64_t m_state;
};

/// Nodes of an invented network and where each drains to: always to a node before it in the list, so that the network
/// has no rings.
struct CSyntheticLayout {
    static constexpr std::uint32_t Nowhere = 0xFFFFFFFF;

    struct CNode {
        Topology::CPoint m_point;         ///< m
        std::uint32_t m_down = Nowhere;   ///< an outfall drains nowhere
        std::uint32_t m_relief = Nowhere; ///< the second way out, mostly nowhere
    };
    std::vector<CNode> m_nodes;
};

/// A layout with exactly that many ways from node to node (1 or more). The same for the same arguments. Linear.
CSyntheticLayout MakeLayout(enmNetworkShape shape, std::size_t sections, CSplitMix& random);

} // namespace OLMGis::ProjectIo
