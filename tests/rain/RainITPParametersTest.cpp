// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/RainITPParameters.h"

#include "host/network_core/CustomDialogRegistry.h"
#include "host/workspace_core/WsManager.h"
#include "rain/editions/RORainCoefficients.h"
#include "tests/rain/RainRun.h"

#include <filesystem>
#include <fstream>
#include <unistd.h>

using namespace OLMGis;
using Data::CDataBox;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

/// A curve file of a test, removed at its end.
class CCurveFile {
public:
    explicit CCurveFile(const std::string& text)
        : m_path(
              (std::filesystem::path(testing::TempDir()) / ("drenova-curves-" + std::to_string(getpid()))).string()) {
        std::ofstream(m_path, std::ios::binary) << text;
    }
    ~CCurveFile() { std::filesystem::remove(m_path); }
    CCurveFile(const CCurveFile&) = delete;
    CCurveFile& operator=(const CCurveFile&) = delete;

    const std::string& Path() const { return m_path; }

private:
    std::string m_path;
};

std::string FilledFormat(const char* format, const char* tag) {
    return Utility::CUtility::Format(format, tag, tag, tag);
}

CFormRow Choice(const char* tag, int message, const CDataBox& text, int hidden) {
    return {tag, 1, message, text, hidden, "", 0};
}

} // namespace

TEST(RainITPParameters, TheFormIsAsTheTableSays) {
    const CTestProject project;
    CFlowCalculator_RainITP calculator;
    const auto parameters = calculator.CreateParameters();
    const auto& form = *parameters->m_properties;
    const CDataBox edit(Msg(7221));
    ExpectForm(form, {{2482,
                       0,
                       {Choice("RAINFALL_MODE", 2482, Msg(2481), 2481),
                        {"FILE_PATH", 4, 2285, ""},
                        {"FREQUENCY", 1, 2290, "", 0.0, "", 0.0},
                        {"RAIN_INTESITY", 0, 2483, 100.0},
                        {"FREQUENCY_N", 0, 2485, 1.0},
                        {"TURKISH", 8, 9455, edit, "", edit, ""}}},
                      {2286,
                       0,
                       {Choice("PARTIAL_AREA_EFFECT", 11264, Msg(11265), 0),
                        {"IGNORE_CARRIER_PIPES", 7, 11092, 0},
                        Choice("USE_EXISTING_PIPE", 11262, Msg(11263), 0),
                        {"SAVE_PIPE", 7, 11048, 0},
                        {"PRECISION", 0, 2288, 0.5},
                        {"WATER_VISCOSITY", 0, 2289, 0.000001},
                        {"PIPE_GROUP", 22, 2291, ""},
                        Choice("STORM_CAD", 11084, Msg(11090), 11090),
                        Choice("BRANCHING_FLOW_TIME", 11087, Msg(11088), 11088),
                        Choice("CALC_STANDARD", 6129, "STANDARD", 0),
                        {"RO", 8, 6130, edit, 0.0, edit, 0.0}}},
                      {2287, 0, {{"PIPE_FILL", 0, 2294, 100}, {"MINIMAL_DIAMETAR", 0, 2295, 0}}}});

    const auto choice = [](int message) { return std::to_string(message) + " " + Msg(message); };
    EXPECT_THAT(ChoicesOf(form, "RAINFALL_MODE"), ElementsAre(choice(2481), choice(2484), choice(9455)));
    EXPECT_THAT(ChoicesOf(form, "PARTIAL_AREA_EFFECT"),
                ElementsAre("0 " + Msg(11265), "1 " + Msg(11266), "2 " + Msg(11267)));
    EXPECT_THAT(ChoicesOf(form, "USE_EXISTING_PIPE"),
                ElementsAre("0 " + Msg(11263), "1 " + Msg(11086), "2 " + Msg(11261)));
    EXPECT_THAT(ChoicesOf(form, "STORM_CAD"), ElementsAre(choice(11090), choice(11091)));
    EXPECT_THAT(ChoicesOf(form, "BRANCHING_FLOW_TIME"), ElementsAre(choice(11088), choice(11089)));
    EXPECT_THAT(ChoicesOf(form, "CALC_STANDARD"), ElementsAre("0 STANDARD", "1 BLG", "2 RO"));
    EXPECT_THAT(ChoicesOf(form, "FREQUENCY"), IsEmpty());

    EXPECT_EQ(form.GetPropertyExByTag("RAINFALL_MODE")->GetDependency(),
              FilledFormat("0:1:%s$1:0:%s$2:0:%s$", "FILE_PATH") + FilledFormat("0:1:%s$1:0:%s$2:0:%s$", "FREQUENCY") +
                  FilledFormat("0:0:%s$1:1:%s$2:0:%s$", "RAIN_INTESITY") +
                  FilledFormat("0:0:%s$1:1:%s$2:0:%s$", "FREQUENCY_N") +
                  FilledFormat("0:0:%s$1:0:%s$2:1:%s$", "TURKISH") +
                  FilledFormat("0:1:%s$1:1:%s$2:0:%s", "IGNORE_CARRIER_PIPES"));
    EXPECT_EQ(form.GetPropertyExByTag("CALC_STANDARD")->GetDependency(), "0:0:RO$1:0:RO$2:1:RO");
    const auto group = form.GetPropertyExByTag("PIPE_GROUP");
    EXPECT_EQ(group->GetCIPicker_CatalogId(), "PIPE");
    EXPECT_TRUE(group->GetCIPicker_GroupsOnly() == 1 && group->GetCIPicker_Single() == 1 &&
                group->GetCIPicker_UseDisk() == 1);
    for (const auto& [tag, id] : {std::pair("TURKISH", "CUSTOM_DLG_IDP_TURKISH"), {"RO", "CUSTOM_DLG_IDP_RO"}}) {
        const auto property = form.GetPropertyExByTag(tag);
        EXPECT_EQ(property->GetCustomCtrlId(), id);
        const auto dialog = Topology::CCustomDialogRegistry::Instance()->GetDialog(id);
        ASSERT_TRUE(dialog);
        EXPECT_EQ(dialog->ShowDialog(property.get(), parameters->m_properties.get()), 1) << "without a window";
        EXPECT_EQ(property->GetHiddenValue().AsText(), std::string_view(tag) == "RO" ? "0" : "");
    }
}

TEST(RainITPParameters, TheCalculatorPresentsItself) {
    const CTestProject project;
    CFlowCalculator_RainITP calculator;
    EXPECT_EQ(calculator.GetKey(), "001_RAIN_ITP");
    EXPECT_EQ(calculator.GetCalculatorName(), Msg(11164));
    EXPECT_EQ(calculator.GetCalculatorGroupName(), Msg(11166));
    EXPECT_EQ(calculator.GetCalculatorIconOverride(), "IDI_CALC_RAINIDF");
    EXPECT_EQ(calculator.GetCalculatorIcon(), "IDI_CALC_ADDITIONAL");
    EXPECT_EQ(calculator.GetCalculatorGroupIcon(), "IDI_CALC_RAIN");
    EXPECT_EQ(calculator.GetParametersDataId(), "FLOW_ITP_S");
    EXPECT_EQ(calculator.IsWholeNetworkCalculator(), 1);
    std::string ids;
    for (const auto* definition : calculator.GetOutputDefinitions())
        ids += definition->m_id + " ";
    EXPECT_EQ(ids, "FLOW_IDF_AREA_CORRECTED_SECT FLOW_IDF_AREA_CORRECTED_TOTAL FLOW_IDF_INTENSITY FLOW_IDF_CONC_TIME "
                   "FLOW_IDF_MJ_TIME FLOW_IDF_TIME FLOW_RAIN_IDF ");
    ASSERT_THAT(calculator.GetOutputDefinitionsWithKind(), SizeIs(8));
    EXPECT_EQ(calculator.GetOutputDefinitionsWithKind().back().first->m_id, "PIPE_MARK");
    for (const auto& [definition, kind] : calculator.GetOutputDefinitionsWithKind())
        EXPECT_EQ(kind, 6);
}

TEST(RainITPParameters, WhatIsMissingIsNamedInTheOrderOfReading) {
    CRainRun run;
    run.Type("RAINFALL_MODE", "2481").Type("FILE_PATH", "no/such/file").Type("PIPE_GROUP", "");
    run.Type("PIPE_FILL", "120").Type("MINIMAL_DIAMETAR", "-5");
    CRainITPParameters params;
    EXPECT_EQ(params.ReadParameters(run.parameters.get(), 1), 0);
    const auto name = [&](const char* tag) { return run.parameters->m_properties->GetPropertyExByTag(tag)->GetName(); };
    EXPECT_THAT(params.m_errors, ElementsAre(name("FILE_PATH"), name("FREQUENCY"), Msg(2291), name("PIPE_FILL"),
                                             name("MINIMAL_DIAMETAR")));
    EXPECT_EQ(params.BuildParameterErrorText(), Msg(11047) + "\n   - " + name("FILE_PATH") + "\n   - " +
                                                    name("FREQUENCY") + "\n   - " + Msg(2291) + "\n   - " +
                                                    name("PIPE_FILL") + "\n   - " + name("MINIMAL_DIAMETAR"));
    EXPECT_EQ(params.m_pipeFill, 100.0);
    EXPECT_EQ(params.m_minimalDiameter, 0.0);
    EXPECT_EQ(run.Calculate(), 0);
    EXPECT_THAT(run.host.m_alerts, ElementsAre(params.BuildParameterErrorText()));
    EXPECT_THAT(Workspace::CWsManager::Instance()->GetLog(), SizeIs(1)) << "the missing file, logged once";

    // A group without pipes counts as none; a failure below zero clamps the other way; other modes need no file.
    CRainRun::AddPipes("Empty", {}, 1.0);
    run.Type("RAINFALL_MODE", "2484")
        .Type("PIPE_GROUP", "Empty")
        .Type("PIPE_FILL", "-1")
        .Type("MINIMAL_DIAMETAR", "7.9");
    EXPECT_EQ(params.ReadParameters(run.parameters.get(), 1), 0);
    EXPECT_THAT(params.m_errors, ElementsAre(Msg(2291), name("PIPE_FILL")));
    EXPECT_EQ(params.m_pipeFill, 0.0);
    EXPECT_EQ(params.m_minimalDiameter, 7.0) << "read as a whole number";
    run.Type("PIPE_GROUP", "Test").Type("PIPE_FILL", "70");
    EXPECT_EQ(params.ReadParameters(run.parameters.get(), 1), 1);
    EXPECT_EQ(params.m_pipeTypeId, "type-Test");
    EXPECT_EQ(params.m_pipeGroup->GetName(), "Test");
}

TEST(RainITPParameters, InvalidTextsAreLogged) {
    CRainRun run;
    run.Type("RAINFALL_MODE", "9455").Type("CALC_STANDARD", "2").Type("TURKISH", "0;10:1700:8").Type("RO", "1;2;3");
    EXPECT_EQ(run.Calculate(), 1);
    EXPECT_THAT(Workspace::CWsManager::Instance()->GetLog(), SizeIs(2));
    run.Type("TURKISH", "0;10:1700:8:0.72").Type("RO", "");
    EXPECT_EQ(run.Calculate(), 1);
    EXPECT_THAT(Workspace::CWsManager::Instance()->GetLog(), SizeIs(2)) << "nothing to report";
}

TEST(RainITPParameters, ANoEndsTheReadingOfASearch) {
    CRainRun run;
    run.Type("PARTIAL_AREA_EFFECT", "2").Type("PIPE_GROUP", "").Type("PRECISION", "3");
    CRainITPParameters params;
    EXPECT_EQ(params.ReadParameters(run.parameters.get(), 1), 0);
    EXPECT_THAT(run.host.m_questions, ElementsAre(Msg(11097)));
    EXPECT_THAT(params.m_errors, IsEmpty());
    EXPECT_EQ(params.m_variationSearch, 1);
    EXPECT_EQ(params.m_precision, 0.5) << "the rest stays unread";
    EXPECT_EQ(params.ReadParameters(run.parameters.get(), 0), 0);
    EXPECT_THAT(run.host.m_questions, SizeIs(1)) << "only an interactive reading asks";
    EXPECT_THAT(params.m_errors, ElementsAre(Msg(2291)));
    EXPECT_EQ(params.m_precision, 3.0);
    EXPECT_EQ(run.Calculate(), 0);
    EXPECT_THAT(run.host.m_alerts, IsEmpty()) << "a mere No is no complaint";
}

TEST(RainITPParameters, FrequenciesFollowTheFile) {
    CRainRun run;
    run.Type("RAINFALL_MODE", "2481");
    const auto& form = *run.parameters->m_properties;
    const auto frequency = form.GetPropertyExByTag("FREQUENCY");
    {
        const CCurveFile file("#5\n5 100\n9 90\n#0.5\n5 200\n9 90\n#2\n5 300\n9 90\n");
        run.Type("FILE_PATH", file.Path());
        EXPECT_THAT(ChoicesOf(form, "FREQUENCY"), ElementsAre("0.5 0.50", "2 2.00", "5 5.00"));
        EXPECT_EQ(frequency->GetValue(), CDataBox("0.50"));
        EXPECT_EQ(frequency->GetHiddenValue(), CDataBox(0.5));
    }
    {
        const CCurveFile file("#2\n5 300\n9 90\n");
        run.Type("FILE_PATH", file.Path());
        EXPECT_THAT(ChoicesOf(form, "FREQUENCY"), ElementsAre("2 2.00"));
        EXPECT_EQ(frequency->GetValue(), CDataBox("")) << "a sole curve is not chosen beforehand";
        EXPECT_EQ(frequency->GetHiddenValue(), CDataBox(0.0));
    }
    run.Type("FILE_PATH", "no/such/file");
    EXPECT_THAT(ChoicesOf(form, "FREQUENCY"), IsEmpty());
    const CCurveFile partly("#2\n5 300\n9 90\n#2\n5 4\n#3\n5 300\n9 90\n\n");
    run.Type("FILE_PATH", partly.Path());
    ASSERT_THAT(Workspace::CWsManager::Instance()->GetLog(), SizeIs(3)) << "the missing file, a repetition, a bad line";
    EXPECT_THAT(Workspace::CWsManager::Instance()->GetLog().back().m_text, HasSubstr(partly.Path() + ", line 9: "));
}

TEST(RainITPParameters, RomanianCoefficientsReadAndWriteAsText) {
    struct CRow {
        const char* m_text;
        int m_result;
        const char* m_formatted;
    };
    for (const CRow& row : {CRow{"1;0.9;0.7;0.6", 1, "1;0.900000;0.700000;0.600000"},
                            {"1;0.9;0.7", 0, "0;1.000000;0.800000;0.900000"},
                            {"1;;0.9;0.7;0.6;", 1, "1;0.900000;0.700000;0.600000"},
                            {"0", 0, "0;1.000000;0.800000;0.900000"},
                            {"99999999999;1;1;1", 1, "2147483647;1.000000;1.000000;1.000000"},
                            {"1;2;3;4;5", 0, "0;1.000000;0.800000;0.900000"},
                            {"x; 2a;.5;-1e-1", 1, "0;2.000000;0.500000;-0.100000"}}) {
        CRORainCoefficients coefficients;
        EXPECT_EQ(coefficients.ParseValue(row.m_text), row.m_result) << row.m_text;
        EXPECT_EQ(coefficients.FormatValue(), row.m_formatted) << row.m_text;
    }
    CRORainCoefficients others{.m_areaKind = 1};
    EXPECT_EQ(others.GetCoefficient(40.0), 0.8) << "exactly 40 min is short";
    EXPECT_EQ(others.GetCoefficient(40.1), 0.9);
    EXPECT_EQ(CRORainCoefficients().GetCoefficient(99.0), 1.0);
}
