// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
// The checks of how sections join: rings, ways to an outfall, separate parts.
#include "host/gis_core/HostServices.h"
#include "host/network_checks/ComponentCheck.h"
#include "host/network_checks/OutletCheck.h"
#include "host/network_checks/RingCheck.h"
#include "host/network_checks/Rings.h"
#include "tests/support/AnalysisStage.h"

#include <algorithm>
#include <map>
#include <random>

using namespace OLMGis;
using namespace OLMGis::NetworkChecks;
using testing::ElementsAre;
using testing::IsEmpty;
using Topology::CConnectivity;

namespace {

constexpr int InRing = 70434;
constexpr int NoOutlet = 70436;
constexpr int MainOutletMissing = 70437;
constexpr int MainOutletsInRing = 70438;
constexpr int SeparatePart = 70441;

using CFindings = std::vector<std::string>;

std::string Part(const std::string& name, int place, int count, int sections) {
    return name + ": " +
           Utility::CUtility::Format(Msg(SeparatePart), std::to_string(place), std::to_string(count),
                                     std::to_string(sections));
}

/// A line of many sections in the active project; closed to a ring when wanted.
void DrawLine(Topology::CTopologyStorage& topology, int count, bool isClosed) {
    const auto node = [&topology](int i) {
        const std::string name = std::to_string(i);
        return topology.AddNode("n" + name, name, {1.0 * i, 0.0}).Value();
    };
    const auto first = node(0);
    auto last = first;
    for (int i = 1; i <= count; ++i) {
        const auto next = isClosed && i == count ? first : node(i);
        const std::string name = "s" + std::to_string(i);
        static_cast<void>(topology.AddSection(name, name, last.get(), next.get(), {}).Value());
        last = next;
    }
}

/// Cancels at once.
class CCancellingHost final : public System::IBasicHostServices {
public:
    int ShowProgress(std::string_view /*caption*/, double /*done*/) override { return 0; }

private:
    System::CHostServicesScope m_services{*this};
};

} // namespace

TEST(RingCheck, FindsTheSectionsThatLeadBackToTheirStart) {
    const struct {
        const char* m_drawing;
        CFindings m_found;
    } rows[] = {
        {"A---B---C\nB---D", {}},
        {"A---B---C---D\nB---D", {}}, // two ways to D, no way back
        {"A---B---C---D---B\nD---E",
         {Finding("BC", InRing, "3"), Finding("CD", InRing, "3"), Finding("DB", InRing, "3")}},
        {"A---B---A", {Finding("AB", InRing, "2"), Finding("BA", InRing, "2")}},
        {"A---A---B", {Finding("AA", InRing, "1")}}, // a section that returns to its node
        {"A---B---A\nC---D---C\nB---C",              // two rings, one above the other
         {Finding("AB", InRing, "2"), Finding("BA", InRing, "2"), Finding("CD", InRing, "2"),
          Finding("DC", InRing, "2")}},
        {"A---B---C---A\nC---D---B", // two rings that touch are one
         {Finding("AB", InRing, "5"), Finding("BC", InRing, "5"), Finding("CA", InRing, "5"),
          Finding("CD", InRing, "5"), Finding("DB", InRing, "5")}},
    };
    for (const auto& row : rows) {
        CAnalysisStage stage(row.m_drawing);
        EXPECT_EQ(stage.Run(CRingCheck()), row.m_found) << row.m_drawing;
    }
}

namespace {

/// A network of up to 12 nodes and 24 sections in a project of its own; an end in thirteen has no node, and half of the
/// nodes have a main outlet.
struct CRandomStage : CAnalysisStage {
    explicit CRandomStage(std::mt19937& random) : CAnalysisStage("") {
        auto& topology = net.Topology();
        const unsigned count = static_cast<unsigned>(1 + random() % 12);
        for (unsigned i = 0; i < count; ++i)
            static_cast<void>(topology.AddNode("n" + std::to_string(i), std::to_string(i), {1.0 * i, 0.0}).Value());
        const auto any = [&]() -> Topology::CNode* {
            const unsigned row = static_cast<unsigned>(random() % (count + 1));
            return row == count ? nullptr : topology.GetNodes()[row].get();
        };
        for (unsigned i = static_cast<unsigned>(random() % 24); i > 0; --i) {
            const std::string name = "s" + std::to_string(i);
            Topology::CNode* const start = any();
            static_cast<void>(topology.AddSection(name, name, start, any(), {}).Value());
        }
        std::vector<boost::shared_ptr<Topology::CSection>> out;
        for (const auto& node : topology.GetNodes())
            if (node->GetSectionsOut(out) > 0 && random() % 2 == 0)
                Data::CDataRW::Write("MAIN_SECT_OUT", node, out[random() % out.size()]->GetGuid(), nullptr);
        ways = topology.GetConnectivity();
    }

    /// The nodes that can be reached from a node, itself included, by row; none for a missing node.
    std::vector<bool> ReachFrom(std::uint32_t first) const {
        std::vector<bool> isReached(ways->GetNodeCount(), false);
        std::vector<std::uint32_t> open;
        const auto reach = [&](std::uint32_t node) {
            if (node != CConnectivity::None && !isReached[node]) {
                isReached[node] = true;
                open.push_back(node);
            }
        };
        reach(first);
        while (!open.empty()) {
            const std::uint32_t node = open.back();
            open.pop_back();
            for (const std::uint32_t way : ways->GetWaysOut(node))
                reach(ways->GetEnd(way));
        }
        return isReached;
    }

    /// Whether any way from a section leads out of the network.
    bool IsDrained(std::uint32_t section) const {
        const auto isReached = ReachFrom(ways->GetEnd(section));
        bool isDrained = ways->GetEnd(section) == CConnectivity::None;
        for (std::uint32_t node = 0; node < isReached.size(); ++node)
            if (isReached[node]) {
                isDrained = isDrained || ways->GetWaysOut(node).empty();
                for (const std::uint32_t way : ways->GetWaysOut(node))
                    isDrained = isDrained || ways->GetEnd(way) == CConnectivity::None;
            }
        return isDrained;
    }

    std::shared_ptr<const CConnectivity> ways;
};

} // namespace

// A section is on a ring when its end leads back to its start: found by walking from each end.
TEST(RingCheck, EqualsThePlainSearchOnRandomNetworks) {
    std::mt19937 random(7);
    for (int round = 0; round < 300; ++round) {
        const CRandomStage stage(random);
        const CRings rings(*stage.ways, [](std::size_t) { return true; });
        ASSERT_TRUE(rings.IsComplete());
        for (std::uint32_t section = 0; section < stage.ways->GetSectionCount(); ++section) {
            const std::uint32_t start = stage.ways->GetStart(section);
            EXPECT_EQ(rings.GetRing(section) != CConnectivity::None,
                      start != CConnectivity::None && stage.ReachFrom(stage.ways->GetEnd(section))[start])
                << "round " << round << " section " << section;
        }
    }
}

TEST(OutletCheck, FindsSectionsWithoutAWayAndPlacesWhereTheWayEnds) {
    const struct {
        const char* m_drawing;
        const char* m_mainOutlets; ///< node, section, ...
        CFindings m_found;
    } rows[] = {
        {"A---B---C\nD---B", "", {}},
        {"A---B---C\nA---D", "", {}}, // no section enters A: nothing flows there
        {"A---B---C---B\nD---E",      // BC and CB never end, AB leads into them; DE has an outfall
         "",
         {Finding("AB", NoOutlet), Finding("BC", NoOutlet), Finding("CB", NoOutlet)}},
        {"A---B---C\nB---D\nE---A", "", {Finding("B", MainOutletMissing, "2")}},
        {"A---B---C\nB---D\nE---A", "B BD", {}},
        {"A---B---C\nB---D\nC---E\nC---F", "B BD", {Finding("C", MainOutletMissing, "1")}}, // BC itself, not AB
        {"X---A---B---C---A\nB---D",
         "B BC", // an exit at B that the main outlet does not take
         {Finding("AB", MainOutletsInRing, "4")}},
        {"X---A---B---C---A\nB---D", "B BD", {}},
        {"X---A---B---A\nX---C\nY---X",
         "X XA", // the main outlet leads into a ring without an exit
         {Finding("XA", NoOutlet), Finding("AB", NoOutlet), Finding("BA", NoOutlet),
          Finding("AB", MainOutletsInRing, "4")}},
    };
    for (const auto& row : rows) {
        CAnalysisStage stage(row.m_drawing);
        if (*row.m_mainOutlets != '\0')
            stage.SetNode(row.m_mainOutlets[0], "MAIN_SECT_OUT",
                          stage.net.Section(std::string_view(row.m_mainOutlets).substr(2))->GetGuid());
        EXPECT_EQ(stage.Run(COutletCheck()), row.m_found) << row.m_drawing << " " << row.m_mainOutlets;
    }
}

// The way of each section followed by itself: out of the network, to a node without a main outlet, or round a ring,
// which is known by the first of its sections.
TEST(OutletCheck, EqualsThePlainSearchOnRandomNetworks) {
    std::mt19937 random(11);
    for (int round = 0; round < 300; ++round) {
        CRandomStage stage(random);
        const CConnectivity& ways = *stage.ways;
        std::map<std::uint32_t, int> stopped;
        std::map<std::uint32_t, int> ringing;
        std::vector<std::uint32_t> rings; // with an outfall in reach, in the order of the sections
        CFindings expected;
        for (std::uint32_t section = 0; section < ways.GetSectionCount(); ++section) {
            const bool isDrained = stage.IsDrained(section);
            if (!isDrained)
                expected.push_back(Finding(std::string(stage.net.Sections()[section]->GetName()), NoOutlet));
            std::vector<std::uint32_t> way{section};
            while (true) {
                const std::uint32_t node = ways.GetEnd(way.back());
                if (node == CConnectivity::None || ways.GetWaysOut(node).empty())
                    break;
                const std::uint32_t next = ways.GetMainOutlet(node);
                if (next == CConnectivity::None) {
                    ++stopped[node];
                    break;
                }
                if (const auto seen = std::find(way.begin(), way.end(), next); seen != way.end()) {
                    const std::uint32_t ring = *std::min_element(seen, way.end());
                    ++ringing[ring];
                    if (isDrained && std::find(rings.begin(), rings.end(), ring) == rings.end())
                        rings.push_back(ring);
                    break;
                }
                way.push_back(next);
            }
        }
        for (const auto& [node, count] : stopped)
            expected.push_back(Finding(std::to_string(node), MainOutletMissing, std::to_string(count)));
        for (const std::uint32_t ring : rings)
            expected.push_back(Finding(std::string(stage.net.Sections()[ring]->GetName()), MainOutletsInRing,
                                       std::to_string(ringing[ring])));
        EXPECT_EQ(stage.Run(COutletCheck()), expected) << "round " << round;
    }
}

TEST(ComponentCheck, ReportsThePartsBeyondTheAcceptedNumber) {
    const struct {
        const char* m_drawing;
        const char* m_accepted;
        CFindings m_found;
    } rows[] = {
        {"A---B---C\nD---C", "1", {}}, // against the direction of flow they hang together
        {"A---B\nC---D---E\nF---G---H", "1", {Part("FG", 2, 3, 2), Part("AB", 3, 3, 1)}},
        {"A---B\nC---D---E\nF---G---H", "2", {Part("AB", 3, 3, 1)}},
        {"A---B\nC---D---E\nF---G---H", "3", {}},
        {"A---B\nC", "1", {Part("C", 2, 2, 0)}}, // a node alone
    };
    for (const auto& row : rows) {
        CAnalysisStage stage(row.m_drawing);
        EXPECT_EQ(stage.Run(CComponentCheck(), {{"VALUE_MAX", row.m_accepted}}), row.m_found)
            << row.m_drawing << " " << row.m_accepted;
    }
}

TEST(GraphChecks, SectionsWithoutNodesAreNoFault) {
    CAnalysisStage stage("A---B");
    const auto& topology = stage.net.Topology();
    auto& change = *Topology::CTopologyMultiStorage::Instance()->GetActiveTopology();
    static_cast<void>(change.AddSection("loose", "loose", topology.GetNodeByName("B").get(), nullptr, {}).Value());
    EXPECT_THAT(stage.Run(CRingCheck()), IsEmpty());
    EXPECT_THAT(stage.Run(COutletCheck()), IsEmpty()) << "flow leaves at its end";
    EXPECT_THAT(stage.Run(CComponentCheck()), IsEmpty());
    static_cast<void>(change.AddSection("alone", "alone", nullptr, nullptr, {}).Value());
    EXPECT_THAT(stage.Run(CComponentCheck()), ElementsAre(Part("alone", 2, 2, 1)));
}

TEST(GraphChecks, DeepNetworksNeedNoDeepStackAndACancelledSearchFindsNothing) {
    constexpr int Count = 100'000;
    CAnalysisStage stage("");
    DrawLine(stage.net.Topology(), Count, true);
    EXPECT_EQ(stage.Run(CRingCheck()).size(), static_cast<std::size_t>(Count));
    EXPECT_EQ(stage.Run(COutletCheck()).size(), static_cast<std::size_t>(Count));
    EXPECT_THAT(stage.Run(CComponentCheck()), IsEmpty());
    const CCancellingHost host;
    EXPECT_THAT(stage.Run(CRingCheck()), IsEmpty());
    EXPECT_THAT(stage.Run(COutletCheck()), IsEmpty());
}
