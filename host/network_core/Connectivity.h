// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <cstdint>
#include <limits>
#include <span>
#include <vector>

namespace OLMGis::Topology {

class CTopologyStorage;

/// How the sections of a network join at the moment when it was made: immutable, plain numbers, for walks over whole
/// networks. Everything is asked by row (CSection::GetRow, CNode::GetRow) and answered in constant time without a look
/// at an entity. Rows of deleted entities have no ways; rows that were added later must not be asked.
///
/// CTopologyStorage::GetConnectivity makes it and keeps it until the network changes.
/// Cost: linear in rows; 16 bytes per section and 12 per node.
class CConnectivity {
public:
    /// No such row.
    static constexpr std::uint32_t None = std::numeric_limits<std::uint32_t>::max();

    explicit CConnectivity(const CTopologyStorage& topology);

    /// Number of rows, deleted entities included.
    std::uint32_t GetNodeCount() const { return static_cast<std::uint32_t>(m_mainOutlets.size()); }
    std::uint32_t GetSectionCount() const { return static_cast<std::uint32_t>(m_starts.size()); }

    /// Row of the node where a section starts or ends; None without one and for a deleted section.
    std::uint32_t GetStart(std::uint32_t section) const { return m_starts[section]; }
    std::uint32_t GetEnd(std::uint32_t section) const { return m_ends[section]; }

    /// Rows of the sections that end or start at a node, each in network order. A section that returns to its own start
    /// is in both.
    std::span<const std::uint32_t> GetWaysIn(std::uint32_t node) const { return m_in.Of(node); }
    std::span<const std::uint32_t> GetWaysOut(std::uint32_t node) const { return m_out.Of(node); }

    /// Row of the section on which flow leaves a node, see CTopologyStorage::GetMainOutlet; None without one.
    std::uint32_t GetMainOutlet(std::uint32_t node) const { return m_mainOutlets[node]; }

private:
    /// Rows of sections, node by node.
    class CWays {
    public:
        /// nodes: by row of section the node to which it belongs, or None.
        void Sort(const std::vector<std::uint32_t>& nodes, std::size_t nodeCount);

        std::span<const std::uint32_t> Of(std::uint32_t node) const {
            return {m_sections.data() + m_first[node], m_sections.data() + m_first[node + 1]};
        }

    private:
        std::vector<std::uint32_t> m_first; ///< by row of node, and one more: place of its first section
        std::vector<std::uint32_t> m_sections;
    };

    std::vector<std::uint32_t> m_starts; ///< by row of section
    std::vector<std::uint32_t> m_ends;
    CWays m_in;
    CWays m_out;
    std::vector<std::uint32_t> m_mainOutlets; ///< by row of node
};

} // namespace OLMGis::Topology
