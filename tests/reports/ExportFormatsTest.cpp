// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "reports/ExportFormats.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <set>
#include <string>

TEST(ExportFormats, HaveKeysOfTheirOwnAndAreDocumented) {
    std::set<std::string_view> keys;
    for (const auto& format : OLMGis::ProjectIo::GetFormats())
        keys.insert(format.m_key);
    std::ifstream file(DRENOVA_SOURCE_DIR "/docs/formats.md");
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    for (const auto& format : Reports::GetTableFormats()) {
        EXPECT_TRUE(keys.insert(format.m_key).second) << format.m_key;
        EXPECT_THAT(text, testing::HasSubstr(fmt::format("| `{}` | {} | {} |  | yes |  | {} | {} |\n", format.m_key,
                                                         OLMGis::ProjectIo::TextOfSuffixes(format), format.m_title,
                                                         format.m_writes, format.m_loses)));
    }
}
