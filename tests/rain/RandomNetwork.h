// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/CatalogManager.h"
#include "host/sewage_core/FlowDirection.h"
#include "tests/support/TextNetwork.h"

#include <random>
#include <string>
#include <vector>

/// Random numbers that are the same on every machine, unlike those of the library's distributions.
class CDice {
public:
    explicit CDice(unsigned int seed) : m_engine(seed) {}

    /// 0 to sides - 1.
    std::size_t Roll(std::size_t sides) { return m_engine() % sides; }
    bool Chance(std::size_t percent) { return Roll(100) < percent; }

private:
    std::mt19937 m_engine;
};

/// What a random network may have beside a tree of sections.
struct CRandomShape {
    std::size_t m_mostSections = 7;
    std::size_t m_reliefs = 0;       ///< chance (%) of a second way out of a node, back into the network or out of it
    std::size_t m_rings = 0;         ///< chance (%) of such a way leading anywhere, rings and loops included
    std::size_t m_repeatedNames = 0; ///< chance (%) that a section has the name of another
    std::size_t m_gaps = 0;          ///< chance (%) of a missing input
    const char* m_drawing = nullptr; ///< sections as drawn, with random inputs and main outlets
};

/// A random network in the active project: nodes drain to nodes before them, inputs come from few values so that ties
/// are common. Main outlets are chosen at random.
class CRandomNetwork {
public:
    CRandomNetwork(CDice& dice, const CRandomShape& shape) : m_dice(dice), m_shape(shape) {
        using namespace OLMGis;
        auto& topology = *Topology::CTopologyMultiStorage::Instance()->GetActiveTopology();
        if (shape.m_drawing == nullptr)
            Invent(topology);
        else
            static_cast<void>(CTextNetwork(shape.m_drawing));
        for (const auto& section : topology.GetSections())
            FillIn(topology, section);
        for (const auto& node : topology.GetNodes()) {
            std::vector<boost::shared_ptr<Topology::CSection>> out;
            if (node->GetSectionsOut(out) > 1)
                Sewage::CFlowDirection::SetMainOutlet(node, out[dice.Roll(out.size())]);
        }
    }

private:
    void Invent(OLMGis::Topology::CTopologyStorage& topology) {
        const std::size_t count = 1 + m_dice.Roll(m_shape.m_mostSections);
        std::vector<OLMGis::Topology::CNode*> nodes;
        for (std::size_t i = 0; i <= count; ++i) {
            const std::string name = "N" + std::to_string(i);
            nodes.push_back(topology.AddNode(name, name, {static_cast<double>(i), 0.0}).Value().get());
        }
        for (std::size_t i = nodes.size(); i-- > 1;) {
            AddSection(topology, *nodes[i], *nodes[i - 1 - m_dice.Roll(std::min<std::size_t>(i, 3))]);
            if (m_dice.Chance(m_shape.m_reliefs))
                AddSection(topology, *nodes[i],
                           *nodes[m_dice.Chance(m_shape.m_rings) ? m_dice.Roll(nodes.size()) : m_dice.Roll(i)]);
        }
    }

    void AddSection(OLMGis::Topology::CTopologyStorage& topology, OLMGis::Topology::CNode& from,
                    OLMGis::Topology::CNode& to) {
        const std::size_t number = topology.GetSections().size();
        const std::size_t named = m_dice.Chance(m_shape.m_repeatedNames) ? m_dice.Roll(number + 1) : number;
        const std::string guid{static_cast<char>('A' + m_dice.Roll(26)), static_cast<char>('a' + m_dice.Roll(26))};
        const std::string name =
            std::string(1, static_cast<char>('A' + (named * 7) % 26)) + std::string(named % 3, 'x');
        ASSERT_TRUE(topology.AddSection(guid + std::to_string(number), name, &from, &to, {}));
    }

    void FillIn(OLMGis::Topology::CTopologyStorage& topology,
                const boost::shared_ptr<OLMGis::Topology::CSection>& section) {
        const auto set = [&](const char* key, std::initializer_list<double> values) {
            if (!m_dice.Chance(m_shape.m_gaps))
                OLMGis::Data::CDataRW::Write(key, section, *(values.begin() + m_dice.Roll(values.size())), nullptr);
        };
        set("length", {30.0, 30.0, 55.5, 120.0, 400.0});
        set("SECTION_SLOPE", {4.0, 4.0, 7.7, 15.0, 30.0});
        set("FLOW_INTIME", {5.0, 5.0, 8.3, 10.0, 41.0});
        set("FLOW_BLG_RET", {1.0, 1.25, 2.0});
        if (m_dice.Chance(20))
            set("PIPE_ROUGHNESS", {0.4, 1.5});
        if (m_dice.Chance(75))
            AddCatchment(topology, *section);
    }

    void AddCatchment(OLMGis::Topology::CTopologyStorage& topology, OLMGis::Topology::CSection& section) {
        constexpr std::array Areas{0.1, 0.3, 0.3, 0.7, 1.9};
        const std::string guid = "c" + std::to_string(topology.GetCatchments().size());
        const auto catchment = topology.AddCatchment(guid, guid, &section, {}).Value();
        OLMGis::Data::CDataRW::Write("kinds", catchment, 1, nullptr);
        OLMGis::Data::CDataRW::Write("area", catchment, Areas[m_dice.Roll(Areas.size())], nullptr);
        OLMGis::Data::CDataRW::Write("coefficient", catchment, m_dice.Chance(50) ? 0.9 : 0.35, nullptr);
    }

    CDice& m_dice;
    CRandomShape m_shape;
};

/// A group of circular pipes in the active project's catalogue; its name.
inline std::string AddPipes(double largest) {
    using namespace OLMGis::Topology;
    auto& catalog = *CCatalogManager::Instance()->GetCatalog("PIPE", 1);
    std::string name = "Search pipes";
    const auto group = catalog.AddGroup("search-pipes", name).Value();
    for (const double width : {200.0, 250.0, 300.0, 400.0, 500.0, 600.0, 800.0, 1000.0, 1400.0, 2000.0}) {
        if (width > largest)
            break;
        CPipeData pipe;
        pipe.m_innerWidth = pipe.m_innerHeight = width;
        pipe.m_roughness = width < 450.0 ? 0.4 : 1.0;
        pipe.m_type = "search";
        const std::string number = std::to_string(static_cast<int>(width));
        EXPECT_TRUE(catalog.AddPipe(*group, "search-pipe-" + number, "DN" + number, pipe));
    }
    return name;
}
