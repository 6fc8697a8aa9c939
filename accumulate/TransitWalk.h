// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/sewage_core/IFlowCalculator.h"

#include <cstdint>
#include <functional>
#include <limits>
#include <vector>

/// Accumulates flows (m³/s) from the heads of a network down to its outfalls. Flow never splits: at a node with several
/// outlets all of it takes the main one. Plain numbers by row of section and node; no attribute of a flow is read or
/// written here.
///
/// All sections given belong to one network. Cost: linear in sections and nodes, whatever the shape of the network.
class CTransitWalk {
public:
    using CSectionList = OLMGis::Sewage::CSectionList;

    static constexpr double NotReached = -1.0; ///< transit of a section that the walk did not come to
    static constexpr std::uint32_t None = std::numeric_limits<std::uint32_t>::max();

    // Records are aligned such that none lies across two lines of the processor's cache: the walk jumps about in them.

    struct alignas(32) CSectionFlow {
        double own = 0.0;            ///< m³/s, of the section itself
        double transit = NotReached; ///< m³/s, arriving at its start
        std::uint32_t start = None;  ///< row of its starting node; None for a section without a record
        std::uint32_t end = None;
    };

    struct alignas(32) CNodeFlow {
        double accumulated = 0.0;     ///< m³/s that has reached the node
        std::int32_t sectionsIn = 0;  ///< sections of the network that enter the node, also such outside the run
        std::int32_t processedIn = 0; ///< those of them that the walk has finished
        std::uint32_t outlet = None;  ///< row of the section to go on with, or one of the marks below
    };

    /// Outlets of a node that are no row of a section.
    static constexpr std::uint32_t Outfall = None;       ///< no section of the run starts here: the node has no record
    static constexpr std::uint32_t LeavesRun = None - 1; ///< no section goes on: the only one is deleted, none is main

    using COwnFlow = std::function<double(const OLMGis::Topology::CSection&)>;

    /// Makes the records: of each section with both nodes, its own flow as ownFlow gives it, and of each node where one
    /// of them starts. Nulls and sections without a node get none.
    void Build(const CSectionList& sections, const COwnFlow& ownFlow);

    /// Walks once from those sections with a record that no section enters, in the order of the list, down through the
    /// main outlets. A node passes its flow on once, when all that enter it are finished: what lies in a ring or below
    /// one, a side outlet, and all below a junction with one, is not reached.
    void Run();

    /// By row; without a record start is None, or outlet is Outfall.
    const std::vector<CSectionFlow>& GetSectionFlows() const { return m_sections; }
    const std::vector<CNodeFlow>& GetNodeFlows() const { return m_nodes; }

    /// The record of a section, null without one.
    const CSectionFlow* Find(const OLMGis::Topology::CSection& section) const;

    /// The network of the last Build; null without any record.
    const OLMGis::Topology::CTopologyStorage* GetTopology() const { return m_topology; }

private:
    bool HasRecord(std::uint32_t row) const { return row < m_sections.size() && m_sections[row].start != None; }
    void PrefetchFlows(const std::vector<std::uint32_t>& queue, std::size_t front) const;

    std::vector<CSectionFlow> m_sections; ///< by row
    std::vector<CNodeFlow> m_nodes;       ///< by row
    std::vector<std::uint32_t> m_heads;   ///< rows of sections that no section enters, in the order of the list
    const OLMGis::Topology::CTopologyStorage* m_topology = nullptr;
};
