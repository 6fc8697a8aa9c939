// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/synthetic/SyntheticNetwork.h"

#include "host/sewage_core/MissingDensities.h"
#include "tests/project_io/ProjectFileFixture.h"

#include <gtest/gtest.h>

#include <vector>

using namespace OLMGis;
using namespace OLMGis::ProjectIo;
using namespace OLMGis::Topology;

namespace {

constexpr enmNetworkShape Shapes[] = {enmNetworkShape::Line, enmNetworkShape::Tree, enmNetworkShape::Comb,
                                      enmNetworkShape::City, enmNetworkShape::Star};

double Number(std::string_view key, const CEntity& entity) {
    Data::CDataBox box;
    EXPECT_EQ(Data::CDataRW::Read(key, &entity, box, 0, nullptr), 1) << key;
    return box.AsDouble();
}

struct CFigures {
    std::size_t m_outfalls = 0;
    std::size_t m_forks = 0;   ///< nodes with more than one way out
    std::size_t m_mostIn = 0;  ///< sections into one node
    std::size_t m_longest = 0; ///< sections one after the other
};

/// Walks the network by removing heads one by one: what remains at the end would be a ring.
CFigures Measure() {
    CFigures figures;
    const auto& topology = ActiveTopology();
    std::vector<int> waiting;
    std::vector<std::size_t> length(topology.GetNodes().size(), 0);
    std::vector<CNode*> ready;
    for (const auto& node : topology.GetNodes()) {
        waiting.push_back(node->GetSectionsInCount());
        figures.m_mostIn = std::max(figures.m_mostIn, static_cast<std::size_t>(node->GetSectionsInCount()));
        figures.m_outfalls += node->GetSectionsOutCount() == 0 ? 1U : 0U;
        figures.m_forks += node->GetSectionsOutCount() > 1 ? 1U : 0U;
        if (waiting.back() == 0)
            ready.push_back(node.get());
    }
    std::size_t seen = 0;
    std::vector<boost::shared_ptr<CSection>> out;
    while (!ready.empty()) {
        CNode* const node = ready.back();
        ready.pop_back();
        ++seen;
        figures.m_longest = std::max(figures.m_longest, length[node->GetRow()]);
        node->GetSectionsOut(out);
        for (const auto& section : out) {
            const auto end = section->GetEndingNode();
            length[end->GetRow()] = std::max(length[end->GetRow()], length[node->GetRow()] + 1);
            if (--waiting[end->GetRow()] == 0)
                ready.push_back(end.get());
        }
    }
    EXPECT_EQ(seen, topology.GetNodes().size()) << "rings";
    return figures;
}

void ExpectPlausible() {
    const auto& topology = ActiveTopology();
    for (const auto& section : topology.GetSections()) {
        const auto from = section->GetStartingNode();
        const auto to = section->GetEndingNode();
        const double upper = Number("LEVEL_LINE_0", *section);
        const double lower = Number("LEVEL_LINE_1", *section);
        const double length = Number("length", *section);
        ASSERT_GT(length, 10.0);
        ASSERT_NEAR(length, Distance(from->GetPoint(), to->GetPoint()), 0.001) << "rounded to mm";
        ASSERT_NEAR(Number("SECTION_SLOPE", *section), 1000.0 * (upper - lower) / length, 0.0001) << "four decimals";
        ASSERT_GE(Number("SECTION_SLOPE", *section), 2.9) << "falls downstream";
        ASSERT_GT(Number("TERRAIN_1", *from), upper + 1.9);
        ASSERT_GT(Number("FLOW_INTIME", *section), 0.0);
        const CCatchment* catchment = topology.GetFirstCatchment(*section);
        ASSERT_NE(catchment, nullptr);
        ASSERT_EQ(Number("kinds", *catchment), CatchmentRain);
        ASSERT_GT(Number("area", *catchment) * Number("coefficient", *catchment), 0.0);
    }
    EXPECT_FALSE(OLMGis::Sewage::WarnOfMissingDensities(topology));
}

} // namespace

TEST(SyntheticNetwork, HasTheSectionsAskedForAndTheShape) {
    for (const enmNetworkShape shape : Shapes) {
        for (const std::size_t count : {1U, 2U, 3U, 10U, 21U, 1000U, 12345U}) {
            SCOPED_TRACE(testing::Message() << static_cast<int>(shape) << " " << count);
            CTestProject project;
            ASSERT_TRUE(GenerateNetwork(shape, count, 42));
            EXPECT_EQ(ActiveTopology().GetSections().size(), count);
            ExpectPlausible();
            const CFigures figures = Measure();
            switch (shape) {
            case enmNetworkShape::Line:
                EXPECT_EQ(figures.m_longest, count);
                break;
            case enmNetworkShape::Comb:
                EXPECT_EQ(figures.m_longest, count - count / 2 + (count % 2 == 0 ? 1 : 0));
                break;
            case enmNetworkShape::Star:
                EXPECT_EQ(figures.m_mostIn, std::max<std::size_t>(count - 1, 1));
                break;
            case enmNetworkShape::Tree:
                EXPECT_LE(figures.m_longest, 4 * static_cast<std::size_t>(std::sqrt(count)) + 4) << "branches";
                break;
            case enmNetworkShape::City:
                EXPECT_EQ(figures.m_outfalls, count < 20 ? 1U : 3U);
                EXPECT_EQ(figures.m_forks > 0, count >= 1000);
                break;
            }
            if (shape != enmNetworkShape::City) {
                EXPECT_EQ(figures.m_outfalls, 1U);
                EXPECT_EQ(figures.m_forks, 0U);
            }
        }
    }
}

TEST(SyntheticNetwork, ChoosesTheMainOutletsOfACity) {
    CTestProject project;
    ASSERT_TRUE(GenerateNetwork(enmNetworkShape::City, 5000, 1));
    int needed = 0;
    for (const auto& node : ActiveTopology().GetNodes()) {
        if (node->GetSectionsInCount() == 0 || node->GetSectionsOutCount() < 2)
            continue;
        ++needed;
        EXPECT_NE(ActiveTopology().GetChosenMainOutlet(*node), nullptr) << node->GetName();
    }
    EXPECT_GT(needed, 20);
}

TEST(SyntheticNetwork, IsTheSameForTheSameWordsAndAnotherForAnotherSeed) {
    const auto describe = [](enmNetworkShape shape, std::uint64_t seed) {
        CTestProject project;
        EXPECT_TRUE(GenerateNetwork(shape, 500, seed));
        return DescribeProject();
    };
    for (const enmNetworkShape shape : Shapes) {
        EXPECT_EQ(describe(shape, 7), describe(shape, 7));
        EXPECT_NE(describe(shape, 7), describe(shape, 8));
    }
}

TEST(SyntheticNetwork, TheNumbersAreThePublishedOnes) {
    // First outputs of SplitMix64 for seed 1234567, from its reference implementation.
    CSplitMix random(1234567);
    for (const std::uint64_t expected : {6457827717110365317ULL, 3203168211198807973ULL, 9817491932198370423ULL,
                                         4593380528125082431ULL, 16408922859458223821ULL})
        EXPECT_EQ(random.Next(), expected);
}

TEST(SyntheticNetwork, RefusesWhatItCannotMake) {
    CTestProject project;
    EXPECT_EQ(GenerateNetwork(enmNetworkShape::Line, 0, 1).GetError().kind, Utility::enmErrorKind::BadArguments);
    EXPECT_EQ(GenerateNetwork(enmNetworkShape::Line, MostGeneratedSections + 1, 1).GetError().kind,
              Utility::enmErrorKind::BadArguments);
    ASSERT_TRUE(GenerateNetwork(enmNetworkShape::Line, 1, 1));
    EXPECT_EQ(GenerateNetwork(enmNetworkShape::Line, 1, 1).GetError().kind, Utility::enmErrorKind::Refused);
    EXPECT_EQ(NetworkShapeOfName("comb"), enmNetworkShape::Comb);
    EXPECT_FALSE(NetworkShapeOfName("Comb"));
}
