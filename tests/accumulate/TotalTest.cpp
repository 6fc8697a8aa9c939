// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "accumulate/FlowCalculator_Total.h"
#include "host/gis_core/ProjectSettings.h"
#include "host/network_core/PropertyEditing.h"
#include "host/workspace_core/WsManager.h"
#include "tests/support/FormTable.h"
#include "tests/support/TestProject.h"
#include "tests/support/TextNetwork.h"
#include "tests/support/WriteWatch.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

using namespace OLMGis;
using Data::CDataBox;

namespace {

/// The switches, each with the flow that it brings in, in the order in which flows are added up.
constexpr std::pair<const char*, const char*> Addition[] = {
    {"FLOW_ITP", "FLOW_RAIN_IDF"},         {"FLOW_BLG", "FLOW_WASTE_HOME_BG"},
    {"FLOW_UNEVEN", "FLOW_WASTE_UNEVEN"},  {"FLOW_TRANSIT", "FLOW_TRANSIT"},
    {"FLOW_TOTAL_OWN", "FLOW_SECT_TOTAL"}, {"FLOW_WASTE_HOME_TUR", "FLOW_TUR_WASTE_HOME"},
};

struct CRun {
    explicit CRun(const char* edition = "STANDARD", const char* turkish = "0") {
        Utility::CModuleConfiguration::Instance()->SetEdition(edition);
        System::CProjectSettings::Instance()->Set(System::CProjectSettings::Turkish, turkish);
        parameters = calculator.CreateParameters();
    }

    CTestProject project;
    CTextNetwork net{"A-B-C-D"};
    CFlowCalculator_Total calculator;
    boost::shared_ptr<Sewage::CFlowCalculatorParameters> parameters;
    Sewage::CSectionList list = net.Sections();

    void Switch(const char* tag, const char* state) {
        ASSERT_TRUE(Topology::SetPropertyText(*parameters->m_properties->GetPropertyExByTag(tag), state)) << tag;
    }
    int Calculate() { return calculator.Calculate(list, parameters.get(), 1, nullptr, nullptr); }
    CDataBox Total(const char* section) const { return net.Get(section, "FLOW_TOTAL"); }

    /// "type text" of each line, and nothing else in it.
    static std::string Log() {
        std::string text;
        for (const auto& line : Workspace::CWsManager::Instance()->GetLog()) {
            text += std::to_string(line.m_type) + " " + line.m_text + ";";
            EXPECT_TRUE(line.m_entityName.empty() && line.m_entityType == 0 && line.m_objectId == 0);
            EXPECT_EQ(line.m_selectionType, 0);
        }
        return text;
    }
};

} // namespace

TEST(Total, FormByEditionAndPresentation) {
    const CFormRow always[] = {{"FLOW_TOTAL_OWN", 7, 2143, 0},
                               {"FLOW_ITP", 7, 2145, 0},
                               {"FLOW_TRANSIT", 7, 2144, 0},
                               {"FLOW_UNEVEN", 7, 9010, 0}};
    const CFormRow bulgarian{"FLOW_BLG", 7, 8939, 0};
    const CFormRow turkish{"FLOW_WASTE_HOME_TUR", 7, 9338, 0};
    const struct {
        const char* edition;
        const char* turkish;
        std::vector<CFormRow> more;
    } cases[] = {
        {"STANDARD", "0", {}},        {"RO", "0", {}},
        {"BLG", "0", {bulgarian}},    {"BLG ", "0", {}},
        {"STANDARD", "1", {turkish}}, {"BLG", "1", {bulgarian, turkish}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.edition) + c.turkish);
        CRun run(c.edition, c.turkish);
        std::vector<CFormRow> rows(std::begin(always), std::end(always));
        rows.insert(rows.end(), c.more.begin(), c.more.end());
        ExpectForm(*run.parameters->m_properties, {{2150, 0, rows}});
    }
    CRun run;
    EXPECT_EQ(run.calculator.GetKey(), "04_FC_TOTAL");
    EXPECT_EQ(run.calculator.GetCalculatorName(), Msg(11167));
    EXPECT_EQ(run.calculator.GetCalculatorGroupName(), Msg(7653));
    EXPECT_EQ(run.calculator.GetCalculatorIcon(), "IDI_CALC_SUM");
    EXPECT_EQ(run.calculator.GetParametersDataId(), "FLOW_TOTAL_S");
    EXPECT_EQ(run.calculator.IsWholeNetworkCalculator(), 0);
    const auto& outputs = run.calculator.GetOutputDefinitionsWithKind();
    ASSERT_EQ(outputs.size(), 1U);
    EXPECT_EQ(outputs[0].first->m_id, "FLOW_TOTAL");
    EXPECT_EQ(outputs[0].second, 6);
}

TEST(Total, EachSwitchBringsInItsFlowAndTheOrderOfAdditionIsFixed) {
    CRun run("BLG", "1");
    run.net.Set("AB", "FLOW_RAIN", 1000.0); // no part: only rain by curves comes in directly
    double value = 1.0;
    for (const auto& [tag, key] : Addition)
        run.net.Set("AB", key, value *= 2.0);
    EXPECT_EQ(run.Calculate(), 1);
    EXPECT_TRUE(run.Total("AB") == CDataBox(0.0)) << "all switches are off";
    value = 1.0;
    for (const auto& [tag, key] : Addition) {
        run.Switch(tag, "1");
        run.Calculate();
        EXPECT_EQ(run.Total("AB").AsDouble(), value *= 2.0) << tag;
        EXPECT_TRUE(run.Total("BC") == CDataBox(0.0)) << "an absent flow adds nothing";
        run.net.Set("CD", key, -1000000.0);
        run.Calculate();
        EXPECT_EQ(run.Total("CD").AsDouble(), -1000000.0) << "a number like any other";
        run.net.Set("CD", key, CDataBox());
        run.Switch(tag, "0");
    }
    for (const auto& [tag, key] : Addition)
        run.Switch(tag, "1");
    std::mt19937 random(3);
    std::uniform_real_distribution<double> magnitude(-9.0, 9.0);
    for (int round = 0; round < 50; ++round) {
        double sum = 0.0;
        for (const auto& [tag, key] : Addition) {
            const double flow = (random() % 2 == 0 ? 1.0 : -1.0) * std::pow(10.0, magnitude(random));
            run.net.Set("BC", key, flow);
            sum += flow;
        }
        run.Calculate();
        EXPECT_EQ(run.Total("BC").AsDouble(), sum) << "to the last bit";
        EXPECT_EQ(CFlowCalculator_Total::GetSectionTotal(run.parameters.get(), run.net.Section("BC")), sum);
    }
}

TEST(Total, TheLastSectionDecidesTheResultAndTheLogLine) {
    constexpr std::uint32_t First = 0, Last = 2;
    const std::string stored = "1 " + Msg(2050) + ";";
    const struct {
        const char* name;
        std::vector<std::pair<std::string, std::uint32_t>> refused;
        int result;
    } cases[] = {
        {"all is written", {}, 1},
        {"an earlier section fails", {{"FLOW_TOTAL", First}}, 1},
        {"the last section fails", {{"FLOW_TOTAL", Last}}, 0},
        {"only its parameters fail", {{"FLOW_TOTAL_S", Last}}, 1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        CRun run;
        CWriteWatch watch(run.project.Store());
        watch.m_refused = c.refused;
        EXPECT_EQ(run.Calculate(), c.result);
        EXPECT_EQ(CRun::Log(), c.result == 1 ? stored : "");
        EXPECT_EQ(watch.GetKeys(), "FLOW_TOTAL FLOW_TOTAL_S FLOW_TOTAL FLOW_TOTAL_S FLOW_TOTAL FLOW_TOTAL_S");
        EXPECT_TRUE(run.Total("BC") == CDataBox(0.0)) << "a failed write stops nothing";
        EXPECT_EQ(run.net.Get("BC", "FLOW_TOTAL_S").AsText(), run.parameters->Serialize());
    }
}

TEST(Total, NullsAndNothingToDo) {
    CRun run;
    const auto section = run.net.Section("AB");
    const struct {
        Sewage::CSectionList list;
        int result;
    } cases[] = {{{}, 0}, {{nullptr, nullptr}, 0}, {{nullptr, section}, 1}, {{section, nullptr}, 1}};
    std::string log;
    for (const auto& c : cases) {
        run.list = c.list;
        EXPECT_EQ(run.Calculate(), c.result);
        log += c.result == 1 ? "1 " + Msg(2050) + ";" : "";
        EXPECT_EQ(CRun::Log(), log);
    }
    EXPECT_EQ(run.calculator.Calculate({run.net.Section("BC")}, nullptr, 1, nullptr, nullptr), 0);
    EXPECT_FALSE(run.Total("BC").IsNotNull());
    EXPECT_EQ(CFlowCalculator_Total::GetSectionTotal(nullptr, section), 0.0);
    EXPECT_EQ(CFlowCalculator_Total::GetSectionTotal(run.parameters.get(), nullptr), 0.0);
}
