// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/sewage_calculations/PipeSizing.h"

#include "host/formulas/Filling.h"
#include "host/gis_core/Journal.h"
#include "host/network_core/CatalogManager.h"
#include "host/network_core/PipeManager.h"
#include "tests/support/TestProject.h"
#include "tests/support/TextNetwork.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>
#include <string>
#include <utility>
#include <vector>

using namespace OLMGis;
using namespace OLMGis::Sewage;
using Topology::CCatalogItem;
using Topology::CPipeData;
using Topology::CSection;
using CPipe = boost::shared_ptr<CCatalogItem>;

namespace {

CPipe AddGroup(const std::string& name) {
    return Topology::CCatalogManager::Instance()->GetCatalog("PIPE", 1)->AddGroup("group-" + name, name).Value();
}

CPipe AddPipe(const CPipe& group, const std::string& name, double width, double height, double roughness = 0.5) {
    CPipeData data;
    data.m_shape = width == height ? Topology::enmPipeShape::Circle : Topology::enmPipeShape::Box;
    data.m_innerWidth = width;
    data.m_innerHeight = height;
    data.m_roughness = roughness;
    return Topology::CCatalogManager::Instance()
        ->GetCatalog("PIPE", 1)
        ->AddPipe(*group, group->GetName() + name, name, std::move(data))
        .Value();
}

const Data::CDataDefinition* FlowKey() {
    return Data::FindDefinition("FLOW_TOTAL");
}

std::string NameOf(const CPipe& pipe) {
    return pipe ? pipe->GetName() : std::string("none");
}

/// Whether a pipe carries the flow of a section within the limits: the formulas alone, without the reader of sections.
bool Fits(const CSizedSection& sized, const CCatalogItem& pipe, const CSizingRules& rules, double roughness) {
    const CPipeData& data = *pipe.GetPipeData();
    const Formulas::CSectionShape shape{data.m_shape, 0.001 * data.m_innerWidth, 0.001 * data.m_innerHeight, {}};
    const double slope = 0.001 * *sized.m_slope;
    const double k = 0.001 * (roughness > 0.0 ? roughness : data.m_roughness);
    const auto filling = Formulas::FillShape(shape, *sized.m_flow, {slope, k, rules.m_viscosity});
    return !filling.m_isOverfull && filling.m_percent <= rules.m_greatestFilling &&
           data.m_innerWidth >= rules.m_leastNominalDiameter && filling.m_velocity >= rules.m_leastVelocity &&
           9810.0 * filling.m_wet.GetHydraulicRadius() * slope >= rules.m_leastShearStress;
}

double WidestUpstream(const CSection& section) {
    std::vector<boost::shared_ptr<CSection>> upstream;
    section.GetPreviousSections(upstream);
    double widest = 0.0;
    for (const auto& each : upstream)
        widest = std::max(widest, Topology::CPipeManager::Instance()->GetInnerDiameter(each->GetPipe()));
    return widest;
}

/// The pipe by trying all: no order of the catalogue is made use of.
CPipe FindByTrying(const CSizedSection& sized, const CSizingRules& rules, double roughness) {
    const double least = rules.m_allowsSmaller ? 0.0 : WidestUpstream(*sized.m_section);
    for (const CPipe& group : rules.m_groups) {
        CPipe best;
        for (const CPipe& pipe : group->GetSubItems()) {
            const double width = pipe->GetPipeData()->m_innerWidth;
            if (width >= least && Fits(sized, *pipe, rules, roughness) &&
                (!best || width < best->GetPipeData()->m_innerWidth))
                best = pipe;
        }
        if (best)
            return best;
    }
    return nullptr;
}

/// A network with two groups of circles in no order: 200 to 500 mm, and 300 to 800 mm with another roughness.
struct CStage {
    CTestProject m_project;
    CTextNetwork m_network;
    CPipe m_small = AddGroup("small");
    CPipe m_large = AddGroup("large");
    CSizingRules m_rules{FlowKey(), {m_small, m_large}};

    explicit CStage(const char* drawing) : m_network(drawing) {
        for (const int width : {300, 200, 500, 400, 250})
            AddPipe(m_small, std::to_string(width), width, width, 0.1);
        for (const int width : {800, 300, 600})
            AddPipe(m_large, "L" + std::to_string(width), width, width, 1.5);
        for (const auto& section : m_network.Sections()) {
            m_network.Set(section->GetName(), "FLOW_TOTAL", 0.02);
            m_network.Set(section->GetName(), "SECTION_SLOPE", 5.0);
        }
    }

    void SetPipe(const std::string& section, const std::string& guid) { m_network.Set(section, "PIPE_REF", guid); }

    CSizedSection Size(const std::string& section) {
        for (const CSizedSection& sized : SizePipes(m_rules).m_sections)
            if (sized.m_section->GetName() == section)
                return sized;
        return {};
    }
};

} // namespace

TEST(PipeSizing, EqualsATrialOfEveryPipeOnRandomTrees) {
    std::mt19937 random(20);
    const auto pick = [&random](double least, double greatest) {
        return std::uniform_real_distribution(least, greatest)(random);
    };
    int sizedCount = 0;
    int leftCount = 0;
    for (int round = 0; round < 40; ++round) {
        CStage stage("");
        auto& topology = stage.m_network.Topology();
        std::vector<Topology::CNode*> nodes;
        std::vector<double> roughness;
        for (int i = 0; i <= 60; ++i)
            nodes.push_back(topology.AddNode("n" + std::to_string(i), "n" + std::to_string(i), {}).Value().get());
        // Each node leads to an earlier one: a tree whose order is not that of the flow.
        for (std::size_t i = 1; i < nodes.size(); ++i) {
            auto* const below = nodes[std::uniform_int_distribution<std::size_t>(i > 6 ? i - 6 : 0, i - 1)(random)];
            const std::string name = "s" + std::to_string(i);
            const auto section = topology.AddSection(name, name, nodes[i], below, {}).Value();
            roughness.push_back(pick(0, 1) < 0.3 ? pick(0.05, 3.0) : 0.0);
            if (roughness.back() > 0.0)
                stage.m_network.Set(name, "PIPE_ROUGHNESS", roughness.back());
            stage.m_network.Set(name, "FLOW_TOTAL", pick(0, 1) < 0.05 ? 0.0 : pick(0.001, 0.4));
            stage.m_network.Set(name, "SECTION_SLOPE", pick(0.5, 30.0));
            if (pick(0, 1) < 0.4)
                stage.SetPipe(name, stage.m_small->GetSubItems()[i % 5]->GetGUID());
            if (pick(0, 1) < 0.1)
                stage.m_rules.m_kept.push_back(section);
        }
        stage.m_rules.m_greatestFilling = pick(50.0, 100.0);
        stage.m_rules.m_leastNominalDiameter = round % 2 == 0 ? 250.0 : 0.0;
        stage.m_rules.m_leastVelocity = round % 3 == 0 ? 0.6 : 0.0;
        stage.m_rules.m_leastShearStress = round % 4 == 0 ? 1.5 : 0.0;
        stage.m_rules.m_allowsSmaller = round % 5 == 0;
        const CPipeSizing sizing = SizePipes(stage.m_rules);
        StorePipes(sizing);
        ASSERT_EQ(sizing.m_sections.size(), 60U);
        for (std::size_t i = 0; i < sizing.m_sections.size(); ++i) {
            const CSizedSection& sized = sizing.m_sections[i];
            const bool isKept = sized.m_outcome == enmSizing::Kept;
            EXPECT_EQ(isKept,
                      std::count(stage.m_rules.m_kept.begin(), stage.m_rules.m_kept.end(), sized.m_section) > 0);
            const CPipe expected =
                isKept || *sized.m_flow == 0.0 ? nullptr : FindByTrying(sized, stage.m_rules, roughness[i]);
            EXPECT_EQ(sized.m_outcome == enmSizing::Sized, expected != nullptr) << sized.m_section->GetName();
            const CPipe pipe = expected ? expected : sized.m_oldPipe;
            EXPECT_EQ(NameOf(sized.m_newPipe), NameOf(pipe)) << sized.m_section->GetName() << " in round " << round;
            EXPECT_EQ(sized.m_section->GetPipe(), pipe);
            if (expected && !stage.m_rules.m_allowsSmaller) {
                EXPECT_GE(expected->GetPipeData()->m_innerWidth, WidestUpstream(*sized.m_section));
            }
            (expected ? sizedCount : leftCount) += 1;
        }
    }
    EXPECT_GT(sizedCount, 1000) << "the trial covers little";
    EXPECT_GT(leftCount, 100) << "the trial covers little";
}

// By the pipe formula a smooth circle of 200 mm carries 32.1 l/s at 5/1000, with 1.02 m/s, and 20 l/s hardly faster;
// one of 250 mm carries 57.9 l/s.
TEST(PipeSizing, ReasonsAndLimits) {
    constexpr double Nothing = std::numeric_limits<double>::quiet_NaN();
    const struct {
        const char* m_case;
        void (*m_change)(CStage&);
        enmSizing m_outcome;
        const char* m_pipe; ///< of BC afterwards
    } rows[] = {
        {"smallest", [](CStage&) {}, enmSizing::Sized, "200"},
        {"kept", [](CStage& s) { s.m_rules.m_kept = {s.m_network.Section("BC")}; }, enmSizing::Kept, "none"},
        {"no flow", [](CStage& s) { s.m_network.Set("BC", "FLOW_TOTAL", {}); }, enmSizing::Flow, "none"},
        {"mark for no flow", [](CStage& s) { s.m_network.Set("BC", "FLOW_TOTAL", -1e6); }, enmSizing::Flow, "none"},
        {"NaN", [](CStage& s) { s.m_network.Set("BC", "FLOW_TOTAL", Nothing); }, enmSizing::Flow, "none"},
        {"flow of 0", [](CStage& s) { s.m_network.Set("BC", "FLOW_TOTAL", 0.0); }, enmSizing::Flow, "none"},
        {"no slope", [](CStage& s) { s.m_network.Set("BC", "SECTION_SLOPE", {}); }, enmSizing::Slope, "none"},
        {"level", [](CStage& s) { s.m_network.Set("BC", "SECTION_SLOPE", 0.0); }, enmSizing::Slope, "none"},
        {"full", [](CStage& s) { s.m_network.Set("BC", "FLOW_TOTAL", 0.04); }, enmSizing::Sized, "250"},
        {"filling", [](CStage& s) { s.m_rules.m_greatestFilling = 50.0; }, enmSizing::Sized, "250"},
        {"too much", [](CStage& s) { s.m_network.Set("BC", "FLOW_TOTAL", 9.0); }, enmSizing::Filling, "none"},
        {"DN", [](CStage& s) { s.m_rules.m_leastNominalDiameter = 400.0; }, enmSizing::Sized, "400"},
        {"second group", [](CStage& s) { s.m_rules.m_leastNominalDiameter = 550.0; }, enmSizing::Sized, "L600"},
        {"no such DN", [](CStage& s) { s.m_rules.m_leastNominalDiameter = 900.0; }, enmSizing::Width, "none"},
        {"slow", [](CStage& s) { s.m_rules.m_leastVelocity = 1.2; }, enmSizing::Velocity, "none"},
        {"shear", [](CStage& s) { s.m_rules.m_leastShearStress = 20.0; }, enmSizing::Shear, "none"},
        {"old pipe stays",
         [](CStage& s) {
             s.SetPipe("BC", "small250");
             s.m_rules.m_leastVelocity = 1.2;
         },
         enmSizing::Velocity, "250"},
        {"upstream",
         [](CStage& s) {
             s.SetPipe("AB", "largeL300");
             s.m_rules.m_kept = {s.m_network.Section("AB")};
         },
         enmSizing::Sized, "300"},
        {"upstream of what has no pipe",
         [](CStage& s) {
             s.SetPipe("DA", "small400");
             s.m_rules.m_kept = {s.m_network.Section("DA"), s.m_network.Section("AB")};
         },
         enmSizing::Sized, "400"},
        {"upstream too wide",
         [](CStage& s) {
             s.m_rules.m_groups = {s.m_small};
             s.SetPipe("AB", "largeL600");
             s.m_rules.m_kept = {s.m_network.Section("AB")};
         },
         enmSizing::Width, "none"},
        {"smaller allowed",
         [](CStage& s) {
             s.m_rules.m_allowsSmaller = true;
             s.SetPipe("AB", "largeL300");
             s.m_rules.m_kept = {s.m_network.Section("AB")};
         },
         enmSizing::Sized, "200"},
        {"equal widths: the smaller area",
         [](CStage& s) {
             s.m_rules.m_groups = {AddGroup("boxes")};
             for (const int height : {900, 600, 700})
                 AddPipe(s.m_rules.m_groups[0], "box " + std::to_string(height), 500, height);
         },
         enmSizing::Sized, "box 600"},
        {"least diameter of the pipe type",
         [](CStage& s) {
             CPipeData data{Topology::enmPipeShape::Circle, 250, 250, 0, 0.1, "typed", 300, {}};
             s.m_rules.m_groups = {AddGroup("typed")};
             auto& catalog = *Topology::CCatalogManager::Instance()->GetCatalog("PIPE", 1);
             ASSERT_TRUE(catalog.AddPipe(*s.m_rules.m_groups[0], "t250", "t250", data));
             data.m_innerWidth = data.m_innerHeight = 310;
             ASSERT_TRUE(catalog.AddPipe(*s.m_rules.m_groups[0], "t310", "t310", data));
         },
         enmSizing::Sized, "t310"},
    };
    for (const auto& row : rows) {
        CStage stage("D-A-B-C");
        row.m_change(stage);
        const CSizedSection sized = stage.Size("BC");
        EXPECT_EQ(sized.m_outcome, row.m_outcome) << row.m_case;
        EXPECT_EQ(NameOf(sized.m_newPipe), row.m_pipe) << row.m_case;
    }
}

TEST(PipeSizing, WaysThatPartMeetAndTurn) {
    CStage stage("A-B-C-D\nB-E-D-F\nX-Y-X\nY-Z");
    stage.m_network.Set("AB", "FLOW_TOTAL", 0.04); // 250 mm, which both ways on must have
    EXPECT_EQ(NameOf(stage.Size("BC").m_newPipe), "250");
    EXPECT_EQ(NameOf(stage.Size("BE").m_newPipe), "250");
    EXPECT_EQ(NameOf(stage.Size("DF").m_newPipe), "250");
    for (const char* name : {"XY", "YX", "YZ"})
        EXPECT_EQ(stage.Size(name).m_outcome, enmSizing::Ring) << name;
}

TEST(PipeSizing, OneJournalTakesAllBack) {
    CStage stage("A-B-C");
    stage.SetPipe("AB", "small500");
    Data::CJournal journal;
    {
        const Data::CJournalScope open(stage.m_project.Store(), &journal);
        const CPipeSizing sizing = SizePipes(stage.m_rules);
        EXPECT_TRUE(journal.IsEmpty()) << "choosing stores nothing";
        EXPECT_EQ(StorePipes(sizing), 2U);
    }
    EXPECT_EQ(stage.m_network.Get("AB", "PIPE_REF").AsText(), "small200");
    EXPECT_EQ(stage.m_network.Get("BC", "PIPE_REF").AsText(), "small200");
    journal.Undo(stage.m_project.Store());
    EXPECT_EQ(stage.m_network.Get("AB", "PIPE_REF").AsText(), "small500");
    EXPECT_FALSE(stage.m_network.Get("BC", "PIPE_REF").IsNotNull());
}
