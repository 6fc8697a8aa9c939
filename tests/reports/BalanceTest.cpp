// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "reports/Balance.h"

#include "host/network_core/Catchment.h"
#include "reports/BalanceListing.h"
#include "tests/support/TestProject.h"
#include "tests/support/TextNetwork.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <set>
#include <string>
#include <vector>

using OLMGis::Topology::CSection;
using Reports::enmBalanced;
using testing::HasSubstr;

namespace {

/// Inhabitants at each section: one hectare with that many. FLOW_WASTE_HOME says that a run stored results.
void Populate(const CTextNetwork& network, const std::string& section, double inhabitants) {
    network.AddCatchment(section, OLMGis::Topology::CatchmentHousehold, 1.0, inhabitants);
    network.Set(section, "FLOW_WASTE_HOME", 0.001);
}

void ChooseOutlet(const CTextNetwork& network, char node, const std::string& section) {
    OLMGis::Data::CDataRW::Write("MAIN_SECT_OUT", network.Node(node), std::string(network.Section(section)->GetGuid()),
                                 nullptr);
}

} // namespace

// Published nowhere: sums by hand. Each section has 100 inhabitants.
TEST(Balance, LossesAndBetterOutlets) {
    const struct {
        const char* m_drawing;
        std::vector<std::pair<char, const char*>> m_outlets;
        double m_lost;
        const char* m_warning;
    } rows[] = {
        {"A-B-C\nD-B", {}, 0.0, ""},
        // The ways out of B meet again at D, which waits for the side way.
        {"A-B-C-D-E\nB-D", {{'B', "BC"}}, 400.0, "lost at 1 node: D (400.0 inhabitants). No other main outlets"},
        // The same with a third way out, which leads to an end of its own: F.
        {"A-B-C-D-E\nB-F", {{'B', "BC"}}, 0.0, ""},
        // The side way enters the main sewer X below; with it as main outlet all of it arrives.
        {"A-B-C\nB-X-Y\nZ-X", {{'B', "BC"}}, 200.0, "directions town.gpkg --set B=BX"},
        {"A-B-C\nB-X-Y\nZ-X", {{'B', "BX"}}, 0.0, ""},
        // A ring.
        {"A-B-C-B", {{'B', "BC"}}, 300.0, "No other main outlets carry more"},
    };
    for (const auto& row : rows) {
        CTestProject project;
        const CTextNetwork network(row.m_drawing);
        for (const auto& section : network.Sections())
            Populate(network, std::string(section->GetName()), 100.0);
        for (const auto& [node, section] : row.m_outlets)
            ChooseOutlet(network, node, section);
        const auto loss = Reports::FindLoss(enmBalanced::Inhabitants);
        ASSERT_EQ(loss.has_value(), row.m_lost > 0.0) << row.m_drawing;
        if (!loss)
            continue;
        EXPECT_DOUBLE_EQ(loss->m_lost, row.m_lost) << row.m_drawing;
        const auto choices = Reports::FindBetterOutlets(enmBalanced::Inhabitants);
        EXPECT_THAT(Reports::DescribeLoss(*loss, choices, "town.gpkg").m_text, HasSubstr(row.m_warning))
            << row.m_drawing;
    }
}

// Random networks with forks, junctions and rings: what is above an end and what arrives there, by a plain search for
// each section; entered is arriving and lost.
TEST(Balance, EqualsAPlainSum) {
    std::mt19937 random(20261122); // NOLINT(cert-msc51-cpp): the same networks in every run
    for (int trial = 0; trial < 200; ++trial) {
        CTestProject project;
        const auto pick = [&random](int count) {
            return static_cast<char>('A' + random() % static_cast<unsigned>(count));
        };
        std::string drawing;
        for (int i = 0; i < 12; ++i) {
            const char from = pick(10);
            char to = pick(12);
            if (trial % 2 == 0 && to <= from) // every second network is without rings
                to = static_cast<char>(from + 1);
            if (from != to && drawing.find(std::string{from, '-', to}) == std::string::npos)
                drawing += std::string{from, '-', to, '\n'};
        }
        const CTextNetwork network(drawing);
        for (const auto& section : network.Sections()) {
            Populate(network, std::string(section->GetName()), 1.0 + static_cast<double>(random() % 100));
            if (random() % 2 == 0)
                ChooseOutlet(network, section->GetName()[0], std::string(section->GetName()));
        }
        const auto amounts = Reports::GatherAmounts(enmBalanced::Inhabitants);
        const auto rows = Reports::MakeBalance();
        double entered = 0.0;
        double arriving = 0.0;
        for (const auto& section : network.Sections())
            entered += amounts.m_entered[section->GetRow()];
        std::size_t ends = 0;
        for (const auto& section : network.Sections())
            ends += section->GetEndingNode()->GetSectionsOutCount() == 0 ? 1U : 0U;
        ASSERT_EQ(rows.size(), ends) << drawing;
        for (const auto& row : rows) {
            std::vector<const CSection*> above{row.m_section};
            for (std::size_t i = 0; i < above.size(); ++i)
                for (const auto& section : network.Sections())
                    if (section->GetEndingNodeRow() == above[i]->GetStartingNodeRow() &&
                        std::find(above.begin(), above.end(), section.get()) == above.end())
                        above.push_back(section.get());
            double sum = 0.0;
            for (const CSection* section : above)
                sum += amounts.m_entered[section->GetRow()];
            EXPECT_EQ(row.m_sectionsAbove, above.size()) << drawing;
            EXPECT_NEAR(row.m_inhabitantsAbove.value(), sum, 1e-9) << drawing;
            EXPECT_EQ(row.m_lostAt.empty(), std::abs(row.m_inhabitantsArriving.value() - sum) < 1e-9) << drawing;
            arriving += row.m_inhabitantsArriving.value();
        }
        const auto loss = Reports::FindLoss(enmBalanced::Inhabitants);
        EXPECT_NEAR(arriving + (loss ? loss->m_lost : 0.0), entered, 1e-9) << drawing;
    }
}
