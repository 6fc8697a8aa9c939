// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/sewage_calculations/CalculationRun.h"

#include "host/gis_core/CoreProgressBar.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/Utility.h"
#include "host/network_core/Catchment.h"
#include "host/sewage_core/FlowCalculatorManager.h"
#include "host/sewage_core/IDensityUser.h"
#include "host/workspace_core/WsManager.h"
#include "tests/support/ScriptedHost.h"
#include "tests/support/TestProject.h"
#include "tests/support/TextNetwork.h"

#include <boost/make_shared.hpp>
#include <gtest/gtest.h>

#include <cmath>

using namespace OLMGis;
using namespace OLMGis::Sewage;

namespace {

/// Stores VALUE on each section, and behaves as a test sets it up.
class CProbe final : public IFlowCalculator, public IDensityUser {
public:
    std::string m_alert;
    bool m_usesDensities = false;
    std::size_t m_logLinesBefore = 0; ///< lines of the log when the last Calculate began
    bool m_hasProgress = false;
    int m_isWholeNetwork = 0;
    int m_answer = 1;
    std::vector<std::string> m_changed;

    CProbe() { m_key = "99_PROBE"; }
    boost::shared_ptr<CFlowCalculatorParameters> CreateParameters() override {
        auto parameters = boost::make_shared<CFlowCalculatorParameters>();
        parameters->m_properties = boost::make_shared<Topology::CPropertiesEx>();
        auto category = boost::make_shared<Topology::CCategory>();
        parameters->m_properties->AddCategory(category);
        Topology::CPropertyEx::CreateProperty(category, "VALUE", Topology::enmPropertyEditorType::Edit, 1, 1, 1.0, 1.0,
                                              1.0, 1.0, 0, nullptr, "", "");
        return parameters;
    }
    void OnPropertiesUpdated(Topology::CPropertyEx* property, CFlowCalculatorParameters*) override {
        m_changed.push_back(property->GetTag());
    }
    int Calculate(const CSectionList& sections, CFlowCalculatorParameters* params, int write, CReport* report,
                  IUserInteraction*) override {
        m_logLinesBefore = Workspace::CWsManager::Instance()->GetLog().size();
        auto* progress = Utility::CCoreProgressBar::Instance();
        if (m_hasProgress)
            progress->Show("probe", 0, static_cast<int>(sections.size()));
        int position = 0;
        for (const auto& section : sections) {
            Data::CDataRW::Write("FLOW_TOTAL_S", section, params->Serialize(), nullptr);
            if (write != 0)
                Data::CDataRW::Write("FLOW_TOTAL", section, params->m_properties->GetDblProperty("VALUE", 0, 1),
                                     nullptr);
            if (m_hasProgress && progress->SetPosition(++position) == 0)
                return 0;
        }
        if (report != nullptr)
            report->emplace_back("sections", std::to_string(sections.size()));
        if (!m_alert.empty())
            acedAlert(m_alert);
        return m_answer;
    }
    int IsWholeNetworkCalculator() override { return m_isWholeNetwork; }
    int IsPreviewAvailable() const override { return 1; }
    std::string GetCalculatorName() override { return "Probe"; }
    std::string GetCalculatorGroupName() override { return {}; }
    std::string GetCalculatorIconOverride() override { return {}; }
    std::string GetCalculatorIcon() override { return {}; }
    std::string GetCalculatorGroupIcon() override { return {}; }
    std::string GetParametersDataId() override { return "FLOW_TOTAL_S"; }
    bool UsesDensities() const override { return m_usesDensities; }
};

struct CStage {
    CTestProject project;
    CTextNetwork net{"A-B-C-D"};
    CScriptedHost host;
    boost::shared_ptr<CProbe> probe = boost::make_shared<CProbe>();
    CCalculationRequest request{"99_PROBE", {}, {}};

    CStage() { CFlowCalculatorManager::Instance()->RegisterFlowCalculator(probe); }
    CCalculationOutcome Run() {
        auto outcome = RunCalculation(request);
        EXPECT_TRUE(outcome);
        return outcome.Value();
    }
    bool IsUntouched() const {
        return !net.Get("AB", "FLOW_TOTAL").IsNotNull() && !net.Get("AB", "FLOW_TOTAL_S").IsNotNull();
    }
};

} // namespace

TEST(CalculationRun, ListsWhatWasStoredWhateverCalculateReturns) {
    CStage stage;
    stage.probe->m_answer = 0;
    stage.host.m_words = {{"VALUE", "2.5"}};
    const CCalculationOutcome outcome = stage.Run();
    EXPECT_EQ(outcome.m_end, enmRunEnd::Finished);
    ASSERT_EQ(outcome.m_results.size(), 1U) << "parameter texts are not results";
    EXPECT_EQ(outcome.m_results[0].m_definition->m_id, "FLOW_TOTAL");
    EXPECT_EQ(outcome.m_results[0].m_count, 3);
    EXPECT_DOUBLE_EQ(outcome.m_results[0].m_sum, 7.5);
    EXPECT_EQ(outcome.m_parameters, R"({"VALUE":2.5})");
    EXPECT_EQ(stage.probe->m_changed, std::vector<std::string>{"VALUE"});
}

TEST(CalculationRun, AnAlertACancelAndAFormNotConfirmedLeaveTheProjectAsItWas) {
    CStage alerted;
    alerted.probe->m_alert = "no pipe";
    const CCalculationOutcome outcome = alerted.Run();
    EXPECT_EQ(outcome.m_end, enmRunEnd::Alerted);
    EXPECT_EQ(outcome.m_alerts, std::vector<std::string>{"no pipe"});
    EXPECT_EQ(alerted.host.m_alerts, outcome.m_alerts) << "the user sees it too";
    EXPECT_TRUE(alerted.IsUntouched());

    CStage cancelled;
    cancelled.probe->m_hasProgress = true;
    cancelled.host.m_progressCallsUntilCancel = 2;
    EXPECT_EQ(cancelled.Run().m_end, enmRunEnd::Cancelled);
    EXPECT_TRUE(cancelled.IsUntouched());
    EXPECT_EQ(Utility::CCoreProgressBar::Instance()->GetDepth(), 0U);
    cancelled.host.m_progressCallsUntilCancel = -1;
    EXPECT_EQ(cancelled.Run().m_end, enmRunEnd::Finished) << "the next run is not cancelled";

    CStage givenUp;
    givenUp.host.m_confirmsForms = 0;
    EXPECT_EQ(givenUp.Run().m_end, enmRunEnd::GivenUp);
    EXPECT_TRUE(givenUp.IsUntouched());
}

TEST(CalculationRun, APreviewStoresTheParametersAndGoesOnWhenTheUserConfirms) {
    CStage stage;
    CReport shown;
    stage.request.m_showPreview = [&shown](std::string_view, const CReport& report) {
        shown = report;
        return 0;
    };
    EXPECT_EQ(stage.Run().m_end, enmRunEnd::Previewed);
    EXPECT_EQ(shown, (CReport{{"sections", "3"}}));
    EXPECT_TRUE(stage.net.Get("AB", "FLOW_TOTAL_S").IsNotNull());
    EXPECT_FALSE(stage.net.Get("AB", "FLOW_TOTAL").IsNotNull());
    stage.request.m_showPreview = [](std::string_view title, const CReport&) { return title == "Probe" ? 1 : 0; };
    EXPECT_TRUE(stage.Run().HasStored());
}

TEST(CalculationRun, OnlyTheRequestedSectionsUnlessTheWholeNetworkIsNeeded) {
    CStage stage;
    stage.request.m_sections = {stage.net.Section("BC")};
    EXPECT_EQ(stage.Run().m_sectionCount, 1);
    stage.probe->m_isWholeNetwork = 1;
    EXPECT_EQ(stage.Run().m_sectionCount, 3);
    EXPECT_FALSE(RunCalculation({"no such key", {}, {}}));
}

TEST(CalculationRun, ResultsThatAreNotFiniteAreKeptAndNamed) {
    CStage stage;
    const auto parameters = stage.probe->CreateParameters();
    stage.net.Set("BC", "FLOW_TOTAL", 0.0);
    struct CEditor final : Topology::IFormEditor {
        int EditForm(std::string_view, Topology::CPropertiesEx& form, const COnChanged&) override {
            form.GetPropertyExByTag("VALUE")->SetValue(std::nan(""));
            return 1;
        }
    } editor;
    const Topology::CFormEditorScope inForce(editor);
    const CCalculationOutcome outcome = stage.Run();
    EXPECT_EQ(outcome.m_results[0].m_count, 3);
    EXPECT_EQ(outcome.m_results[0].m_finiteCount, 0);
    EXPECT_TRUE(std::isnan(stage.net.Get("BC", "FLOW_TOTAL").AsDouble()));
    const auto& log = Workspace::CWsManager::Instance()->GetLog();
    ASSERT_EQ(log.size(), 1U);
    EXPECT_NE(log[0].m_text.find("FLOW_TOTAL of BC"), std::string::npos) << log[0].m_text;
}

TEST(CalculationRun, WarnsOfMissingDensitiesBeforeARunThatUsesThem) {
    const struct {
        const char* name;
        bool usesDensities;
        int confirmsForm;
        Data::CDataBox density; ///< of the catchments of AB and CD
        bool isWarned;
    } rows[] = {
        {"uses densities", true, 1, {}, true},
        {"uses no densities", false, 1, {}, false},
        {"form not confirmed", true, 0, {}, false},
        {"all densities known", true, 1, 120.0, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        CStage stage;
        stage.net.AddCatchment("AB", Topology::CatchmentHousehold, 1.5, row.density);
        stage.net.AddCatchment("BC", Topology::CatchmentHousehold, 1.0, 80.0);
        stage.net.AddCatchment("BC", Topology::CatchmentHousehold, 0.0);
        stage.net.AddCatchment("BC", Topology::CatchmentRain, 2.0);
        stage.net.AddCatchment("CD", Topology::CatchmentHousehold | Topology::CatchmentRain, 2.0, row.density);
        stage.probe->m_usesDensities = row.usesDensities;
        stage.host.m_confirmsForms = row.confirmsForm;
        stage.Run();
        const auto& log = Workspace::CWsManager::Instance()->GetLog();
        ASSERT_EQ(log.size(), row.isWarned ? 1U : 0U);
        if (!row.isWarned)
            continue;
        EXPECT_EQ(stage.probe->m_logLinesBefore, 1U) << "the warning comes before the calculation";
        EXPECT_EQ(log[0].m_text, Utility::CUtility::Format(Utility::Msg(70071), std::size_t{2}, std::string("AB, CD")));
    }
}
