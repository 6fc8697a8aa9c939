// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "reports/ShownText.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

using OLMGis::Data::CDataBox;
using Reports::CutToWidth;
using Reports::DisplayWidth;
using Reports::OnOneLine;
using Reports::ShowValue;
using Reports::Suggest;

TEST(ShownText, MeasuresWhatATerminalShows) {
    EXPECT_EQ(DisplayWidth("čakovec"), 7u);
    EXPECT_EQ(DisplayWidth("c\xCC\x8C"), 1u); // c and a combining caron
    EXPECT_EQ(DisplayWidth("水"), 2u);
    EXPECT_EQ(DisplayWidth("\xFF\xC4"), 2u); // stray bytes
    EXPECT_EQ(CutToWidth("水水水", 5), "水水");
    EXPECT_EQ(OnOneLine("a\x1b[2J\nb\x7f\xFFč\xC2\x9B"), "a?[2J?b??č?");
    EXPECT_EQ(OnOneLine("a\u202Eb\u2066c\u200Ed\u2028e"), "a?b?c?d?e") << "what turns or ends the line";
    EXPECT_EQ(Reports::WithoutControls("a\x1b[2J\r\n\tč\xC2\x9B"), "a?[2J?\n\tč?");
}

TEST(ShownText, RoundsForPeopleWithoutLosingNumbers) {
    EXPECT_EQ(ShowValue(CDataBox(1.23456), 3), "1.235");
    EXPECT_EQ(ShowValue(CDataBox(0.0), 3), "0.000");
    EXPECT_EQ(ShowValue(CDataBox(0.00012345), 3), "0.0001234");
    EXPECT_EQ(ShowValue(CDataBox(-1e300), 3), "-1e+300");
    EXPECT_EQ(ShowValue(CDataBox(std::numeric_limits<double>::quiet_NaN()), 3), "NaN");
    EXPECT_EQ(ShowValue(CDataBox(-std::numeric_limits<double>::infinity()), 3), "-Infinity");
    EXPECT_EQ(ShowValue(CDataBox(0.1), -1), "0.1");
    EXPECT_EQ(ShowValue(CDataBox(7), 3), "7");
    EXPECT_EQ(ShowValue(CDataBox(), 3), "");
}

TEST(ShownText, SuggestsOnlyWhatIsNear) {
    EXPECT_EQ(Suggest("rnu", {"new", "run"}), ", did you mean run?");
    EXPECT_EQ(Suggest("flow_usr", {"FLOW_RAIN", "FLOW_USER"}), ", did you mean FLOW_USER?");
    EXPECT_EQ(Suggest("calc", {"catalog", "calculators"}), ", did you mean calculators?");
    EXPECT_EQ(Suggest("xyz", {"new", "run"}), "");
    EXPECT_EQ(Suggest(std::string(100000, 'x'), {"run"}), "");
}
