// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "bench/Network.h"

#include "host/gis_core/DataRW.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/Utility.h"
#include "host/network_core/TopologyMultiStorage.h"
#include "host/project_io/synthetic/SyntheticNetwork.h"
#include "plugin/HCPluginInfo.h"

#include <fmt/format.h>

namespace Bench {

using OLMGis::Data::CDataBox;
using OLMGis::Data::CDataConfiguration;
using OLMGis::Data::CDataDefinition;
using OLMGis::Data::CDataRW;
using OLMGis::ProjectIo::CSplitMix;
using OLMGis::ProjectIo::CSyntheticLayout;
using OLMGis::Topology::CNode;
using OLMGis::Topology::CTopologyStorage;
using OLMGis::Utility::CUtility;

namespace {

constexpr std::uint32_t Nowhere = CSyntheticLayout::Nowhere;

/// Enters a layout into a topology, from the heads to the outfalls.
class CNetworkBuilder {
public:
    CNetworkBuilder(CTopologyStorage& topology, const CSyntheticLayout& layout)
        : m_topology(topology), m_layout(layout), m_nodes(layout.m_nodes.size()) {}

    Status Build() {
        m_topology.Reserve(m_nodes.size(), m_nodes.size(), 0);
        for (std::size_t i = m_nodes.size(); i-- > 0;)
            if (Status status = AddNode(i); !status)
                return status;
        for (std::size_t i = m_nodes.size(); i-- > 0;)
            for (const std::uint32_t to : {m_layout.m_nodes[i].m_down, m_layout.m_nodes[i].m_relief})
                if (to != Nowhere)
                    if (Status status = AddSection(i, to); !status)
                        return status;
        return Done{};
    }

private:
    Status AddNode(std::size_t i) {
        const std::string name = fmt::format("N{}", i);
        const auto node = m_topology.AddNode(CUtility::MakeGuid("node", name, 0), name, m_layout.m_nodes[i].m_point);
        if (!node)
            return node.GetError();
        m_nodes[i] = node.Value().get();
        CDataRW::Write("TERRAIN_1", m_nodes[i], CDataBox(m_random.Between(90.0, 110.0, 2)), nullptr);
        return Done{};
    }

    Status AddSection(std::size_t from, std::size_t to) {
        const std::string name = fmt::format("S{}", ++m_sectionCount);
        const auto section =
            m_topology.AddSection(CUtility::MakeGuid("section", name, 0), name, m_nodes[from], m_nodes[to], {});
        return section ? Status(Done{}) : Status(section.GetError());
    }

    CTopologyStorage& m_topology;
    const CSyntheticLayout& m_layout;
    std::vector<CNode*> m_nodes; ///< by place in the layout
    CSplitMix m_random{Seed};
    std::size_t m_sectionCount = 0;
};

} // namespace

CBenchProject::CBenchProject() {
    // Settings come before the module: calculators ask for them when they are made.
    static_cast<void>(OLMGis::Utility::CModuleConfiguration::Instance()->ApplySettings());
    CHCPluginInfo().RegisterCalculationItems();
}

CTopologyStorage& CBenchProject::Topology() const {
    return *OLMGis::Topology::CTopologyMultiStorage::Instance()->GetActiveTopology();
}

std::vector<const CDataDefinition*> TwentyKeys() {
    constexpr std::size_t keyCount = 20;
    std::vector<const CDataDefinition*> keys;
    for (const auto& definition : CDataConfiguration::Instance()->GetDataDefinitions())
        if (keys.size() < keyCount && definition->m_entityKind == OLMGis::Data::enmEntityKind::Section &&
            definition->m_type == OLMGis::Data::enmDataType::Double)
            keys.push_back(definition.get());
    return keys;
}

Result<CBenchProjectPtr> MakeBareNetwork(const CSize& size) {
    auto project = std::make_shared<CBenchProject>();
    CSplitMix random(Seed);
    const CSyntheticLayout layout = MakeLayout(size.m_shape, size.m_sections, random);
    const Status status = CNetworkBuilder(project->Topology(), layout).Build();
    if (!status)
        return status.GetError();
    return project;
}

Result<CBenchProjectPtr> MakeFilledNetwork(const CSize& size) {
    auto project = MakeBareNetwork(size);
    if (!project)
        return project;
    const auto keys = TwentyKeys();
    CSplitMix random(Seed);
    for (const auto& section : (*project.operator->())->Topology().GetSections())
        for (const CDataDefinition* key : keys)
            CDataRW::Write(key, section, CDataBox(random.Between(0.0, 100.0, 3)), nullptr);
    return project;
}

Result<CBenchProjectPtr> MakeGeneratedNetwork(const CSize& size) {
    auto project = std::make_shared<CBenchProject>();
    const Status status = OLMGis::ProjectIo::GenerateNetwork(size.m_shape, size.m_sections, Seed);
    if (!status)
        return status.GetError();
    return project;
}

} // namespace Bench
