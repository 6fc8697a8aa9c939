// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/sewage_core/FlowDirection.h"

#include "host/network_core/TopologyStorage.h"

#include <algorithm>

namespace OLMGis::Sewage {

using Topology::CNode;
using Topology::CSection;

bool CFlowDirection::NeedsMainOutlet(const CNode& node) {
    return node.GetSectionsInCount() >= 1 && node.GetSectionsOutCount() >= 2;
}

int CFlowDirection::IsMainFlowSectSet(const std::vector<boost::shared_ptr<CNode>>& nodes) {
    const auto isSettled = [](const boost::shared_ptr<CNode>& node) {
        return !node || !NeedsMainOutlet(*node) || node->GetTopology().GetSettledMainOutlet(*node) != nullptr;
    };
    return std::all_of(nodes.begin(), nodes.end(), isSettled) ? 1 : 0;
}

boost::shared_ptr<CSection> CFlowDirection::GetMainOutSection(const boost::shared_ptr<CNode>& node) {
    if (!node)
        return nullptr;
    if (const CSection* settled = node->GetTopology().GetSettledMainOutlet(*node))
        return settled->GetShared();
    std::vector<boost::shared_ptr<CSection>> out;
    return node->GetSectionsOut(out) == 1 ? out.front() : nullptr;
}

} // namespace OLMGis::Sewage
