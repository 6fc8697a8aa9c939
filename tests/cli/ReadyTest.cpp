// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "tests/cli/Program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <filesystem>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

using nlohmann::json;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

const std::string Samples = std::filesystem::path(SampleNetwork()).parent_path().string() + "/";

/// A walk that no catalogue limits: hardly any rain, so that a run stops for missing values alone.
constexpr const char* LightRain =
    R"({"001_RAIN_ITP": {"RAINFALL_SOURCE": 2484, "BASE_INTENSITY": 1, "DESIGN_STANDARD": 1,
"CATALOG_GROUP": "Concrete EN 1916 class 135"}, "03_FC_TRANSIT": {"FC_USER": 1}, "02_ADDITIONAL": {"USER_FLOW": 1}})";

json Ready(std::vector<std::string> arguments, int code = 0) {
    arguments.insert(arguments.begin(), "ready");
    arguments.emplace_back("--json");
    const CEnded ended = Drenova(arguments);
    EXPECT_EQ(ended.m_code, code) << ended.m_err;
    return json::parse(ended.m_out, nullptr, false);
}

/// "calculator key on name found" of each row.
std::vector<std::string> Show(const json& rows) {
    std::vector<std::string> lines;
    for (const json& row : rows) {
        std::string line = row.at("calculator").get<std::string>();
        for (const char* member : {"key", "on", "name"})
            line += " " + (row.at(member).is_null() ? "-" : row.at(member).get<std::string>());
        lines.push_back(line + " " + row.at("found").dump());
        EXPECT_FALSE(row.at("expected").get<std::string>().empty());
        EXPECT_EQ(row.contains("guid"), true);
    }
    return lines;
}

/// Fills the empty cells of a table by column; the main outlet is the first that "expected" offers.
std::string FillIn(const std::string& table, const json& rows) {
    const std::map<std::string, std::string> values = {
        {"SECTION_SLOPE", "5"}, {"FLOW_INTIME", "5"}, {"FLOW_BLG_RET", "1"}, {"density", "50"}};
    std::map<std::string, std::string> outlets; // by name of the node
    for (const json& row : rows)
        if (row.at("key") == "MAIN_SECT_OUT") {
            const auto expected = row.at("expected").get<std::string>();
            const std::size_t end = expected.find(" (");
            const std::size_t start = expected.rfind(' ', end - 1) + 1;
            outlets[row.at("name")] = expected.substr(start, end - start);
        }
    std::istringstream lines(table);
    std::string line;
    std::getline(lines, line);
    std::string filled = line + "\n";
    std::vector<std::string> columns;
    std::istringstream head(line);
    for (std::string column; std::getline(head, column, ',');)
        columns.push_back(column.substr(0, column.find('\r')));
    while (std::getline(lines, line)) {
        std::istringstream row(line.substr(0, line.find('\r')));
        std::string cell;
        std::string name;
        for (std::size_t i = 0; i < columns.size(); ++i) {
            std::getline(row, cell, ',');
            if (i == 0)
                name = cell;
            if (columns[i] == "MAIN_SECT_OUT")
                cell = outlets.at(name);
            else if (const auto value = values.find(columns[i]); value != values.end())
                cell = value->second;
            filled += (i == 0 ? "" : ",") + cell;
            cell.clear();
        }
        filled += "\n";
    }
    return filled;
}

/// Fills in and loads all that "ready" lists.
void Complete(const CFolder& folder, const std::string& project, const std::string& parameters) {
    const json rows = Ready({project, "--params", parameters, "--template", folder / "missing.csv", "--replace"});
    for (const auto& [suffix, kind] :
         {std::pair{"", "sections"}, std::pair{"-nodes", "nodes"}, std::pair{"-catchments", "catchments"}}) {
        const std::string path = folder / (std::string("missing") + suffix + ".csv");
        if (!std::filesystem::exists(path))
            continue;
        const std::string filled = folder.Write("filled.csv", FillIn(ReadFile(path), rows));
        const CEnded loaded = Drenova({"load", project, filled, "--on", kind});
        ASSERT_EQ(loaded.m_code, 0) << loaded.m_err;
    }
}

class ReadyTown : public testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(Drenova({"import", SampleNetwork(), "-o", m_project}).m_code, 0); }

    CFolder m_folder;
    const std::string m_project = m_folder / "town.gpkg";
};

} // namespace

/// The sample lacks nothing for its own parameters; new forms lack what the rain calculation cannot guess.
TEST_F(ReadyTown, ListsWhatNewFormsLack) {
    EXPECT_THAT(Ready({m_project, "--params", Samples + "design.json", "--strict"}), IsEmpty());
    EXPECT_THAT(Show(Ready({m_project})),
                ElementsAre("001_RAIN_ITP FILE_PATH form FILE_PATH null", "001_RAIN_ITP FREQUENCY form FREQUENCY null",
                            "001_RAIN_ITP PIPE_GROUP form PIPE_GROUP null",
                            "01_WASTE_AREAS HOME_CHECK form HOME_CHECK 0", "02_ADDITIONAL FC_ADD_FW form FC_ADD_FW 0",
                            "03_FC_TRANSIT FC_WASTE_PER form FC_WASTE_PER 0",
                            "04_FC_TOTAL FLOW_TOTAL_OWN form FLOW_TOTAL_OWN 0"))
        << "switches that are all off store zeros";
    EXPECT_THAT(Ready({m_project, "01_WASTE_PERCENT", "--strict"}), IsEmpty());
    Ready({m_project, "--strict"}, 1);
    EXPECT_EQ(Drenova({"ready", m_project, "01_WASTE"}).m_code, 2);
    EXPECT_EQ(
        Drenova({"ready", m_project, "--params", m_folder.Write("p.json", R"({"04_FC_TOTAL": {"X": 1}})")}).m_code, 3);
}

/// A result counts as missing while no run of the plan makes it and no section has it.
TEST_F(ReadyTown, NamesTheRunThatMakesAMissingResult) {
    const std::string parameters = Samples + "design.json";
    const json rows = Ready({m_project, "04_FC_TOTAL", "--params", parameters});
    EXPECT_THAT(Show(rows),
                ElementsAre("04_FC_TOTAL FLOW_RAIN_IDF sections - null", "04_FC_TOTAL FLOW_TRANSIT sections - null",
                            "04_FC_TOTAL FLOW_SECT_TOTAL sections - null"));
    EXPECT_THAT(rows[0].at("expected").get<std::string>(), HasSubstr("001_RAIN_ITP"));
    EXPECT_THAT(rows[1].at("expected").get<std::string>(), HasSubstr("03_FC_TRANSIT"));
    ASSERT_EQ(Drenova({"run", m_project, "03_FC_TRANSIT", "FC_WASTE_PER=1"}).m_code, 0);
    EXPECT_EQ(Ready({m_project, "04_FC_TOTAL", "--params", parameters}).size(), 1U);
    ASSERT_EQ(Drenova({"set", m_project, "FLOW_WASTE_PER=0.001", "--all"}).m_code, 0);
    EXPECT_THAT(Show(Ready({m_project, "04_FC_TOTAL", "--params", parameters})),
                ElementsAre("04_FC_TOTAL FLOW_RAIN_IDF sections - null",
                            "04_FC_TOTAL FLOW_TRANSIT sections - \"outdated\"",
                            "04_FC_TOTAL FLOW_SECT_TOTAL sections - \"outdated\""));
    EXPECT_THAT(Show(Ready({m_project, "04_FC_TOTAL", "--params",
                            m_folder.Write("uneven.json", R"({"04_FC_TOTAL": {"FLOW_UNEVEN": 1}})")})),
                ElementsAre("04_FC_TOTAL FLOW_WASTE_UNEVEN sections - null"))
        << "no calculator makes it";
}

/// All at once, in the order of the network; the alert of a run names the same sections and how to set them.
TEST_F(ReadyTown, ListsDamageAtOnceAndAlertsNameIt) {
    ASSERT_EQ(Drenova({"set", m_project, "FLOW_INTIME=", "--names", "MAIN-02,QUAY-01,MAIN-01"}).m_code, 0);
    ASSERT_EQ(Drenova({"set", m_project, "SECTION_SLOPE=0", "--names", "QUAY-01"}).m_code, 0);
    const std::string parameters = Samples + "design.json";
    EXPECT_THAT(Show(Ready({m_project, "--params", parameters})),
                ElementsAre("001_RAIN_ITP SECTION_SLOPE sections QUAY-01 0",
                            "001_RAIN_ITP FLOW_INTIME sections QUAY-01 null",
                            "001_RAIN_ITP FLOW_INTIME sections MAIN-01 null",
                            "001_RAIN_ITP FLOW_INTIME sections MAIN-02 null"));
    const CEnded ended = Drenova({"run", m_project, "001_RAIN_ITP", "--params", parameters});
    EXPECT_EQ(ended.m_code, 5);
    EXPECT_THAT(ended.m_err, HasSubstr("1 section has no usable SECTION_SLOPE (found 0): QUAY-01; expected"));
    EXPECT_THAT(ended.m_err, HasSubstr("3 sections have no FLOW_INTIME: QUAY-01, MAIN-01, MAIN-02; expected an inlet "
                                       "time, in min. Set it: drenova set " +
                                       m_project + " FLOW_INTIME=5 --names QUAY-01,MAIN-01,MAIN-02"));
    Complete(m_folder, m_project, parameters);
    EXPECT_THAT(Ready({m_project, "--params", parameters, "--strict"}), IsEmpty());
    EXPECT_EQ(Drenova({"run", m_project, "001_RAIN_ITP", "--params", parameters}).m_code, 0);
}

/// Whoever fills in all that is listed gets a run without an alert, on real networks too.
TEST(Ready, ACompletedProjectRunsWithoutAnAlert) {
    const std::string networks = std::string(DRENOVA_REFERENCE_DATA) + "/networks/";
    int found = 0;
    for (const std::string& network : {SampleNetwork(), networks + "02_epa_user1.inp", networks + "04_epa_user4.inp",
                                       networks + "06_barcelona_1e.inp"}) {
        if (!std::filesystem::exists(network))
            continue;
        ++found;
        const CFolder folder;
        const std::string project = folder / "p.gpkg";
        const std::string parameters = folder.Write("light.json", LightRain);
        ASSERT_EQ(Drenova({"import", network, "-o", project}).m_code, 0) << network;
        EXPECT_EQ(Drenova({"design", project, "--params", parameters}).m_code, 5) << network << " lacks FLOW_BLG_RET";
        Complete(folder, project, parameters);
        Ready({project, "--params", parameters, "--strict"});
        const CEnded ended = Drenova({"design", project, "--params", parameters});
        EXPECT_EQ(ended.m_code, 0) << network << ": " << ended.m_err;
    }
    if (found < 4)
        GTEST_SKIP() << "only " << found << " of 4 networks are here";
}

/// What a run changed on sections is what the listing of keys says that its calculator writes, and nothing else.
TEST_F(ReadyTown, KeysNameExactlyTheWriters) {
    const json keys = json::parse(Drenova({"keys", "--on", "sections", "--json"}).m_out);
    std::map<std::string, std::set<std::string>> declared;
    std::vector<std::string> get{"get", "", "--json"};
    for (const json& key : keys) {
        get.push_back(key.at("key"));
        for (const json& writer : key.at("written_by"))
            declared[writer].insert(key.at("key").get<std::string>());
    }
    const std::vector<std::vector<std::string>> runs = {
        {"001_RAIN_ITP", "--params", Samples + "design.json", "SAVE_PIPE=1"},
        {"00_RAIN_SIMPLE"},
        {"01_WASTE_AREAS", "HOME_CHECK=1", "IND_CHECK=1"},
        {"01_WASTE_PERCENT"},
        {"02_ADDITIONAL", "FC_ADD_FW=1", "FC_ADD_POINT=1", "FC_ADD_ADDITIONAL=1", "FC_ADD_USER=1"},
        {"03_FC_TRANSIT", "FC_USER=1"},
        {"04_FC_TOTAL", "FLOW_TRANSIT=1"},
        {"hydraulics"},
    };
    std::map<std::string, std::set<std::string>> written;
    for (const char* edition : {"STANDARD", "BLG"})
        for (const auto& run : runs) {
            ASSERT_EQ(Drenova({"import", SampleNetwork(), "-o", m_project, "--replace"}).m_code, 0);
            ASSERT_EQ(Drenova({"settings", m_project, std::string("edition=") + edition}).m_code, 0);
            if (run.front() == "hydraulics") {
                ASSERT_EQ(Drenova({"set", m_project, "FLOW_TOTAL=0.01", "--all"}).m_code, 0);
            }
            get[1] = m_project;
            const json before = json::parse(Drenova(get).m_out);
            std::vector<std::string> arguments = run;
            if (run.front() == "hydraulics")
                arguments = {"hydraulics", m_project};
            else
                arguments.insert(arguments.begin(), {"run", m_project});
            EXPECT_LE(Drenova(arguments).m_code, 1) << run.front();
            const json after = json::parse(Drenova(get).m_out);
            for (std::size_t i = 0; i < after.size(); ++i)
                for (const auto& [key, value] : after[i].items())
                    if (value != before[i].at(key))
                        written[run.front()].insert(key);
        }
    EXPECT_EQ(written, declared);
}

/// A file that the command reads is not its output, --replace or not, and nothing is written when results cannot be.
TEST_F(ReadyTown, TemplatesNeverOverwriteWhatTheCommandReads) {
    ASSERT_EQ(Drenova({"set", m_project, "FLOW_INTIME=", "--all"}).m_code, 0);
    const std::string curves = m_folder.Write("curves.txt", ReadFile(Samples + "rivertown-curves.txt"));
    const std::string parameters = m_folder.Write("p.json", R"({"001_RAIN_ITP": {"FILE_PATH": "curves.txt"}})");
    const std::pair<std::vector<std::string>, std::string> rows[] = {
        {{"form", m_project, "001_RAIN_ITP", "FILE_PATH=" + curves}, curves},
        {{"form", m_project, "001_RAIN_ITP"}, m_project},
        {{"ready", m_project, "--params", parameters}, parameters},
        {{"ready", m_project, "--params", parameters}, curves},
        {{"ready", m_project, "--params", parameters}, m_project},
    };
    for (const auto& [words, output] : rows) {
        const std::string before = ReadFile(output);
        std::vector<std::string> arguments = words;
        arguments.insert(arguments.end(), {"--template", output, "--replace"});
        const CEnded ended = Drenova(arguments);
        EXPECT_EQ(ended.m_code, 2) << words.front() << " " << output;
        EXPECT_THAT(ended.m_err, HasSubstr("this command reads"));
        EXPECT_EQ(ReadFile(output), before);
    }
    const std::string table = m_folder / "missing.csv";
    CStart start{{"ready", m_project, "--params", parameters, "--template", table}};
    start.m_outputTo = "/dev/full";
    EXPECT_EQ(Drenova(start).m_code, 4);
    EXPECT_FALSE(std::filesystem::exists(table));
}

/// A template reads back as the form that it was made of.
TEST_F(ReadyTown, AFormTemplateReadsBack) {
    const CEnded shown = Drenova({"form", m_project, "01_WASTE_PERCENT", "CONSUMPTION=180", "--json"});
    EXPECT_THAT(shown.m_out, HasSubstr("\"alias\": \"CONSUMPTION\""));
    for (const std::vector<std::string>& form :
         {std::vector<std::string>{"01_WASTE_PERCENT", "CONSUMPTION=180"},
          std::vector<std::string>{"02_ADDITIONAL", "FC_ADD_FW=1", "FC_ADD_FW_OPTION=2"},
          std::vector<std::string>{"001_RAIN_ITP", "FILE_PATH=" + Samples + "rivertown-curves.txt", "FREQUENCY=2",
                                   "PIPE_GROUP=Concrete EN 1916 class 135", "CALC_STANDARD=RO"}}) {
        const std::string path = m_folder / "template.json";
        std::vector<std::string> direct = form;
        direct.insert(direct.begin(), {"form", m_project});
        std::vector<std::string> asFile = direct;
        asFile.insert(asFile.end(), {"--template", path, "--replace"});
        ASSERT_EQ(Drenova(asFile).m_code, 0);
        const json file = json::parse(ReadFile(path));
        for (const auto& [tag, value] : file.at(form.front()).items())
            EXPECT_TRUE(tag.starts_with('_') ? value.contains("label") : file.at(form.front()).contains("_" + tag));
        for (const char* former : {"a.gpkg", "b.gpkg"})
            std::filesystem::remove(m_folder / former);
        const CEnded typed = Drenova([&] {
            auto run = form;
            run.insert(run.begin(), {"run", m_project});
            run.insert(run.end(), {"-o", m_folder / "a.gpkg", "--format", "csv"});
            return run;
        }());
        const CEnded read =
            Drenova({"run", m_project, form.front(), "--params", path, "-o", m_folder / "b.gpkg", "--format", "csv"});
        EXPECT_EQ(typed.m_code, 0) << typed.m_err;
        EXPECT_EQ(read.m_out, typed.m_out) << read.m_err;
        EXPECT_THAT(read.m_err, testing::Not(HasSubstr("warning"))) << "an untouched field warns of nothing";
        EXPECT_EQ(Drenova(asFile).m_code, 0);
        asFile.pop_back();
        EXPECT_EQ(Drenova(asFile).m_code, 4) << "the file exists";
    }
}

/// Runs remember their values with the project, paths relative to it, and begin with them when asked.
TEST_F(ReadyTown, LastValuesStayWithTheProject) {
    EXPECT_EQ(Drenova({"run", m_project, "01_WASTE_PERCENT", "--last"}).m_code, 2);
    EXPECT_EQ(Drenova({"design", m_project}).m_code, 2);
    const std::string curves = m_folder.Write("curves.txt", ReadFile(Samples + "rivertown-curves.txt"));
    ASSERT_EQ(Drenova({"run", m_project, "01_WASTE_PERCENT", "PERIOD=25", "POPULATION=3380"}).m_code, 0);
    const CEnded first = Drenova({"run", m_project, "001_RAIN_ITP", "FILE_PATH=" + curves, "FREQUENCY=5",
                                  "PIPE_GROUP=Concrete EN 1916 class 135", "--format", "csv"});
    ASSERT_EQ(first.m_code, 0) << first.m_err;
    std::filesystem::create_directory(m_folder / "moved");
    const std::string moved = m_folder / "moved/town.gpkg";
    const CEnded waste = Drenova({"run", m_project, "01_WASTE_PERCENT", "--last", "POPULATION=1000", "-o", moved});
    ASSERT_EQ(waste.m_code, 0) << waste.m_err;
    const json rows = json::parse(Drenova({"get", moved, "FLOW_WASTE_PER_S", "--names", "MAIN-01", "--json"}).m_out);
    const json kept = json::parse(rows[0].at("FLOW_WASTE_PER_S").get<std::string>());
    EXPECT_EQ(kept.at("PERIOD"), 25);
    EXPECT_EQ(kept.at("BROJ_STANOVNIKA"), 1000);
    EXPECT_EQ(Drenova({"run", moved, "001_RAIN_ITP", "--last", "--format", "csv"}).m_out, first.m_out);
    const CEnded design = Drenova({"design", moved});
    EXPECT_EQ(design.m_code, 0) << design.m_err;
    EXPECT_LT(design.m_out.find("001_RAIN_ITP"), design.m_out.find("01_WASTE_PERCENT"));
    EXPECT_EQ(ReadFile(moved).find(m_folder / "curves.txt"), std::string::npos) << "the path is kept relative";
}

/// Impossible values are refused, unusual ones give a warning with what is usual.
TEST_F(ReadyTown, ValuesOfFormsAreJudged) {
    struct CCase {
        const char* m_value;
        const char* m_json;
        int m_typed;
        int m_read;
        const char* m_message;
    };
    const CCase cases[] = {
        {"POTROSNJA=0.15", R"({"01_WASTE_PERCENT": {"CONSUMPTION": 0.15}})", 0, 0,
         "POTROSNJA (CONSUMPTION), Per-capita water consumption (l/(inh·d)): found 0.15"},
        {"PERIOD=2050", R"({"01_WASTE_PERCENT": {"PERIOD": 2050}})", 0, 0, "found 2050"},
        {"COEFF_VAR_H=180", R"({"01_WASTE_PERCENT": {"COEFF_VAR_H": 180}})", 0, 0, "found 180"},
        {"POPULATION=-1", R"({"01_WASTE_PERCENT": {"BROJ_STANOVNIKA": -1}})", 2, 3,
         "BROJ_STANOVNIKA (POPULATION): found -1"},
    };
    for (const CCase& test : cases) {
        const std::string out = m_folder / "out.gpkg";
        const CEnded typed = Drenova({"run", m_project, "01_WASTE_PERCENT", test.m_value, "-o", out});
        EXPECT_EQ(typed.m_code, test.m_typed) << typed.m_err;
        EXPECT_THAT(typed.m_err, HasSubstr(test.m_message));
        std::filesystem::remove(out);
        const CEnded read = Drenova(
            {"run", m_project, "01_WASTE_PERCENT", "--params", m_folder.Write("p.json", test.m_json), "-o", out});
        EXPECT_EQ(read.m_code, test.m_read) << read.m_err;
        EXPECT_THAT(read.m_err, HasSubstr(test.m_message));
        std::filesystem::remove(out);
    }
}
