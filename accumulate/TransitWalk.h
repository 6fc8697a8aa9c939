// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/sewage_core/IFlowCalculator.h"

#include <cstdint>
#include <functional>
#include <vector>

namespace Accumulate {

/// Accumulates flows (m³/s) from the heads of a network down to its outfalls. Flow never splits: at a node with several
/// outlets all of it takes the main one. Plain numbers by row of section and node; attributes of flows are neither read
/// nor written here.
///
/// All sections given belong to one network. Cost: linear in sections and nodes, whatever the shape of the network.
class CTransitWalk {
public:
    using CSectionList = OLMGis::Sewage::CSectionList;

    static constexpr double NotReached = -1.0; ///< transit of a section that the walk did not come to

    struct CSectionFlow {
        double own = 0.0;            ///< m³/s, of the section itself
        double transit = NotReached; ///< m³/s, arriving at its start
        bool hasRecord = false;      ///< whether the section is one of the run, with both nodes
    };

    struct CNodeFlow {
        double accumulated = 0.0;     ///< m³/s that has reached the node
        std::int32_t sectionsIn = 0;  ///< sections of the network that enter the node, also such outside the run
        std::int32_t processedIn = 0; ///< those of them that the walk has finished
        bool hasRecord = false;       ///< whether a section of the run starts here
    };

    using COwnFlow = std::function<double(const OLMGis::Topology::CSection&)>;

    /// Makes the records: of each section with both nodes, its own flow as ownFlow gives it, and of each node where one
    /// of them starts; nulls and sections without a node get none. Then walks once from the sections with a record that
    /// no section enters, in the order of the list, down through the main outlets. A node passes its flow on once, when
    /// all that enter it are finished: rings and what is below one, side outlets, and everything below a junction with
    /// one are not reached.
    void Run(const CSectionList& sections, const COwnFlow& ownFlow);

    /// By row.
    const std::vector<CSectionFlow>& GetSectionFlows() const { return m_sections; }
    const std::vector<CNodeFlow>& GetNodeFlows() const { return m_nodes; }

    /// The record of a section, null without one.
    const CSectionFlow* Find(const OLMGis::Topology::CSection& section) const;

    /// The network of the last run; null without any record.
    const OLMGis::Topology::CTopologyStorage* GetTopology() const { return m_topology; }

private:
    void MakeRecords(const CSectionList& sections, const COwnFlow& ownFlow);
    void Walk(std::vector<std::uint32_t> queue);

    std::vector<CSectionFlow> m_sections; ///< by row
    std::vector<CNodeFlow> m_nodes;       ///< by row
    const OLMGis::Topology::CTopologyStorage* m_topology = nullptr;
};

} // namespace Accumulate
