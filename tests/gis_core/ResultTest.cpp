// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/gis_core/Result.h"

#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/Utility.h"

#include <gtest/gtest.h>

#include <string>

using namespace OLMGis::Utility;

TEST(Result, MessagesCanBeShownWhateverStoodInTheFile) {
    const struct {
        std::string found;
        std::string shown;
    } cases[] = {
        {"šaht Ľ 東 😀", "šaht Ľ 東 😀"},
        {"\x1b]0;title\x07", "?]0;title?"},
        {"a\nb\r\tc\x7F", "a?b??c?"},
        {std::string("a\0b", 3), "a?b"},
        {"\xC2\x9B"
         "31m\xC2\xA0",
         "??31m\xC2\xA0"},
        {"\xE9t\xE9 \xC0\x80 \xED\xA0\x80", "?t? ?? ???"},
        {"cut \xE2\x82", "cut ??"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(BadInput(c.found).message, c.shown);
        EXPECT_EQ(Refused(c.found).message, c.shown);
    }
}

TEST(Result, MessagesAreNotLongerThanAScreen) {
    std::string text = "x";
    for (int i = 0; i < 100000; ++i)
        text += "č";
    const std::string message = BadInput(text).message;
    EXPECT_LT(message.size(), 2010U);
    EXPECT_TRUE(CUtility::IsUtf8(message));
    EXPECT_TRUE(message.ends_with("č..."));
}

TEST(ModuleConfiguration, ALanguageIsAWordAndNoPath) {
    auto& configuration = *CModuleConfiguration::Instance();
    for (const std::string& language : {std::string("../messages/en"), std::string("/etc/passwd"), std::string(),
                                        std::string("en.json\0", 8), std::string("EN")}) {
        const auto set = configuration.SetLanguage(language);
        ASSERT_FALSE(set) << language;
        EXPECT_EQ(set.GetError().kind, enmErrorKind::BadInput);
    }
    EXPECT_TRUE(configuration.SetLanguage("en"));
}
