// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/sewage_core/FlowDirection.h"
#include "tests/accumulate/TransitRun.h"
#include "tests/support/FormTable.h"
#include "tests/support/WriteWatch.h"

#include <algorithm>
#include <random>
#include <sstream>

using namespace OLMGis;
using Data::CDataBox;
using Sewage::CFlowDirection;

namespace {

/// The switches, each with the flow that it brings in, in the order in which flows are added up.
constexpr std::pair<const char*, const char*> Addition[] = {
    {"FC_ADDITIONAL_RAIN_IN_WASTE_CH", "FLOW_ADDITIONAL"},
    {"FC_HOUSEWASTE_AREA", "FLOW_WASTE_HOME"},
    {"FC_WASTE_PER", "FLOW_WASTE_PER"},
    {"FC_INDWASTE_AREA", "FLOW_WASTE_IND"},
    {"FC_RAIN_SIMPLE", "FLOW_RAIN"},
    {"FC_FOREIGN", "FLOW_FOREIGN"},
    {"FC_POINT", "FLOW_POINT"},
    {"FC_USER", "FLOW_USER"},
    {"FC_IND_TUR", "FLOW_TUR_WASTE_IND"},
    {"FC_FOREIGN_TUR", "FLOW_TUR_WASTE_INF"},
};

} // namespace

TEST(Transit, FormAndPresentation) {
    CTransitRun plain("A-B");
    std::vector<CFormRow> rows{{"FC_WASTE_PER", 7, 2147, 0},
                               {"FC_HOUSEWASTE_AREA", 7, 2148, 0},
                               {"FC_INDWASTE_AREA", 7, 2149, 0},
                               {"FC_RAIN_SIMPLE", 7, 2129, 0},
                               {"FC_POINT", 7, 2136, 0},
                               {"FC_FOREIGN", 7, 2132, 0},
                               {"FC_ADDITIONAL_RAIN_IN_WASTE_CH", 7, 2139, 0},
                               {"FC_USER", 7, 2141, 0}};
    ExpectForm(*plain.calculator.CreateParameters()->m_properties, {{2150, 0, rows}});
    CTransitRun turkish("A-B", true);
    rows.emplace_back("FC_IND_TUR", 7, 9339, 0);
    rows.emplace_back("FC_FOREIGN_TUR", 7, 9340, 0);
    ExpectForm(*turkish.calculator.CreateParameters()->m_properties, {{2150, 0, rows}});

    EXPECT_EQ(plain.calculator.GetKey(), "03_FC_TRANSIT");
    EXPECT_EQ(plain.calculator.GetCalculatorName(), Msg(11168));
    EXPECT_EQ(plain.calculator.GetCalculatorGroupName(), Msg(7653));
    EXPECT_EQ(plain.calculator.GetCalculatorIcon(), "IDI_CALC_SUM");
    EXPECT_EQ(plain.calculator.GetCalculatorGroupIcon(), "IDI_CALC_SUM");
    EXPECT_EQ(plain.calculator.GetParametersDataId(), "FLOW_TRANSIT_S");
    EXPECT_EQ(plain.calculator.IsWholeNetworkCalculator(), 1);
    const auto& outputs = plain.calculator.GetOutputDefinitionsWithKind();
    ASSERT_EQ(outputs.size(), 2U);
    EXPECT_EQ(outputs[0].first->m_id, "FLOW_SECT_TOTAL");
    EXPECT_EQ(outputs[1].first->m_id, "FLOW_TRANSIT");
    EXPECT_EQ(outputs[1].second, 6);
}

TEST(Transit, WhatArrivesFromAbove) {
    // The sections bring 1, 2, 4, 8, ... in the order of the network: a transit shows which of them it is made of.
    const struct {
        const char* name;
        const char* drawing;
        const char* mainOutlets; // node and lower node
        const char* transit;
    } cases[] = {
        {"a chain", "A-B-C-D", "", "AB 0 BC 1 CD 3"},
        {"two heads join", "A-C-D  B-C", "", "AC 0 CD 5 BC 0"},
        {"a side outlet gets nothing", "A-B-M  B-S", "BM", "AB 0 BM 1 BS 0"},
        {"the main outlet may come second", "A-B-M  B-S", "BS", "AB 0 BM 0 BS 1"},
        {"two sections leave a top node", "A-B-D  A-C-D-E", "", "AB 0 BD 1 AC 0 CD 4 DE 15"},
        {"a ring without a way in", "A-B-C-A", "", "AB 0 BC 0 CA 0"},
        {"a ring holds back what enters it", "T-A-B-C-A  D-E", "", "TA 0 AB 0 BC 0 CA 0 DE 0"},
        {"below a ring", "A-B-C-A  B-X-Y", "BX", "AB 0 BC 0 CA 0 BX 0 XY 0"},
        {"a side branch that joins again", "A-B-C-D-E  B-S-C", "BC", "AB 0 BC 1 CD 0 DE 0 BS 0 SC 0"},
        {"all through the branch that joins again", "A-B-C-D  B-S-C", "BS", "AB 0 BC 0 CD 0 BS 1 SC 9"},
        {"a head below a side outlet waits for it", "A-B-M  B-S-T  H-S", "BM", "AB 0 BM 1 BS 0 ST 0 HS 0"},
        {"two sections between the same nodes", "A-B-C  A-B", "", "AB 0 BC 5 AB 0"},
        {"a section that returns to its start", "A-B-B", "BB", "AB 0 BB 0"},
        {"two networks", "A-B-C  D-E-F", "", "AB 0 BC 1 DE 0 EF 4"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        CTransitRun run(c.drawing);
        run.SwitchOn("FC_USER").ChooseOutlets(c.mainOutlets);
        double own = 1.0;
        for (const auto& section : run.net.Sections()) {
            Data::CDataRW::Write("FLOW_USER", section, CDataBox(own), nullptr);
            own *= 2.0;
        }
        EXPECT_EQ(run.Calculate(), 1);
        EXPECT_EQ(run.Transits(), c.transit);
        own = 1.0;
        for (const auto& section : run.net.Sections()) {
            EXPECT_EQ(Flow::ReadFlowValue(section, "FLOW_SECT_TOTAL"), own) << "reached or not";
            own *= 2.0;
        }
        EXPECT_TRUE(run.host.m_alerts.empty());
    }
}

TEST(Transit, EachSwitchBringsInItsFlowAndTheOrderOfAdditionIsFixed) {
    CTransitRun run("A-B-C", true);
    double value = 1.0;
    for (const auto& [tag, key] : Addition)
        run.net.Set("AB", key, value *= 2.0);
    run.Calculate();
    EXPECT_EQ(run.Own("AB"), 0.0) << "all switches are off";
    EXPECT_EQ(run.Transits(), "AB 0 BC 0");
    value = 1.0;
    for (const auto& [tag, key] : Addition) {
        run.SwitchOn(tag).Calculate();
        EXPECT_EQ(run.Own("AB"), value *= 2.0) << tag;
        run.SwitchOff(tag);
    }
    for (const auto& [tag, key] : Addition)
        run.SwitchOn(tag);
    std::mt19937 random(7);
    std::uniform_real_distribution<double> magnitude(-9.0, 9.0);
    for (int round = 0; round < 50; ++round) {
        double sum = 0.0;
        for (const auto& [tag, key] : Addition) {
            const double flow = (random() % 2 == 0 ? 1.0 : -1.0) * std::pow(10.0, magnitude(random));
            run.net.Set("AB", key, flow);
            sum += flow;
        }
        run.Calculate();
        EXPECT_EQ(run.Own("AB"), sum) << "to the last bit";
        EXPECT_EQ(CFlowCalculator_Transit::GetOwnFlow(run.net.Section("AB"), run.parameters.get()), sum);
    }
}

TEST(Transit, TheMarkOfAnAbsentFlowCountsButInTheTurkishFlows) {
    CTransitRun run("A-B", true);
    for (const auto& [tag, key] : Addition) {
        const bool isTurkish = std::string_view(tag).ends_with("_TUR");
        run.SwitchOn(tag).Calculate();
        EXPECT_EQ(run.Own("AB"), 0.0) << tag << ": null";
        run.net.Set("AB", key, -1000000.0);
        run.Calculate();
        EXPECT_EQ(run.Own("AB"), isTurkish ? -1000000.0 : 0.0) << tag;
        run.net.Set("AB", key, CDataBox());
        run.SwitchOff(tag);
    }
}

TEST(Transit, MissingDirectionsOpenTheEditorWithinTheInteraction) {
    CTransitRun run("A-B-M-N  B-S  M-O");
    run.SwitchOn("FC_USER");
    run.net.Set("AB", "FLOW_USER", 2.5);
    {
        const CWriteWatch watch(run.project.Store());
        EXPECT_EQ(run.Calculate(), 0);
        EXPECT_EQ(watch.GetKeys(), "");
    }
    // From the last section to the first: MO starts at M, BS at B.
    EXPECT_EQ(run.editor.m_events, "begin edit(M B) end");
    EXPECT_EQ(run.host.m_alerts, std::vector<std::string>{Msg(11049)});
    EXPECT_TRUE(run.calculator.GetSectionFlows().empty());

    run.editor.m_answer = 1;
    run.editor.m_choices = {{'B', "BM"}, {'M', "MO"}};
    EXPECT_EQ(run.Calculate(), 1);
    EXPECT_EQ(run.Transits(), "AB 0 BM 2.5 MN 0 BS 0 MO 2.5");
    run.editor.m_events.clear();
    EXPECT_EQ(run.Calculate(), 1);
    EXPECT_EQ(run.editor.m_events, "") << "every outlet is chosen";
    EXPECT_EQ(run.host.m_alerts.size(), 1U);
}

TEST(Transit, ACancelledRunKeepsTheFiguresOfTheOneBefore) {
    CTransitRun run("A-B-C  B-D");
    run.SwitchOn("FC_USER").ChooseOutlets("BC");
    run.net.Set("AB", "FLOW_USER", 2.5);
    EXPECT_EQ(run.Calculate(), 1);
    Data::CDataRW::Write("MAIN_SECT_OUT", run.net.Node('B'), CDataBox(), nullptr);
    run.net.Set("AB", "FLOW_USER", 7.0);
    EXPECT_EQ(run.Calculate(), 0);
    EXPECT_EQ(run.calculator.GetSectionFlows().at("section-BC-1").transit, 2.5);
    EXPECT_EQ(run.Transits(), "AB 0 BC 2.5 BD 0");
    // Completed, but nothing chosen: the branch ends there, without a message.
    run.editor.m_answer = 1;
    EXPECT_EQ(run.CalculateWithoutInteraction(), 1);
    EXPECT_EQ(run.Transits(), "AB 0 BC 0 BD 0");
    EXPECT_EQ(run.Own("AB"), 7.0);
    EXPECT_EQ(run.host.m_alerts.size(), 1U);
}

TEST(Transit, FiguresAreOrderedByTheTextOfTheGuid) {
    CTransitRun run("c-B-D  A-B");
    run.SwitchOn("FC_USER").Calculate();
    std::string sections;
    for (const auto& [guid, flow] : run.calculator.GetSectionFlows()) {
        EXPECT_EQ(flow.section->GetGuid(), guid);
        sections += guid + " ";
    }
    EXPECT_EQ(sections, "section-AB-2 section-BD-1 section-cB-0 ");
    std::ostringstream nodes;
    for (const auto& [guid, flow] : run.calculator.GetNodeFlows())
        nodes << guid << '=' << flow.name << ':' << flow.processedIn << '/' << flow.sectionsIn << ' ';
    EXPECT_EQ(nodes.str(), "node-A=A:0/0 node-B=B:2/2 node-c=c:0/0 ") << "none for the outfall";
}

TEST(Transit, StoresThreeValuesASectionWhateverFails) {
    CTransitRun run("A-B-C-D");
    run.SwitchOn("FC_USER");
    run.net.Set("AB", "FLOW_USER", -5.0);
    run.net.Set("BC", "FLOW_USER", 2.0);
    CWriteWatch watch(run.project.Store());
    watch.m_refused = {{"FLOW_SECT_TOTAL", 2}, {"FLOW_TRANSIT", 2}};
    EXPECT_EQ(run.Calculate(), 1);
    const std::string section = "FLOW_SECT_TOTAL FLOW_TRANSIT_S FLOW_TRANSIT";
    EXPECT_EQ(watch.GetKeys(), section + " " + section + " " + section);
    EXPECT_EQ(run.net.Get("CD", "FLOW_TRANSIT_S").AsText(), run.parameters->Serialize());
    EXPECT_EQ(run.Own("AB"), -5.0);
    EXPECT_EQ(run.Transits(), "AB 0 BC 0 CD -") << "no flow below 0 is stored";
    EXPECT_EQ(run.calculator.GetSectionFlows().at("section-CD-2").transit, -3.0) << "but it is carried on";
}

TEST(Transit, ListsThatAreNotTheWholeNetwork) {
    CTransitRun run("A-B-C-D  B-E  F-G");
    run.SwitchOn("FC_USER").ChooseOutlets("BE");
    for (const auto& section : run.net.Sections())
        Data::CDataRW::Write("FLOW_USER", section, CDataBox(1.0), nullptr);
    auto& topology = run.net.Topology();
    const auto noStart = topology.AddSection("g1", "noStart", nullptr, run.net.Node('A').get(), {}).Value();
    const auto noEnd = topology.AddSection("g2", "noEnd", run.net.Node('G').get(), nullptr, {}).Value();
    const auto adrift = topology.AddSection("g3", "adrift", nullptr, nullptr, {}).Value();

    run.list = {nullptr, run.net.Section("FG"), noEnd, adrift, nullptr};
    EXPECT_EQ(run.Calculate(), 1);
    EXPECT_EQ(run.Transits(), "AB - BC - CD - BE - FG 0 noStart - noEnd - adrift -") << "they keep what they had";
    EXPECT_EQ(run.calculator.GetNodeFlows().size(), 1U) << "a section without an end opens no record";

    // noStart enters A, so that nothing in the list is a head.
    run.list = {noStart, run.net.Section("AB"), run.net.Section("BC")};
    EXPECT_EQ(run.Calculate(), 1);
    EXPECT_EQ(run.Transits(), "AB 0 BC 0 CD - BE - FG 0 noStart - noEnd - adrift -");
    topology.RemoveSection(*noStart);
    // The main outlet BE is not in the list: the branch ends at B.
    EXPECT_EQ(run.Calculate(), 1);
    EXPECT_EQ(run.Transits(), "AB 0 BC 0 CD - BE - FG 0 noEnd - adrift -");
    run.ChooseOutlets("BC");
    EXPECT_EQ(run.Calculate(), 1);
    EXPECT_EQ(run.Transits(), "AB 0 BC 1 CD - BE - FG 0 noEnd - adrift -");
    // The same where the main outlet BC comes before others of the list.
    run.list = {run.net.Section("AB"), run.net.Section("BE")};
    EXPECT_EQ(run.Calculate(), 1);
    EXPECT_EQ(run.Transits(), "AB 0 BC 1 CD - BE 0 FG 0 noEnd - adrift -") << "BC keeps what it had";
    run.list.clear();
    EXPECT_EQ(run.Calculate(), 1) << "nothing to do is a finished run";
    EXPECT_TRUE(run.calculator.GetSectionFlows().empty());
    EXPECT_EQ(run.calculator.Calculate(run.net.Sections(), nullptr, 1, nullptr, nullptr), 0);
}

TEST(Transit, ASectionTakenOutOfTheNetworkIsNoWayOut) {
    CTransitRun run("A-B-C  B-D");
    run.SwitchOn("FC_USER");
    run.net.Set("AB", "FLOW_USER", 1.0);
    const auto removed = run.net.Section("BD");
    run.net.Topology().RemoveSection(*removed);
    run.list = {run.net.Section("AB"), removed};
    EXPECT_EQ(run.Calculate(), 1);
    EXPECT_EQ(CFlowCalculator_Transit::ReadTransit(removed), 0.0);
    run.list = {run.net.Section("AB"), removed, run.net.Section("BC")};
    EXPECT_EQ(run.Calculate(), 1);
    EXPECT_EQ(run.Transits(), "AB 0 BC 1");
    EXPECT_EQ(CFlowCalculator_Transit::ReadTransit(removed), 0.0);
}

TEST(Transit, MainOutletsAreSavedAndRestored) {
    CTransitRun run("A-B-C-D  B-E  C-F");
    auto& calculator = run.calculator;
    const auto node = [&run](char letter) { return run.net.Node(letter); };
    EXPECT_NE(calculator.SetMainOutletOf(node('B'), run.net.Section("BE")), 0);
    EXPECT_EQ(calculator.SetMainOutletOf(node('B'), nullptr), 0);
    EXPECT_EQ(calculator.SetMainOutletOf(nullptr, run.net.Section("BE")), 0);
    EXPECT_EQ(calculator.GetMainOutletOf(node('B')), run.net.Section("BE"));
    EXPECT_EQ(calculator.GetMainOutletOf(node('C')), nullptr);
    EXPECT_EQ(calculator.GetMainOutletOf(run.net.Section("AB")), nullptr);
    EXPECT_EQ(calculator.GetMainOutletOf(nullptr), nullptr);
    calculator.SaveMainOutlets();
    run.ChooseOutlets("BC CF");
    calculator.RestoreMainOutlets();
    EXPECT_EQ(calculator.GetMainOutletOf(node('B')), run.net.Section("BE"));
    EXPECT_EQ(calculator.GetMainOutletOf(node('C')), run.net.Section("CF")) << "none was chosen when it was saved";

    EXPECT_EQ(calculator.ReadTransit(run.net.Section("AB")), -1000000.0);
    run.net.Set("AB", "FLOW_TRANSIT", 0.25);
    EXPECT_EQ(calculator.ReadTransit(run.net.Section("AB")), 0.25);
    EXPECT_NE(calculator.WriteSectionTotal(run.net.Section("AB"), 1.5), 0);
    EXPECT_EQ(run.Own("AB"), 1.5);
    EXPECT_EQ(calculator.WriteSectionTotal(nullptr, 1.5), 0);
    EXPECT_EQ(calculator.GetOwnFlow(nullptr, run.parameters.get()), 0.0);
    EXPECT_EQ(calculator.GetOwnFlow(run.net.Section("AB"), nullptr), 0.0);
}

TEST(Transit, NothingIsLostOnTheWayToTheOutfallsOfTrees) {
    std::mt19937 random(11);
    std::uniform_real_distribution<double> flow(0.0, 0.2);
    for (int round = 0; round < 8; ++round) {
        SCOPED_TRACE(round);
        CTransitRun run("", true);
        std::vector<boost::shared_ptr<Topology::CNode>> nodes;
        double brought = 0.0;
        for (std::size_t i = 0; i < 1500; ++i) {
            nodes.push_back(run.AddNode(i));
            if (i < 3) // the outfalls
                continue;
            const auto section = run.AddSection(nodes[i], nodes[random() % i]);
            for (const auto& [tag, key] : Addition) {
                const double own = flow(random);
                Data::CDataRW::Write(key, section, CDataBox(own), nullptr);
                brought += own;
            }
        }
        for (const auto& [tag, key] : Addition)
            run.SwitchOn(tag);
        run.list = run.net.Sections();
        std::shuffle(run.list.begin(), run.list.end(), random);
        EXPECT_EQ(run.Calculate(), 1);
        double arrived = 0.0;
        for (const auto& section : run.list)
            if (section->GetEndingNode()->GetSectionsOutCount() == 0)
                arrived +=
                    Flow::ReadFlowValue(section, "FLOW_TRANSIT") + Flow::ReadFlowValue(section, "FLOW_SECT_TOTAL");
        EXPECT_NEAR(arrived, brought, 1e-12 * brought) << "rounding of 15000 terms";
    }
}

TEST(Transit, EqualsTheDefinitionOnAnyNetwork) {
    // The definition, in no order: a head carries 0; another section carries the sum of those that enter
    // its start, once all of these are reached, and only if it is the way out of that node. Filled in pass by pass.
    std::mt19937 random(5);
    for (int round = 0; round < 200; ++round) {
        SCOPED_TRACE(round);
        CTransitRun run("");
        const std::size_t nodeCount = 4 + random() % 30;
        std::vector<boost::shared_ptr<Topology::CNode>> nodes;
        for (std::size_t i = 0; i < nodeCount; ++i)
            nodes.push_back(run.AddNode(i));
        const std::size_t sectionCount = 1 + random() % (nodeCount * 3 / 2);
        for (std::size_t i = 0; i < sectionCount; ++i) {
            std::size_t from = random() % nodeCount;
            std::size_t to = random() % nodeCount;
            const bool mayCloseARing = round % 4 == 0 && random() % 8 == 0;
            if (from == to && !mayCloseARing)
                to = (from + 1) % nodeCount;
            if (from > to && !mayCloseARing)
                std::swap(from, to);
            const auto section = run.AddSection(nodes[from], nodes[to]);
            Data::CDataRW::Write("FLOW_USER", section, CDataBox(0.001 * static_cast<double>(random() % 1000)), nullptr);
        }
        std::vector<boost::shared_ptr<Topology::CSection>> out;
        for (const auto& node : nodes)
            if (node->GetSectionsOut(out) > 1)
                CFlowDirection::SetMainOutlet(node, out[random() % out.size()]);

        run.list = run.net.Sections();
        std::map<const Topology::CSection*, double> expected;
        for (bool goesOn = true; goesOn;) {
            goesOn = false;
            for (const auto& section : run.list) {
                const auto start = section->GetStartingNode();
                double sum = 0.0;
                bool isReached =
                    start->GetSectionsInCount() == 0 || CFlowDirection::GetMainOutSection(start) == section;
                for (const auto& in : run.list)
                    if (in->GetEndingNode() == start) {
                        isReached = isReached && expected.count(in.get()) != 0;
                        sum += isReached ? expected[in.get()] + Flow::ReadFlowValue(in, "FLOW_USER") : 0.0;
                    }
                goesOn = (isReached && expected.emplace(section.get(), sum).second) || goesOn;
            }
        }
        std::shuffle(run.list.begin(), run.list.end(), random);
        EXPECT_EQ(run.SwitchOn("FC_USER").Calculate(), 1);
        for (const auto& section : run.list)
            EXPECT_NEAR(Flow::ReadFlowValue(section, "FLOW_TRANSIT"), expected[section.get()], 1e-9)
                << section->GetName();
    }
}
