// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
// The checks of what people enter, and what all checks have in common.
#include "host/network_checks/ComponentCheck.h"
#include "host/network_checks/LevelSlopeCheck.h"
#include "host/network_checks/MissingInputCheck.h"
#include "host/network_checks/OutletCheck.h"
#include "host/network_checks/OverfullCheck.h"
#include "host/network_checks/RingCheck.h"
#include "host/network_checks/ShearStressCheck.h"
#include "host/network_checks/VelocityCheck.h"
#include "host/network_core/FunctionalAnalysisManager.h"
#include "tests/support/AnalysisStage.h"

using namespace OLMGis;
using namespace OLMGis::NetworkChecks;
using testing::IsEmpty;

namespace {

constexpr int DoNotFit = 70432;
constexpr int Missing = 70460;

std::string Lacks(const std::string& name, const char* keys) {
    return name + ": " + Utility::CUtility::Format(Msg(Missing), keys);
}

} // namespace

// AB is 30 m long: a slope of 10 in 1000 is a drop of 0.30 m.
TEST(LevelSlopeCheck, ComparesTheDropOfTheLevelsWithThatOfTheDesignSlope) {
    const struct {
        double m_upper;
        double m_lower;
        double m_slope;
        const char* m_tolerance;
        const char* m_shown; ///< empty: no finding
    } rows[] = {
        {100.00, 99.70, 10.0, "0.02", ""},     {100.00, 99.68, 10.0, "0.02", ""}, // met exactly
        {100.00, 99.72, 10.0, "0.02", ""},     {100.00, 99.679, 10.0, "0.02", "0.02"},
        {100.00, 99.60, 10.0, "0.02", "0.10"}, {100.00, 99.60, 10.0, "0.1", ""},
        {99.70, 100.00, 10.0, "0.02", "0.60"}, // entered the wrong way round
    };
    for (const auto& row : rows) {
        CAnalysisStage stage("A---B");
        stage.SetLevels("AB", row.m_upper, row.m_lower);
        stage.net.Set("AB", "SECTION_SLOPE", row.m_slope);
        EXPECT_EQ(stage.Run(CLevelSlopeCheck(), {{"TOLERANCE", row.m_tolerance}}),
                  FindingOrNone("AB", *row.m_shown == '\0' ? 0 : DoNotFit, row.m_shown))
            << row.m_lower << " " << row.m_tolerance;
    }
    for (const char* key : {"LEVEL_LINE_0", "LEVEL_LINE_1", "SECTION_SLOPE"}) {
        CAnalysisStage stage("A---B");
        stage.SetLevels("AB", 100.0, 90.0);
        stage.net.Set("AB", "SECTION_SLOPE", 10.0);
        stage.net.Set("AB", key, {});
        EXPECT_THAT(stage.Run(CLevelSlopeCheck()), IsEmpty()) << key;
    }
}

TEST(MissingInputCheck, NamesTheKeysOfEachEntity) {
    const auto complete = [](CAnalysisStage& stage) {
        stage.Lay("AB", 300.0);
        stage.SetLevels("AB", 2.0, 1.0);
        stage.net.Set("AB", "SECTION_SLOPE", 0.0); // a value, if a bad one
        for (const char node : {'A', 'B'})
            stage.SetNode(node, "TERRAIN_1", 5.0);
    };
    const struct {
        const char* m_entity; ///< a section, or a node of one letter
        const char* m_key;
        Data::CDataBox m_value;
        const char* m_tag; ///< which leaves it out
        const char* m_named;
    } rows[] = {
        {"AB", "length", 0.0, "LENGTH", "length"},
        {"AB", "SECTION_SLOPE", {}, "SLOPE", "SECTION_SLOPE"},
        {"AB", "PIPE_REF", {}, "PIPE", "PIPE_REF"},
        {"AB", "PIPE_REF", "a pipe of another catalogue", "PIPE", "PIPE_REF"},
        {"AB", "LEVEL_LINE_0", {}, "LEVELS", "LEVEL_LINE_0"},
        {"AB", "LEVEL_LINE_1", {}, "LEVELS", "LEVEL_LINE_1"},
        {"B", "TERRAIN_1", {}, "GROUND", "TERRAIN_1"},
        {"B", "MANHOLE_RT", 3, "GROUND", "TERRAIN_3"}, // its manhole refers to another terrain
    };
    for (const auto& row : rows) {
        CAnalysisStage stage("A---B\nC"); // C joins nothing and needs nothing
        complete(stage);
        EXPECT_THAT(stage.Run(CMissingInputCheck()), IsEmpty());
        const std::string entity = row.m_entity;
        if (entity.size() == 1)
            stage.SetNode(entity.front(), row.m_key, row.m_value);
        else
            stage.net.Set(entity, row.m_key, row.m_value);
        EXPECT_EQ(stage.Run(CMissingInputCheck()), std::vector{Lacks(entity, row.m_named)}) << row.m_named;
        EXPECT_THAT(stage.Run(CMissingInputCheck(), {{row.m_tag, "0"}}), IsEmpty()) << row.m_named;
    }
    CAnalysisStage bare("A---B");
    EXPECT_EQ(bare.Run(CMissingInputCheck()),
              (std::vector{Lacks("AB", "SECTION_SLOPE, LEVEL_LINE_0, LEVEL_LINE_1, PIPE_REF"), Lacks("A", "TERRAIN_1"),
                           Lacks("B", "TERRAIN_1")}));
}

TEST(NetworkChecks, FormsAndTheFrameOfARun) {
    const struct {
        boost::shared_ptr<Topology::IFunctionalAnalysisItem> m_item;
        const char* m_key;
        std::vector<CFormCategory> m_form;
    } rows[] = {
        {boost::make_shared<CLevelSlopeCheck>(), "0008_LEVEL_SLOPE", {{70430, 0, {{"TOLERANCE", 0, 70431, 0.02}}}}},
        {boost::make_shared<CRingCheck>(), "0009_RING", {}},
        {boost::make_shared<COutletCheck>(), "0010_NO_OUTLET", {}},
        {boost::make_shared<CComponentCheck>(), "0011_COMPONENTS", {{70439, 0, {{"VALUE_MAX", 0, 70440, 1.0}}}}},
        {boost::make_shared<COverfullCheck>(), "0012_OVERFULL", {{70442, 0, {{"VALUE_MAX", 0, 70443, 100.0}}}}},
        {boost::make_shared<CVelocityCheck>(),
         "0013_VELOCITY",
         {{70446, 0, {{"VALUE_MIN", 0, 70447, 0.7}, {"VALUE_MAX", 0, 70448, 4.6}}}}},
        {boost::make_shared<CShearStressCheck>(), "0014_SHEAR_STRESS", {{70451, 0, {{"VALUE_MIN", 0, 70452, 1.0}}}}},
        {boost::make_shared<CMissingInputCheck>(),
         "0015_MISSING_INPUT",
         {{70454,
           0,
           {{"LENGTH", 7, 70455, 1},
            {"SLOPE", 7, 70456, 1},
            {"PIPE", 7, 70457, 1},
            {"LEVELS", 7, 70458, 1},
            {"GROUND", 7, 70459, 1}}}}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.m_key);
        CAnalysisStage stage("");
        EXPECT_EQ(row.m_item->GetItemKey(), row.m_key);
        EXPECT_EQ(row.m_item->IsAvailableForSystemFunction(0), 1);
        EXPECT_EQ(row.m_item->IsAvailableForSystemFunction(1), 0);
        ExpectForm(*row.m_item->CreateProperties(), row.m_form, 1);
        EXPECT_THAT(stage.RunWith(*row.m_item, nullptr), IsEmpty());
        row.m_item->RunAnalysis(nullptr, nullptr, stage.messages);
        EXPECT_THAT(stage.messages, IsEmpty());
    }
}

/// The numbers behind the texts, as the project keeps them.
TEST(NetworkChecks, FindingsCarryValueLimitAndUnit) {
    CAnalysisStage stage("A---B---A\nC---D");
    stage.Lay("AB", 400.0);
    stage.net.Set("AB", "SECTION_SLOPE", -2.0);
    stage.net.Set("AB", "FLOW_TOTAL", 0.1);
    stage.SetLevels("AB", 2.0, 2.0);
    auto& manager = *Topology::CFunctionalAnalysisManager::Instance();
    ASSERT_TRUE(manager.RunAnalysis({{boost::make_shared<CLevelSlopeCheck>(), nullptr},
                                     {boost::make_shared<CRingCheck>(), nullptr},
                                     {boost::make_shared<COutletCheck>(), nullptr},
                                     {boost::make_shared<CComponentCheck>(), nullptr},
                                     {boost::make_shared<COverfullCheck>(), nullptr}}));
    std::vector<std::string> found;
    for (const auto& item : *manager.GetFindings())
        for (const auto& finding : item.m_findings)
            found.push_back(item.m_item.substr(0, 4) + " " + std::string(finding.m_name) + " " +
                            Utility::CUtility::Format("%.2f %.2f", *finding.m_value, *finding.m_limit) + " " +
                            std::string(finding.m_unit));
    EXPECT_THAT(found, testing::ElementsAre("0008 AB 0.06 0.02 m", "0009 AB 2.00 0.00 ", "0009 BA 2.00 0.00 ",
                                            "0010 AB 0.00 1.00 ", "0010 BA 0.00 1.00 ", "0011 CD 2.00 1.00 ",
                                            "0012 AB -2.00 0.00 1/1000"));
}
