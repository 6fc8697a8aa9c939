// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "flow/MainOutlets.h"

#include <utility>
#include <vector>

using OLMGis::Sewage::CFlowDirection;
using OLMGis::Sewage::CSectionList;
using OLMGis::Sewage::IUserInteraction;

namespace MainOutlets {

CNodeList CollectStartingNodes(const CSectionList& sections) {
    CNodeList nodes;
    std::vector<bool> isListed; // by row
    for (auto section = sections.rbegin(); section != sections.rend(); ++section) {
        auto node = *section ? (*section)->GetStartingNode() : nullptr;
        if (!node || !CFlowDirection::NeedsMainOutlet(*node))
            continue;
        if (node->GetRow() >= isListed.size())
            isListed.resize(node->GetRow() + 1);
        if (isListed[node->GetRow()])
            continue;
        isListed[node->GetRow()] = true;
        nodes.push_back(std::move(node));
    }
    return nodes;
}

int Settle(const CNodeList& nodes, IUserInteraction* interaction) {
    if (CFlowDirection::IsMainFlowSectSet(nodes) != 0)
        return 1;
    if (interaction != nullptr)
        interaction->BeginUserInteraction();
    const int isCompleted = CFlowDirection::ShowDirectionEditor(&nodes);
    if (interaction != nullptr)
        interaction->EndUserInteraction();
    return isCompleted;
}

} // namespace MainOutlets
