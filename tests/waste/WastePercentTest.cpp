// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/gis_core/ModuleConfiguration.h"
#include "host/network_core/PropertyEditing.h"
#include "tests/support/ReferenceTable.h"
#include "tests/support/TestProject.h"
#include "tests/support/TextNetwork.h"
#include "waste/FlowCalculator_WastePercent.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace OLMGis;
using Sewage::CReport;
using Sewage::CSectionList;

namespace {

struct CRun {
    CTestProject project;
    CTextNetwork net{"A---B---C"};
    CFlowCalculator_WastePercent calculator;
    boost::shared_ptr<Sewage::CFlowCalculatorParameters> parameters = calculator.CreateParameters();
    CReport report;

    int Calculate(int write) { return calculator.Calculate(net.Sections(), parameters.get(), write, &report, nullptr); }
    void Type(const char* tag, const char* text) {
        ASSERT_TRUE(Topology::SetPropertyText(*parameters->m_properties->GetPropertyExByTag(tag), text));
    }
    double Flow(const char* section) const { return net.Get(section, "FLOW_WASTE_PER").AsDouble(); }
};

} // namespace

TEST(WastePercent, DefaultForecastByHand) {
    CRun run;
    EXPECT_EQ(run.Calculate(1), 1);
    // 5000 · 1.02^30 = 9056.8079; · 150 l/d = 1358521.18; · 1.5 · 1.5 / 24 = 127361.361 l/h; / 3600 = 35.3782 l/s.
    ASSERT_EQ(run.report.size(), 16U);
    const struct {
        std::size_t row;
        const char* value;
    } expected[] = {{0, "150.0000"}, {1, "5000.0000"}, {6, ""},        {7, "9056.8079"},
                    {12, "1.0000"},  {13, "60.0000"},  {14, "60.0000"}};
    for (const auto& [row, value] : expected)
        EXPECT_EQ(run.report[row].second, value) << row;
    EXPECT_EQ(run.report[6].first, "======================");
    const double peak = 5000.0 * std::pow(1.02, 30.0) * 150.0 * 1.5 * 1.5 / 24.0 / 3600.0 / 1000.0;
    EXPECT_NEAR(run.Flow("AB") + run.Flow("BC"), peak, 1e-15) << "the shares sum to the peak flow";
    EXPECT_NEAR(run.net.Get("AB", "SPECIFIC_FLOW").AsDouble(), peak / 60.0, 1e-15);
}

TEST(WastePercent, APreviewStoresTheParametersAndNoFlow) {
    CRun run;
    EXPECT_EQ(run.Calculate(0), 0);
    EXPECT_EQ(run.report.size(), 16U);
    EXPECT_EQ(run.net.Get("AB", "FLOW_WASTE_PER_S").AsText(), run.parameters->Serialize());
    EXPECT_FALSE(run.net.Get("AB", "FLOW_WASTE_PER").IsNotNull());
    EXPECT_FALSE(run.net.Get("AB", "SPECIFIC_FLOW").IsNotNull());
}

TEST(WastePercent, DensityCoefficientWeighsTheShares) {
    CRun run;
    run.net.Set("AB", "FLOW_COEFDEN", 2.0);
    run.Calculate(1);
    EXPECT_NEAR(run.Flow("AB"), 2.0 * run.Flow("BC"), 1e-15);
    EXPECT_EQ(run.report[13].second, "60.0000");
    EXPECT_EQ(run.report[14].second, "90.0000");
    run.net.Set("AB", "FLOW_COEFDEN", 0.0);
    run.Calculate(1);
    EXPECT_EQ(run.Flow("AB"), 0.0) << "a stored 0 is a value";
}

TEST(WastePercent, NothingToDistributeOver) {
    CRun run;
    run.net.Set("AB", "length", 0.0);
    run.net.Set("BC", "length", 0.0);
    EXPECT_EQ(run.Calculate(1), 1);
    EXPECT_EQ(run.Flow("AB"), 0.0);
    EXPECT_EQ(run.net.Get("BC", "SPECIFIC_FLOW").AsDouble(), 0.0);
    run.report.clear();
    EXPECT_EQ(run.calculator.Calculate({nullptr, nullptr}, run.parameters.get(), 1, &run.report, nullptr), 0);
    EXPECT_EQ(run.report.size(), 16U) << "there is a report in any case";
    EXPECT_EQ(run.calculator.Calculate({}, run.parameters.get(), 1, nullptr, nullptr), 0);
    CRun untouched;
    EXPECT_EQ(untouched.calculator.Calculate(untouched.net.Sections(), nullptr, 1, &run.report, nullptr), 0);
    EXPECT_FALSE(untouched.net.Get("AB", "FLOW_WASTE_PER_S").IsNotNull());
}

TEST(WastePercent, TheRomanianEditionCorrectsAndOnlyThere) {
    CRun standard;
    standard.Calculate(1);
    const double plain = standard.Flow("AB");
    EXPECT_FALSE(standard.parameters->m_properties->GetPropertyExByTag("RO_CS"));

    CRun romanian;
    Utility::CModuleConfiguration::Instance()->SetEdition("RO");
    const auto roParameters = romanian.calculator.CreateParameters();
    romanian.calculator.Calculate(romanian.net.Sections(), roParameters.get(), 1, nullptr, nullptr);
    EXPECT_NEAR(romanian.Flow("AB"), plain * 1.1 * 1.1 * 0.8, 1e-15);
    // A form of another edition has no corrections: they fall back to 1.
    romanian.calculator.Calculate(romanian.net.Sections(), standard.parameters.get(), 1, nullptr, nullptr);
    EXPECT_NEAR(romanian.Flow("AB"), plain, 1e-15);
    Utility::CModuleConfiguration::Instance()->SetEdition("RO ");
    romanian.calculator.Calculate(romanian.net.Sections(), roParameters.get(), 1, nullptr, nullptr);
    EXPECT_NEAR(romanian.Flow("AB"), plain, 1e-15) << "the whole code is compared";
}

TEST(WastePercent, ParameterSetsAreIndependent) {
    CRun run;
    const auto second = run.calculator.CreateParameters();
    run.Type("BROJ_STANOVNIKA", "7");
    EXPECT_EQ(second->m_properties->GetDblProperty("BROJ_STANOVNIKA", 0, 1), 5000.0);
    EXPECT_EQ(run.calculator.GetKey(), "01_WASTE_PERCENT");
    ASSERT_EQ(run.calculator.GetOutputDefinitions().size(), 2U);
    EXPECT_EQ(run.calculator.GetOutputDefinitions()[0]->m_id, "SPECIFIC_FLOW");
    EXPECT_EQ(run.calculator.GetOutputDefinitionsWithKind()[1].second, 6);
}

TEST(WastePercent, FollowsTheReferenceChainFromPopulationToPeakFlow) {
    const struct {
        const char* tag;
        const char* column;
    } inputs[] = {{"BROJ_STANOVNIKA", "inhabitants"}, {"PRIRAST", "growth_%"}, {"PERIOD", "years"},
                  {"POTROSNJA", "l/(inh.d)"},         {"COEFF_VAR_D", "kd"},   {"COEFF_VAR_H", "kh"}};
    const char* report[] = {"population", "day_average_l", "hour_average_l", "day_maximum_l", "hour_maximum_l"};
    for (const auto& row : ReadCases("population/peak_flow.txt")) {
        SCOPED_TRACE(row.Name());
        CRun run;
        for (const auto& input : inputs)
            run.Type(input.tag, row.Text(input.column).c_str());
        run.Calculate(1);
        for (std::size_t i = 0; i < std::size(report); ++i) // the report shows four decimals
            EXPECT_NEAR(Utility::CUtility::ToDouble(run.report[7 + i].second), row[report[i]], 6e-5) << report[i];
        EXPECT_NEAR(run.Flow("AB") + run.Flow("BC"), row["peak_flow_l/s"] / 1000.0, 1e-12); // ten decimals of l/s
    }
}
