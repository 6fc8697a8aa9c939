// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/gis_core/ReportFile.h"

#include "host/gis_core/ShortName.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

using OLMGis::Utility::CReportFile;

namespace {

std::string BytesOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace

/// On a full disk, for which a link to the device of that name stands in, and after an early end, the former stays.
TEST(ReportFile, ANewReportReplacesTheFormerOneOnlyWhole) {
    std::string name = (std::filesystem::temp_directory_path() / "drenova-report-XXXXXX").string();
    ASSERT_NE(::mkdtemp(name.data()), nullptr);
    const std::filesystem::path folder = name;
    const std::filesystem::path path = folder / "report.txt";
    std::ofstream(path) << "former";
    std::filesystem::create_symlink("/dev/full", folder / "report.txt.part");
    {
        CReportFile full(path, CReportFile::enmStart::Anew);
        full.Append("new");
        EXPECT_FALSE(full.Close());
        full.TakeBack();
    }
    EXPECT_EQ(BytesOf(path), "former");
    std::filesystem::remove(folder / "report.txt.part");
    {
        CReportFile abandoned(path, CReportFile::enmStart::Anew);
        abandoned.Append("half");
    }
    EXPECT_EQ(BytesOf(path), "former");
    CReportFile file(path, CReportFile::enmStart::Anew);
    file.Append("new");
    EXPECT_TRUE(file.Close());
    CReportFile more(path);
    more.Append(" and more");
    EXPECT_TRUE(more.Close());
    EXPECT_EQ(BytesOf(path), "new and more");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 1);
    std::filesystem::remove_all(folder);
}

TEST(ShortName, CountsCharacters) {
    const std::string most(80, 'x');
    EXPECT_EQ(OLMGis::Utility::ShortName(most), most);
    EXPECT_EQ(OLMGis::Utility::ShortName(most + "y"), std::string(79, 'x') + "…");
    std::string cyrillic;
    for (int i = 0; i < 80; ++i)
        cyrillic += "ж";
    EXPECT_EQ(OLMGis::Utility::ShortName(cyrillic), cyrillic);
    EXPECT_EQ(OLMGis::Utility::ShortName(cyrillic + "ж"), cyrillic.substr(0, 158) + "…");
}
