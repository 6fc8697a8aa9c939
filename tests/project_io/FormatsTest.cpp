// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/Formats.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <set>

using namespace OLMGis;
using namespace OLMGis::ProjectIo;
using ::testing::HasSubstr;

TEST(Formats, AreFoundBySuffixAndByKey) {
    const struct {
        const char* m_path;
        const char* m_key; ///< empty where no format fits
    } cases[] = {{"a/town.geojson", "geojson"},
                 {"town.JSON", "geojson"},
                 {"d.x/net.INP", "inp"},
                 {"town.dwg", ""},
                 {"town", ""},
                 {"-", ""},
                 {"d.inp/net", ""},
                 {"values.csv", ""}};
    for (const auto& each : cases) {
        const auto format = GuessImportFormat(each.m_path);
        EXPECT_EQ(format ? format.Value()->m_key : "", each.m_key) << each.m_path;
        if (!format) {
            EXPECT_THAT(format.GetError().message, HasSubstr("one of .geojson, .json, .inp")) << each.m_path;
        }
    }
    EXPECT_TRUE(FindImportFormat("inp"));
    EXPECT_THAT(FindImportFormat("csv").GetError().message, HasSubstr("expected one of geojson, inp"));
    EXPECT_THAT(FindFormat(GetExportFormats(), "inp").GetError().message,
                HasSubstr("expected one of geojson, csv, catalog"));
}

/// Otherwise a suffix or a key would not choose one format.
TEST(Formats, NoKeyAndNoSuffixOfAnImportRepeats) {
    std::set<std::string_view> keys;
    std::set<std::string_view> suffixes;
    for (const CFormat& format : GetFormats()) {
        EXPECT_TRUE(keys.insert(format.m_key).second) << format.m_key;
        EXPECT_FALSE(format.m_suffixes.empty()) << format.m_key;
        EXPECT_TRUE(format.m_import == nullptr || !format.m_reads.empty()) << format.m_key;
        EXPECT_TRUE(format.m_export == nullptr || !format.m_writes.empty()) << format.m_key;
        for (const std::string_view suffix : format.m_suffixes)
            EXPECT_TRUE(format.m_import == nullptr || suffixes.insert(suffix).second) << suffix;
    }
}

TEST(Formats, TheDocumentationListsThemAll) {
    std::ifstream file(DRENOVA_SOURCE_DIR "/docs/formats.md");
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    for (const CFormat& format : GetFormats())
        EXPECT_THAT(
            text, HasSubstr(fmt::format("| `{}` | {} | {} | {} | {} | {} | {} | {} |\n", format.m_key,
                                        TextOfSuffixes(format), format.m_title, format.m_import != nullptr ? "yes" : "",
                                        format.m_export != nullptr ? "yes" : "", format.m_reads, format.m_writes,
                                        format.m_loses)));
}
