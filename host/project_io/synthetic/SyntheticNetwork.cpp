// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/synthetic/SyntheticNetwork.h"

#include "host/gis_core/DataRW.h"
#include "host/gis_core/Utility.h"
#include "host/network_core/SectionSlopes.h"
#include "host/network_core/TopologyMultiStorage.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

namespace OLMGis::ProjectIo {

using Data::CDataBox;
using Data::CDataDefinition;
using Topology::CNode;
using Topology::CSection;
using Topology::CTopologyStorage;
using Utility::CUtility;
using Utility::Done;
using Utility::Status;

namespace {

constexpr std::uint32_t Nowhere = CSyntheticLayout::Nowhere;

/// scale: 100 for two decimals.
double RoundTo(double value, double scale) {
    return std::round(value * scale) / scale;
}

double ToMillimetre(double metres) {
    return RoundTo(metres, 1000.0);
}

/// Definitions of what is stored, looked up once.
struct CKeys {
    const CDataDefinition* m_terrain = Find("TERRAIN_1");
    const CDataDefinition* m_mainOutlet = Find("MAIN_SECT_OUT");
    const CDataDefinition* m_length = Find("length");
    const CDataDefinition* m_slope = Find("SECTION_SLOPE");
    const CDataDefinition* m_level0 = Find("LEVEL_LINE_0");
    const CDataDefinition* m_level1 = Find("LEVEL_LINE_1");
    const CDataDefinition* m_levelPosition = Find("LEVEL_LINE_POSITION");
    const CDataDefinition* m_inletTime = Find("FLOW_INTIME");
    const CDataDefinition* m_densityWeight = Find("FLOW_COEFDEN");
    const CDataDefinition* m_kinds = Find("kinds");
    const CDataDefinition* m_area = Find("area");
    const CDataDefinition* m_coefficient = Find("coefficient");
    const CDataDefinition* m_density = Find("density");

    static const CDataDefinition* Find(std::string_view id) {
        return Data::CDataConfiguration::Instance()->GetDataDefinitionByID(id);
    }
};

std::string GuidOf(std::string_view layer, std::string_view name) {
    return CUtility::MakeGuid(layer, name, 0);
}

std::size_t CountSections(const CSyntheticLayout& layout) {
    std::size_t count = 0;
    for (const CSyntheticLayout::CNode& node : layout.m_nodes)
        count += (node.m_down != Nowhere ? 1U : 0U) + (node.m_relief != Nowhere ? 1U : 0U);
    return count;
}

class CNetworkGenerator {
public:
    CNetworkGenerator(CTopologyStorage& topology, const CSyntheticLayout& layout, CSplitMix& random)
        : m_topology(topology), m_layout(layout), m_random(random), m_sectionCount(CountSections(layout)) {}

    Status Generate();

private:
    double LengthTo(std::uint32_t node, std::uint32_t down) const;
    void FindLevels();
    Status AddNodes();
    Status AddSections();
    Status AddSection(std::uint32_t from, std::uint32_t to, CSection*& section);
    Status AddCatchments(CSection& section);
    /// number: of the catchment among those of its section, from 1.
    Status AddCatchment(CSection& section, int number, int kinds, const CDataBox& coefficient, const CDataBox& density);

    static void Set(const CDataDefinition* key, const Data::CAttributeOwner& entity, const CDataBox& box) {
        Data::CDataRW::Write(key, &entity, box, nullptr);
    }

    CTopologyStorage& m_topology;
    const CSyntheticLayout& m_layout;
    CSplitMix& m_random;
    CKeys m_keys;
    std::vector<double> m_levels; ///< inverts, m, by place in the layout
    std::vector<CNode*> m_nodes;  ///< by place in the layout
    std::size_t m_sectionCount;
    std::size_t m_addedSections = 0;
};

double CNetworkGenerator::LengthTo(std::uint32_t node, std::uint32_t down) const {
    return ToMillimetre(Topology::Distance(m_layout.m_nodes[node].m_point, m_layout.m_nodes[down].m_point));
}

void CNetworkGenerator::FindLevels() {
    m_levels.resize(m_layout.m_nodes.size());
    for (std::uint32_t i = 0; i < m_layout.m_nodes.size(); ++i) {
        const CSyntheticLayout::CNode& node = m_layout.m_nodes[i];
        double level = m_random.Between(90.0, 110.0, 2);
        if (node.m_down != Nowhere) {
            const double slope = m_random.Between(0.003, 0.012, 4);
            level = m_levels[node.m_down] + slope * LengthTo(i, node.m_down);
            if (node.m_relief != Nowhere)
                level = std::max(level, m_levels[node.m_relief] + slope * LengthTo(i, node.m_relief));
        }
        m_levels[i] = ToMillimetre(level);
    }
}

Status CNetworkGenerator::AddNodes() {
    m_nodes.resize(m_layout.m_nodes.size());
    std::size_t outfalls = 0;
    std::size_t others = 0;
    for (std::size_t i = m_nodes.size(); i-- > 0;) {
        const bool isOutfall = m_layout.m_nodes[i].m_down == Nowhere;
        const std::string name = isOutfall ? fmt::format("OUT{}", ++outfalls) : fmt::format("N{}", ++others);
        const auto node = m_topology.AddNode(GuidOf("node", name), name, m_layout.m_nodes[i].m_point);
        if (!node)
            return node.GetError();
        m_nodes[i] = node.Value().get();
        Set(m_keys.m_terrain, *m_nodes[i], RoundTo(m_levels[i] + m_random.Between(2.0, 3.2, 2), 100.0));
    }
    return Done();
}

Status CNetworkGenerator::AddSections() {
    for (std::uint32_t i = static_cast<std::uint32_t>(m_nodes.size()); i-- > 0;) {
        const CSyntheticLayout::CNode& node = m_layout.m_nodes[i];
        if (node.m_down == Nowhere)
            continue;
        CSection* main = nullptr;
        if (Status status = AddSection(i, node.m_down, main); !status)
            return status;
        if (node.m_relief == Nowhere)
            continue;
        CSection* relief = nullptr;
        if (Status status = AddSection(i, node.m_relief, relief); !status)
            return status;
        // Nodes that drain here come later in the layout: all of them have been entered.
        if (m_nodes[i]->GetSectionsInCount() > 0)
            Set(m_keys.m_mainOutlet, *m_nodes[i], CDataBox(main->GetGuid()));
    }
    return Done();
}

Status CNetworkGenerator::AddSection(std::uint32_t from, std::uint32_t to, CSection*& section) {
    const std::string name = fmt::format("S{}", ++m_addedSections);
    const auto added = m_topology.AddSection(GuidOf("section", name), name, m_nodes[from], m_nodes[to], {});
    if (!added)
        return added.GetError();
    section = added.Value().get();
    const double length = LengthTo(from, to);
    Set(m_keys.m_length, *section, length);
    Set(m_keys.m_level0, *section, m_levels[from]);
    Set(m_keys.m_level1, *section, m_levels[to]);
    Set(m_keys.m_levelPosition, *section, 0);
    Set(m_keys.m_slope, *section, RoundTo(1000.0 * (m_levels[from] - m_levels[to]) / length, 10000.0));
    Set(m_keys.m_inletTime, *section, m_random.Between(5.0, 12.0, 1));
    if (m_random.Unit() < 0.25)
        Set(m_keys.m_densityWeight, *section, m_random.Between(0.5, 1.5, 2));
    return AddCatchments(*section);
}

Status CNetworkGenerator::AddCatchments(CSection& section) {
    Status rain = AddCatchment(section, 1, Topology::CatchmentRain, m_random.Between(0.35, 0.85, 2), {});
    if (rain && m_random.Unit() < 0.8)
        return AddCatchment(section, 2, Topology::CatchmentHousehold, 1.0, m_random.Between(40.0, 180.0, 0));
    return rain;
}

Status CNetworkGenerator::AddCatchment(CSection& section, int number, int kinds, const CDataBox& coefficient,
                                       const CDataBox& density) {
    const std::string name = fmt::format("{}/{}", section.GetName(), number);
    const auto added = m_topology.AddCatchment(GuidOf("catchment", name), name, &section, {});
    if (!added)
        return added.GetError();
    const Topology::CCatchment& catchment = *added.Value();
    Set(m_keys.m_kinds, catchment, kinds);
    Set(m_keys.m_area, catchment, m_random.Between(0.1, 0.6, 4));
    Set(m_keys.m_coefficient, catchment, coefficient);
    Set(m_keys.m_density, catchment, density);
    return Done();
}

Status CNetworkGenerator::Generate() {
    const std::size_t nodes = m_layout.m_nodes.size();
    m_topology.Reserve(nodes, m_sectionCount, 2 * m_sectionCount);
    FindLevels();
    if (Status status = AddNodes(); !status)
        return status;
    return AddSections();
}

} // namespace

Status GenerateNetwork(enmNetworkShape shape, std::size_t sections, std::uint64_t seed) {
    CTopologyStorage& topology = *Topology::CTopologyMultiStorage::Instance()->GetActiveTopology();
    if (sections < 1 || sections > MostGeneratedSections)
        return Utility::BadArguments(
            fmt::format("found {} sections, expected 1 to {}", sections, MostGeneratedSections));
    if (!topology.GetNodes().empty() || !topology.GetSections().empty())
        return Utility::Refused("the project has a network already, expected an empty one");
    CSplitMix random(seed);
    const CSyntheticLayout layout = MakeLayout(shape, sections, random);
    if (Status status = CNetworkGenerator(topology, layout, random).Generate(); !status)
        return status;
    Topology::StoreSlopes(topology, {});
    return Done();
}

} // namespace OLMGis::ProjectIo
