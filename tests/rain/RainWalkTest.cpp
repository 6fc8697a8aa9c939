// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/gis_core/CoreProgressBar.h"
#include "host/network_core/Selector.h"
#include "host/sewage_core/FlowDirection.h"
#include "rain/editions/TurkishRainfall.h"
#include "rain/run/NetworkWalk.h"
#include "tests/rain/RainRun.h"
#include "tests/rain/RandomNetwork.h"
#include "tests/support/WriteWatch.h"

#include <deque>
#include <memory>
#include <numeric>
#include <set>

using namespace OLMGis;
using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

/// A line of sections by the hundred thousand, each with a little area, in the active project.
void AddLine(int count) {
    auto& topology = *Topology::CTopologyMultiStorage::Instance()->GetActiveTopology();
    auto from = topology.AddNode("n", "n", {0.0, 0.0}).Value();
    for (int i = 0; i < count; ++i) {
        const std::string number = std::to_string(i);
        const auto to = topology.AddNode("n" + number, "n" + number, {10.0 * i, 0.0}).Value();
        const auto section = topology.AddSection("s" + number, "s" + number, from.get(), to.get(), {}).Value();
        Data::CDataRW::Write("SECTION_SLOPE", section, 5.0, nullptr);
        Data::CDataRW::Write("FLOW_INTIME", section, 5.0, nullptr);
        Data::CDataRW::Write("length", section, 30.0, nullptr);
        const auto catchment = topology.AddCatchment("c" + number, "c" + number, section.get(), {}).Value();
        Data::CDataRW::Write("kinds", catchment, 1, nullptr);
        Data::CDataRW::Write("area", catchment, 0.0009765625, nullptr); // sums without rounding
        from = to;
    }
}

/// A branch for ChooseUpstream: name, then time and flow of each record.
struct CBranch {
    const char* m_name;
    std::vector<std::pair<double, double>> m_records;
};

/// "name index count" of what goes on.
std::string Choose(const std::vector<CBranch>& branches, const Rain::CRunSettings& settings) {
    CNodeDataIDF node("N", static_cast<int>(branches.size()), settings);
    std::deque<CSectionDataIDF> records;
    for (const CBranch& branch : branches) {
        for (const auto& [time, flow] : branch.m_records) {
            CSectionDataIDF& record = records.emplace_back();
            record.m_name = branch.m_name;
            record.m_upstreamTime = time;
            record.m_inletTime = 100.0 - time;
            record.m_flow = flow;
            record.m_params = &settings;
            node.AddResult(&record);
        }
    }
    const auto chosen = node.ChooseUpstream();
    if (chosen.empty())
        return "none";
    const auto& list = node.m_results.at(chosen.front()->m_name);
    return std::string(chosen.front()->m_name) + " " + std::to_string(&chosen.front() - list.data()) + " " +
           std::to_string(chosen.size());
}

} // namespace

TEST(RainWalk, TheBranchThatGoesOnIsChosenByTimeThenByFlow) {
    struct CRow {
        const char* m_case;
        int m_rule;
        int m_partialArea;
        std::vector<CBranch> m_branches;
        const char* m_chosen;
    };
    const CTestProject project;
    for (const CRow& row :
         {CRow{"nothing arrived", 11088, 1, {}, "none"},
          {"longest", 11088, 0, {{"b", {{3, 1}}}, {"a", {{2, 9}}}, {"c", {{2.9, 9}}}}, "b 0 1"},
          {"shortest", 11089, 0, {{"b", {{3, 1}}}, {"a", {{2, 9}}}, {"c", {{2.9, 9}}}}, "a 0 1"},
          {"equal times keep the first name", 11088, 0, {{"b", {{3, 9}}}, {"a", {{3, 1}}}}, "a 0 1"},
          {"another rule keeps the first name", 7, 0, {{"b", {{3, 9}}}, {"a", {{2, 1}}}}, "a 0 1"},
          {"the whole list goes on", 11088, 0, {{"a", {{3, 1}, {2, 2}, {1, 3}}}}, "a 0 3"},
          {"near in time and more flow", 11088, 1, {{"a", {{3, 1}}}, {"b", {{2.9, 2}}}}, "b 0 1"},
          {"near in time, not without the effect", 11088, 0, {{"a", {{3, 1}}}, {"b", {{2.9, 2}}}}, "a 0 1"},
          {"5 % away", 11088, 1, {{"a", {{4, 1}}}, {"b", {{3.8, 2}}}}, "a 0 1"},
          {"equal flow", 11088, 1, {{"a", {{3, 2}}}, {"b", {{2.9, 2}}}}, "a 0 1"},
          {"a later record, the rest of its list",
           11088,
           1,
           {{"a", {{3, 1}}}, {"b", {{2, 5}, {2.95, 2}, {1, 1}}}},
           "b 1 2"},
          {"on from the next branch",
           11088,
           1,
           {{"a", {{3, 1}}}, {"b", {{2.9, 2}, {2.9, 9}}}, {"c", {{2.8, 3}}}},
           "c 0 1"},
          {"time zero is near to nothing", 11088, 1, {{"a", {{0, 1}}}, {"b", {{0, 2}}}}, "a 0 1"}}) {
        Rain::CRunSettings settings;
        settings.m_branchingFlowTime = row.m_rule;
        settings.m_partialArea = row.m_partialArea;
        EXPECT_EQ(Choose(row.m_branches, settings), row.m_chosen) << row.m_case;
    }
    Rain::CRunSettings turkish;
    turkish.m_rainfall = std::make_shared<Rain::CTurkishRainfall>(); // inlet and flow time count, here 97 and 98
    EXPECT_EQ(Choose({{"a", {{3, 1}}}, {"b", {{2, 1}}}}, turkish), "b 0 1");
}

TEST(RainWalk, ChainsHaveOneRecordMoreThanAbove) {
    CRainRun run("A---B---C---D\nE-C");
    run.Rain("AB", 0.5).Rain("BC", 0.2).Rain("CD", 0.1).Rain("EC", 0.01).Type("PARTIAL_AREA_EFFECT", "1");
    ASSERT_EQ(run.Calculate(), 1);
    EXPECT_THAT(run.Records("AB"), SizeIs(1));
    EXPECT_THAT(run.Records("BC"), SizeIs(2));
    EXPECT_EQ(run.Records("BC")[0]->m_previous, run.Records("AB")[0]);
    EXPECT_EQ(run.Records("BC")[1]->m_previous, nullptr);
    EXPECT_DOUBLE_EQ(run.Records("BC")[0]->GetEffectiveArea(), 0.7);
    EXPECT_EQ(run.Records("BC")[1]->GetEffectiveArea(), 0.2);
    // The longest branch goes on: the small catchment beside counts in the whole, not in the chain.
    EXPECT_THAT(run.Records("CD"), SizeIs(3));
    EXPECT_NEAR(run.Record("CD").m_totalArea, 0.81, 1e-12);
    EXPECT_NEAR(run.Value("CD", "FLOW_IDF_AREA_CORRECTED_TOTAL"), 0.8, 1e-12);
    EXPECT_EQ(run.Value("CD", "FLOW_RAIN_IDF"), run.Records("CD")[0]->m_flow) << "the first record is written";
}

TEST(RainWalk, WhatIsNotReachedIsLeftAlone) {
    CRainRun ring("A---B---C---A");
    ring.Rain("AB", 0.5);
    EXPECT_EQ(ring.Calculate(), 1);
    EXPECT_FALSE(ring.Has("AB", "FLOW_RAIN_IDF"));

    CRainRun sides("A---B---C\nB---D---E");
    sides.Rain("AB", 0.5);
    Sewage::CFlowDirection::SetMainOutlet(sides.net.Node('B'), sides.net.Section("BD"));
    EXPECT_EQ(sides.CalculateTraced("DE"), 1);
    EXPECT_TRUE(sides.Has("DE", "FLOW_RAIN_IDF"));
    EXPECT_FALSE(sides.Has("BC", "FLOW_RAIN_IDF")) << "only the main outlet goes on";
    const auto* const unreached = sides.trace.FindTable("rain_unreached");
    ASSERT_TRUE(unreached != nullptr && unreached->m_rows.size() == 1);
    EXPECT_EQ(unreached->m_rows[0].m_name, "BC");

    // Two sections of one name count as one delivery: the node below waits for ever.
    CRainRun twins("A---C---D");
    twins.Rain("AC", 0.5);
    auto& topology = twins.net.Topology();
    const auto node = topology.AddNode("node-B", "B", {}).Value();
    const auto twin = topology.AddSection("twin", "AC", node.get(), twins.net.Node('C').get(), {}).Value();
    Data::CDataRW::Write("SECTION_SLOPE", twin, 5.0, nullptr);
    Data::CDataRW::Write("FLOW_INTIME", twin, 5.0, nullptr);
    EXPECT_EQ(twins.Calculate(), 1);
    EXPECT_TRUE(twins.Has("AC", "FLOW_RAIN_IDF"));
    EXPECT_FALSE(twins.Has("CD", "FLOW_RAIN_IDF"));

    // Nulls and sections without a node are skipped without a word.
    CRainRun loose;
    loose.Rain("AB", 0.5);
    loose.net.Topology().AddSection("loose", "loose", nullptr, nullptr, {}).Value();
    auto sections = loose.net.Sections();
    sections.insert(sections.begin(), nullptr);
    EXPECT_EQ(loose.calculator.Calculate(sections, loose.parameters.get(), 1, nullptr, nullptr), 1);
    EXPECT_TRUE(loose.Has("BC", "FLOW_RAIN_IDF"));
    EXPECT_THAT(loose.host.m_alerts, IsEmpty());
    EXPECT_EQ(loose.calculator.Calculate(sections, nullptr, 1, nullptr, nullptr), 0);
}

TEST(RainWalk, SelectionsCountOnlyWhatIsSelected) {
    CRainRun run("A---B---C---D\nE---C");
    run.Rain("AB", 1.0).Rain("BC", 2.0).Rain("CD", 4.0).Rain("EC", 8.0);
    const auto area = [&](const std::vector<const char*>& names) {
        std::vector<boost::shared_ptr<Topology::CSection>> sections;
        sections.reserve(names.size());
        for (const char* name : names)
            sections.push_back(run.net.Section(name));
        EXPECT_EQ(run.calculator.Calculate(sections, run.parameters.get(), 1, nullptr, nullptr), 1);
        return run.Record("CD").m_totalArea;
    };
    EXPECT_EQ(area({"CD"}), 4.0);
    EXPECT_EQ(area({"CD", "EC"}), 12.0);
    EXPECT_EQ(area({"CD", "BC", "AB"}), 7.0);
    EXPECT_EQ(area({"CD", "AB"}), 5.0) << "across a section that is left out";
    EXPECT_EQ(area({"AB", "BC", "EC", "CD"}), 15.0);
    EXPECT_EQ(run.Record("CD").m_previous->m_name, "BC") << "of equal inlet times the longer path";
}

TEST(RainWalk, AreasAreThoseOfAllSectionsUpstream) {
    constexpr int Networks = 60;
    std::size_t computed = 0;
    for (int seed = 0; seed < Networks; ++seed) {
        SCOPED_TRACE(seed);
        CDice dice(static_cast<unsigned int>(seed));
        const CTestProject project;
        const CScriptedHost host;
        const CRandomNetwork network(
            dice, {.m_mostSections = 25, .m_reliefs = 30, .m_rings = static_cast<std::size_t>(seed % 2 * 10)});
        const auto& sections = Topology::CTopologyMultiStorage::Instance()->GetActiveTopology()->GetSections();
        const Rain::CRunSettings settings; // without rain no pipe is chosen
        std::vector<boost::shared_ptr<Topology::CSection>> some;
        for (const auto& section : sections)
            if (seed % 3 == 0 || dice.Chance(85))
                some.push_back(section);
        const Rain::CRunInput input(Rain::CRunNetwork(some), settings);
        Rain::CNetworkWalk walk(input, settings);
        ASSERT_FALSE(walk.Walk(input.GetRows()).IsStopped());
        for (const auto& section : some) {
            const auto* const list = walk.FindRecords(section->GetRow());
            if (list == nullptr || list->empty())
                continue;
            ++computed;
            std::vector<boost::shared_ptr<Topology::CSection>> upstream;
            section->GetPreviousSections(upstream);
            double area = input.Of(section->GetRow()).m_ownArea;
            for (const auto& above : upstream)
                area += walk.IsSelected(above->GetRow()) ? input.Of(above->GetRow()).m_ownArea : 0.0;
            EXPECT_NEAR(list->front()->m_totalArea, area, 1e-12 * area) << section->GetName();
        }
    }
    EXPECT_GT(computed, 300U);
}

TEST(RainWalk, ACancelledRunStoresNothing) {
    CRainRun run;
    run.Rain("AB", 0.5);
    CWriteWatch watch(run.project.Store());
    run.host.m_progressCallsUntilCancel = 1;
    auto* const bar = Utility::CCoreProgressBar::Instance();
    bar->SaveState();
    EXPECT_EQ(run.Calculate(), 0);
    EXPECT_TRUE(bar->IsCancelled());
    bar->RestoreState();
    EXPECT_EQ(watch.GetKeys(), "");
    EXPECT_EQ(run.calculator.FindSectionDataList(run.net.Section("AB")), nullptr);
    run.host.m_progressCallsUntilCancel = -1;
    EXPECT_EQ(run.Calculate(), 1);
    const std::string keys = "FLOW_IDF_INTENSITY FLOW_IDF_CONC_TIME FLOW_IDF_MJ_TIME FLOW_IDF_TIME FLOW_RAIN_IDF "
                             "FLOW_IDF_AREA_CORRECTED_SECT FLOW_IDF_AREA_CORRECTED_TOTAL";
    EXPECT_EQ(watch.GetKeys(), keys + " " + keys);
}

TEST(RainWalk, TheSelectionSwitchComesBackOnlyFromARunThatBegan) {
    CRainRun run;
    Selection::CSelector::LoopInstance()->SetIncludeSubsystemIntoSelection(1);
    run.Type("PIPE_FILL", "120");
    EXPECT_EQ(run.Calculate(), 0);
    EXPECT_EQ(Selection::CSelector::LoopInstance()->GetIncludeSubsystemIntoSelection(), 0);
    Selection::CSelector::LoopInstance()->SetIncludeSubsystemIntoSelection(1);
    run.Type("PIPE_FILL", "90");
    EXPECT_EQ(run.Calculate(), 1);
    EXPECT_EQ(Selection::CSelector::LoopInstance()->GetIncludeSubsystemIntoSelection(), 1);

    CRainRun unchosen("A---B---C\nB---D");
    EXPECT_EQ(unchosen.Calculate(), 0);
    EXPECT_THAT(unchosen.host.m_alerts, ::testing::ElementsAre(Msg(11049)));
}

TEST(RainWalk, LongLinesNeedNoDepth) {
    constexpr int Count = 200000;
    CRainRun run("");
    AddLine(Count);
    CRainRun::AddPipes("Wide", {300, 600, 1200, 2400, 4800, 9600}, 1.0);
    run.Type("PIPE_GROUP", "Wide");
    ASSERT_EQ(run.Calculate(), 1);
    const std::string last = "s" + std::to_string(Count - 1);
    EXPECT_EQ(run.Value(last.c_str(), "FLOW_IDF_AREA_CORRECTED_TOTAL"), Count / 1024.0);
    EXPECT_GT(run.Value(last.c_str(), "FLOW_IDF_MJ_TIME"), run.Value("s0", "FLOW_IDF_MJ_TIME"));
    int length = 0;
    for (const auto* record = &run.Record(last.c_str()); record != nullptr; record = record->m_previous)
        ++length;
    EXPECT_EQ(length, Count);
}
