// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/base/ProjectValues.h"

#include "host/project_io/base/PolygonValidity.h"
#include "host/project_io/synthetic/SyntheticNetwork.h"
#include "tests/project_io/ProjectFileFixture.h"
#include "tests/support/TextNetwork.h"

#include <gmock/gmock.h>

#include <array>
#include <limits>
#include <random>

using namespace OLMGis;
using namespace OLMGis::ProjectIo;
using testing::ElementsAre;
using testing::HasSubstr;
using Topology::CRings;

namespace {

CRings Square(double x, double y, double side) {
    return {{{x, y}, {x + side, y}, {x + side, y + side}, {x, y + side}, {x, y}}};
}

/// Impossible values that a plain loop over all entities finds.
std::size_t CountPlainly() {
    std::size_t count = 0;
    const auto countIn = [&count](const auto& entities) {
        Data::CDataBox box;
        for (const auto& key : Data::CDataConfiguration::Instance()->GetDataDefinitions())
            for (const auto& entity : entities)
                if (key->m_entityKind == entity->GetEntityKind() && key->m_type != Data::enmDataType::Text &&
                    Data::CDataRW::Read(key.get(), entity, box, 0, nullptr) != 0)
                    count += Data::Judge(key->m_range, box.AsDouble()) == Data::enmJudgement::Impossible ? 1U : 0U;
    };
    countIn(ActiveTopology().GetNodes());
    countIn(ActiveTopology().GetSections());
    countIn(ActiveTopology().GetCatchments());
    for (const auto& section : ActiveTopology().GetSections()) {
        Data::CDataBox box;
        count += section->GetStartingNode() && section->GetStartingNode() == section->GetEndingNode() ? 1U : 0U;
        count +=
            Data::CDataRW::Read("length", section, box, 0, nullptr) == 0 && section->GetGeometry().empty() ? 1U : 0U;
    }
    return count;
}

} // namespace

TEST(PolygonValidity, OnlyPolygonsWithAnAreaAreSound) {
    const struct {
        const char* m_name;
        CRings m_rings;
        const char* m_fault;
    } cases[] = {
        {"square", Square(0, 0, 1), ""},
        {"clockwise", {{{0, 0}, {0, 1}, {1, 1}, {1, 0}, {0, 0}}}, ""},
        {"concave, far from the origin",
         {{{5e5, 5e6}, {5e5 + 9, 5e6}, {5e5 + 9, 5e6 + 5}, {5e5 + 4, 5e6 + 1}, {5e5, 5e6 + 5}, {5e5, 5e6}}},
         ""},
        {"spike", {{{0, 0}, {2, 0}, {2, 1}, {2, 3}, {2, 1}, {0, 1}, {0, 0}}}, ""},
        {"repeated corner", {{{0, 0}, {0, 0}, {2, 0}, {2, 1}, {2, 1}, {0, 1}, {0, 0}}}, ""},
        {"no area", {{{0, 0}, {1, 0}, {2, 0}, {0, 0}}}, ""},
        {"bow tie", {{{0, 0}, {1, 1}, {1, 0}, {0, 1}, {0, 0}}}, "crosses itself"},
        {"star that turns one way", {{{0, 3}, {2, -3}, {-3, 1}, {3, 1}, {-2, -3}, {0, 3}}}, "crosses itself"},
        {"twice around", {{{0, 0}, {1, 0}, {1, 1}, {0, 1}, {0, 0}, {1, 0}, {1, 1}, {0, 1}, {0, 0}}}, "crosses itself"},
        {"hole", {Square(0, 0, 9)[0], Square(1, 1, 2)[0]}, ""},
        {"hole outside", {Square(0, 0, 9)[0], Square(11, 1, 2)[0]}, "has a hole outside its outer ring"},
        {"hole in a hole",
         {Square(0, 0, 9)[0], Square(1, 1, 6)[0], Square(2, 2, 1)[0]},
         "has holes inside one another"},
        {"not a number",
         {{{0, 0}, {std::numeric_limits<double>::quiet_NaN(), 0}, {1, 1}, {0, 0}}},
         "has a coordinate that is no finite number"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(FindPolygonFault(c.m_rings), c.m_fault) << c.m_name;
}

TEST(ProjectValues, ListEachImpossibleValueAndEachKeyWithUnusualOnes) {
    CTestProject project;
    const CTextNetwork net("A----------B----------C----------D");
    EXPECT_EQ(JudgeProject(ActiveTopology()).m_impossible.GetCount(), 0U);
    net.Set("AB", "length", -500.0);
    net.Set("AB", "PIPE_ROUGHNESS", 0.00075);
    net.Set("BC", "PIPE_ROUGHNESS", 0.0015);
    net.Set("CD", "PIPE_ROUGHNESS", 1.5);
    net.Set("CD", "FLOW_INTIME", std::numeric_limits<double>::infinity());
    net.Set("CD", "FLOW_RAIN_IDF", std::numeric_limits<double>::infinity()); // a result
    auto& topology = ActiveTopology();
    const auto loop = topology.AddSection("loop", "loop\n", net.Node('A').get(), net.Node('A').get(), {}).Value();
    const auto nowhere = topology.AddNode("nowhere", "nowhere", {}).Value();
    EXPECT_TRUE(topology.AddSection("dark", "dark", net.Node('A').get(), nowhere.get(), {}));
    const auto bow =
        topology.AddCatchment("bow", "", net.Section("BC").get(), {{{0, 0}, {9, 9}, {9, 0}, {0, 9}, {0, 0}}});
    Data::CDataRW::Write("area", bow.Value(), -5.0, nullptr);
    const auto large = topology.AddCatchment("large", "", net.Section("AB").get(), Square(0, 0, 100));
    Data::CDataRW::Write("area", large.Value(), 40.0, nullptr);
    const auto removed = topology.AddCatchment("removed", "", net.Section("AB").get(), {}).Value();
    Data::CDataRW::Write("area", removed, -7.0, nullptr);
    topology.RemoveCatchment(*removed);

    const CProjectValues values = JudgeProject(topology);
    EXPECT_THAT(values.m_impossible.GetPlaces(),
                ElementsAre("section AB: length -500, expected 0 to 1000000 m",
                            "section CD: FLOW_INTIME Infinity, expected 0 to 10000 min",
                            "catchment of section BC: area -5, expected 0 to 1000000 ha",
                            "section loop?: leads from a node to itself, expected two nodes",
                            "section dark: found no geometry and no length, expected one of them",
                            "catchment of section BC: polygon crosses itself"));
    EXPECT_THAT(values.m_unusual,
                ElementsAre("PIPE_ROUGHNESS: 2 unusual values (AB: 0.00075, BC: 0.0015); usual are 0.01 to 10 mm",
                            "area: 1 unusual value (AB: 40 ha entered, polygon 1 ha); expected that of the polygon or "
                            "less"));
}

TEST(ProjectValues, AMessageShowsTheFirstTwenty) {
    CTestProject project;
    const CTextNetwork net("A-B-C-D-E-F-G-H-I-J-K-L-M-N-O-P-Q-R-S-T-U-V-W-X-Y-Z");
    for (const auto& section : net.Sections())
        Data::CDataRW::Write("FLOW_INTIME", section, -5.0, nullptr);
    const auto status = JudgeProject(ActiveTopology()).m_impossible.ToStatus("p.gpkg", "Mend");
    ASSERT_FALSE(status);
    EXPECT_THAT(status.GetError().message,
                HasSubstr("p.gpkg: found 25 impossible values, of which these are the first 20. Mend:\n  section AB: "
                          "FLOW_INTIME -5, expected 0 to 10000 min\n  section BC: "));
    EXPECT_THAT(status.GetError().message, HasSubstr("section TU: "));
    EXPECT_THAT(status.GetError().message, testing::Not(HasSubstr("section UV: ")));
    EXPECT_EQ(JudgeProject(ActiveTopology(), 1000).m_impossible.GetPlaces().size(), 25U);
}

/// Whatever another program writes into the file: it is refused, or it opens and every impossible number is found.
TEST(ProjectValues, OfFilesDamagedBySqlAreNeverSilent) {
    const CTestFolder folder;
    const std::string path = folder.File("town.gpkg");
    {
        CTestProject project;
        ASSERT_TRUE(GenerateNetwork(enmNetworkShape::City, 60, 7));
        ASSERT_TRUE(CProjectFile::Create(path, false));
    }
    const std::string sound = BytesOf(path);
    constexpr std::array values = {"-500",    "NULL", "9e999",    "-9e999",      "'text'", "''", "1e300",
                                   "x'00ff'", "0",    "-1000000", "99999999999", "1.5",    "-1"};
    std::mt19937 dice(2026);
    const auto pick = [&dice](const auto& list) { return std::string(list[dice() % std::size(list)]); };
    std::size_t refused = 0;
    std::size_t impossible = 0;
    for (int round = 0; round < 60; ++round) {
        WriteBytes(path, sound);
        std::string sql;
        for (std::size_t change = 0, changes = 1 + dice() % 3; change < changes; ++change) {
            const std::string table = pick(std::array{"nodes", "sections", "sections", "catchments"});
            const std::string column = RunSql(
                path, fmt::format("SELECT name FROM pragma_table_info('{}') WHERE name NOT IN ('fid', 'geom') LIMIT 1 "
                                  "OFFSET {}",
                                  table, dice() % 14));
            if (column.empty())
                continue;
            sql += fmt::format("UPDATE {} SET \"{}\" = {} WHERE fid % {} = 0;", table, column, pick(values),
                               1 + dice() % 20);
        }
        sqlite3* const database = OpenAsGis(path);
        sqlite3_exec(database, "PRAGMA synchronous = OFF", nullptr, nullptr, nullptr);
        sqlite3_exec(database, sql.c_str(), nullptr, nullptr, nullptr); // some the file itself refuses
        sqlite3_close(database);
        CTestProject project;
        const auto opened = CProjectFile::Open(path);
        if (!opened) {
            EXPECT_EQ(opened.GetError().kind, Utility::enmErrorKind::BadInput) << sql;
            ++refused;
            continue;
        }
        const std::size_t count = JudgeProject(ActiveTopology()).m_impossible.GetCount();
        EXPECT_EQ(count, CountPlainly()) << sql;
        impossible += count > 0 ? 1U : 0U;
    }
    EXPECT_GT(refused, 5U);
    EXPECT_GT(impossible, 5U);
}
