// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "flow/FormFields.h"
#include "host/gis_core/CoreProgressBar.h"
#include "host/network_core/PropertyEditing.h"
#include "host/workspace_core/WsManager.h"
#include "tests/support/FormTable.h"
#include "tests/support/ReferenceTable.h"
#include "tests/support/ScriptedHost.h"
#include "tests/support/TestProject.h"
#include "tests/support/TextNetwork.h"
#include "tests/support/WriteWatch.h"
#include "waste/FlowCalculator_WasteAreas.h"

#include <cmath>

using namespace OLMGis;
using Utility::CModuleConfiguration;

namespace {

constexpr int Household = 2;
constexpr int Industrial = 4;

/// A project of an edition with a network and a calculator. The edition is in force before the calculator is made.
struct CRun {
    explicit CRun(const char* edition, const char* drawing = "A---B---C") : net(drawing) {
        CModuleConfiguration::Instance()->SetEdition(edition);
        calculator = std::make_unique<CFlowCalculator_WasteAreas>();
        parameters = calculator->CreateParameters();
    }

    CTestProject project;
    CTextNetwork net;
    std::unique_ptr<CFlowCalculator_WasteAreas> calculator;
    boost::shared_ptr<Sewage::CFlowCalculatorParameters> parameters;

    CRun& Type(const char* tag, const char* text) {
        EXPECT_TRUE(Topology::SetPropertyText(*parameters->m_properties->GetPropertyExByTag(tag), text));
        return *this;
    }
    int Calculate() { return calculator->Calculate(net.Sections(), parameters.get(), 1, nullptr, nullptr); }
    double Value(const char* section, const char* key) const { return net.Get(section, key).AsDouble(); }
    bool Has(const char* section, const char* key) const { return net.Get(section, key).IsNotNull(); }
};

/// Type and text of the last line of the log.
std::pair<int, std::string> LastLogLine() {
    const auto& lines = Workspace::CWsManager::Instance()->GetLog();
    return lines.empty() ? std::pair(0, std::string()) : std::pair(lines.back().m_type, lines.back().m_text);
}

const std::pair StoredLine(1, 2050);
const std::pair NothingLine(4, 61031);

void ExpectLastLogLine(const std::pair<int, int>& line) {
    EXPECT_EQ(LastLogLine(), std::pair(line.first, Msg(line.second)));
}

} // namespace

TEST(WasteAreas, FormAndPresentationPerEdition) {
    std::vector<CFormRow> rows = {{"HOME_CHECK", 7, 2092, 0},
                                  {"HOME_COEFF", 0, 2067, 4.0},
                                  {"IND_CHECK", 7, 2093, 0},
                                  {"IND_COEFF", 0, 2065, 1.0}};
    const auto idsOf = [](const CRun& run) {
        std::string ids;
        for (const auto& [definition, kind] : run.calculator->GetOutputDefinitionsWithKind())
            ids += definition->m_id + ":" + std::to_string(kind) + " ";
        return ids;
    };
    for (const char* edition : {"STANDARD", "RO", "BLG "}) {
        CRun run(edition);
        ExpectForm(*run.parameters->m_properties, {{464, 464, rows}});
        for (const auto& [tag, unit] :
             {std::pair("HOME_COEFF", "(l/(s·1000 inh))"), std::pair("IND_COEFF", "(l/(s·ha))")})
            EXPECT_TRUE(run.parameters->m_properties->GetPropertyExByTag(tag)->GetName().ends_with(unit)) << tag;
        EXPECT_EQ(idsOf(run), "FLOW_WASTE_HOME:6 FLOW_WASTE_IND:6 ");
        EXPECT_EQ(run.calculator->GetOutputDefinitions().size(), 2U);
    }
    rows.emplace_back("BLG_COEFF_K", 0, 6127, 1.0);
    CRun run("BLG");
    ExpectForm(*run.parameters->m_properties, {{464, 464, rows}});
    EXPECT_EQ(idsOf(run), "FLOW_BLG_WASTE_HOME_KOMAX:6 FLOW_WASTE_HOME_BG:6 FLOW_WASTE_IND:6 ");
    EXPECT_EQ(run.calculator->GetOutputDefinitions().size(), 3U);

    EXPECT_EQ(run.calculator->GetKey(), "01_WASTE_AREAS");
    EXPECT_EQ(run.calculator->GetCalculatorName(), Msg(11165));
    EXPECT_EQ(run.calculator->GetCalculatorGroupName(), Msg(2313));
    EXPECT_EQ(run.calculator->GetCalculatorIcon(), "IDI_CALC_AREA");
    EXPECT_EQ(run.calculator->GetCalculatorGroupIcon(), "IDI_CALC_PERCENT");
    EXPECT_EQ(run.calculator->GetParametersDataId(), "FLOW_WASTE_AREA_S");
    EXPECT_EQ(run.calculator->IsWholeNetworkCalculator(), 0);
    EXPECT_EQ(run.calculator->IsPreviewAvailable(), 0);
}

TEST(WasteAreas, OwnCatchmentsByHand) {
    CRun run("STANDARD");
    run.net.AddCatchment("AB", Household, 2.0, 50.0);
    run.net.AddCatchment("AB", Industrial, 3.0);
    run.net.AddCatchment("BC", Household | Industrial, 1.5, 40.0);
    run.Type("HOME_CHECK", "1").Type("IND_CHECK", "1");
    EXPECT_EQ(run.Calculate(), 1);
    ExpectLastLogLine(StoredLine);
    EXPECT_DOUBLE_EQ(run.Value("AB", "FLOW_WASTE_HOME"), 0.0004);  // 50 · 2 inh · 4 l/(s·1000 inh)
    EXPECT_DOUBLE_EQ(run.Value("AB", "FLOW_WASTE_IND"), 0.003);    // 3 ha · 1 l/(s·ha)
    EXPECT_DOUBLE_EQ(run.Value("BC", "FLOW_WASTE_HOME"), 0.00024); // nothing from upstream
    EXPECT_DOUBLE_EQ(run.Value("BC", "FLOW_WASTE_IND"), 0.0015);
    EXPECT_FALSE(run.Has("AB", "FLOW_WASTE_HOME_BG"));
    EXPECT_EQ(run.net.Get("AB", "FLOW_WASTE_AREA_S").AsText(), run.parameters->Serialize());
}

TEST(WasteAreas, UntouchedSwitchesStoreTheParametersAlone) {
    for (const char* edition : {"STANDARD", "BLG"}) {
        CRun run(edition);
        run.net.AddCatchment("AB", Household | Industrial, 2.0, 50.0);
        CWriteWatch watch(run.project.Store());
        EXPECT_EQ(run.Calculate(), 0);
        EXPECT_EQ(watch.GetKeys(), "FLOW_WASTE_AREA_S FLOW_WASTE_AREA_S");
        ExpectLastLogLine(NothingLine);
    }
    CRun empty("STANDARD");
    EXPECT_EQ(empty.calculator->Calculate({}, empty.parameters.get(), 1, nullptr, nullptr), 0);
    ExpectLastLogLine(NothingLine);
    CRun untouched("BLG");
    EXPECT_EQ(untouched.calculator->Calculate(untouched.net.Sections(), nullptr, 1, nullptr, nullptr), 0);
    EXPECT_FALSE(untouched.Has("AB", "FLOW_WASTE_AREA_S"));
    EXPECT_TRUE(LastLogLine().second.empty()) << "without parameters nothing is logged";
}

TEST(WasteAreas, WithoutAreaOrDensityAnOldFlowStays) {
    CRun run("STANDARD", "A-B-C-D-E");
    run.net.AddCatchment("AB", Household, 2.0);             // no density
    run.net.AddCatchment("BC", Household, 2.0, -1000000.0); // the mark of an absent one
    run.net.AddCatchment("CD", Industrial, 2.0, 50.0);      // of another kind
    run.net.AddCatchment("DE", Household, 2.0, 0.0);        // nobody lives there: a value
    for (const char* section : {"AB", "BC", "CD", "DE"})
        run.net.Set(section, "FLOW_WASTE_HOME", 7.0);
    EXPECT_EQ(run.Type("HOME_CHECK", "1").Calculate(), 1);
    for (const char* section : {"AB", "BC", "CD"})
        EXPECT_EQ(run.Value(section, "FLOW_WASTE_HOME"), 7.0) << section;
    EXPECT_EQ(run.Value("DE", "FLOW_WASTE_HOME"), 0.0);
    EXPECT_TRUE(run.Has("AB", "FLOW_WASTE_AREA_S"));
}

TEST(WasteAreas, TheLastWriteOfAFlowDecidesTheResult) {
    const struct {
        const char* edition;
        const char* refusedKey;
        const char* refusedSection;
        int result;
    } cases[] = {
        {"STANDARD", "FLOW_WASTE_IND", "BC", 0},  {"STANDARD", "FLOW_WASTE_IND", "AB", 1},
        {"STANDARD", "FLOW_WASTE_HOME", "BC", 1}, {"STANDARD", "FLOW_WASTE_AREA_S", "BC", 1},
        {"BLG", "FLOW_WASTE_IND", "BC", 0},       {"BLG", "FLOW_BLG_WASTE_HOME_KOMAX", "BC", 1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.edition) + " " + c.refusedKey + " " + c.refusedSection);
        CRun run(c.edition);
        for (const char* section : {"AB", "BC"})
            run.net.AddCatchment(section, Household | Industrial, 2.0, 50.0);
        run.Type("HOME_CHECK", "1").Type("IND_CHECK", "1");
        CWriteWatch watch(run.project.Store());
        watch.m_refused = {{c.refusedKey, run.net.Section(c.refusedSection)->GetRow()}};
        EXPECT_EQ(run.Calculate(), c.result);
        ExpectLastLogLine(c.result != 0 ? StoredLine : NothingLine);
        EXPECT_FALSE(run.Has(c.refusedSection, c.refusedKey));
        EXPECT_TRUE(std::string(c.refusedSection) == "AB" || run.Has("AB", "FLOW_WASTE_IND"));
    }
    // Of two household values the flow decides, not the peak factor before it.
    CRun run("BLG");
    CWriteWatch watch(run.project.Store());
    watch.m_refused = {{"FLOW_WASTE_HOME_BG", run.net.Section("BC")->GetRow()}};
    EXPECT_EQ(run.Type("HOME_CHECK", "1").Calculate(), 0);
}

TEST(WasteAreas, OrderOfWritingOnASection) {
    for (const auto& [edition, keys] :
         {std::pair("STANDARD", "FLOW_WASTE_AREA_S FLOW_WASTE_HOME FLOW_WASTE_AREA_S FLOW_WASTE_IND"),
          std::pair("BLG", "FLOW_WASTE_AREA_S FLOW_BLG_WASTE_HOME_KOMAX FLOW_WASTE_HOME_BG FLOW_WASTE_IND")}) {
        CRun run(edition, "A-B");
        run.net.AddCatchment("AB", Household | Industrial, 2.0, 50.0);
        run.Type("HOME_CHECK", "1").Type("IND_CHECK", "1");
        CWriteWatch watch(run.project.Store());
        run.Calculate();
        EXPECT_EQ(watch.GetKeys(), keys);
    }
}

TEST(WasteAreas, ACoefficientThatTheFormLacksIsNothing) {
    CRun run("BLG");
    run.net.AddCatchment("AB", Household | Industrial, 2.0, 50.0);
    const auto form = Flow::MakeParameters();
    const auto category = Flow::AddCategory(*form->m_properties, 0, 464);
    for (const char* tag : {"HOME_CHECK", "IND_CHECK"})
        Flow::AddCheckBox(category, tag, 464)->SetValue(1);
    EXPECT_EQ(run.calculator->Calculate(run.net.Sections(), form.get(), 1, nullptr, nullptr), 1);
    EXPECT_EQ(run.Value("AB", "FLOW_WASTE_HOME_BG"), 0.0);
    EXPECT_TRUE(std::isnan(run.Value("AB", "FLOW_WASTE_IND"))) << "infinity times no flow";
}

TEST(WasteAreas, BulgarianPeakFactorOfTheUpstreamFlow) {
    const struct {
        double density, area;
        const char* coefficient;
        double q, k; // l/s, -
    } cases[] = {
        {250.0, 1.0, "4", 1.0, 3.5},
        {25000.0, 1.0, "4", 100.0, 1.907695137},
        {249.0, 1.0, "4", 0.996, 3.5},
        {0.25, 1.0, "4", 0.001, 3.5},
        {250.0, 1.0, "0", 0.0, 3.5},
        {0.0, 0.0, "4", 0.0, 3.5},
        {2.5e30, 1e3, "4", 1e31, 1.00000037839},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.q);
        CRun run("BLG", "A-B-C");
        run.net.AddCatchment("AB", Household, c.area, c.density);
        EXPECT_EQ(run.Type("HOME_CHECK", "1").Type("HOME_COEFF", c.coefficient).Calculate(), 1);
        const double k = run.Value("BC", "FLOW_BLG_WASTE_HOME_KOMAX");
        EXPECT_NEAR(k, c.k, c.k == 3.5 ? 0.0 : 5e-10) << "the limit exactly, else nine decimals by hand";
        EXPECT_DOUBLE_EQ(run.Value("BC", "FLOW_WASTE_HOME_BG"), k * c.q / 1000.0);
        EXPECT_EQ(run.Value("AB", "FLOW_WASTE_HOME_BG"), run.Value("BC", "FLOW_WASTE_HOME_BG"));
        EXPECT_FALSE(run.Has("BC", "FLOW_WASTE_HOME"));
    }
}

TEST(WasteAreas, PeakFactorsOfTheReferenceTable) {
    for (const auto& row : ReadCases("population/peak_factors.txt")) {
        SCOPED_TRACE(row.Name());
        const double q = row["q_l/s"];
        CRun run("BLG", "A-B");
        run.net.AddCatchment("AB", Household, 1.0, q * 250.0);
        run.net.AddCatchment("AB", Industrial, q);
        run.Type("HOME_CHECK", "1")
            .Type("IND_CHECK", "1")
            .Type("IND_COEFF", "1000")
            .Type("BLG_COEFF_K", "2")
            .Calculate();
        EXPECT_NEAR(run.Value("AB", "FLOW_BLG_WASTE_HOME_KOMAX"), row["k_limited"], 1e-9);
        // The industrial flow takes the factor without its limit, and its l/s count as m³/s: fixed, others rely on it.
        EXPECT_NEAR(run.Value("AB", "FLOW_WASTE_IND") / (2.0 * q), row["k"], 1e-9);
    }
}

TEST(WasteAreas, BulgarianSumsOverEverythingUpstream) {
    //  A-B, D-B, B-C: BC has all of it. Inhabitants: AB 100, DB 300, BC none.
    CRun run("BLG", "A-B-C D-B");
    run.net.AddCatchment("AB", Household, 2.0, 50.0);
    run.net.AddCatchment("DB", Household, 3.0, 100.0);
    EXPECT_EQ(run.Type("HOME_CHECK", "1").Type("HOME_COEFF", "1000").Calculate(), 1);
    const auto flow = [](double q) { return std::min(3.5, 1.0 + 2.5 / std::pow(q, 0.22)) * q / 1000.0; };
    EXPECT_DOUBLE_EQ(run.Value("AB", "FLOW_WASTE_HOME_BG"), flow(100.0));
    EXPECT_DOUBLE_EQ(run.Value("DB", "FLOW_WASTE_HOME_BG"), flow(300.0));
    EXPECT_DOUBLE_EQ(run.Value("BC", "FLOW_WASTE_HOME_BG"), flow(400.0));
    const double whole = run.Value("BC", "FLOW_WASTE_HOME_BG");
    // A run of one section gives the same: what is upstream counts, asked for or not.
    run.net.Set("BC", "FLOW_WASTE_HOME_BG", 0.0);
    run.calculator->Calculate({run.net.Section("BC")}, run.parameters.get(), 1, nullptr, nullptr);
    EXPECT_EQ(run.Value("BC", "FLOW_WASTE_HOME_BG"), whole);
}

TEST(WasteAreas, BulgarianEdgesOfTheSum) {
    { // A loop brings each of its sections back to itself: its own area counts twice.
        CRun run("BLG", "A-B-C-A");
        run.net.AddCatchment("AB", Household, 1.0, 50.0);
        EXPECT_EQ(run.Type("HOME_CHECK", "1").Type("HOME_COEFF", "1000").Calculate(), 1);
        const auto q = [&run](const char* section) {
            return run.Value(section, "FLOW_WASTE_HOME_BG") * 1000.0 / run.Value(section, "FLOW_BLG_WASTE_HOME_KOMAX");
        };
        EXPECT_NEAR(q("AB"), 100.0, 1e-9);
        EXPECT_NEAR(q("BC"), 50.0, 1e-9);
        EXPECT_NEAR(q("CA"), 50.0, 1e-9);
    }
    { // An absent density enters the sum as it is, and a negative flow has no power.
        CRun run("BLG", "A-B-C");
        run.net.AddCatchment("AB", Household, 1.0);
        run.net.AddCatchment("BC", Household, 1.0, 50.0);
        EXPECT_EQ(run.Type("HOME_CHECK", "1").Calculate(), 1);
        EXPECT_TRUE(std::isnan(run.Value("BC", "FLOW_WASTE_HOME_BG")));
    }
    { // Industry: 1000 ha give 1 m³/s, whose factor is 3.5, and K doubles it. What is upstream plays no part.
        CRun run("BLG", "A-B-C");
        run.net.AddCatchment("AB", Industrial, 1000.0);
        run.net.AddCatchment("BC", Industrial, 1000.0);
        EXPECT_EQ(run.Type("IND_CHECK", "1").Type("BLG_COEFF_K", "2").Calculate(), 1);
        EXPECT_EQ(run.Value("BC", "FLOW_WASTE_IND"), 7.0);
        EXPECT_FALSE(run.Has("BC", "FLOW_WASTE_HOME_BG"));
    }
    { // Nothing upstream has an area: a factor and a flow all the same.
        CRun run("BLG", "A-B");
        EXPECT_EQ(run.Type("HOME_CHECK", "1").Calculate(), 1);
        EXPECT_EQ(run.Value("AB", "FLOW_BLG_WASTE_HOME_KOMAX"), 3.5);
        EXPECT_EQ(run.Value("AB", "FLOW_WASTE_HOME_BG"), 0.0);
        EXPECT_TRUE(run.Has("AB", "FLOW_WASTE_HOME_BG"));
    }
}

TEST(WasteAreas, AStoppedRunStoresNothing) {
    CRun run("BLG");
    CScriptedHost host;
    host.m_progressCallsUntilCancel = 0;
    EXPECT_EQ(run.Type("HOME_CHECK", "1").Calculate(), 0);
    ExpectLastLogLine(NothingLine);
    EXPECT_FALSE(run.Has("AB", "FLOW_WASTE_HOME_BG"));
    EXPECT_FALSE(run.Has("AB", "FLOW_WASTE_AREA_S"));
    EXPECT_FALSE(Utility::CCoreProgressBar::Instance()->IsShown());
    EXPECT_EQ(Utility::CCoreProgressBar::Instance()->GetDepth(), 0U);
}
