// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_core/FunctionalAnalysisManager.h"

#include "host/gis_core/CoreProgressBar.h"
#include "host/gis_core/ModuleScope.h"
#include "host/gis_core/SystemManager.h"
#include "host/network_core/FindingNotes.h"
#include "tests/support/ScriptedHost.h"
#include "tests/support/TestProject.h"
#include "tests/support/TextNetwork.h"

#include <boost/make_shared.hpp>
#include <gmock/gmock.h>

#include <functional>
#include <stdexcept>

using namespace OLMGis;
using namespace OLMGis::Topology;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Utility::CCoreProgressBar;

namespace {

using CMessages = std::vector<boost::shared_ptr<CFAMsg>>;

void Find(CMessages& messages, const std::string& guid) {
    messages.push_back(boost::make_shared<CFAMsg>());
    messages.back()->m_guid = guid;
    messages.back()->m_text = "found";
}

void Note(const CEntity& entity, double value) {
    CFindingNotes::Active()->Add({&entity, value, 2.0, "m"});
}

/// An item that does what the test says.
class CItem final : public IFunctionalAnalysisItem {
public:
    CItem(std::string key, std::function<void(CMessages&)> run, int function = 0)
        : m_key(std::move(key)), m_run(std::move(run)), m_function(function) {}
    std::string GetItemKey() override { return m_key; }
    std::string GetItemName() override { return "name of " + m_key; }
    int IsAvailableForSystemFunction(int systemFunction) override { return systemFunction == m_function ? 1 : 0; }
    boost::shared_ptr<CPropertiesEx> CreateProperties() override { return boost::make_shared<CPropertiesEx>(); }
    void RunAnalysis(boost::shared_ptr<CPropertiesEx> properties, CAnalysedNetwork* network,
                     CMessages& findings) override {
        EXPECT_TRUE(properties);
        EXPECT_EQ(NamesOf(network->m_nodes) + "; " + NamesOf(network->m_sections), "A B C; AB BC");
        EXPECT_THAT(findings, IsEmpty()) << "each item gets a list of its own";
        CCoreProgressBar::Instance()->SaveState();
        CCoreProgressBar::Instance()->Show(m_key, 0, 1);
        m_run(findings);
        CCoreProgressBar::Instance()->RestoreState();
    }

private:
    std::string m_key;
    std::function<void(CMessages&)> m_run;
    int m_function;
};

struct CStage {
    CTestProject project;
    CTextNetwork net{"A---B---C"};
    CFunctionalAnalysisManager& manager = *CFunctionalAnalysisManager::Instance();
    std::vector<CFunctionalAnalysisManager::CRequest> requests;

    std::string Guid(const char* section) const { return std::string(net.Section(section)->GetGuid()); }
    void Ask(const std::string& key, std::function<void(CMessages&)> run, int function = 0) {
        requests.push_back({boost::make_shared<CItem>(key, std::move(run), function), nullptr});
    }
    std::string Findings() const {
        std::string text;
        if (!manager.GetFindings())
            return "none";
        const auto show = [](const std::optional<double>& number) { return number ? std::to_string(*number) : "-"; };
        for (const auto& item : *manager.GetFindings()) {
            text += item.m_item + ":";
            for (const auto& finding : item.m_findings)
                text += " " + std::string(finding.m_name) + "=" + show(finding.m_value).substr(0, 3);
            text += ";";
        }
        return text;
    }
};

} // namespace

TEST(FunctionalAnalysisManager, ItemsAreInTheOrderOfRegistrationAndComeAndGoWithTheirModule) {
    CStage stage;
    const auto keys = [&stage] {
        std::vector<std::string> found;
        for (const auto& item : stage.manager.GetItems())
            found.push_back(item->GetItemKey());
        return found;
    };
    const auto first = boost::make_shared<CItem>("Z", nullptr);
    stage.manager.RegisterFunctionalAnalysisItem(first);
    System::CModuleScope::Instance()->Open();
    for (const char* key : {"5_B", "5_A", "Z"})
        stage.manager.RegisterFunctionalAnalysisItem(boost::make_shared<CItem>(key, nullptr));
    stage.manager.RegisterFunctionalAnalysisItem(nullptr);
    System::CModuleScope::Instance()->Close();
    EXPECT_THAT(keys(), ElementsAre("Z", "5_B", "5_A"));
    EXPECT_EQ(stage.manager.GetItem("Z"), first) << "a taken key is kept out";
    EXPECT_FALSE(stage.manager.GetItem("5_"));
    System::CModuleScope::Instance()->TakeOutAll();
    EXPECT_THAT(keys(), ElementsAre("Z"));
}

TEST(FunctionalAnalysisManager, AnExceptionEndsItsItemAloneAndGivesTheProgressBack) {
    CStage stage;
    const std::string ab = stage.Guid("AB");
    stage.Ask("1", [&](CMessages& m) {
        Find(m, ab);
        CCoreProgressBar::Instance()->SaveState();
        throw std::runtime_error("the cellar is flooded");
    });
    stage.Ask("2", [](CMessages&) { throw 7; }); // NOLINT(hicpp-exception-baseclass)
    stage.Ask("3", [&](CMessages& m) { Find(m, ab); });
    auto& progress = *CCoreProgressBar::Instance();
    progress.Show("outer", 0, 10);
    ASSERT_TRUE(stage.manager.RunAnalysis(stage.requests));
    EXPECT_EQ(progress.GetCaption(), "outer");
    EXPECT_EQ(progress.GetDepth(), 0U);
    EXPECT_EQ(stage.Findings(), "1: AB=-;2:;3: AB=-;");
    const auto& items = *stage.manager.GetFindings();
    EXPECT_THAT(items[0].m_error, testing::AllOf(HasSubstr("name of 1"), HasSubstr("the cellar is flooded")));
    EXPECT_NE(items[1].m_error, "");
    EXPECT_EQ(items[2].m_error, "");
}

TEST(FunctionalAnalysisManager, OnlyItemsForTheSystemFunctionRun) {
    CStage stage;
    for (const int function : {0, 1, 2})
        stage.Ask(
            std::to_string(function), [](CMessages&) {}, function);
    System::CSystemManager::Instance()->GetActiveSystem()->SetSystemFunction(1);
    ASSERT_TRUE(stage.manager.RunAnalysis(stage.requests));
    EXPECT_EQ(stage.Findings(), "1:;");
}

TEST(FunctionalAnalysisManager, GivingUpKeepsTheFormerFindings) {
    CStage stage;
    stage.Ask("1", [&](CMessages& m) { Find(m, stage.Guid("AB")); });
    ASSERT_TRUE(stage.manager.RunAnalysis(stage.requests));
    stage.Ask("2", [](CMessages&) { ADD_FAILURE() << "nothing runs after the one that was given up"; });
    CScriptedHost host;
    host.m_progressCallsUntilCancel = 0;
    EXPECT_FALSE(stage.manager.RunAnalysis(stage.requests));
    EXPECT_EQ(CCoreProgressBar::Instance()->GetDepth(), 0U);
    EXPECT_EQ(stage.Findings(), "1: AB=-;");
}

/// Nodes are 100 m apart on a line, so the middle of AB is at 50.
TEST(FunctionalAnalysisManager, NotesGoToTheirFindings) {
    CStage stage;
    const auto ab = stage.net.Section("AB");
    stage.Ask("1", [&](CMessages& m) {
        Find(m, stage.Guid("AB"));
        Note(*ab, 1.5);
        Find(m, stage.Guid("BC")); // notes nothing
        Find(m, "node-C");
        Note(*stage.net.Node('C'), 2.5);
        m.push_back(nullptr);
    });
    stage.Ask("2", [&](CMessages& m) {
        Find(m, stage.Guid("AB"));
        Find(m, "nobody");
        Note(*ab, 3.5);
    });
    ASSERT_TRUE(stage.manager.RunAnalysis(stage.requests));
    EXPECT_EQ(CFindingNotes::Active(), nullptr);
    EXPECT_EQ(stage.Findings(), "1: AB=1.5 BC=- C=2.5;2: AB=3.5 =-;");
    const auto& found = stage.manager.GetFindings()->at(0).m_findings;
    EXPECT_EQ(found[0].m_limit, 2.0);
    EXPECT_EQ(found[0].m_unit, "m");
    EXPECT_EQ(found[0].m_point, (CPoint{50.0, 0.0}));
    EXPECT_EQ(found[1].m_point, (CPoint{150.0, 0.0}));
    EXPECT_EQ(found[2].m_point, (CPoint{200.0, 0.0}));
    EXPECT_FALSE(stage.manager.GetFindings()->at(1).m_findings[1].m_point.IsKnown());
}

TEST(FunctionalAnalysisManager, TheMiddleOfALineIsHalfWayAlongIt) {
    const std::vector<CPoint> bent{{0, 0}, {3, 0}, {3, 0}, {3, 9}};
    EXPECT_EQ(MiddleOfLine(bent), (CPoint{3.0, 3.0}));
    EXPECT_EQ(MiddleOfLine(std::vector<CPoint>{{1, 2}, {1, 2}}), (CPoint{1.0, 2.0}));
    EXPECT_FALSE(MiddleOfLine({}).IsKnown());
}
