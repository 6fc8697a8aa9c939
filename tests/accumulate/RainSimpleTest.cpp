// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "accumulate/FlowCalculator_RainSimple.h"
#include "flow/FormFields.h"
#include "host/network_core/PropertyEditing.h"
#include "tests/support/FormTable.h"
#include "tests/support/ReferenceTable.h"
#include "tests/support/TestProject.h"
#include "tests/support/TextNetwork.h"
#include "tests/support/WriteWatch.h"

#include <cmath>
#include <limits>

using namespace OLMGis;
using Data::CDataBox;

namespace {

constexpr int RainKind = 1;

struct CRun {
    CTestProject project;
    CTextNetwork net{"A-B-C"};
    CFlowCalculator_RainSimple calculator;
    boost::shared_ptr<Sewage::CFlowCalculatorParameters> parameters = calculator.CreateParameters();

    CRun& Type(const char* tag, const char* text) {
        EXPECT_TRUE(Topology::SetPropertyText(*parameters->m_properties->GetPropertyExByTag(tag), text)) << tag;
        return *this;
    }
    int Calculate() { return calculator.Calculate(net.Sections(), parameters.get(), 1, nullptr, nullptr); }
    double Flow(const char* section) const { return net.Get(section, "FLOW_RAIN").AsDouble(); }
};

} // namespace

TEST(RainSimple, FormAndPresentation) {
    CRun run;
    const auto& form = *run.parameters->m_properties;
    ExpectForm(form, {{3459, 0, {ChoiceRow("CALC_TYPE", 3565, 2625, 0), {"VALUE_INTENSITY", 0, 2128, 120.0}}}}, 1);
    EXPECT_EQ(ChoicesOf(form, "CALC_TYPE"), (std::vector<std::string>{"0 " + Msg(2625), "1 " + Msg(2627)}));

    EXPECT_EQ(run.calculator.GetKey(), "00_RAIN_SIMPLE");
    EXPECT_EQ(run.calculator.GetCalculatorName(), Msg(11163));
    EXPECT_EQ(run.calculator.GetCalculatorGroupName(), Msg(11166));
    EXPECT_EQ(run.calculator.GetCalculatorIcon(), "IDI_CALC_RAIN");
    EXPECT_EQ(run.calculator.GetCalculatorGroupIcon(), "IDI_CALC_RAIN");
    EXPECT_EQ(run.calculator.GetParametersDataId(), "FLOW_RAIN_S");
    EXPECT_EQ(run.calculator.IsWholeNetworkCalculator(), 0);
    const auto& outputs = run.calculator.GetOutputDefinitionsWithKind();
    ASSERT_EQ(outputs.size(), 2U);
    EXPECT_EQ(outputs[0].first->m_id, "FLOW_RAIN");
    EXPECT_EQ(outputs[1].first->m_id, "FLOW_IDF_INTENSITY");
    EXPECT_EQ(outputs[0].second, 6);
}

TEST(RainSimple, FlowsByHand) {
    const CDataBox no;
    const double infinity = std::numeric_limits<double>::infinity();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const struct {
        const char* type;
        CDataBox first, second; // FLOW_COEFRET and FLOW_COEFRED, or FLOW_ATV_N and FLOW_ATV_T
        double area, flow;
    } cases[] = {
        {"0", 0.8, 0.9, 2.0, 0.1728},
        {"0", no, no, 2.0, 0.24},
        {"0", -1000000.0, 0.5, 2.0, 0.12}, // the mark of an absent value
        {"0", 0.0, 0.9, 2.0, 0.0},         // a value
        {"0", 0.8, 0.9, 0.0, 0.0},
        {"0", 0.8, 0.9, -1.0, 0.0}, // no area, no flow
        {"1", 1.0, 15.0, 2.0, 0.240008},
        {"1", 2.0, 30.0, 2.0, 0.110491469},
        {"1", no, no, 2.0, 0.24 * 2.40008},
        {"1", -1000000.0, -1000000.0, 2.0, 0.24 * 2.40008},
        {"1", 100.0, 15.0, 2.0, 0.24 * (1.0 / std::sqrt(10.0) - 0.3684) * 38.0 / 24.0}, // negative
        {"1", 0.0, 15.0, 2.0, infinity},
        {"1", 1.0, -9.0, 2.0, infinity},
        {"1", -1.0, 15.0, 2.0, nan},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.type) + ": " + c.first.AsText() + ", " + c.second.AsText());
        CRun run;
        const bool isByTime = c.type[0] == '1';
        run.net.Set("AB", isByTime ? "FLOW_ATV_N" : "FLOW_COEFRET", c.first);
        run.net.Set("AB", isByTime ? "FLOW_ATV_T" : "FLOW_COEFRED", c.second);
        run.net.Set("AB", isByTime ? "FLOW_COEFRET" : "FLOW_ATV_N", 7.0); // of the other method: no part
        run.net.AddCatchment("AB", RainKind, c.area);
        EXPECT_EQ(run.Type("CALC_TYPE", c.type).Calculate(), 0);
        const double flow = run.Flow("AB");
        const bool isSame = flow == c.flow || (std::isnan(flow) && std::isnan(c.flow));
        EXPECT_TRUE(isSame || std::abs(flow - c.flow) < 1e-9) << flow << ", by hand " << c.flow; // nine decimals
    }
}

TEST(RainSimple, TimeCoefficientsOfTheReferenceTable) {
    CRun run;
    run.net.AddCatchment("AB", RainKind, 1.0);
    run.Type("CALC_TYPE", "1").Type("VALUE_INTENSITY", "1000");
    for (const auto& row : ReadCases("rain/reinhold.txt")) {
        run.net.Set("AB", "FLOW_ATV_T", row["T_min"]);
        run.net.Set("AB", "FLOW_ATV_N", row["n"]);
        run.Calculate();
        EXPECT_NEAR(run.Flow("AB"), row["phi_0.3684"], 1e-9) << row.Name();
    }
}

TEST(RainSimple, StoresThreeValuesOnEachSectionWhateverFails) {
    CRun run;
    run.net.AddCatchment("BC", RainKind, 2.0, {}, 0.5); // runoff coefficient: half of it counts
    CWriteWatch watch(run.project.Store());
    watch.m_refused = {{"FLOW_RAIN", run.net.Section("AB")->GetRow()}};
    EXPECT_EQ(run.Calculate(), 0);
    EXPECT_EQ(watch.GetKeys(), "FLOW_IDF_INTENSITY FLOW_RAIN FLOW_RAIN_S FLOW_IDF_INTENSITY FLOW_RAIN FLOW_RAIN_S");
    EXPECT_NEAR(run.Flow("BC"), 0.12, 1e-15);
    for (const char* section : {"AB", "BC"}) {
        EXPECT_EQ(run.net.Get(section, "FLOW_IDF_INTENSITY").AsDouble(), 120.0);
        EXPECT_EQ(run.net.Get(section, "FLOW_RAIN_S").AsText(), run.parameters->Serialize());
    }
}

TEST(RainSimple, NothingToDoAndAFormThatLacksItsFields) {
    CRun run;
    EXPECT_EQ(run.calculator.Calculate({}, run.parameters.get(), 1, nullptr, nullptr), 0);
    EXPECT_EQ(run.calculator.Calculate(run.net.Sections(), nullptr, 1, nullptr, nullptr), 0);
    EXPECT_FALSE(run.net.Get("AB", "FLOW_RAIN_S").IsNotNull());
    run.net.AddCatchment("AB", RainKind, 2.0);
    const auto empty = Flow::MakeParameters();
    run.calculator.Calculate(run.net.Sections(), empty.get(), 1, nullptr, nullptr);
    EXPECT_EQ(run.net.Get("AB", "FLOW_IDF_INTENSITY").AsDouble(), 0.0);
    EXPECT_EQ(run.Flow("AB"), 0.0);
    // The fields' first values are 120 and the coefficients.
    run.Calculate();
    EXPECT_EQ(run.Flow("AB"), 0.24);
}
