// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/sewage_core/FlowDirection.h"

#include "host/gis_core/DataRW.h"
#include "host/network_core/Catalog.h"
#include "host/network_core/TopologyStorage.h"
#include "host/sewage_core/DirectionEditor.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

namespace OLMGis::Sewage {

using Topology::CNode;
using Topology::CSection;

namespace {

bool HasMainOutletIfNeeded(const boost::shared_ptr<CNode>& node) {
    return !node || !CFlowDirection::NeedsMainOutlet(*node) ||
           node->GetTopology().GetChosenMainOutlet(*node) != nullptr;
}

/// What decides between outlets: the level line of the outlet at its start, then the size of its pipe.
struct Merit {
    explicit Merit(const CSection& outlet) {
        Data::CDataBox box;
        if (Data::CDataRW::Read("LEVEL_LINE_0", &outlet, box, 0, nullptr) != 0 && !std::isnan(box.AsDouble()))
            level = box.AsDouble();
        const auto pipe = outlet.GetPipe();
        if (pipe && pipe->GetPipeData() != nullptr)
            size = pipe->GetPipeData()->m_innerWidth * pipe->GetPipeData()->m_innerHeight;
    }

    bool IsBetterThan(const Merit& other) const {
        return level != other.level ? level < other.level : size > other.size;
    }

    double level = std::numeric_limits<double>::infinity(); ///< m; unknown comes last
    double size = 0.0;                                      ///< mm², inside width times inside height
};

} // namespace

bool CFlowDirection::NeedsMainOutlet(const CNode& node) {
    return node.GetSectionsInCount() >= 1 && node.GetSectionsOutCount() >= 2;
}

int CFlowDirection::IsMainFlowSectSet(const CNodeList& nodes) {
    return std::all_of(nodes.begin(), nodes.end(), HasMainOutletIfNeeded) ? 1 : 0;
}

CFlowDirection::CNodeList CFlowDirection::NodesWithoutMainOutlet(const CNodeList& nodes) {
    CNodeList missing;
    std::copy_if(nodes.begin(), nodes.end(), std::back_inserter(missing),
                 [](const boost::shared_ptr<CNode>& node) { return !HasMainOutletIfNeeded(node); });
    return missing;
}

boost::shared_ptr<CSection> CFlowDirection::GetMainOutSection(const boost::shared_ptr<CNode>& node) {
    const CSection* const outlet = node ? node->GetTopology().GetMainOutlet(*node) : nullptr;
    return outlet == nullptr ? nullptr : outlet->GetShared();
}

int CFlowDirection::ShowDirectionEditor(const CNodeList* nodes) {
    if (nodes == nullptr)
        return 0;
    const CNodeList missing = NodesWithoutMainOutlet(*nodes);
    return missing.empty() ? 1 : DirectionEditor().EditDirections(missing);
}

boost::shared_ptr<CSection> CFlowDirection::ChooseMainOutlet(const boost::shared_ptr<CNode>& node) {
    std::vector<boost::shared_ptr<CSection>> out;
    if (!node || node->GetSectionsOut(out) == 0)
        return nullptr;
    auto best = out.begin();
    Merit merit(**best);
    for (auto outlet = out.begin() + 1; outlet != out.end(); ++outlet) {
        const Merit other(**outlet);
        if (other.IsBetterThan(merit)) {
            best = outlet;
            merit = other;
        }
    }
    return *best;
}

int CFlowDirection::SetMainOutlet(const boost::shared_ptr<CNode>& node, const boost::shared_ptr<CSection>& section) {
    if (!node || !section || section->IsDeleted() || section->GetStartingNode() != node)
        return 0;
    return Data::CDataRW::Write("MAIN_SECT_OUT", node, Data::CDataBox(section->GetGuid()), nullptr);
}

int CFlowDirection::ChooseAutomatically(const CNodeList& nodes) {
    int count = 0;
    for (const auto& node : NodesWithoutMainOutlet(nodes))
        count += SetMainOutlet(node, ChooseMainOutlet(node)) != 0 ? 1 : 0;
    return count;
}

} // namespace OLMGis::Sewage
