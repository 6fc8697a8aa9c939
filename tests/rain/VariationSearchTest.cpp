// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
//
// The variation search against the plain one, which walks every combination whole.
#include "rain/variations/VariationSearch.h"

#include "host/gis_core/AvailableResources.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "rain/FlowCalculator_RainITP.h"
#include "tests/rain/PlainSearch.h"
#include "tests/rain/RandomNetwork.h"
#include "tests/support/ScriptedHost.h"
#include "tests/support/TestProject.h"
#include "tests/support/TextNetwork.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bit>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

using namespace OLMGis;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

namespace {

using CWords = std::vector<std::pair<std::string, std::string>>;

const std::vector<const char*> ResultKeys{"FLOW_IDF_INTENSITY",
                                          "FLOW_IDF_CONC_TIME",
                                          "FLOW_IDF_MJ_TIME",
                                          "FLOW_IDF_TIME",
                                          "FLOW_RAIN_IDF",
                                          "FLOW_IDF_AREA_CORRECTED_SECT",
                                          "FLOW_IDF_AREA_CORRECTED_TOTAL"};

/// A folder of its own for reports, and the words of a plain run: a formula, all pipes, the search.
class VariationSearch : public ::testing::Test {
protected:
    VariationSearch() {
        std::filesystem::create_directories(m_folder);
        setenv("DRENOVA_HOME", m_folder.c_str(), 1);
    }
    ~VariationSearch() override {
        unsetenv("DRENOVA_HOME");
        std::filesystem::remove_all(m_folder);
    }

    std::string ReadReport() const {
        std::ifstream stream(m_folder / "variations.txt", std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    void RemoveReport() const { std::filesystem::remove(m_folder / "variations.txt"); }

    std::string WriteCurves() const {
        const auto path = m_folder / "curves.txt";
        std::ofstream(path) << "#2\n5 310.5\n10 228\n20 162.25\n60 80\n#5\n5 400\n15 400\n";
        return path.string();
    }

    const std::filesystem::path m_folder =
        std::filesystem::path(testing::TempDir()) / ("drenova-search-" + std::to_string(getpid()));
};

/// One calculator with a form that the host filled.
struct CSearchRun {
    CFlowCalculator_RainITP m_calculator;
    boost::shared_ptr<Sewage::CFlowCalculatorParameters> m_parameters = m_calculator.CreateParameters();

    explicit CSearchRun(CScriptedHost& host, const CWords& words) {
        host.m_words = words;
        m_calculator.InputParameters({}, m_parameters.get(), 0, nullptr);
    }
    void Type(const char* tag, const char* text) {
        EXPECT_TRUE(Topology::SetPropertyText(*m_parameters->m_properties->GetPropertyExByTag(tag), text));
    }
    int Calculate(const CPlainSearch::CSectionList& sections) {
        return m_calculator.Calculate(sections, m_parameters.get(), 1, nullptr, nullptr);
    }
    const CVariationData& DataOf(const boost::shared_ptr<Topology::CSection>& section) {
        return *m_calculator.FindVariationData(section);
    }
    std::vector<CPlainSearch::CSectionList> CombinationsOf(const boost::shared_ptr<Topology::CSection>& section) {
        const auto& table = m_calculator.GetSearch()->GetTable();
        std::vector<CPlainSearch::CSectionList> combinations(table.GetCount(section->GetRow()));
        std::vector<std::uint32_t> rows;
        for (std::size_t i = 0; i < combinations.size(); ++i) {
            table.List(section->GetRow(), i, rows);
            for (const std::uint32_t row : rows)
                combinations[i].push_back(section->GetTopology().GetSectionAt(row));
        }
        return combinations;
    }
};

CWords FormulaWords() {
    return {{"RAINFALL_MODE", "2484"}, {"PARTIAL_AREA_EFFECT", "2"}, {"PIPE_GROUP", "Search pipes"}};
}

/// Any form that a user could fill.
CWords RandomWords(CDice& dice, const std::string& curves) {
    const std::string mode = std::array{"2481", "2484", "9455"}[dice.Roll(3)];
    CWords words{{"RAINFALL_MODE", mode}};
    const auto add = [&](const char* tag, std::initializer_list<const char*> texts) {
        words.emplace_back(tag, *(texts.begin() + dice.Roll(texts.size())));
    };
    if (mode == "2481") {
        words.emplace_back("FILE_PATH", curves);
        add("FREQUENCY", {"2", "2", "5"});
    } else if (mode == "9455") {
        add("TURKISH", {"0;1:1700:8:0.72;200:1300:9:0.9", "12;1:1700:8:0.72;2:900:8:0.72"});
    }
    words.emplace_back("PARTIAL_AREA_EFFECT", "2");
    add("IGNORE_CARRIER_PIPES", {"0", "1"});
    add("USE_EXISTING_PIPE", {"0", "0", "0", "1", "2"});
    add("SAVE_PIPE", {"0", "1"});
    add("PRECISION", {"0.5", "0.5", "0.001"});
    words.emplace_back("PIPE_GROUP", "Search pipes");
    add("STORM_CAD", {"11090", "11091"});
    add("BRANCHING_FLOW_TIME", {"11088", "11089"});
    add("CALC_STANDARD", {"0", "1", "2"});
    add("RO", {"1;1;0.8;0.9", "0;0.7;0.8;0.9"});
    add("PIPE_FILL", {"100", "80", "50"});
    add("MINIMAL_DIAMETAR", {"0", "0", "300"});
    return words;
}

std::uint64_t Bits(double value) {
    return std::bit_cast<std::uint64_t>(value);
}

Data::CDataBox Read(const boost::shared_ptr<Topology::CSection>& section, const char* key) {
    Data::CDataBox box;
    Data::CDataRW::Read(key, section, box, 0, nullptr);
    return box;
}

/// What a best record has to leave on its section.
void ExpectStored(const boost::shared_ptr<Topology::CSection>& section, const CSectionDataIDF* best) {
    SCOPED_TRACE(std::string(section->GetName()));
    for (std::size_t k = 0; k < ResultKeys.size(); ++k) {
        const Data::CDataBox box = Read(section, ResultKeys[k]);
        ASSERT_EQ(box.IsNotNull(), best != nullptr) << ResultKeys[k];
        if (best == nullptr)
            continue;
        const double expected = std::array{best->m_intensity,    best->GetConcentrationTime(),
                                           best->m_upstreamTime, best->m_flowTime,
                                           best->m_flow,         best->m_ownArea,
                                           best->m_totalArea}[k];
        EXPECT_EQ(Bits(box.AsDouble()), Bits(expected)) << ResultKeys[k] << ' ' << box.AsDouble() << ' ' << expected;
    }
}

/// Everything that both searches know of a section.
void ExpectSame(CSearchRun& run, const boost::shared_ptr<Topology::CSection>& section,
                const CPlainSearch::CData& plain) {
    const CVariationData& data = run.DataOf(section);
    EXPECT_EQ(data.m_inputCount, static_cast<int>(plain.m_inputCount));
    EXPECT_EQ(data.m_bestIndex, plain.m_bestIndex);
    EXPECT_EQ(run.CombinationsOf(section), plain.m_combinations);
    const auto numbers = [](const CSectionDataIDF& r) {
        std::vector<std::uint64_t> bits;
        for (const double number :
             {r.m_intensity, r.m_flow, r.m_velocity, r.m_innerDiameter, r.m_minDiameter, r.m_flowTime, r.m_upstreamTime,
              r.m_carrierTime, r.m_ownArea, r.m_inletTime, r.m_retention, r.m_slope, r.m_roughness, r.m_totalArea})
            bits.push_back(Bits(number));
        return bits;
    };
    EXPECT_EQ(numbers(data.m_best), numbers(plain.m_best));
    EXPECT_EQ(data.m_best.m_pipe, plain.m_best.m_pipe);
    EXPECT_EQ(data.m_best.m_name, plain.m_best.m_name);
}

/// A failed combination has an alert of its own, except where no intensity was found, followed by that of the search.
void ExpectAlerts(const std::vector<std::string>& alerts, const Rain::CRunStop& stop) {
    std::vector<std::string> expected;
    if (stop.IsStopped())
        expected.push_back(Utility::CModuleConfiguration::Instance()->GetMsg(2297));
    if (stop.IsStopped() && stop.m_reason != Rain::CRunStop::enmReason::NotConverged)
        expected.insert(expected.begin(), alerts.empty() ? "" : alerts.front());
    EXPECT_EQ(alerts, expected);
    if (stop.m_reason == Rain::CRunStop::enmReason::NoPipe) {
        EXPECT_EQ(alerts.front().find(std::string(stop.m_name) + " "), 0U) << alerts.front();
    }
}

/// How the cases of a family ended: each way must have come up.
struct CTally {
    int m_done = 0;
    int m_failed = 0;
    int m_skipped = 0;
};

void HoldAgainstPlain(unsigned int seed, const CRandomShape& shape, const std::string& curves,
                      const std::function<std::string()>& readReport, CTally& tally) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    CTestProject project;
    CDice dice(seed);
    const CRandomNetwork network(dice, shape);
    AddPipes(dice.Chance(90) ? 2000.0 : 400.0);
    const auto sections = Topology::CTopologyMultiStorage::Instance()->GetActiveTopology()->GetSections();
    for (const auto& section : sections)
        if (dice.Chance(30))
            Data::CDataRW::Write("PIPE_REF", section, "search-pipe-500", nullptr);
    const CWords words = RandomWords(dice, curves);
    constexpr double MostEntries = 300.0;
    constexpr double MostCombinations = 250.0;
    if (CPlainSearch(nullptr, MostEntries, MostCombinations).Run(sections) == 0) {
        ++tally.m_skipped;
        return;
    }
    CScriptedHost host;
    host.m_answer = 1;
    CSearchRun run(host, words);
    CRainITPParameters params;
    ASSERT_EQ(params.ReadParameters(run.m_parameters.get(), 0), 1) << params.BuildParameterErrorText();
    const Rain::CRunInput input(Rain::CRunNetwork(sections), params);
    Rain::CNetworkWalk walk(input, params);
    CPlainSearch plain(&walk, MostEntries, MostCombinations);
    const int expected = plain.Run(sections);
    ASSERT_EQ(plain.m_stop.IsStopped(), expected == 0);

    ASSERT_EQ(run.Calculate(sections), expected);
    ExpectAlerts(host.m_alerts, plain.m_stop);
    EXPECT_EQ(readReport(), expected != 0 ? plain.MakeText() : std::string());
    for (const auto& section : sections) {
        const CPlainSearch::CData& data = *plain.Find(section);
        const bool hasBest = expected != 0 && data.m_bestIndex != CPlainSearch::NoBest;
        ExpectStored(section, hasBest ? &data.m_best : nullptr);
        if (hasBest && data.m_best.m_pipe && run.m_parameters->m_properties->GetIntProperty("SAVE_PIPE", 0, 1) != 0) {
            EXPECT_EQ(Read(section, "PIPE_REF").AsText(), data.m_best.m_pipe->GetGUID());
        }
        if (expected != 0)
            ExpectSame(run, section, data);
    }
    ++(expected != 0 ? tally.m_done : tally.m_failed);
}

} // namespace

// All rainfall modes, standards, time rules, options; trees, networks with second ways out, rings, equal names, missing
// inputs, catalogues that run out.
TEST_F(VariationSearch, AgreesWithThePlainSearchToTheBit) {
    struct CFamily {
        const char* m_name;
        CRandomShape m_shape;
        unsigned int m_cases;
    };
    const std::vector<CFamily> families{
        {"trees", {.m_mostSections = 7}, 260},
        {"equal names", {.m_mostSections = 7, .m_repeatedNames = 40}, 90},
        {"missing inputs", {.m_mostSections = 6, .m_gaps = 4}, 60},
        {"second ways out", {.m_mostSections = 6, .m_reliefs = 35, .m_repeatedNames = 5}, 180},
        {"rings", {.m_mostSections = 6, .m_reliefs = 40, .m_rings = 70}, 160},
        // Branches that part at a head and meet, where the network divides elsewhere: areas are summed by visiting all.
        {"circle through a head", {.m_drawing = "H-A-K-O-P\nH-B-K\nO-Q"}, 30},
        {"two of one name above others", {.m_drawing = "A-J-S-T\nA-J\nB-S"}, 30},
        {"loop at a node", {.m_drawing = "Y-Z-B-B\nZ-W"}, 30},
        {"ways that meet again", {.m_drawing = "Y-Z-A-K-L\nZ-B-K\nX-A"}, 30},
        {"way over a section that is never treated", {.m_drawing = "Z-N-F-S-T\nN-M-F\nE-M-X"}, 60},
        {"relief to an outfall of its own", {.m_drawing = "Y-Z-A-K-L\nZ-C-D\nE-C\nX-K"}, 30},
    };
    const std::string curves = WriteCurves();
    int compared = 0;
    for (const CFamily& family : families) {
        SCOPED_TRACE(family.m_name);
        CTally tally;
        for (unsigned int seed = 0; seed < family.m_cases && !HasFailure(); ++seed) {
            RemoveReport();
            HoldAgainstPlain(
                seed, family.m_shape, curves, [this] { return ReadReport(); }, tally);
        }
        EXPECT_GE(tally.m_done, static_cast<int>(family.m_cases) / 3);
        EXPECT_GE(tally.m_failed, 1) << "failures were not compared";
        compared += tally.m_done + tally.m_failed;
        std::cout << family.m_name << ": " << tally.m_done << " searches, " << tally.m_failed << " failures, "
                  << tally.m_skipped << " too large\n";
    }
    EXPECT_GE(compared, 500);
}

namespace {

/// Sections with everything that a formula needs.
void Prepare(const CTextNetwork& network) {
    AddPipes(2000.0);
    for (const auto& section : network.Sections()) {
        Data::CDataRW::Write("SECTION_SLOPE", section, 5.0, nullptr);
        Data::CDataRW::Write("FLOW_INTIME", section, 10.0, nullptr);
        network.AddCatchment(section->GetName(), 1, 0.5);
    }
}

std::vector<std::string> CombinationsOf(CSearchRun& run, const boost::shared_ptr<Topology::CSection>& section) {
    std::vector<std::string> lists;
    for (const auto& combination : run.CombinationsOf(section))
        lists.push_back(NamesOf(combination));
    return lists;
}

} // namespace

TEST_F(VariationSearch, TriesAllUpstreamFirstAndTheLastBranchRunsFastest) {
    CTestProject project;
    const CTextNetwork network("A---J---O\nB---J");
    Prepare(network);
    CScriptedHost host;
    host.m_answer = 1;
    CSearchRun run(host, FormulaWords());
    ASSERT_EQ(run.Calculate(network.Sections()), 1);
    EXPECT_THAT(CombinationsOf(run, network.Section("AJ")), ElementsAre("AJ"));
    EXPECT_THAT(CombinationsOf(run, network.Section("JO")), ElementsAre("JO AJ BJ", "JO AJ", "JO BJ", "JO"));
    EXPECT_EQ(run.DataOf(network.Section("JO")).m_visitedCount, 2);
    EXPECT_THAT(host.m_commandLine, ElementsAre(HasSubstr("\ndelta ITP_CALC_VARIATION = ")));
}

TEST_F(VariationSearch, LineLeavesOutFromTheTop) {
    CTestProject project;
    const CTextNetwork network("A---B---C---D");
    Prepare(network);
    CScriptedHost host;
    host.m_answer = 1;
    CSearchRun run(host, FormulaWords());
    ASSERT_EQ(run.Calculate(network.Sections()), 1);
    EXPECT_THAT(CombinationsOf(run, network.Section("BC")), ElementsAre("BC AB", "BC"));
    EXPECT_THAT(CombinationsOf(run, network.Section("CD")), ElementsAre("CD BC AB", "CD BC", "CD"));
}

TEST_F(VariationSearch, EqualFlowsKeepTheFirstCombination) {
    CTestProject project;
    const CTextNetwork network("A---B---C");
    AddPipes(2000.0);
    for (const auto& section : network.Sections()) {
        Data::CDataRW::Write("SECTION_SLOPE", section, 5.0, nullptr);
        Data::CDataRW::Write("FLOW_INTIME", section, 10.0, nullptr);
    }
    CScriptedHost host;
    host.m_answer = 1;
    CSearchRun run(host, FormulaWords());
    ASSERT_EQ(run.Calculate(network.Sections()), 1);
    EXPECT_EQ(run.DataOf(network.Section("BC")).m_bestIndex, 0U) << "no catchments, flow 0 everywhere";
    EXPECT_EQ(run.DataOf(network.Section("BC")).m_best.m_flow, 0.0);
}

TEST_F(VariationSearch, AsksWithTheForecastAndANoLeavesEverythingAsItWas) {
    CTestProject project;
    const CTextNetwork network("A---J---O\nB---J");
    Prepare(network);
    CScriptedHost host;
    CSearchRun run(host, FormulaWords());
    EXPECT_EQ(run.Calculate(network.Sections()), 0);
    ASSERT_EQ(host.m_questions.size(), 1U);
    EXPECT_EQ(host.m_questions.front().find(Utility::CModuleConfiguration::Instance()->GetMsg(11097)), 0U);
    EXPECT_THAT(host.m_questions.front(), HasSubstr("\nCombinations: 6 in all, 4 of them at section JO"));
    EXPECT_THAT(host.m_alerts, IsEmpty());
    EXPECT_FALSE(network.Get("JO", "FLOW_RAIN_IDF").IsNotNull());
    EXPECT_EQ(ReadReport(), "");
}

TEST_F(VariationSearch, TwoRunsLeaveTwoBlocks) {
    CTestProject project;
    const CTextNetwork network("A---B---C");
    Prepare(network);
    CScriptedHost host;
    host.m_answer = 1;
    CSearchRun run(host, FormulaWords());
    ASSERT_EQ(run.Calculate(network.Sections()), 1);
    const std::string block = ReadReport();
    EXPECT_THAT(block, HasSubstr("\r\nBC  - 2\r\n1 : BC AB\r\n2 : BC"));
    ASSERT_EQ(run.Calculate(network.Sections()), 1);
    EXPECT_EQ(ReadReport(), block + block);
    EXPECT_EQ(run.m_calculator.GetSearch()->GetSections().size(), 2U);
    run.Type("PARTIAL_AREA_EFFECT", "0");
    ASSERT_EQ(run.Calculate(network.Sections()), 1);
    EXPECT_EQ(run.m_calculator.GetSearch(), nullptr) << "of the run before";
}

TEST_F(VariationSearch, CancelledSearchStoresNothingAndAlertsNothing) {
    CTestProject project;
    const CTextNetwork network("A-B-C-D-E-F-G-H-I\nJ-B K-C L-D M-E N-F O-G P-H Q-I R-I");
    Prepare(network);
    CScriptedHost host;
    host.m_answer = 1;
    host.m_progressCallsUntilCancel = 2;
    CSearchRun run(host, FormulaWords());
    EXPECT_EQ(run.Calculate(network.Sections()), 0);
    EXPECT_LT(host.m_progressCallsUntilCancel, 0) << "the search asked whether to go on";
    EXPECT_THAT(host.m_alerts, IsEmpty());
    EXPECT_FALSE(network.Get("AB", "FLOW_RAIN_IDF").IsNotNull());
    EXPECT_EQ(ReadReport(), "");
}

/// Wherever a run is cancelled, also while it writes, the account keeps whole blocks only.
TEST_F(VariationSearch, CancelledRunLeavesNoPieceOfAnAccount) {
    CTestProject project;
    const CTextNetwork network("A-Z-Y B-Z C-Z D-Z E-Z F-Z G-Z H-Z I-Z J-Z K-Z L-Z");
    Prepare(network);
    CScriptedHost host;
    host.m_answer = 1;
    constexpr int Never = 1000000;
    host.m_progressCallsUntilCancel = Never;
    ASSERT_EQ(CSearchRun(host, FormulaWords()).Calculate(network.Sections()), 1);
    const int calls = Never - host.m_progressCallsUntilCancel;
    const std::string before = ReadReport();
    ASSERT_GT(before.size(), std::size_t{1} << 16U) << "more than one piece";
    RemoveReport();
    host.m_progressCallsUntilCancel = calls - 1;
    CSearchRun(host, FormulaWords()).Calculate(network.Sections());
    EXPECT_FALSE(std::filesystem::exists(m_folder / "variations.txt")) << "a new file is removed again";
    std::ofstream(m_folder / "variations.txt", std::ios::binary) << before;
    for (const int call : {calls - 1, calls - 2, calls - 3, calls / 2}) {
        host.m_progressCallsUntilCancel = call;
        CSearchRun(host, FormulaWords()).Calculate(network.Sections());
        EXPECT_TRUE(ReadReport() == before) << call << " of " << calls;
    }
}

TEST_F(VariationSearch, IsRefusedBeforeTheQuestionWhenItDoesNotFit) {
    class CSmallMachine final : public System::IAvailableResources {
    public:
        std::optional<double> GetFreeMemory() const override { return m_memory; }
        double m_memory = 1.0e9;
    };
    CTestProject project;
    const CTextNetwork network("A---J---O\nB---J");
    Prepare(network);
    CSmallMachine machine;
    const System::CAvailableResourcesScope scope(machine);
    CScriptedHost host;
    host.m_answer = 1;
    CSearchRun run(host, FormulaWords());
    machine.m_memory = 1000.0;
    EXPECT_EQ(run.Calculate(network.Sections()), 0);
    EXPECT_THAT(host.m_alerts, ElementsAre(HasSubstr("of memory for 6 combinations; only 1.0 kB is free")));
    host.m_alerts.clear();
    run.Type("PIPE_FILL", "120");
    EXPECT_EQ(run.Calculate(network.Sections()), 0);
    EXPECT_THAT(host.m_alerts, ElementsAre(HasSubstr(Utility::CModuleConfiguration::Instance()->GetMsg(11047))))
        << "a faulty form comes first";
    EXPECT_THAT(host.m_questions, IsEmpty());
    run.Type("PIPE_FILL", "100");
    machine.m_memory = 1.0e9;
    EXPECT_EQ(run.Calculate(network.Sections()), 1);
    CSearchRun chains(host, {{"RAINFALL_MODE", "2484"}, {"PARTIAL_AREA_EFFECT", "1"}, {"PIPE_GROUP", "Search pipes"}});
    host.m_alerts.clear();
    machine.m_memory = 1000.0;
    EXPECT_EQ(chains.Calculate(network.Sections()), 0);
    EXPECT_THAT(host.m_alerts,
                ElementsAre(HasSubstr("needs up to 4 computations of sections, 2 of them at section JO")));
}
