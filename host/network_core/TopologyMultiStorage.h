// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/TopologyStorage.h"

namespace OLMGis::Topology {

/// The topologies of the active project, of which a project has one. One per project context.
class CTopologyMultiStorage {
public:
    static CTopologyMultiStorage* Instance();

    /// The topology of the active system; never null.
    CTopologyStorage* GetActiveTopology() { return &m_topology; }

    CTopologyMultiStorage();

private:
    CTopologyStorage m_topology;
};

} // namespace OLMGis::Topology
