// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/gis_core/Utility.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <limits>

using OLMGis::Utility::CUtility;
using OLMGis::Utility::GuidEqual;
using OLMGis::Utility::GuidHash;

TEST(Utility, NumbersInTextReadByTheirLongestPrefixInEveryLocale) {
    // A comma locale must change nothing; machines without it still run the table.
    std::setlocale(LC_ALL, "de_DE.UTF-8");
    constexpr double Infinity = std::numeric_limits<double>::infinity();
    const struct {
        const char* text;
        double expected;
    } rows[] = {
        {"12.5", 12.5},
        {"  12.5mm", 12.5},
        {"\t-3", -3},
        {"+7", 7},
        {"1e3x", 1000},
        {"1e", 1},
        {"1,5", 1},
        {".5", 0.5},
        {"5.", 5},
        {"", 0},
        {"abc", 0},
        {"-", 0},
        {".", 0},
        {"0x10", 0},
        {"inf", 0},
        {"nan", 0},
        {"-infinity", 0},
        {"1e999", Infinity},
        {"-1e999", -Infinity},
        {"1e-999", 0},
        {"0.00001e-400", 0},
        {"123456789012345678901e300", Infinity},
        {"--5", 0},
        {"1e+2", 100},
    };
    for (const auto& row : rows)
        EXPECT_EQ(CUtility::ToDouble(row.text), row.expected) << '"' << row.text << '"';
    std::setlocale(LC_ALL, "C");
}

TEST(Utility, StrictReadersTakeWholeTextsOnly) {
    EXPECT_EQ(CUtility::ParseDouble(" 1.25 "), 1.25);
    EXPECT_EQ(CUtility::ParseInt("-2147483648"), std::numeric_limits<int>::min());
    for (const char* bad : {"", " ", "1.2.3", "1,2", "1 2", "inf", "nan", "1e999", "0x1", "12a"})
        EXPECT_FALSE(CUtility::ParseDouble(bad)) << '"' << bad << '"';
    for (const char* bad : {"", "1.0", "2147483648", "+-1", "1e2", "٣"})
        EXPECT_FALSE(CUtility::ParseInt(bad)) << '"' << bad << '"';
}

TEST(Utility, NumbersAsTextReadBackAsThemselves) {
    for (const double value : {0.1, 1.0 / 3.0, 1e300, 5e-324, -0.0, 123456789.123456789, 9056.8})
        EXPECT_EQ(CUtility::ToDouble(CUtility::ToText(value)), value);
    EXPECT_EQ(CUtility::CutToInt(-2.9), -2);
    EXPECT_EQ(CUtility::CutToInt(1e20), std::numeric_limits<int>::max());
    EXPECT_EQ(CUtility::CutToInt(-1e20), std::numeric_limits<int>::min());
    EXPECT_EQ(CUtility::CutToInt(std::nan("")), 0);
}

TEST(Utility, SplittingDropsEmptyParts) {
    std::vector<std::string> parts{"kept"};
    EXPECT_EQ(CUtility::SplitString("  5   310.5 ", parts, ' '), 2);
    EXPECT_EQ(parts, (std::vector<std::string>{"kept", "5", "310.5"}));
    parts.clear();
    EXPECT_EQ(CUtility::SplitString(";;", parts, ';'), 0);
    EXPECT_EQ(CUtility::SplitString("", parts, ';'), 0);
}

TEST(Utility, Utf8IsCountedInCharactersAndChecked) {
    EXPECT_EQ(CUtility::CountCharacters("čaša"), 4U);
    EXPECT_EQ(CUtility::CountCharacters("a\xFF"), 2U);
    EXPECT_TRUE(CUtility::IsUtf8("Ľúbica 東京 😀"));
    for (const char* bad : {"\xC0\x80", "\xED\xA0\x80", "\xF5\x80\x80\x80", "\xE2\x82", "ab\xE9"})
        EXPECT_FALSE(CUtility::IsUtf8(bad));
}

TEST(Utility, AWrongPlaceholderInATranslationShowsTheRawText) {
    EXPECT_EQ(CUtility::Format("d = %.3f m", 0.25), "d = 0.250 m");
    EXPECT_EQ(CUtility::Format("d = %s %s", std::string("x")), "d = %s %s");
    EXPECT_EQ(CUtility::Format("100 %", 1.0), "100 %");
    EXPECT_EQ(CUtility::Format("%q", 1.0), "%q");
}

TEST(Utility, GuidsCompareWithoutCaseAndBraces) {
    const char* plain = "0a1b2c3d-0000-5000-8000-00000000000f";
    const char* other = "{0A1B2C3D-0000-5000-8000-00000000000F}";
    EXPECT_TRUE(GuidEqual()(plain, other));
    EXPECT_EQ(GuidHash()(plain), GuidHash()(other));
    EXPECT_FALSE(GuidEqual()(plain, "0a1b2c3d-0000-5000-8000-00000000000e"));
}

TEST(Utility, MadeGuidsAreStableAndDifferByLayerNameAndPlace) {
    const std::string guid = CUtility::MakeGuid("section", "S1", 7);
    EXPECT_EQ(guid, CUtility::MakeGuid("section", "S1", 7));
    EXPECT_EQ(guid.size(), 36U);
    EXPECT_EQ(guid[14], '5');
    EXPECT_NE(std::string("89ab").find(guid[19]), std::string::npos);
    EXPECT_NE(guid, CUtility::MakeGuid("node", "S1", 7));
    EXPECT_NE(guid, CUtility::MakeGuid("section", "S17", 7));
    EXPECT_NE(CUtility::MakeGuid("section", "S1", 17), CUtility::MakeGuid("section", "S11", 7));
}
