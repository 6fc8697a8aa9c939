// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "tests/cli/Program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cmath>
#include <string>
#include <vector>

using nlohmann::json;
using testing::HasSubstr;

namespace {

/// The values of a key over all sections, as "get" gives them.
json GetValues(const std::string& project, const std::string& key) {
    const CEnded ended = Drenova({"get", project, key, "--format", "json"});
    EXPECT_EQ(ended.m_code, 0) << ended.m_err;
    return json::parse(ended.m_out);
}

double SumOf(const json& rows, const std::string& key) {
    double sum = 0.0;
    for (const json& row : rows)
        sum += row.at(key).get<double>();
    return sum;
}

class SampleTown : public testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(Drenova({"import", SampleNetwork(), "-o", m_project}).m_code, 0); }

    CFolder m_folder;
    const std::string m_project = m_folder / "town.gpkg";
};

} // namespace

/// The shares of all sections add up to the flow of the greatest hour of the whole town, which follows from the typed
/// figures alone. Tolerance: rounding of 121 additions.
TEST_F(SampleTown, SharesAddUpToThePeakFlow) {
    const CEnded ended = Drenova(
        {"run", m_project, "01_WASTE_PERCENT", "PERIOD=25", "BROJ_STANOVNIKA=3380", "PRIRAST=0.6", "COEFF_VAR_H=1.8"});
    EXPECT_EQ(ended.m_code, 0);
    EXPECT_THAT(ended.m_out, HasSubstr("01_WASTE_PERCENT"));
    EXPECT_THAT(ended.m_out, HasSubstr("121 sections"));
    EXPECT_THAT(ended.m_err, HasSubstr("town.gpkg: saved"));

    const double peak = 3380.0 * std::pow(1.006, 25.0) * 150.0 * 1.5 * 1.8 / 24.0 / 3600.0 / 1000.0; // m³/s
    const json rows = GetValues(m_project, "FLOW_WASTE_PER");
    ASSERT_EQ(rows.size(), 121u);
    EXPECT_NEAR(SumOf(rows, "FLOW_WASTE_PER") / peak, 1.0, 1e-9);
    EXPECT_EQ(rows.front().at("name"), "QUAY-01");
    EXPECT_EQ(rows.front().at("guid"), "b70a3e15-6c0b-5fcd-8e0e-95b90ee22185");

    const json kept =
        json::parse(GetValues(m_project, "FLOW_WASTE_PER_S").back().at("FLOW_WASTE_PER_S").get<std::string>());
    EXPECT_EQ(kept.at("PERIOD"), 25);
    EXPECT_EQ(kept.at("POTROSNJA"), 150);
}

/// Words win over the parameter file, whose folder is where its relative paths begin; the rest of the form keeps its
/// own values. Only named sections are calculated.
TEST_F(SampleTown, TakesParameterFileWordsAndNames) {
    const std::string parameters =
        m_folder.Write("p.json", R"({"checks": {}, "01_WASTE_PERCENT": {"BROJ_STANOVNIKA": 1000, "PERIOD": "0"}})");
    ASSERT_EQ(Drenova({"run", m_project, "01_WASTE_PERCENT", "--params", parameters, "BROJ_STANOVNIKA=2000", "--names",
                       "MAIN-01,QUAY-01"})
                  .m_code,
              0);
    int count = 0;
    double sum = 0.0;
    for (const json& row : GetValues(m_project, "FLOW_WASTE_PER"))
        if (!row.at("FLOW_WASTE_PER").is_null()) {
            ++count;
            sum += row.at("FLOW_WASTE_PER").get<double>();
        }
    EXPECT_EQ(count, 2);
    EXPECT_NEAR(sum / (2000.0 * 150.0 * 1.5 * 1.5 / 24.0 / 3600.0 / 1000.0), 1.0, 1e-9);
}

/// A preview prints its pairs in order, keeps the parameters and stores no flow.
TEST_F(SampleTown, PreviewStoresNoFlow) {
    const CEnded ended = Drenova({"run", m_project, "01_WASTE_PERCENT", "--preview"});
    EXPECT_EQ(ended.m_code, 0);
    EXPECT_EQ(std::count(ended.m_out.begin(), ended.m_out.end(), '\n'), 16);
    // 5000 inhabitants growing by 2 % over 30 years: 5000 · 1.02^30
    EXPECT_THAT(ended.m_out, HasSubstr("9056.8079\n"));
    EXPECT_LT(ended.m_out.find("======================\n"), ended.m_out.find("9056.8079"));
    for (const json& row : GetValues(m_project, "FLOW_WASTE_PER"))
        EXPECT_TRUE(row.at("FLOW_WASTE_PER").is_null());
    for (const json& row : GetValues(m_project, "FLOW_WASTE_PER_S"))
        EXPECT_TRUE(row.at("FLOW_WASTE_PER_S").is_string());
}

/// With -o the project stays byte for byte, and the same input gives the same bytes.
TEST_F(SampleTown, OutputBesideLeavesTheProjectAlone) {
    const std::string before = ReadFile(m_project);
    for (const char* name : {"a.gpkg", "b.gpkg"})
        EXPECT_EQ(Drenova({"run", m_project, "01_WASTE_PERCENT", "-o", m_folder / name}).m_code, 0);
    EXPECT_TRUE(ReadFile(m_project) == before);
    EXPECT_TRUE(ReadFile(m_folder / "a.gpkg") == ReadFile(m_folder / "b.gpkg"));
    EXPECT_FALSE(ReadFile(m_folder / "a.gpkg") == before);
    EXPECT_EQ(m_folder.List(), "a.gpkg b.gpkg town.gpkg");
}

/// The edition of the project decides what the form asks for, and its language how.
TEST_F(SampleTown, SettingsReachTheForm) {
    EXPECT_EQ(Drenova({"run", m_project, "01_WASTE_PERCENT", "RO_CS=1"}).m_code, 2);
    EXPECT_EQ(Drenova({"settings", m_project, "edition=RO", "language=hr"}).m_code, 0);
    const json form = json::parse(Drenova({"form", m_project, "01_WASTE_PERCENT", "RO_CS=1.25", "--json"}).m_out);
    ASSERT_EQ(form.at("categories").size(), 1u);
    const json& properties = form.at("categories").at(0).at("properties");
    ASSERT_EQ(properties.size(), 9u);
    const json& last = properties.at(6);
    EXPECT_EQ(last.at("tag"), "RO_CS");
    EXPECT_EQ(last.at("value"), 1.25);
    EXPECT_EQ(last.at("hidden"), 1.25);
    EXPECT_EQ(last.at("default"), 1.1);
    EXPECT_EQ(last.at("editor"), 0);
    EXPECT_EQ(last.at("in_force"), true);
    EXPECT_EQ(last.at("choices"), json::array());
    EXPECT_THAT(properties.at(1).at("name").get<std::string>(), HasSubstr("stanovnika"));
}

TEST(Calculators, AreListedForPrograms) {
    const json list = json::parse(Drenova({"calculators", "--json"}).m_out);
    ASSERT_FALSE(list.empty());
    std::string former;
    for (const json& calculator : list) {
        EXPECT_LT(former, calculator.at("key").get<std::string>());
        former = calculator.at("key").get<std::string>();
        if (former != "01_WASTE_PERCENT")
            continue;
        EXPECT_EQ(calculator.at("name"), "Wastewater flow");
        EXPECT_EQ(calculator.at("whole_network"), false);
        EXPECT_EQ(calculator.at("preview"), true);
        EXPECT_EQ(calculator.at("outputs"), (json{"SPECIFIC_FLOW", "FLOW_WASTE_PER"}));
    }
}
