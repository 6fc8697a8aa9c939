// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "tests/cli/Program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <filesystem>
#include <map>
#include <string>
#include <vector>

using nlohmann::json;
using testing::HasSubstr;
using testing::Not;

namespace {

/// Calculators with outdated results, and what changed since each ran.
using COutdated = std::map<std::string, std::vector<std::string>>;

class Outdated : public testing::Test {
protected:
    void SetUp() override {
        const auto samples = std::filesystem::path(SampleNetwork()).parent_path();
        for (const char* const name : {"design.json", "rivertown-curves.txt"})
            m_folder.Write(name, ReadFile((samples / name).string()));
        ASSERT_EQ(Drenova({"import", SampleNetwork(), "-o", m_project}).m_code, 0);
        ASSERT_EQ(Drenova({"slopes", m_project, "--design"}).m_code, 0);
        ASSERT_EQ(Design(m_project).m_code, 0);
    }

    CEnded Design(const std::string& project) const {
        return Drenova({"design", project, "--params", m_folder / "design.json"});
    }

    static COutdated Find(const std::string& project) {
        COutdated found;
        const json info = json::parse(Drenova({"info", project, "--json"}).m_out);
        for (const json& entry : info.at("outdated"))
            found[entry.at("calculator")] = entry.at("changed").get<std::vector<std::string>>();
        return found;
    }

    static std::string Get(const std::string& project, const char* key) {
        return Drenova({"get", project, key, "--format", "csv"}).m_out;
    }

    CFolder m_folder;
    std::string m_project = m_folder / "town.gpkg";
};

} // namespace

// Each change makes those results outdated that come from it, in place or through another result, and no others; the
// design run again changes a result of each and leaves none outdated.
TEST_F(Outdated, FollowWhatTheirRunRead) {
    const COutdated flows = {{"03_FC_TRANSIT", {"FLOW_WASTE_PER"}},
                             {"04_FC_TOTAL", {"FLOW_SECT_TOTAL", "FLOW_TRANSIT"}},
                             {"hydraulics", {"FLOW_TOTAL"}}};
    const auto with = [](COutdated first, const COutdated& more) {
        first.insert(more.begin(), more.end());
        return first;
    };
    const std::map<std::string, std::string> resultOf = {{"001_RAIN_ITP", "FLOW_RAIN_IDF"},
                                                         {"01_WASTE_PERCENT", "FLOW_WASTE_PER"},
                                                         {"03_FC_TRANSIT", "FLOW_TRANSIT"},
                                                         {"04_FC_TOTAL", "FLOW_TOTAL"},
                                                         {"hydraulics", "HYD_FILLING"}};
    const struct {
        std::vector<std::string> m_change; ///< verb and what follows the project
        COutdated m_outdated;
    } rows[] = {
        {{"set", "SECTION_SLOPE_CAL=7", "--all"}, {}},
        {{"set", "FLOW_INTIME=9", "--all"},
         {{"001_RAIN_ITP", {"FLOW_INTIME"}}, {"04_FC_TOTAL", {"FLOW_RAIN_IDF"}}, {"hydraulics", {"FLOW_TOTAL"}}}},
        {{"set", "FLOW_COEFDEN=2", "--names", "MAIN-01"}, with(flows, {{"01_WASTE_PERCENT", {"FLOW_COEFDEN"}}})},
        {{"set", "PIPE_ROUGHNESS=2.5", "--all"},
         {{"001_RAIN_ITP", {"PIPE_ROUGHNESS"}},
          {"04_FC_TOTAL", {"FLOW_RAIN_IDF"}},
          {"hydraulics", {"PIPE_ROUGHNESS", "FLOW_TOTAL"}}}},
        {{"set", "coefficient=0.3", "--all", "--on", "catchments"},
         {{"001_RAIN_ITP", {"catchments"}}, {"04_FC_TOTAL", {"FLOW_RAIN_IDF"}}, {"hydraulics", {"FLOW_TOTAL"}}}},
        {{"settings", "edition=RO"}, with(flows, {{"01_WASTE_PERCENT", {"settings"}}})},
    };
    EXPECT_EQ(Find(m_project), COutdated());
    for (const auto& row : rows) {
        const std::string project = m_folder.Write("changed.gpkg", ReadFile(m_project));
        std::vector<std::string> arguments = row.m_change;
        arguments.insert(arguments.begin() + 1, project);
        ASSERT_EQ(Drenova(arguments).m_code, 0) << row.m_change[1];
        EXPECT_EQ(Find(project), row.m_outdated) << row.m_change[1];
        if (row.m_change[0] == "settings")
            continue; // this edition needs more than the sample contains
        ASSERT_EQ(Design(project).m_code, 0);
        EXPECT_EQ(Find(project), COutdated()) << row.m_change[1];
        for (const auto& [calculator, key] : resultOf) {
            const bool isOutdated = row.m_outdated.find(calculator) != row.m_outdated.end();
            EXPECT_EQ(Get(project, key.c_str()) != Get(m_project, key.c_str()), isOutdated)
                << row.m_change[1] << " " << key;
        }
    }
}

TEST_F(Outdated, FollowTheCurveFile) {
    ASSERT_EQ(Drenova({"set", m_project, "FLOW_INTIME=5", "--names", "MAIN-01"}).m_code, 0);
    const std::string curves = m_folder / "rivertown-curves.txt";
    const std::string former = ReadFile(curves);
    const COutdated before = Find(m_project);
    m_folder.Write("rivertown-curves.txt", former + "\n");
    EXPECT_THAT(Find(m_project)["001_RAIN_ITP"], testing::Contains("FILE_PATH"));
    std::filesystem::remove(curves); // nothing says that it changed
    EXPECT_EQ(Find(m_project), before);
    m_folder.Write("rivertown-curves.txt", former);
    EXPECT_EQ(Find(m_project), before);
}

// A run of some sections does not make the results of the others fit.
TEST_F(Outdated, StayAfterARunOfSomeSections) {
    ASSERT_EQ(Drenova({"set", m_project, "FLOW_COEFDEN=2", "--all"}).m_code, 0);
    const std::vector<std::string> run = {"run", m_project, "01_WASTE_PERCENT", "--params", m_folder / "design.json"};
    std::vector<std::string> some = run;
    some.insert(some.end(), {"--names", "MAIN-01"});
    ASSERT_EQ(Drenova(some).m_code, 0);
    EXPECT_EQ(Find(m_project)["01_WASTE_PERCENT"], std::vector<std::string>{"FLOW_COEFDEN"});
    ASSERT_EQ(Drenova(run).m_code, 0);
    EXPECT_EQ(Find(m_project).count("01_WASTE_PERCENT"), 0U);
}

TEST_F(Outdated, AreFindingsOfACheck) {
    const std::vector<std::string> check = {"check", m_project, "0016_OUTDATED_RESULT", "--format", "json", "--strict"};
    EXPECT_EQ(Drenova(check).m_code, 0);
    ASSERT_EQ(Drenova({"set", m_project, "FLOW_COEFDEN=2", "--names", "MAIN-01"}).m_code, 0);
    const json outdated = json::parse(Drenova({"info", m_project, "--json"}).m_out).at("outdated");
    const CEnded ended = Drenova(check);
    EXPECT_EQ(ended.m_code, 1);
    EXPECT_THAT(ended.m_err, Not(HasSubstr("is outdated: changed"))) << "the check uses none of them";
    const json findings = json::parse(ended.m_out);
    ASSERT_GT(outdated.size(), 4U);
    ASSERT_EQ(findings.size(), outdated.size());
    for (std::size_t i = 0; i < findings.size(); ++i) {
        const std::string text = findings[i].at("text");
        const json& entry = outdated[i];
        EXPECT_THAT(text, testing::StartsWith(entry.at("result").get<std::string>() +
                                              " is outdated, number of sections: 121. Changed since: " +
                                              entry.at("changed")[0].get<std::string>()));
        EXPECT_THAT(text, testing::EndsWith("Run again: " + entry.at("calculator").get<std::string>()));
        EXPECT_EQ(findings[i].at("value"), 121.0);
    }
}

TEST_F(Outdated, AreReportedByWhatReadsThem) {
    ASSERT_EQ(Drenova({"set", m_project, "FLOW_COEFDEN=2", "--all"}).m_code, 0);
    const std::string bytes = ReadFile(m_project);
    const std::string file = m_folder / "out.txt";
    const struct {
        std::vector<std::string> m_verb;
        const char* m_warning;
    } rows[] = {
        {{"run", m_project, "03_FC_TRANSIT", "FC_WASTE_PER=1"}, "FLOW_WASTE_PER is outdated: changed"},
        {{"run", m_project, "04_FC_TOTAL", "FLOW_TRANSIT=1"}, " 03_FC_TRANSIT --last"},
        {{"hydraulics", m_project}, "FLOW_TOTAL is outdated"},
        {{"export", m_project, "csv", "-o", file}, "HYD_FILLING is outdated"},
        {{"check", m_project}, "FLOW_TOTAL is outdated"},
    };
    for (const auto& row : rows) {
        std::vector<std::string> strict = row.m_verb;
        strict.emplace_back("--strict");
        const CEnded ended = Drenova(strict);
        EXPECT_EQ(ended.m_code, 1) << row.m_warning;
        EXPECT_THAT(ended.m_err, HasSubstr(row.m_warning));
        EXPECT_TRUE(ReadFile(m_project) == bytes) << row.m_warning;
        EXPECT_FALSE(std::filesystem::exists(file));
    }
    const CEnded nodes = Drenova({"export", m_project, "csv", "--on", "nodes", "-o", file});
    EXPECT_EQ(nodes.m_code, 0);
    EXPECT_THAT(nodes.m_err, Not(HasSubstr("outdated")));
}
