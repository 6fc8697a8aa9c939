// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/sewage_core/FlowDirection.h"
#include "rain/curves/FormulaRainfall.h"
#include "tests/rain/RainRun.h"
#include "tests/support/ReferenceTable.h"

using namespace OLMGis;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// One run of the reference chains.
struct CReferenceChain {
    explicit CReferenceChain(std::vector<CCaseRow> rows) : m_rows(std::move(rows)) {
        const bool isFormula = m_rows.front().Text("rain") == "formula";
        m_run.Type("STORM_CAD", m_rows.front().Text("rule")).Type("PIPE_FILL", "70").Type("MINIMAL_DIAMETAR", "300");
        if (isFormula) {
            m_run.Type("RAIN_INTESITY", "120");
        } else {
            m_run.Type("RAINFALL_MODE", "2481");
            m_run.Type("FILE_PATH", CasePath("rain/graz-curves.txt")).Type("FREQUENCY", "0.5");
        }
        double above = 0.0;
        for (std::size_t i = 0; i < m_rows.size(); ++i) {
            const std::string section{static_cast<char>('A' + i), static_cast<char>('B' + i)};
            m_run.net.Set(section, "length", m_rows[i]["length_m"]);
            m_run.net.Set(section, "SECTION_SLOPE", m_rows[i]["slope_permille"]);
            const double area = m_rows[i]["area_ha"]; // of the section and all above
            if (area != above)
                m_run.Rain(section.c_str(), area - above);
            above = area;
        }
    }

    void Check() {
        ASSERT_EQ(m_run.CalculateTraced("FG"), 1);
        const auto* const table = m_run.trace.FindTable("rain_passes");
        ASSERT_NE(table, nullptr);
        std::size_t next = 0;
        for (std::size_t i = 0; i < m_rows.size(); ++i) {
            const CCaseRow& row = m_rows[i];
            SCOPED_TRACE(row.Name());
            next += static_cast<std::size_t>(row["passes"]);
            ASSERT_LE(next, table->m_rows.size());
            const auto& last = table->m_rows[next - 1];
            EXPECT_EQ(last.m_name, (std::string{static_cast<char>('A' + i), static_cast<char>('B' + i)}));
            const auto value = [&](const char* column) { return m_run.TraceValue(*table, last, column); };
            EXPECT_EQ(value("pass"), row["passes"]);
            const auto near = [&](double found, const char* column) {
                EXPECT_NEAR(found, row[column], 1e-6 * row[column]) << column;
            };
            near(value("intensity"), "intensity");
            near(1000.0 * value("flow"), "flow_l/s");
            near(std::max(value("full_diameter"), 300.0), "full_diameter_mm");
            near(value("inner_diameter"), "diameter_mm");
            near(value("filling"), "filling_%");
            near(value("velocity"), "velocity_m/s");
            near(value("flow_time"), "flow_time_min");
            near(value("upstream_time"), "path_time_min");
        }
        EXPECT_EQ(next, table->m_rows.size());
    }

private:
    std::vector<CCaseRow> m_rows;
    CRainRun m_run{"A-B-C-D-E-F-G"};
};

} // namespace

TEST(RainIteration, ChainsMatchTheReferenceValuesOfTheirPasses) {
    const auto rows = ReadCases("rain/chains.txt");
    for (auto first = rows.begin(); first != rows.end(); first += 6)
        CReferenceChain({first, first + 6}).Check();
}

TEST(RainIteration, TheFormulaMatchesTheReferenceTable) {
    for (const auto& row : ReadCases("rain/reinhold.txt"))
        EXPECT_NEAR(Rain::CFormulaRainfall(100.0, row["n"]).GetIntensity(row["T_min"], 1.0), 100.0 * row["phi_0.369"],
                    1e-6)
            << row.Name();
    EXPECT_NEAR(Rain::CFormulaRainfall().GetIntensity(15.0, 1.0), 99.9083, 1e-4);
    EXPECT_EQ(Rain::CRunSettings().GetIntensity(15.0, 1.0), 0.0) << "an unknown mode";
}

/// Every figure of a finished run follows from the others by another road.
TEST(RainIteration, FinishedRunsAreConsistent) {
    CRainRun run("A---B-----C--D----E\nF----C\nG--H-D\nI---H");
    const std::map<const char*, double> areas{{"AB", 0.4}, {"FC", 1.1}, {"GH", 0.2}, {"IH", 2.5}, {"CD", 0.3}};
    for (const auto& [section, area] : areas)
        run.Rain(section, area);
    run.net.Set("IH", "SECTION_SLOPE", 1.2);
    run.net.Set("HD", "PIPE_ROUGHNESS", 0.25);
    run.net.Set("BC", "FLOW_INTIME", 9.0);
    run.Type("PIPE_FILL", "80").Type("SAVE_PIPE", "1");
    ASSERT_EQ(run.Calculate(), 1);
    const std::map<std::string, std::vector<const char*>> above{
        {"AB", {}}, {"BC", {"AB"}},       {"FC", {}},           {"GH", {}},
        {"IH", {}}, {"HD", {"GH", "IH"}}, {"CD", {"BC", "FC"}}, {"DE", {"CD", "HD"}}};
    for (const auto& section : run.net.Sections()) {
        const std::string name(section->GetName());
        SCOPED_TRACE(name);
        const CSectionDataIDF& r = run.Record(name.c_str());
        const auto value = [&](const char* key) { return run.Value(name.c_str(), key); };
        double area = 0.0;
        for (const auto& [other, own] : areas)
            area += name == other ? own : 0.0;
        double base = 0.0;
        for (const char* in : above.at(name)) {
            area += run.Value(in, "FLOW_IDF_AREA_CORRECTED_TOTAL");
            base = std::max(base, run.Value(in, "FLOW_IDF_MJ_TIME"));
        }
        EXPECT_NEAR(value("FLOW_IDF_AREA_CORRECTED_TOTAL"), area, 1e-12);
        EXPECT_DOUBLE_EQ(value("FLOW_IDF_MJ_TIME"), base + value("FLOW_IDF_TIME"));
        EXPECT_DOUBLE_EQ(value("FLOW_IDF_CONC_TIME"), value("FLOW_INTIME") + value("FLOW_IDF_MJ_TIME"));
        const double intensity = value("FLOW_IDF_INTENSITY");
        const double atEnd = (1.0 - 0.369) * 38.0 / (value("FLOW_IDF_CONC_TIME") + 9.0) * 100.0;
        EXPECT_LE(std::abs(intensity - atEnd), 0.005 * intensity);
        EXPECT_DOUBLE_EQ(value("FLOW_RAIN_IDF"), area * intensity / 1000.0);

        // The pipe is the first one that carries the flow within the filling; the one before does not.
        ASSERT_TRUE(r.m_pipe);
        EXPECT_EQ(run.net.Get(name, "PIPE_REF").AsText(), r.m_pipe->GetGUID());
        EXPECT_EQ(r.m_sizing.m_roughness, name == "HD" ? 0.25 : 1.0);
        CCircleFlow pipe{r.m_innerDiameter / 1000.0, r.m_slope / 1000.0, r.m_sizing.m_roughness / 1000.0};
        const auto [filling, velocity] = pipe.Fill(r.m_flow);
        EXPECT_NEAR(r.m_sizing.m_filling, filling, 1e-7);
        EXPECT_LE(filling, 80.0);
        EXPECT_NEAR(r.m_velocity, velocity, 1e-9);
        EXPECT_NEAR(r.m_flowTime, section->GetLength2D() / velocity / 60.0, 1e-9);
        pipe.m_diameter = r.m_sizing.m_fullDiameter / 1000.0;
        EXPECT_NEAR(pipe.FullFlow(), r.m_flow, 1e-9 * r.m_flow);
        EXPECT_GE(r.m_minDiameter, r.m_sizing.m_fullDiameter);
        EXPECT_LE(r.m_minDiameter, r.m_innerDiameter);
    }
}

TEST(RainIteration, TwiceTheAreaUnderHalfTheRainIsTheSame) {
    std::vector<std::vector<double>> results;
    for (const double factor : {1.0, 2.0, 0.25}) {
        CRainRun run("A---B-----C--D\nF----C");
        run.Rain("AB", 0.4 * factor).Rain("FC", 1.1 * factor).Rain("CD", 0.3 * factor);
        run.Type("RAIN_INTESITY", std::to_string(128.0 / factor)).Type("STORM_CAD", "11091");
        ASSERT_EQ(run.Calculate(), 1);
        auto& values = results.emplace_back();
        for (const auto& section : run.net.Sections())
            for (const char* key : {"FLOW_RAIN_IDF", "FLOW_IDF_TIME", "FLOW_IDF_MJ_TIME", "FLOW_IDF_CONC_TIME"})
                values.push_back(run.Value(std::string(section->GetName()).c_str(), key));
    }
    EXPECT_EQ(results[0], results[1]); // powers of two leave every digit
    EXPECT_EQ(results[0], results[2]);
}

TEST(RainIteration, WithoutAreaThereIsNoFlowAndNoPipe) {
    CRainRun run;
    run.Rain("BC", 0.5).Type("SAVE_PIPE", "1");
    ASSERT_EQ(run.Calculate(), 1);
    EXPECT_EQ(run.Value("AB", "FLOW_RAIN_IDF"), 0.0);
    EXPECT_EQ(run.Value("AB", "FLOW_IDF_TIME"), 0.0);
    EXPECT_FALSE(run.Has("AB", "PIPE_REF"));
    EXPECT_FALSE(run.Has("BC", "FLOW_ITP_S")) << "this calculation stores no parameters";
    EXPECT_TRUE(run.Has("BC", "PIPE_REF"));
    EXPECT_EQ(run.Record("AB").m_velocity, 0.0);
    EXPECT_FALSE(run.Record("AB").m_pipe);
}

TEST(RainIteration, MissingInputsEndTheRunWithTheLastComplaint) {
    struct CRow {
        std::vector<std::pair<const char*, Data::CDataBox>> m_values;
        const char* m_standard;
        std::string m_alert;
    };
    const CTestProject texts; // messages are the same in every project
    for (const CRow& row : {CRow{{{"SECTION_SLOPE", {}}}, "0", Msg(2300)},
                            {{{"FLOW_INTIME", {}}}, "0", Msg(2299)},
                            {{{"SECTION_SLOPE", {}}, {"FLOW_INTIME", {}}}, "0", Msg(2299)},
                            {{{"SECTION_SLOPE", 0.0}}, "0", Msg(11204) + " (" + Msg(3578) + " BC)"},
                            {{{"SECTION_SLOPE", -1.0}, {"FLOW_INTIME", {}}}, "0", Msg(2299)},
                            {{{"FLOW_INTIME", {}}}, "1", Msg(6128)}}) {
        CRainRun run;
        run.Rain("AB", 0.5).Type("CALC_STANDARD", row.m_standard);
        run.net.Set("AB", "FLOW_BLG_RET", 1.0);
        for (const auto& [key, value] : row.m_values)
            run.net.Set("BC", key, value);
        EXPECT_EQ(run.Calculate(), 0);
        EXPECT_THAT(run.host.m_alerts, ElementsAre(row.m_alert));
        EXPECT_FALSE(run.Has("AB", "FLOW_RAIN_IDF")) << "nothing is stored";
    }
}

TEST(RainIteration, AMissingFrequencyEndsTheRunWithoutAWord) {
    const auto path = std::string(DRENOVA_SOURCE_DIR) + "/data/samples/rivertown-curves.txt";
    CRainRun run;
    run.Rain("AB", 0.5).Type("RAINFALL_MODE", "2481").Type("FILE_PATH", path);
    run.parameters->m_properties->GetPropertyExByTag("FREQUENCY")->SetHiddenValue(3.0);
    EXPECT_EQ(run.CalculateTraced("AB"), 0);
    EXPECT_THAT(run.host.m_alerts, IsEmpty());
    EXPECT_FALSE(run.Has("AB", "FLOW_RAIN_IDF"));
    const auto* const table = run.trace.FindTable("rain_not_converged");
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(table->m_rows.front().m_name, "AB");
}

TEST(RainIteration, CarriersPassTheirTimeOnInOnePiece) {
    for (const char* rule : {"11090", "11091"}) {
        SCOPED_TRACE(rule);
        CRainRun run("A---B---C---D---E");
        run.Rain("AB", 0.5).Rain("DE", 0.2).Type("IGNORE_CARRIER_PIPES", "1").Type("STORM_CAD", rule);
        ASSERT_EQ(run.Calculate(), 1);
        const auto time = [&](const char* section) { return run.Value(section, "FLOW_IDF_MJ_TIME"); };
        const auto own = [&](const char* section) { return run.Value(section, "FLOW_IDF_TIME"); };
        EXPECT_GT(own("BC"), 0.0);
        const bool toLowerEnd = std::string_view(rule) == "11090";
        EXPECT_EQ(time("AB"), toLowerEnd ? own("AB") : 0.0);
        EXPECT_EQ(time("BC"), own("AB"));
        EXPECT_EQ(time("CD"), own("AB"));
        // To the upper end: the carriers' time is known only below the first section with a catchment.
        EXPECT_DOUBLE_EQ(time("DE"), toLowerEnd ? own("AB") + (own("BC") + own("CD") + own("DE")) : own("AB"));
        EXPECT_DOUBLE_EQ(run.Record("CD").m_carrierTime, own("BC") + own("CD"));
        EXPECT_EQ(run.Record("DE").m_carrierTime, 0.0);
    }
}

TEST(RainIteration, TheCatalogueRunsOut) {
    CRainRun run;
    run.Rain("AB", 0.5).Type("PIPE_FILL", "0");
    EXPECT_EQ(run.Calculate(), 0);
    EXPECT_THAT(run.host.m_alerts, ElementsAre("AB " + Utility::CUtility::Format(Msg(9454), 2.001) + " Test"));
    run.host.m_alerts.clear();
    run.Type("PIPE_FILL", "100").Type("MINIMAL_DIAMETAR", "2500");
    EXPECT_EQ(run.Calculate(), 0);
    EXPECT_THAT(run.host.m_alerts, ElementsAre("AB " + Utility::CUtility::Format(Msg(9454), 2.5) + " Test"));
    run.Type("MINIMAL_DIAMETAR", "650");
    EXPECT_EQ(run.Calculate(), 1);
    EXPECT_EQ(run.Record("AB").m_minDiameter, 650.0);
    EXPECT_EQ(run.Record("AB").m_innerDiameter, 700.0);
}

TEST(RainIteration, ExistingPipesAreKeptOrLeadToTheirGroup) {
    CRainRun run;
    run.Rain("AB", 0.5).Rain("BC", 0.5);
    CRainRun::AddPipes("Old", {150, 450, 1500}, 2.5);
    run.net.Set("AB", "PIPE_REF", "Old-1500");
    run.Type("USE_EXISTING_PIPE", "1");
    ASSERT_EQ(run.Calculate(), 1);
    EXPECT_EQ(run.Record("AB").m_pipe->GetGUID(), "Old-1500");
    EXPECT_EQ(run.Record("AB").m_minDiameter, 0.0) << "nothing was asked of the catalogue";
    EXPECT_EQ(run.Record("AB").m_sizing.m_roughness, 2.5);
    EXPECT_EQ(run.Record("BC").m_pipeGroupName, "Test") << "no pipe there";

    run.Type("USE_EXISTING_PIPE", "2");
    ASSERT_EQ(run.Calculate(), 1);
    EXPECT_EQ(run.Record("AB").m_pipeGroupName, "Old");
    EXPECT_EQ(run.Record("AB").m_pipe->GetGUID(), "Old-450");
    EXPECT_EQ(run.Record("AB").GetPipeTypeId(), "type-Old");
    EXPECT_EQ(run.Record("AB").m_sizing.m_roughness, 2.5) << "of the existing pipe";

    run.Type("USE_EXISTING_PIPE", "0");
    ASSERT_EQ(run.Calculate(), 1);
    EXPECT_EQ(run.Record("AB").m_pipeGroupName, "Test");

    run.net.Set("AB", "PIPE_REF", "Old-150");
    run.Type("USE_EXISTING_PIPE", "1");
    EXPECT_EQ(run.Calculate(), 0);
    EXPECT_THAT(run.host.m_alerts, ElementsAre("AB " + Msg(11085)));
}

TEST(RainIteration, StandardsChangeFlowsOrTimes) {
    CRainRun plain;
    plain.Rain("AB", 0.5).Type("STORM_CAD", "11091");
    ASSERT_EQ(plain.Calculate(), 1);

    CRainRun bulgarian;
    bulgarian.Rain("AB", 0.5).Type("CALC_STANDARD", "1").Type("STORM_CAD", "11091");
    bulgarian.net.Set("AB", "FLOW_BLG_RET", 2.0);
    bulgarian.net.Set("BC", "FLOW_BLG_RET", 1.0);
    ASSERT_EQ(bulgarian.Calculate(), 1);
    EXPECT_EQ(bulgarian.Value("AB", "FLOW_IDF_TIME"), 2.0 * plain.Value("AB", "FLOW_IDF_TIME"));
    EXPECT_EQ(bulgarian.Value("AB", "FLOW_RAIN_IDF"), plain.Value("AB", "FLOW_RAIN_IDF"));

    CRainRun romanian;
    romanian.Rain("AB", 0.5).Type("CALC_STANDARD", "2").Type("RO", "1;1;0.5;0.25").Type("STORM_CAD", "11091");
    ASSERT_EQ(romanian.Calculate(), 1);
    EXPECT_EQ(romanian.Value("AB", "FLOW_RAIN_IDF"), 0.5 * plain.Value("AB", "FLOW_RAIN_IDF"));
    romanian.Type("RO", "no coefficients");
    ASSERT_EQ(romanian.Calculate(), 1);
    EXPECT_EQ(romanian.Value("AB", "FLOW_RAIN_IDF"), plain.Value("AB", "FLOW_RAIN_IDF")) << "the usual ones";
}

TEST(RainIteration, TurkishInletTimesRunAlongThePath) {
    CRainRun run("A---B---C---D");
    run.Rain("AB", 0.5)
        .Rain("BC", 20.0)
        .Type("RAINFALL_MODE", "9455")
        .Type("TURKISH", "0;10:2000:10:0.8;50:1000:9:0.7");
    ASSERT_EQ(run.Calculate(), 1);
    const auto inlet = [&](const char* section) { return run.Record(section).m_inletTime; };
    EXPECT_EQ(inlet("AB"), 5.0);
    EXPECT_EQ(inlet("BC"), 5.0 + run.Value("AB", "FLOW_IDF_TIME"));
    EXPECT_EQ(inlet("CD"), inlet("BC") + run.Value("BC", "FLOW_IDF_TIME"));
    EXPECT_EQ(run.Value("CD", "FLOW_IDF_CONC_TIME"), inlet("CD") + run.Value("CD", "FLOW_IDF_TIME"));
    const auto near = [&](const char* section, double a, double b, double c) {
        const double expected = a / std::pow(run.Value(section, "FLOW_IDF_CONC_TIME") + b, c);
        EXPECT_NEAR(run.Value(section, "FLOW_IDF_INTENSITY"), expected, 0.005 * expected);
    };
    near("AB", 2000, 10, 0.8);
    near("BC", 1000, 9, 0.7);
    run.Type("TURKISH", "15;100:1000:5:1");
    ASSERT_EQ(run.Calculate(), 1);
    EXPECT_EQ(run.Value("CD", "FLOW_IDF_INTENSITY"), 50.0) << "a constant time";
}
