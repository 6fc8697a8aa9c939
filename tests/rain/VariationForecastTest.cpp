// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
//
// The forecast of a variation search against counting in the plain way: every combination a list.
#include "rain/variations/VariationForecast.h"

#include "rain/variations/ForecastText.h"
#include "rain/variations/VariationData.h"
#include "tests/rain/PlainSearch.h"
#include "tests/rain/RandomNetwork.h"
#include "tests/support/TestProject.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <numeric>

using namespace OLMGis;
using ::testing::HasSubstr;

namespace {

using Rain::CRunNetwork;
using Rain::CSearchPlan;
using Rain::CVariationForecast;
using Rain::CVariationNetwork;

std::vector<boost::shared_ptr<Topology::CSection>> Sections() {
    return Topology::CTopologyMultiStorage::Instance()->GetActiveTopology()->GetSections();
}

/// Side heads that join a trunk of sections, one at each node but the last.
void MakeComb(std::size_t trunk) {
    auto& topology = *Topology::CTopologyMultiStorage::Instance()->GetActiveTopology();
    const auto addNode = [&](const std::string& name) { return topology.AddNode(name, name, {}).Value().get(); };
    auto* above = addNode("T0");
    for (std::size_t i = 1; i <= trunk; ++i) {
        auto* const below = addNode("T" + std::to_string(i));
        const std::string number = std::to_string(i);
        ASSERT_TRUE(topology.AddSection("trunk" + number, "T" + number, above, below, {}));
        if (i < trunk) {
            ASSERT_TRUE(topology.AddSection("head" + number, "H" + number, addNode("H" + number), below, {}));
        }
        above = below;
    }
}

} // namespace

// Trees, second ways out and rings. A queue with a proven bound on its entries never ends when it passes that: each
// place is pushed once when complete, each head once, and each of these goes on along at most all places.
TEST(VariationForecast, CountsAsThePlainSearchAndKnowsWhatNeverEnds) {
    int counted = 0;
    int endless = 0;
    int repeated = 0;
    for (unsigned int seed = 0; seed < 1500 && !testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        CTestProject project;
        CDice dice(seed);
        const CRandomNetwork random(dice, {.m_mostSections = 9, .m_reliefs = 40, .m_rings = seed % 3 == 0 ? 0U : 60U});
        const auto sections = Sections();
        const CRunNetwork network(sections);
        const CSearchPlan plan(network);
        const CVariationForecast& forecast = plan.m_forecast;
        const double n = static_cast<double>(sections.size());
        const double mostEntries = 2.0 * n * (n + 1.0);
        CPlainSearch queue(nullptr, mostEntries, 0.0);
        const bool ends = queue.Run(sections) != 0;
        ASSERT_EQ(forecast.m_endless == CVariationForecast::None, ends);
        if (!ends) {
            ++endless;
            continue;
        }
        EXPECT_EQ(std::accumulate(plan.m_entries.m_ofSection.begin(), plan.m_entries.m_ofSection.end(), 0.0),
                  queue.m_entries);
        constexpr double MostCombinations = 5000.0;
        CPlainSearch plain(nullptr, mostEntries, MostCombinations);
        if (plain.Run(sections) == 0) {
            EXPECT_GT(forecast.m_total, MostCombinations);
            continue;
        }
        EXPECT_EQ(forecast.m_total, plain.m_combinations);
        EXPECT_FALSE(forecast.m_isAtLeast);
        std::size_t most = 0;
        for (const auto& section : sections)
            most = std::max(most, plain.Find(section)->m_combinations.size());
        EXPECT_EQ(forecast.m_mostOfSection, static_cast<double>(most));
        repeated += plain.m_entries > n ? 1 : 0;
        ++counted;
    }
    EXPECT_GE(counted, 700);
    EXPECT_GE(endless, 20);
    EXPECT_GE(repeated, 100) << "entries below bifurcations were not compared";
}

// By hand: the trunk section i has (c + 1) * 2 combinations, c those of the one above: 1, 4, 10, ... 3 * 2^(i-1) - 2.
TEST(VariationForecast, CountsACombByHand) {
    CTestProject project;
    MakeComb(12);
    const CRunNetwork network(Sections());
    const CVariationForecast forecast = CSearchPlan(network).m_forecast;
    ASSERT_NE(forecast.m_greatest, CVariationForecast::None);
    EXPECT_EQ(network.GetSection(forecast.m_greatest)->GetName(), "T12");
    EXPECT_EQ(forecast.m_mostOfSection, 6142.0);
    EXPECT_EQ(forecast.m_total, 3.0 * 4095.0 - 2.0 * 12.0 + 11.0);
}

// The line of 1, 2, ... n combinations: at most two sections' outcomes are kept at a time.
TEST(VariationForecast, LineTakesMemoryOfItsLengthOnly) {
    CTestProject project;
    auto& topology = *Topology::CTopologyMultiStorage::Instance()->GetActiveTopology();
    Topology::CNode* above = topology.AddNode("0", "0", {}).Value().get();
    constexpr std::size_t Length = 20000;
    for (std::size_t i = 1; i <= Length; ++i) {
        Topology::CNode* const below = topology.AddNode(std::to_string(i), std::to_string(i), {}).Value().get();
        ASSERT_TRUE(topology.AddSection("s" + std::to_string(i), "S" + std::to_string(i), above, below, {}));
        above = below;
    }
    const CRunNetwork network(Sections());
    const CVariationForecast forecast = CSearchPlan(network).m_forecast;
    constexpr double N = Length;
    EXPECT_EQ(forecast.m_total, N * (N + 1.0) / 2.0);
    EXPECT_LT(forecast.m_memory, N * 4000.0);
    const CRunNetwork head({Sections().front()});
    EXPECT_GT(CSearchPlan(head).m_forecast.m_memory, N * sizeof(CVariationData)) << "tables of the whole network";
    const CVariationForecast chains = ForecastChains(CVariationNetwork(network));
    EXPECT_EQ(chains.m_total, N * (N + 1.0) / 2.0);
    EXPECT_EQ(chains.m_mostOfSection, N);
    EXPECT_GT(chains.m_memory, chains.m_total * 200.0);
}

TEST(VariationForecast, OverflowIsRefused) {
    CTestProject project;
    MakeComb(1100); // 3 * 2^1099 leaves the range of double
    const CRunNetwork network(Sections());
    const CSearchPlan plan(network);
    EXPECT_TRUE(std::isinf(plan.m_forecast.m_memory));
    EXPECT_THAT(WhySearchIsRefused(plan.m_network, plan.m_forecast), HasSubstr(">1e+308 combinations"));
}

TEST(VariationForecast, MissingMainOutletsGiveALowerBound) {
    CTestProject project;
    const CTextNetwork drawing("A---B---C---D\nB-E");
    const CRunNetwork network(Sections());
    const CSearchPlan plan(network);
    EXPECT_TRUE(plan.m_forecast.m_isAtLeast);
    EXPECT_EQ(plan.m_forecast.m_total, 1.0) << "below the head nothing is reached";
    EXPECT_THAT(ShowForecast(plan.m_network, plan.m_forecast), HasSubstr("at least 1 in all"));
    EXPECT_TRUE(ForecastChains(plan.m_network).m_isAtLeast);
}

// A flows into a ring R1 R2 whose nodes both have a way out of it.
TEST(VariationForecast, RingOfBifurcationsIsRefusedByName) {
    CTestProject project;
    const CTextNetwork drawing("A---B---C---B\nB-X C-Y");
    const auto choose = [&](char node, const char* section) {
        ASSERT_NE(Sewage::CFlowDirection::SetMainOutlet(drawing.Node(node), drawing.Section(section)), 0);
    };
    choose('B', "BC");
    choose('C', "CB");
    const auto refusal = [] {
        const CRunNetwork network(Sections());
        const CSearchPlan plan(network);
        return WhySearchIsRefused(plan.m_network, plan.m_forecast);
    };
    EXPECT_THAT(refusal(), ::testing::ContainsRegex("section (BC|CB) is on a loop"));
    choose('C', "CY");
    EXPECT_EQ(refusal(), "");
}
