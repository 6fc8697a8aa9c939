// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_core/TopologyStorage.h"

#include "host/gis_core/Journal.h"
#include "tests/support/TestProject.h"
#include "tests/support/TextNetwork.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>

using namespace OLMGis;
using namespace OLMGis::Topology;

namespace {

std::string In(const CTextNetwork& net, std::string_view section) {
    std::vector<boost::shared_ptr<CSection>> list;
    const int count = net.Section(section)->GetSectionsIn(list);
    EXPECT_EQ(count, static_cast<int>(list.size()));
    return NamesOf(list);
}

std::string Out(const CTextNetwork& net, std::string_view section) {
    std::vector<boost::shared_ptr<CSection>> list;
    net.Section(section)->GetSectionsOut(list);
    return NamesOf(list);
}

std::string Upstream(const CTextNetwork& net, std::string_view section) {
    std::vector<boost::shared_ptr<CSection>> list;
    net.Section(section)->GetPreviousSections(list);
    return NamesOf(list);
}

std::string Connected(const CTextNetwork& net, char node) {
    std::vector<boost::shared_ptr<CSection>> list;
    net.Node(node)->GetConnectedSections(list);
    return NamesOf(list);
}

void ChooseOutlet(const CTextNetwork& net, char node, std::string_view guid) {
    ASSERT_EQ(Data::CDataRW::Write("MAIN_SECT_OUT", net.Node(node), guid, nullptr), 1);
}

} // namespace

TEST(Topology, NeighboursComeInTheOrderOfTheNetworkMainOutletFirst) {
    CTestProject project;
    const CTextNetwork net("A-C  B-C-D  C-E  F-C");
    EXPECT_EQ(In(net, "CD"), "AC BC FC");
    EXPECT_EQ(In(net, "AC"), "");
    EXPECT_EQ(Out(net, "AC"), "CD CE");
    EXPECT_EQ(Connected(net, 'C'), "AC BC CD CE FC");
    ChooseOutlet(net, 'C', net.Section("CE")->GetGuid());
    EXPECT_EQ(Out(net, "BC"), "CE CD");
    EXPECT_EQ(Connected(net, 'C'), "AC BC CD CE FC") << "only ways out are put first";
    ChooseOutlet(net, 'C', net.Section("AC")->GetGuid());
    EXPECT_EQ(Out(net, "BC"), "CD CE") << "a section that doesn't leave the node is no outlet";
}

TEST(Topology, UpstreamIsBreadthFirstOnceEachAndEndsInRings) {
    CTestProject project;
    const CTextNetwork net("A-B-C-D  E-C  B-F-D  D-G");
    EXPECT_EQ(Upstream(net, "DG"), "CD FD BC EC BF AB");
    const CTextNetwork ring("P-Q-R-P");
    EXPECT_EQ(Upstream(ring, "PQ"), "RP QR") << "without the section itself";
}

TEST(Topology, AHundredThousandSectionsInALineAndAStarAreOrdinary) {
    CTestProject project;
    CTopologyStorage& topology = *CTopologyMultiStorage::Instance()->GetActiveTopology();
    constexpr int Count = 100000;
    auto* const hub = topology.AddNode("hub", "hub", {0, 0}).Value().get();
    CNode* last = hub;
    for (int i = 0; i < Count; ++i) {
        const std::string name = std::to_string(i);
        CNode* const next = topology.AddNode("l" + name, "l" + name, {1.0 + i, 0}).Value().get();
        ASSERT_TRUE(topology.AddSection("line" + name, "line", last, next, {}));
        CNode* const tip = topology.AddNode("s" + name, "s" + name, {0, 1.0 + i}).Value().get();
        ASSERT_TRUE(topology.AddSection("star" + name, "star", tip, hub, {}));
        last = next;
    }
    std::vector<boost::shared_ptr<CSection>> list;
    EXPECT_EQ(topology.GetSectionByGuid("line99999")->GetPreviousSections(list), 2 * Count - 1);
    EXPECT_EQ(topology.GetSectionByGuid("star5")->GetSectionsOut(list), 1);
    EXPECT_EQ(topology.GetSectionsByName("star").size(), static_cast<std::size_t>(Count));
}

TEST(Topology, NamesAndGuidsAreRefusedAndFound) {
    CTestProject project;
    CTopologyStorage& topology = *CTopologyMultiStorage::Instance()->GetActiveTopology();
    auto* const a = topology.AddNode("{AB-1}", "A", {0, 0}).Value().get();
    auto* const b = topology.AddNode("ab-2", "a", {3, 4}).Value().get();
    EXPECT_FALSE(topology.AddNode("AB-2", "C", {})) << "GUIDs that differ by case";
    EXPECT_FALSE(topology.AddNode("ab-3", "A", {})) << "a repeated node name";
    EXPECT_FALSE(topology.AddNode("", "D", {}));
    EXPECT_EQ(topology.GetNodes().size(), 2U) << "nothing of a refused entity stays";
    EXPECT_EQ(topology.GetNodeByGuid("ab-1").get(), a);
    EXPECT_EQ(topology.GetNodeByName("a").get(), b);
    const auto first = topology.AddSection("s1", "S", a, b, {}).Value();
    const auto second = topology.AddSection("s2", "S", a, nullptr, {}).Value();
    EXPECT_EQ(topology.GetSectionsByName("S").size(), 2U);
    EXPECT_EQ(topology.RemoveSection(*first), 1);
    ASSERT_EQ(topology.GetSectionsByName("S").size(), 1U);
    EXPECT_EQ(topology.GetSectionsByName("S").front(), second);
    EXPECT_FALSE(topology.AddCatchment("c", "c", nullptr, {}));
    EXPECT_EQ(second->GetEndingNode(), nullptr);
    EXPECT_EQ(second->GetEndingNodeGuid(), "");
    std::vector<boost::shared_ptr<CSection>> list;
    EXPECT_EQ(second->GetSectionsOut(list), 0);
}

TEST(Topology, LengthIsTheStoredOneElseThatOfTheLine) {
    CTestProject project;
    CTopologyStorage& topology = *CTopologyMultiStorage::Instance()->GetActiveTopology();
    auto* const a = topology.AddNode("a", "A", {500000, 5000000}).Value().get();
    auto* const b = topology.AddNode("b", "B", {500003, 5000004}).Value().get();
    auto* const unknown = topology.AddNode("u", "U", {}).Value().get();
    const std::vector<CPoint> bent{a->GetPoint(), {500003, 5000000}, b->GetPoint()};
    const auto straight = topology.AddSection("s1", "S1", a, b, {}).Value();
    const auto drawn = topology.AddSection("s2", "S2", a, b, bent).Value();
    const auto nowhere = topology.AddSection("s3", "S3", a, unknown, {}).Value();
    EXPECT_DOUBLE_EQ(straight->GetLength2D(), 5.0);
    EXPECT_DOUBLE_EQ(drawn->GetLength2D(), 7.0);
    EXPECT_EQ(nowhere->GetLength2D(), 0.0);
    Data::CDataRW::Write("length", drawn, 0.0, nullptr);
    EXPECT_EQ(drawn->GetLength2D(), 0.0) << "a stored 0 is a length";
}

TEST(Topology, ASectionThatReturnsToItsStartIsConnectedOnce) {
    CTestProject project;
    const CTextNetwork net("A-B  B-B");
    EXPECT_EQ(Connected(net, 'B'), "AB BB");
    EXPECT_EQ(In(net, "BB"), "AB BB");
}

namespace {

/// Everything that can be asked of a network, as one text.
std::string Picture(CTopologyStorage& topology) {
    std::string text;
    std::vector<boost::shared_ptr<CSection>> list;
    for (const auto& node : topology.GetNodes()) {
        node->GetConnectedSections(list);
        text += "node " + std::string(node->GetGuid()) + ": " + NamesOf(list) + "\n";
        EXPECT_EQ(topology.GetNodeByGuid(node->GetGuid()), node);
        EXPECT_EQ(topology.GetNodeByName(node->GetName()), node);
    }
    for (const auto& section : topology.GetSections()) {
        section->GetSectionsOut(list);
        text += "section " + std::string(section->GetGuid()) + " -> " + NamesOf(list) + ":";
        for (const CCatchment* c = topology.GetFirstCatchment(*section); c != nullptr;
             c = topology.GetNextCatchment(*c))
            text += " " + std::string(c->GetGuid());
        text += "\n";
        EXPECT_EQ(topology.GetSectionByGuid(section->GetGuid()), section);
        EXPECT_EQ(NamesOf(topology.GetSectionsByName(section->GetName())).find('?'), std::string::npos);
    }
    return text + std::to_string(topology.GetCatchments().size());
}

/// The connectivity must answer what the entities themselves answer, whatever has just happened to them.
void ExpectCurrentConnectivity(const CTopologyStorage& topology) {
    const auto connectivity = topology.GetConnectivity();
    EXPECT_EQ(topology.GetConnectivity(), connectivity) << "made anew without a change";
    ASSERT_EQ(connectivity->GetNodeCount(), topology.GetNodeRowCount());
    ASSERT_EQ(connectivity->GetSectionCount(), topology.GetSectionRowCount());
    const auto namesOf = [&topology](std::span<const std::uint32_t> rows) {
        std::vector<boost::shared_ptr<CSection>> sections;
        for (const std::uint32_t row : rows)
            sections.push_back(topology.GetSectionAt(row));
        return NamesOf(sections);
    };
    std::vector<boost::shared_ptr<CSection>> list;
    for (std::uint32_t row = 0; row < topology.GetNodeRowCount(); ++row) {
        const CNode& node = *topology.GetNodeAt(row);
        node.GetSectionsIn(list);
        EXPECT_EQ(namesOf(connectivity->GetWaysIn(row)), NamesOf(list));
        node.GetSectionsOut(list);
        EXPECT_EQ(namesOf(connectivity->GetWaysOut(row)), NamesOf(list));
        const CSection* const outlet = topology.GetMainOutlet(node);
        EXPECT_EQ(connectivity->GetMainOutlet(row), outlet == nullptr ? CConnectivity::None : outlet->GetRow());
    }
    for (std::uint32_t row = 0; row < topology.GetSectionRowCount(); ++row) {
        const CSection& section = *topology.GetSectionAt(row);
        EXPECT_EQ(connectivity->GetStart(row),
                  section.IsDeleted() ? CConnectivity::None : section.GetStartingNodeRow());
        EXPECT_EQ(connectivity->GetEnd(row), section.IsDeleted() ? CConnectivity::None : section.GetEndingNodeRow());
    }
}

} // namespace

TEST(Topology, RandomEditsAreTakenBackAndDoneAgainExactly) {
    for (unsigned seed = 1; seed <= 30; ++seed) {
        CTestProject project;
        CTopologyStorage& topology = *CTopologyMultiStorage::Instance()->GetActiveTopology();
        std::mt19937_64 random(seed);
        int made = 0;
        const auto pick = [&](const auto& list) { return list[random() % list.size()]; };
        const auto edit = [&](int count) {
            for (int i = 0; i < count; ++i) {
                const std::string id = std::to_string(made++);
                const auto dice = random() % 11;
                if (topology.GetNodes().size() < 2 || dice < 3)
                    ASSERT_TRUE(topology.AddNode("n" + id, "n" + id, {}));
                else if (topology.GetSections().empty() || dice < 6)
                    ASSERT_TRUE(topology.AddSection("s" + id, "s" + std::to_string(random() % 5),
                                                    pick(topology.GetNodes()).get(), pick(topology.GetNodes()).get(),
                                                    {}));
                else if (dice < 8)
                    ASSERT_TRUE(topology.AddCatchment("c" + id, "c", pick(topology.GetSections()).get(), {}));
                else if (dice == 10)
                    Data::CDataRW::Write("MAIN_SECT_OUT", pick(topology.GetNodes()),
                                         pick(topology.GetSections())->GetGuid(), nullptr);
                else if (dice == 8)
                    topology.RemoveSection(*pick(topology.GetSections()));
                else if (!topology.GetCatchments().empty())
                    topology.RemoveCatchment(*pick(topology.GetCatchments()));
                else
                    topology.RemoveNode(*pick(topology.GetNodes()));
            }
        };
        edit(60);
        const std::string before = Picture(topology);
        ExpectCurrentConnectivity(topology);
        Data::CJournal journal;
        {
            const Data::CJournalScope open(project.Store(), &journal);
            edit(60);
        }
        const std::string after = Picture(topology);
        ExpectCurrentConnectivity(topology);
        journal.Undo(project.Store());
        ASSERT_EQ(Picture(topology), before) << "seed " << seed;
        ExpectCurrentConnectivity(topology);
        journal.Redo(project.Store());
        ASSERT_EQ(Picture(topology), after) << "seed " << seed;
    }
}

TEST(Topology, TheConnectivityFollowsAChangeOfTheMainOutletAlone) {
    CTestProject project;
    const CTextNetwork net("A-B-C  B-D");
    const auto& topology = net.Topology();
    const auto outletOfB = [&] { return topology.GetConnectivity()->GetMainOutlet(net.Node('B')->GetRow()); };
    const auto undecided = topology.GetConnectivity();
    EXPECT_EQ(outletOfB(), CConnectivity::None) << "two sections leave, none is chosen";
    Data::CJournal journal;
    {
        const Data::CJournalScope open(project.Store(), &journal);
        ChooseOutlet(net, 'B', net.Section("BD")->GetGuid());
    }
    EXPECT_EQ(outletOfB(), net.Section("BD")->GetRow());
    EXPECT_EQ(undecided->GetMainOutlet(net.Node('B')->GetRow()), CConnectivity::None) << "a snapshot never changes";
    journal.Undo(project.Store());
    EXPECT_EQ(outletOfB(), CConnectivity::None);
    ChooseOutlet(net, 'B', net.Section("AB")->GetGuid());
    EXPECT_EQ(outletOfB(), CConnectivity::None) << "the chosen section doesn't leave the node";
    net.Topology().RemoveSection(*net.Section("BC"));
    EXPECT_EQ(outletOfB(), net.Section("BD")->GetRow()) << "the only way out is left";
}

TEST(Geometry, AreasKeepTheirDigitsFarFromTheOrigin) {
    const CRings square{
        {{500000, 5000000}, {500010, 5000000}, {500010, 5000010}, {500000, 5000010}, {500000, 5000000}},
        {{500002, 5000002}, {500002, 5000004}, {500004, 5000004}, {500004, 5000002}, {500002, 5000002}}};
    EXPECT_DOUBLE_EQ(PolygonArea(square), 96.0);
    EXPECT_EQ(PolygonCentre(square), (CPoint{500005, 5000005}));
    EXPECT_EQ(PolygonArea({}), 0.0);
    EXPECT_FALSE(PolygonCentre({}).IsKnown());
}
