// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_core/Branches.h"

#include "tests/support/TestProject.h"
#include "tests/support/TextNetwork.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

using namespace OLMGis::Topology;

namespace {

std::string Show(const CTopologyStorage& topology) {
    std::string text;
    for (const CBranch& branch : ListBranches(topology)) {
        text += text.empty() ? "" : " | ";
        for (std::size_t i = 0; i < branch.size(); ++i)
            text += (i == 0 ? "" : " ") + std::string(topology.GetSectionAt(branch[i])->GetName());
    }
    return text;
}

} // namespace

TEST(Branches, WhereTheyBeginAndEnd) {
    const struct {
        const char* m_drawing;
        const char* m_branches;
        const char* m_outlet = ""; ///< main outlet of its starting node
    } rows[] = {
        {"", ""},
        {"A-B-C", "AB BC"},
        {"A---B-C\nD-B", "DB | AB BC"},
        {"A-B-C\nD---B", "AB | DB BC"},
        {"A-B-C\nD-B", "DB | AB BC"},
        {"A-----B-----C\nD-E-B\nF--E\nG-C\nC-H", "DE | FE EB | GC | AB BC CH"},
        {"A-B\nX-Y", "AB | XY"},
        {"A-B-C\nB-D", "AB | BC | BD"},
        {"A-B-C\nB-D", "AB BC | BD", "BC"},
        {"A-B-C-D-E\nB-F---D", "BC CD | AB BF FD DE", "BF"},
        {"X-Y-X", "XY YX"},
        {"A-X-Y-X", "AX XY YX"},
    };
    for (const auto& row : rows) {
        const CTestProject project;
        const CTextNetwork network(row.m_drawing);
        if (*row.m_outlet != 0)
            OLMGis::Data::CDataRW::Write("MAIN_SECT_OUT", network.Section(row.m_outlet)->GetStartingNode(),
                                         std::string(network.Section(row.m_outlet)->GetGuid()), nullptr);
        EXPECT_EQ(Show(network.Topology()), row.m_branches) << row.m_drawing;
    }
}

TEST(Branches, EverySectionOnceAndAfterThoseAboveIt) {
    std::mt19937 random(7);
    for (int round = 0; round < 20; ++round) {
        const CTestProject project;
        auto& topology = *CTopologyMultiStorage::Instance()->GetActiveTopology();
        std::vector<CNode*> nodes;
        for (std::size_t i = 0; i <= 200; ++i) {
            nodes.push_back(topology.AddNode("n" + std::to_string(i), "n" + std::to_string(i), {}).Value().get());
            if (i == 0)
                continue;
            auto* const below = nodes[std::uniform_int_distribution<std::size_t>(i > 10 ? i - 10 : 0, i - 1)(random)];
            const std::string name = "s" + std::to_string(i);
            const auto section = topology.AddSection(name, name, nodes.back(), below, {}).Value();
            OLMGis::Data::CDataRW::Write("length", section, std::uniform_real_distribution(1.0, 99.0)(random), nullptr);
        }
        std::vector<int> place(topology.GetSectionRowCount(), -1);
        int count = 0;
        for (const CBranch& branch : ListBranches(topology))
            for (const std::uint32_t row : branch) {
                EXPECT_EQ(place[row], -1) << "listed twice";
                place[row] = count++;
            }
        EXPECT_EQ(count, 200);
        std::vector<boost::shared_ptr<CSection>> above;
        for (const auto& section : topology.GetSections()) {
            section->GetSectionsIn(above);
            for (const auto& each : above)
                EXPECT_LT(place[each->GetRow()], place[section->GetRow()]);
        }
    }
}
