// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "waste/UpstreamSums.h"

#include "tests/support/TestProject.h"
#include "tests/support/TextNetwork.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <random>
#include <set>

using namespace OLMGis;
using Topology::CSection;
using Waste::CHouseholdSum;
using Waste::SumUpstream;

namespace {

using CSections = std::vector<boost::shared_ptr<CSection>>;

std::vector<CHouseholdSum> Sum(const CSections& sections) {
    std::vector<CHouseholdSum> sums;
    EXPECT_TRUE(SumUpstream(sections, sums, [](std::size_t done, std::size_t count) { return done <= count; }));
    EXPECT_EQ(sums.size(), sections.size());
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

TEST(UpstreamSums, EqualThePlainSumsWhateverIsAskedFor) {
    std::mt19937 random(20240611);
    for (int round = 0; round < 100; ++round) {
        SCOPED_TRACE(round);
        CTestProject project;
        auto& topology = *Topology::CTopologyMultiStorage::Instance()->GetActiveTopology();
        const int nodes = 2 + static_cast<int>(random() % 60);
        DrawRandomly(topology, random, nodes, nodes + static_cast<int>(random() % 40));
        const CSections all = topology.GetSections();

        std::vector<CHouseholdSum> own(all.size());
        for (const auto& section : all) {
            const auto* catchment = topology.GetFirstCatchment(*section);
            Data::CDataBox area, density;
            Data::CDataRW::Read("area", catchment, area, 0, nullptr);
            Data::CDataRW::Read("density", catchment, density, 0, nullptr);
            const bool isCounted = density.IsNotNull() && area.AsDouble() != 0.0;
            const double mean = isCounted ? density.AsDouble() * area.AsDouble() / area.AsDouble() : -1000000.0;
            own[section->GetRow()] = {area.AsDouble(), mean * area.AsDouble()};
        }

        const auto sums = Sum(all);
        for (std::size_t i = 0; i < all.size(); ++i) {
            CHouseholdSum expected = own[i];
            double greatest = std::abs(own[i].m_people); // people without a density are negative and cancel others
            for (const auto& section : CollectPlainly(all[i])) {
                expected.m_area += own[section->GetRow()].m_area;
                expected.m_people += own[section->GetRow()].m_people;
                greatest += std::abs(own[section->GetRow()].m_people);
            }
            EXPECT_NEAR(sums[i].m_area, expected.m_area, 1e-12 * expected.m_area) << all[i]->GetName();
            EXPECT_NEAR(sums[i].m_people, expected.m_people, 1e-12 * greatest) << all[i]->GetName();
        }

        CSections asked;
        std::copy_if(all.begin(), all.end(), std::back_inserter(asked), [&](const auto&) { return random() % 8 == 0; });
        std::shuffle(asked.begin(), asked.end(), random);
        asked.push_back(nullptr);
        const auto some = Sum(asked);
        for (std::size_t i = 0; i + 1 < asked.size(); ++i) {
            EXPECT_EQ(some[i].m_area, sums[asked[i]->GetRow()].m_area) << "to the bit " << asked[i]->GetName();
            EXPECT_EQ(some[i].m_people, sums[asked[i]->GetRow()].m_people) << "to the bit " << asked[i]->GetName();
        }
        EXPECT_EQ(some.back().m_area, 0.0) << "a null section";
    }
    EXPECT_TRUE(Sum({}).empty());
}

TEST(UpstreamSums, AVeryLongLineEndsWithTheRightSums) {
    // At its upper end two ways part and meet again: below that, too, no section may walk over all others.
    constexpr int Count = 200000;
    CTestProject project;
    auto& topology = *Topology::CTopologyMultiStorage::Instance()->GetActiveTopology();
    const auto addSection = [&topology](int number, Topology::CNode& start, Topology::CNode& end) {
        const std::string id = "s" + std::to_string(number);
        const auto section = topology.AddSection(id, id, &start, &end, {}).Value();
        const auto catchment = topology.AddCatchment(id, id, section.get(), {}).Value();
        Data::CDataRW::Write("kinds", catchment, 2, nullptr);
        Data::CDataRW::Write("area", catchment, 1.0, nullptr);
    };
    std::vector<Topology::CNode*> nodes;
    for (int i = 0; i <= Count; ++i) {
        const std::string id = "n" + std::to_string(i);
        nodes.push_back(topology.AddNode(id, id, {}).Value().get());
        if (i > 0)
            addSection(i - 1, *nodes[nodes.size() - 2], *nodes.back());
    }
    addSection(Count, *nodes[1], *nodes[3]);
    const auto sums = Sum(topology.GetSections());
    for (int i = 0; i < Count; ++i)
        ASSERT_EQ(sums[static_cast<std::size_t>(i)].m_area, i + (i < 3 ? 1.0 : 2.0)) << i;
}

TEST(UpstreamSums, StopsWhenCancelled) {
    CTestProject project;
    const CTextNetwork net("A-B-C-D-E-F-G-H-I-J-K-L-M");
    std::vector<CHouseholdSum> sums;
    std::vector<std::size_t> calls;
    EXPECT_FALSE(SumUpstream(net.Sections(), sums, [&calls](std::size_t done, std::size_t count) {
        EXPECT_EQ(count, 12U) << "nodes at which a section starts";
        calls.push_back(done);
        return calls.size() < 3;
    }));
    EXPECT_EQ(calls, (std::vector<std::size_t>{0, 1, 2}));
}
