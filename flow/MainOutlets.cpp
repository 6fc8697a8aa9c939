// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "flow/MainOutlets.h"

#include "host/network_core/TopologyStorage.h"

#include <cstdint>
#include <vector>

namespace Flow::MainOutlets {

using OLMGis::Sewage::CFlowDirection;
using OLMGis::Sewage::CSectionList;
using OLMGis::Sewage::IUserInteraction;
using OLMGis::Topology::CSection;

CNodeList CollectStartingNodes(const CSectionList& sections) {
    CNodeList nodes;
    std::vector<bool> isListed; // by row
    for (auto section = sections.rbegin(); section != sections.rend(); ++section) {
        const std::uint32_t row = *section ? (*section)->GetStartingNodeRow() : CSection::NoRow;
        if (row == CSection::NoRow)
            continue;
        if (row >= isListed.size())
            isListed.resize(row + 1);
        if (isListed[row])
            continue;
        isListed[row] = true;
        const auto& node = (*section)->GetTopology().GetNodeAt(row);
        if (CFlowDirection::NeedsMainOutlet(*node))
            nodes.push_back(node);
    }
    return nodes;
}

int ChooseMissing(const CNodeList& nodes, IUserInteraction* interaction) {
    if (CFlowDirection::IsMainFlowSectSet(nodes) != 0)
        return 1;
    if (interaction != nullptr)
        interaction->BeginUserInteraction();
    const int isCompleted = CFlowDirection::ShowDirectionEditor(&nodes);
    if (interaction != nullptr)
        interaction->EndUserInteraction();
    return isCompleted;
}

} // namespace Flow::MainOutlets
