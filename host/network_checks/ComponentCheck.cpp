// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_checks/ComponentCheck.h"

#include "host/gis_core/CoreProgressBar.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/Utility.h"
#include "host/network_core/TopologyStorage.h"

#include <algorithm>
#include <numeric>
#include <string>

namespace OLMGis::NetworkChecks {

using Topology::CConnectivity;
using Topology::CEntity;

namespace {

constexpr int NameMessage = 70439;
constexpr int AcceptedMessage = 70440;
constexpr int SeparatePartMessage = 70441;

constexpr const char* Accepted = "VALUE_MAX";
constexpr double DefaultAccepted = 1.0;

/// Sets of nodes that are joined step by step (union-find with path halving).
class CNodeSets {
public:
    explicit CNodeSets(std::uint32_t count) : m_parents(count) { std::iota(m_parents.begin(), m_parents.end(), 0U); }

    std::uint32_t Find(std::uint32_t node) {
        while (m_parents[node] != node)
            node = m_parents[node] = m_parents[m_parents[node]];
        return node;
    }

    void Join(std::uint32_t a, std::uint32_t b) {
        const std::uint32_t first = Find(a);
        const std::uint32_t second = Find(b);
        // The smaller number becomes the name of both.
        m_parents[std::max(first, second)] = std::min(first, second);
    }

private:
    std::vector<std::uint32_t> m_parents; ///< by row of node
};

struct CPart {
    const CEntity* m_first; ///< its first section; the node of a part without one
    std::size_t m_sections;
};

/// The parts in the order of their first sections, then the nodes without a section.
class CPartList {
public:
    CPartList(const Topology::CAnalysedNetwork& network, const CConnectivity& ways, CNodeSets& sets)
        : m_partOf(ways.GetNodeCount(), CConnectivity::None) {
        for (const auto& section : network.m_sections) {
            const std::uint32_t start = ways.GetStart(section->GetRow());
            const std::uint32_t node = start == CConnectivity::None ? ways.GetEnd(section->GetRow()) : start;
            if (node == CConnectivity::None)
                m_parts.push_back({section.get(), 1});
            else
                ++Of(sets.Find(node), *section).m_sections;
        }
        for (const auto& node : network.m_nodes)
            Of(sets.Find(node->GetRow()), *node);
    }

    std::vector<CPart>& Get() { return m_parts; }

private:
    CPart& Of(std::uint32_t set, const CEntity& entity) {
        if (m_partOf[set] == CConnectivity::None) {
            m_partOf[set] = static_cast<std::uint32_t>(m_parts.size());
            m_parts.push_back({&entity, 0});
        }
        return m_parts[m_partOf[set]];
    }

    std::vector<std::uint32_t> m_partOf; ///< by name of a set
    std::vector<CPart> m_parts;
};

} // namespace

CComponentCheck::CComponentCheck() : CNetworkCheck("0011_COMPONENTS", NameMessage, "FAI_COMPONENTS") {}

std::vector<CNetworkCheck::CField> CComponentCheck::GetFields() const {
    return {{Accepted, AcceptedMessage, DefaultAccepted}};
}

void CComponentCheck::Run(const Topology::CPropertiesEx& form, const Topology::CAnalysedNetwork& network,
                          Topology::CFindingList& findings) {
    const double accepted = form.GetDblProperty(Accepted, DefaultAccepted, 1);
    Utility::CProgress progress(GetItemName(), network.m_sections.size());
    if (network.m_nodes.empty())
        return;
    const auto ways = network.m_nodes.front()->GetTopology().GetConnectivity();
    CNodeSets sets(ways->GetNodeCount());
    for (std::uint32_t section = 0; section < ways->GetSectionCount(); ++section) {
        const std::uint32_t start = ways->GetStart(section);
        const std::uint32_t end = ways->GetEnd(section);
        if (start != CConnectivity::None && end != CConnectivity::None)
            sets.Join(start, end);
        if (!progress.GoOn(section))
            return;
    }
    CPartList list(network, *ways, sets);
    std::vector<CPart>& parts = list.Get();
    std::stable_sort(parts.begin(), parts.end(),
                     [](const CPart& a, const CPart& b) { return a.m_sections > b.m_sections; });
    const double count = static_cast<double>(parts.size());
    for (std::size_t i = 0; i < parts.size(); ++i)
        if (static_cast<double>(i + 1) > accepted)
            findings.AddText(*parts[i].m_first,
                             Utility::CUtility::Format(Utility::Msg(SeparatePartMessage), std::to_string(i + 1),
                                                       std::to_string(parts.size()),
                                                       std::to_string(parts[i].m_sections)),
                             {count, accepted, {}});
}

} // namespace OLMGis::NetworkChecks
