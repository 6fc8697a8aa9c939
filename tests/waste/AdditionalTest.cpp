// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "flow/FormFields.h"
#include "host/network_core/PropertyEditing.h"
#include "tests/support/FormTable.h"
#include "tests/support/TestProject.h"
#include "tests/support/TextNetwork.h"
#include "tests/support/WriteWatch.h"
#include "waste/FlowCalculator_Additional.h"

#include <optional>

using namespace OLMGis;

namespace {

constexpr int Household = 2;

struct CRun {
    CTestProject project;
    CTextNetwork net{"A---B---C"};
    CFlowCalculator_Additional calculator;
    boost::shared_ptr<Sewage::CFlowCalculatorParameters> parameters = calculator.CreateParameters();

    CRun& Type(const char* tag, const char* text) {
        EXPECT_TRUE(Topology::SetPropertyText(*parameters->m_properties->GetPropertyExByTag(tag), text)) << tag;
        return *this;
    }
    int Calculate() { return calculator.Calculate(net.Sections(), parameters.get(), 1, nullptr, nullptr); }

    /// Empty for an absent value.
    std::optional<double> Flow(const char* section, const char* key) const {
        const auto box = net.Get(section, key);
        return box.IsNotNull() ? std::optional(box.AsDouble()) : std::nullopt;
    }
};

} // namespace

TEST(Additional, Form) {
    CRun run;
    const auto& form = *run.parameters->m_properties;
    ExpectForm(form, {{2132,
                       0,
                       {{"FC_ADD_FW", 7, 2132, 0},
                        ChoiceRow("FC_ADD_FW_OPTION", 3564, 2133, 0),
                        {"FC_ADD_FW_COEFF", 0, 2107, 1.0},
                        {"FC_ADD_FW_FACTOR_M", 0, 2135, 0.1, 1.0, 1.0, 1.0},
                        {"FC_ADD_FW_SPECIFIC_FLOW", 0, 3919, 0.01}}},
                      {50050,
                       0,
                       {{"FC_ADD_POINT", 7, 50050, 0},
                        ChoiceRow("FC_ADD_POINT_OPTION", 50050, 2137, 0),
                        {"FC_ADD_POINT_VAL", 0, 9948, 10.0}}},
                      {2139, 0, {{"FC_ADD_ADDITIONAL", 7, 2139, 0}, {"FC_ADD_ADDITIONAL_VAL", 0, 2140, 0.2}}},
                      {2141, 0, {{"FC_ADD_USER", 7, 2141, 0}, {"FC_ADD_USER_VAL", 0, 2142, 0.0}}}});
    EXPECT_EQ(ChoicesOf(form, "FC_ADD_FW_OPTION"),
              (std::vector<std::string>{"0 " + Msg(2133), "1 " + Msg(2134), "2 " + Msg(6922)}));
    EXPECT_EQ(ChoicesOf(form, "FC_ADD_POINT_OPTION"), (std::vector<std::string>{"0 " + Msg(2137), "1 " + Msg(2138)}));
    EXPECT_EQ(
        form.GetPropertyExByTag("FC_ADD_FW_OPTION")->GetDependency(),
        "0:0:FC_ADD_FW_FACTOR_M#FC_ADD_FW_SPECIFIC_FLOW$0:1:FC_ADD_FW_COEFF$1:0:FC_ADD_FW_SPECIFIC_FLOW#FC_ADD_FW_"
        "COEFF$1:1:FC_ADD_FW_FACTOR_M$2:0:FC_ADD_FW_FACTOR_M#FC_ADD_FW_COEFF$2:1:FC_ADD_FW_SPECIFIC_FLOW");
}

TEST(Additional, EachMethodForInfiltrationWaterEnablesItsNumber) {
    CRun run;
    auto& form = *run.parameters->m_properties;
    const char* const numbers[] = {"FC_ADD_FW_COEFF", "FC_ADD_FW_FACTOR_M", "FC_ADD_FW_SPECIFIC_FLOW"};
    for (const std::size_t way : {2U, 1U, 0U, 1U}) {
        run.Type("FC_ADD_FW_OPTION", std::to_string(way).c_str());
        form.ApplyDependencies();
        for (std::size_t i = 0; i < std::size(numbers); ++i)
            EXPECT_EQ(form.GetPropertyExByTag(numbers[i])->IsInForce(), i == way) << numbers[i];
    }
}

TEST(Additional, Presentation) {
    CRun run;
    EXPECT_EQ(run.calculator.GetKey(), "02_ADDITIONAL");
    EXPECT_EQ(run.calculator.GetCalculatorName(), Msg(2130));
    EXPECT_EQ(run.calculator.GetCalculatorGroupName(), Msg(2130));
    EXPECT_EQ(run.calculator.GetCalculatorIcon(), "IDI_CALC_ADDITIONAL");
    EXPECT_EQ(run.calculator.GetCalculatorGroupIcon(), "IDI_CALC_ADDITIONAL");
    EXPECT_EQ(run.calculator.GetParametersDataId(), "FLOW_ADDITIONAL_S");
    const auto& outputs = run.calculator.GetOutputDefinitionsWithKind();
    ASSERT_EQ(outputs.size(), 2U);
    EXPECT_EQ(outputs[0].first->m_id, "FLOW_FOREIGN");
    EXPECT_EQ(outputs[1].first->m_id, "FLOW_POINT");
    EXPECT_EQ(outputs[1].second, 6);
    EXPECT_EQ(run.calculator.GetOutputDefinitions().size(), 2U);
}

TEST(Additional, EachKindByHand) {
    using CWords = std::vector<std::pair<const char*, const char*>>;
    const struct {
        const char* name;
        CWords words;
        const char* key;
        std::optional<double> ab; // 30 m, 2 ha of 50 inh/ha, home 0.003, industry 0.001
        std::optional<double> bc; // 30 m, no catchment, home 0.004, no industry
        int result;
    } cases[] = {
        {"by inhabitants, never counted", {{"FC_ADD_FW", "1"}}, "FLOW_FOREIGN", 0.1, {}, 0},
        {"by waste flows, as the field starts",
         {{"FC_ADD_FW", "1"}, {"FC_ADD_FW_OPTION", "1"}},
         "FLOW_FOREIGN",
         0.0004,
         {},
         1},
        {"by length", {{"FC_ADD_FW", "1"}, {"FC_ADD_FW_OPTION", "2"}}, "FLOW_FOREIGN", 0.0003, 0.0003, 1},
        {"point, added", {{"FC_ADD_POINT", "1"}}, "FLOW_POINT", 0.01, 0.01, 1},
        {"point, subtracted", {{"FC_ADD_POINT", "1"}, {"FC_ADD_POINT_OPTION", "1"}}, "FLOW_POINT", -0.01, -0.01, 1},
        {"by inhabitants, 0 without any", {{"FC_ADD_ADDITIONAL", "1"}}, "FLOW_ADDITIONAL", 0.02, 0.0, 1},
        {"by the user", {{"FC_ADD_USER", "1"}, {"FC_ADD_USER_VAL", "5"}}, "FLOW_USER", 0.005, 0.005, 1},
        {"all off", {}, "FLOW_USER", {}, {}, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        CRun run;
        run.net.AddCatchment("AB", Household, 2.0, 50.0);
        run.net.Set("AB", "FLOW_WASTE_HOME", 0.003);
        run.net.Set("AB", "FLOW_WASTE_IND", 0.001);
        run.net.Set("BC", "FLOW_WASTE_HOME", 0.004);
        for (const auto& [tag, text] : c.words)
            run.Type(tag, text);
        EXPECT_EQ(run.Calculate(), c.result);
        for (const auto& [section, expected] : {std::pair("AB", c.ab), std::pair("BC", c.bc)}) {
            ASSERT_EQ(run.Flow(section, c.key).has_value(), expected.has_value()) << section;
            EXPECT_NEAR(run.Flow(section, c.key).value_or(0.0), expected.value_or(0.0), 1e-16) << section;
            for (const char* key : {"FLOW_FOREIGN", "FLOW_POINT", "FLOW_ADDITIONAL", "FLOW_USER"})
                EXPECT_TRUE(key == std::string(c.key) || !run.Flow(section, key)) << key << " was switched off";
            EXPECT_EQ(run.net.Get(section, "FLOW_ADDITIONAL_S").AsText(), run.parameters->Serialize());
        }
    }
}

TEST(Additional, AStoredMarkOfAbsenceCountsAsAbsent) {
    for (const char* key : {"FLOW_WASTE_HOME", "FLOW_WASTE_IND"}) {
        CRun run;
        run.net.Set("AB", "FLOW_WASTE_HOME", 0.003);
        run.net.Set("AB", "FLOW_WASTE_IND", 0.001);
        run.net.Set("AB", key, -1000000.0);
        run.net.Set("AB", "FLOW_FOREIGN", 7.0);
        run.Type("FC_ADD_FW", "1").Type("FC_ADD_FW_OPTION", "1");
        EXPECT_EQ(run.Calculate(), 0) << key;
        EXPECT_EQ(run.Flow("AB", "FLOW_FOREIGN"), 7.0) << "the flow of an earlier run stays";
    }
    CRun run; // an area without a density: no infiltration water, but a large negative additional flow
    run.net.AddCatchment("AB", Household, 2.0);
    run.Type("FC_ADD_FW", "1").Type("FC_ADD_ADDITIONAL", "1").Calculate();
    EXPECT_FALSE(run.Flow("AB", "FLOW_FOREIGN"));
    EXPECT_NEAR(*run.Flow("AB", "FLOW_ADDITIONAL"), -400.0, 1e-10);
}

TEST(Additional, TheLastCountedWriteDecidesTheResult) {
    const struct {
        const char* key;
        const char* section;
        int result;
    } cases[] = {{"FLOW_USER", "BC", 0},
                 {"FLOW_USER", "AB", 1},
                 {"FLOW_POINT", "BC", 1},
                 {"FLOW_FOREIGN", "BC", 1},
                 {"FLOW_ADDITIONAL_S", "BC", 1}};
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.key) + " of " + c.section);
        CRun run;
        run.net.AddCatchment("BC", Household, 2.0, 50.0);
        for (const char* tag : {"FC_ADD_FW", "FC_ADD_POINT", "FC_ADD_ADDITIONAL", "FC_ADD_USER"})
            run.Type(tag, "1");
        CWriteWatch watch(run.project.Store());
        watch.m_refused = {{c.key, run.net.Section(c.section)->GetRow()}};
        EXPECT_EQ(run.Calculate(), c.result);
        EXPECT_EQ(watch.GetKeys(), "FLOW_POINT FLOW_ADDITIONAL FLOW_USER FLOW_ADDITIONAL_S "
                                   "FLOW_FOREIGN FLOW_POINT FLOW_ADDITIONAL FLOW_USER FLOW_ADDITIONAL_S");
    }
    // A failed write of infiltration water by inhabitants leaves the result of the section before.
    CRun run;
    run.net.AddCatchment("BC", Household, 2.0, 50.0);
    run.Type("FC_ADD_FW", "1").Type("FC_ADD_USER", "1");
    const Sewage::CSectionList sections = {run.net.Section("AB"), nullptr, run.net.Section("BC")};
    CWriteWatch watch(run.project.Store());
    watch.m_refused = {{"FLOW_FOREIGN", run.net.Section("BC")->GetRow()}};
    EXPECT_EQ(run.calculator.Calculate(sections, run.parameters.get(), 1, nullptr, nullptr), 1);
}

TEST(Additional, NumbersThatTheFormLacksAreOne) {
    const auto form = Flow::MakeParameters();
    const auto category = Flow::AddCategory(*form->m_properties, 0, 2132);
    for (const char* tag : {"FC_ADD_FW", "FC_ADD_POINT", "FC_ADD_ADDITIONAL", "FC_ADD_USER"})
        Flow::AddCheckBox(category, tag, 2132)->SetValue(1);
    CRun run;
    run.net.AddCatchment("AB", Household, 2.0, 50.0);
    EXPECT_EQ(run.calculator.Calculate(run.net.Sections(), form.get(), 1, nullptr, nullptr), 1);
    EXPECT_EQ(run.Flow("AB", "FLOW_FOREIGN"), 0.1);
    EXPECT_EQ(run.Flow("AB", "FLOW_POINT"), 0.001);
    EXPECT_EQ(run.Flow("AB", "FLOW_ADDITIONAL"), 0.1);
    EXPECT_EQ(run.Flow("AB", "FLOW_USER"), 0.001);
    // A method that the form does not offer stores nothing.
    Flow::AddProperty(category, "FC_ADD_FW_OPTION", Topology::enmPropertyEditorType::Edit, 1, 3);
    run.net.Set("AB", "FLOW_FOREIGN", 7.0);
    run.calculator.Calculate(run.net.Sections(), form.get(), 1, nullptr, nullptr);
    EXPECT_EQ(run.Flow("AB", "FLOW_FOREIGN"), 7.0);
}

TEST(Additional, NothingToDo) {
    CRun run;
    run.Type("FC_ADD_USER", "1");
    EXPECT_EQ(run.calculator.Calculate({}, run.parameters.get(), 1, nullptr, nullptr), 0);
    EXPECT_EQ(run.calculator.Calculate({nullptr}, run.parameters.get(), 1, nullptr, nullptr), 0);
    EXPECT_EQ(run.calculator.Calculate(run.net.Sections(), nullptr, 1, nullptr, nullptr), 0);
    EXPECT_FALSE(run.net.Get("AB", "FLOW_ADDITIONAL_S").IsNotNull());
}
