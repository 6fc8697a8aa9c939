// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_core/FunctionalAnalysisManager.h"
#include "tests/project_io/ProjectFileFixture.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

using namespace OLMGis;
using ProjectIo::CProjectFile;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Topology::CFinding;
using Topology::CFunctionalAnalysisManager;
using Topology::CItemFindings;

namespace {

std::vector<CItemFindings> SomeFindings() {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    std::vector<CItemFindings> items;
    for (const char* key : {"0004_MIN_SLOPE", "0006_NEGATIVE_CASCADE", "0005_MANHOLE_PIPE"})
        items.push_back({key, "{}"});
    items[0].m_findings = {{"guid-1", "S 1", "Slope, \"quoted\" (-0.10)", -0.1, 0.0, "1/1000", {10.5, 20.25}},
                           {"guid-2", "", "Without numbers, drawn nowhere", {}, {}, {}, {nan, nan}}};
    items[2].m_findings = {{"guid-3", "Ж", "too wide", 1.25, 1.0, "m", {-3.0, 4.0}}};
    return items;
}

std::string DescribeFindings() {
    const auto& findings = CFunctionalAnalysisManager::Instance()->GetFindings();
    if (!findings)
        return "none kept";
    std::string text;
    const auto show = [](const std::optional<double>& number) { return number ? fmt::format("{}", *number) : "-"; };
    for (const CItemFindings& item : *findings)
        for (const CFinding& finding : item.m_findings)
            text += fmt::format("{} [{}|{}|{}] {} {} {} {} {}\n", item.m_item, finding.m_guid, finding.m_name,
                                finding.m_text, show(finding.m_value), show(finding.m_limit), finding.m_unit,
                                finding.m_point.m_x, finding.m_point.m_y);
    return text;
}

/// A file with the small network and the findings given; none for a project that was never checked.
std::string FileWith(const CTestFolder& folder, std::optional<std::vector<CItemFindings>> findings) {
    CTestProject project;
    FillSmall();
    CFunctionalAnalysisManager::Instance()->SetFindings(std::move(findings));
    std::string path = folder.File("checked.gpkg");
    EXPECT_TRUE(CProjectFile::Create(path, true));
    return path;
}

/// The findings of a project after opening a file, followed by the warnings.
std::string OpenedFindings(const std::string& path) {
    CTestProject project;
    CFunctionalAnalysisManager::Instance()->SetFindings(SomeFindings());
    const auto file = CProjectFile::Open(path);
    if (!file)
        return file.GetError().message;
    return DescribeFindings() + fmt::format("{}", fmt::join(file->GetWarnings(), "; "));
}

} // namespace

TEST(FindingsLayer, FindingsComeBackInTheirOrder) {
    const CTestFolder folder;
    const std::string path = FileWith(folder, SomeFindings());
    CTestProject project;
    {
        CTestProject filled;
        CFunctionalAnalysisManager::Instance()->SetFindings(SomeFindings());
        EXPECT_EQ(OpenedFindings(path), DescribeFindings());
    }
    auto file = CProjectFile::Open(path);
    ASSERT_TRUE(file) << file.GetError().message;
    const auto& items = *CFunctionalAnalysisManager::Instance()->GetFindings();
    ASSERT_EQ(items.size(), 2U) << "an item that found nothing has no row";
    EXPECT_EQ(items[0].m_findings.size(), 2U);
    const std::string before = BytesOf(path);
    ASSERT_TRUE(file->SaveAs(folder.File("again.gpkg"), false));
    EXPECT_TRUE(BytesOf(folder.File("again.gpkg")) == before) << "kept whole by who changed nothing";
}

TEST(FindingsLayer, GisProgramsSeeAPointLayerWithItsIndex) {
    const CTestFolder folder;
    const std::string path = FileWith(folder, SomeFindings());
    EXPECT_EQ(RunSql(path, "SELECT group_concat(geometry_type_name || z || m) FROM gpkg_geometry_columns "
                           "WHERE table_name = 'findings'"),
              "POINT00");
    EXPECT_EQ(RunSql(path, "SELECT min_x || ' ' || min_y || ' ' || max_x || ' ' || max_y FROM gpkg_contents "
                           "WHERE table_name = 'findings' AND data_type = 'features'"),
              "-3.0 4.0 10.5 20.25");
    EXPECT_EQ(RunSql(path, "SELECT count(*) FROM rtree_findings_geom"), "2");
    EXPECT_EQ(RunSql(path, "SELECT count(*) FROM findings WHERE geom IS NULL AND value IS NULL AND \"limit\" IS NULL"),
              "1");
}

TEST(FindingsLayer, OnlyACheckedProjectHasOne) {
    const CTestFolder folder;
    const char* const count = "SELECT count(*) FROM sqlite_schema WHERE name = 'findings'";
    EXPECT_EQ(RunSql(FileWith(folder, std::nullopt), count), "0");
    EXPECT_EQ(OpenedFindings(folder.File("checked.gpkg")), "none kept") << "as files of former programs open";
    EXPECT_EQ(RunSql(FileWith(folder, std::vector<CItemFindings>{}), count), "1") << "checked, and sound";
    EXPECT_EQ(OpenedFindings(folder.File("checked.gpkg")), "");
}

TEST(FindingsLayer, AProjectOpensWithoutFindingsThatCannotBeRead) {
    const char* const edits[] = {
        "UPDATE findings SET value = 'much' WHERE fid = 2",
        "UPDATE findings SET geom = x'0102' WHERE fid = 1",
        "DROP TABLE findings; CREATE TABLE findings (fid INTEGER PRIMARY KEY, mine TEXT)",
        "DROP TABLE findings; CREATE VIEW findings AS SELECT * FROM nodes",
    };
    for (const char* edit : edits) {
        const CTestFolder folder;
        const std::string path = FileWith(folder, SomeFindings());
        RunSql(path, edit);
        EXPECT_THAT(OpenedFindings(path), HasSubstr("none keptthe layer findings is not what checks write")) << edit;
    }
    const CTestFolder folder;
    const std::string path = FileWith(folder, SomeFindings());
    RunSql(path, "ALTER TABLE findings ADD COLUMN mine TEXT; DELETE FROM findings WHERE fid = 1");
    EXPECT_THAT(OpenedFindings(path), HasSubstr("the column \"mine\" of the layer findings"));
    EXPECT_THAT(OpenedFindings(path), HasSubstr("too wide"));
}
