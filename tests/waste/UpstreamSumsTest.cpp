// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "waste/UpstreamSums.h"

#include "tests/support/TestProject.h"
#include "tests/support/TextNetwork.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>

using namespace OLMGis;
using Topology::CSection;

namespace {

using CSections = std::vector<boost::shared_ptr<CSection>>;

std::vector<CHouseholdSum> Compute(CUpstreamSums& upstream) {
    std::vector<CHouseholdSum> sums;
    EXPECT_TRUE(upstream.Compute(sums, [](int) { return true; }));
    return sums;
}

/// The list as it is defined: the sections upstream, nearest first, the section itself not taken as seen.
CSections CollectPlainly(const boost::shared_ptr<CSection>& start) {
    CSections list{start};
    std::set<const CSection*> seen;
    for (std::size_t i = 0; i < list.size(); ++i) {
        CSections in;
        const auto section = list[i];
        if (section->GetSectionsIn(in) == 0)
            continue;
        for (const auto& s : in)
            if (seen.insert(s.get()).second)
                list.push_back(s);
    }
    list.erase(list.begin());
    return list;
}

/// Sections between random nodes: lines with laterals for the most part, some ways that part and meet again, loops,
/// sections side by side, sections that return to their own start and sections without a start.
void DrawRandomly(Topology::CTopologyStorage& topology, std::mt19937& random, int nodes, int sections) {
    const auto pick = [&random](int below) { return static_cast<int>(random() % static_cast<unsigned>(below)); };
    for (int n = 0; n < nodes; ++n)
        topology.AddNode("n" + std::to_string(n), "N" + std::to_string(n), {1.0 * n, 0.0}).Value();
    const auto& all = topology.GetNodes();
    const bool hasLoops = pick(2) == 0;
    for (int s = 0; s < sections; ++s) {
        const int from = pick(nodes);
        int to = std::min(from + 1 + (pick(4) == 0 ? pick(5) : 0), nodes - 1);
        if (hasLoops && pick(10) == 0)
            to = pick(nodes);
        auto* const start = pick(20) == 0 ? nullptr : all[static_cast<std::size_t>(from)].get();
        const std::string id = "s" + std::to_string(s);
        const auto section = topology.AddSection(id, id, start, all[static_cast<std::size_t>(to)].get(), {}).Value();
        if (pick(3) == 0)
            continue;
        const auto catchment = topology.AddCatchment("c" + id, "c" + id, section.get(), {}).Value();
        Data::CDataRW::Write("kinds", catchment, 2, nullptr);
        Data::CDataRW::Write("area", catchment, 0.1 * pick(50), nullptr);
        if (pick(8) != 0)
            Data::CDataRW::Write("density", catchment, 0.1 * pick(3000), nullptr);
    }
}

} // namespace

TEST(UpstreamSums, EqualThePlainSumsToTheBit) {
    std::mt19937 random(20240611);
    for (int round = 0; round < 60; ++round) {
        SCOPED_TRACE(round);
        CTestProject project;
        auto& topology = *Topology::CTopologyMultiStorage::Instance()->GetActiveTopology();
        const int nodes = 2 + static_cast<int>(random() % 60);
        DrawRandomly(topology, random, nodes, nodes + static_cast<int>(random() % 40));
        CSections asked;
        for (const auto& section : topology.GetSections())
            if (random() % 4 != 0)
                asked.push_back(section);
        std::shuffle(asked.begin(), asked.end(), random);
        asked.push_back(nullptr);

        std::vector<CHouseholdSum> own(topology.GetSections().size());
        for (const auto& section : topology.GetSections()) {
            const auto* catchment = topology.GetFirstCatchment(*section);
            Data::CDataBox area, density;
            Data::CDataRW::Read("area", catchment, area, 0, nullptr);
            Data::CDataRW::Read("density", catchment, density, 0, nullptr);
            const bool isCounted = density.IsNotNull() && area.AsDouble() != 0.0;
            const double mean = isCounted ? density.AsDouble() * area.AsDouble() / area.AsDouble() : -1000000.0;
            own[section->GetRow()] = {area.AsDouble(), mean * area.AsDouble()};
        }

        CUpstreamSums upstream(asked);
        const auto sums = Compute(upstream);
        ASSERT_EQ(sums.size(), asked.size());
        double visits = 0.0;
        for (std::size_t i = 0; i + 1 < asked.size(); ++i) {
            CHouseholdSum expected = own[asked[i]->GetRow()];
            for (const auto& section : CollectPlainly(asked[i])) {
                expected.m_area += own[section->GetRow()].m_area;
                expected.m_people += own[section->GetRow()].m_people;
                ++visits;
            }
            EXPECT_EQ(sums[i].m_area, expected.m_area) << asked[i]->GetName();
            EXPECT_EQ(sums[i].m_people, expected.m_people) << asked[i]->GetName();
        }
        EXPECT_EQ(sums.back().m_area, 0.0) << "a null section";
        EXPECT_GE(upstream.GetVisits(), visits);
    }
}

TEST(UpstreamSums, VisitsAreCountedBeforehand) {
    const struct {
        const char* drawing;
        double visits;
    } cases[] = {
        {"A-B", 0.0},
        {"A-B-C-D", 3.0},         // 0 + 1 + 2
        {"A-B-C-D E-C F-C", 5.0}, // AB 0, BC 1, EC 0, FC 0, CD 4
        {"A-B-C-A", 9.0},         // each section of a loop sees all, itself too
    };
    for (const auto& c : cases) {
        CTestProject project;
        const CTextNetwork net(c.drawing);
        EXPECT_EQ(CUpstreamSums(net.Sections()).GetVisits(), c.visits) << c.drawing;
    }
    EXPECT_EQ(CUpstreamSums({}).GetVisits(), 0.0);
    EXPECT_EQ(CUpstreamSums({nullptr}).GetVisits(), 0.0);
}

TEST(UpstreamSums, ALongLineEndsWithTheRightSums) {
    constexpr int Count = 20000;
    CTestProject project;
    auto& topology = *Topology::CTopologyMultiStorage::Instance()->GetActiveTopology();
    auto last = topology.AddNode("n", "n", {}).Value();
    for (int i = 0; i < Count; ++i) {
        const std::string id = std::to_string(i);
        const auto next = topology.AddNode(id, id, {}).Value();
        const auto section = topology.AddSection(id, id, last.get(), next.get(), {}).Value();
        const auto catchment = topology.AddCatchment(id, id, section.get(), {}).Value();
        Data::CDataRW::Write("kinds", catchment, 2, nullptr);
        Data::CDataRW::Write("area", catchment, 1.0, nullptr);
        last = next;
    }
    CUpstreamSums upstream(topology.GetSections());
    EXPECT_EQ(upstream.GetVisits(), 0.5 * Count * (Count - 1));
    const auto sums = Compute(upstream);
    for (int i = 0; i < Count; ++i)
        ASSERT_EQ(sums[static_cast<std::size_t>(i)].m_area, i + 1.0);
}

TEST(UpstreamSums, StopsWhenTold) {
    CTestProject project;
    const CTextNetwork net("A-B-C-D-E-F-G-H-I-J-K-L-M");
    CUpstreamSums upstream(net.Sections());
    std::vector<CHouseholdSum> sums;
    std::vector<int> told;
    EXPECT_FALSE(upstream.Compute(sums, [&told](int done) {
        told.push_back(done);
        return told.size() < 2;
    }));
    EXPECT_EQ(told, (std::vector{9, 12})) << "the head is done to begin with";
}
