// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_core/SectionSlopes.h"

#include "tests/support/TestProject.h"
#include "tests/support/TextNetwork.h"

#include <gtest/gtest.h>

#include <limits>

using OLMGis::Data::CDataBox;
using OLMGis::Data::CJournal;
using OLMGis::Data::CJournalScope;
using OLMGis::Topology::CSlopeSummary;
using OLMGis::Topology::StoreSlopes;

namespace {

/// AB 30 m falls 0.15 m, BC 20 m climbs 0.1 m, CD 10 m has one level, DE no length, EF levels that are no numbers.
class SectionSlopes : public ::testing::Test {
protected:
    SectionSlopes() {
        SetLevels("AB", 100.25, 100.1);
        SetLevels("BC", 100.1, 100.2);
        SetLevels("CD", 100.2, {});
        SetLevels("DE", 100.0, 99.0);
        m_network.Set("DE", "length", 0.0);
        SetLevels("EF", std::numeric_limits<double>::infinity(), 99.0);
        m_network.Set("CD", "SECTION_SLOPE_CAL", 7.5);
    }
    void SetLevels(const char* section, const CDataBox& upper, const CDataBox& lower) {
        m_network.Set(section, "LEVEL_LINE_0", upper);
        m_network.Set(section, "LEVEL_LINE_1", lower);
    }
    double Value(const char* section, const char* key = "SECTION_SLOPE_CAL") {
        const CDataBox box = m_network.Get(section, key);
        return box.IsNotNull() ? box.AsDouble() : -777.0;
    }

    CTestProject m_project;
    CTextNetwork m_network{"A---B--C-D-E-F"};
};

} // namespace

TEST_F(SectionSlopes, FollowFromLevelsAndLengthAndLeaveOthersAlone) {
    const CSlopeSummary summary = StoreSlopes(m_network.Topology(), {});
    EXPECT_NEAR(Value("AB"), 5.0, 1e-11);
    EXPECT_NEAR(Value("BC"), -5.0, 1e-11);
    EXPECT_EQ(Value("CD"), 7.5);
    EXPECT_EQ(Value("DE"), -777.0);
    EXPECT_EQ(Value("EF"), -777.0);
    EXPECT_EQ(Value("AB", "SECTION_SLOPE"), -777.0);
    EXPECT_EQ(summary.m_calculated, 2U);
    EXPECT_EQ(summary.m_designed, 0U);
    EXPECT_EQ(NamesOf(summary.m_withoutLevels), "CD");
    EXPECT_EQ(NamesOf(summary.m_withoutLength), "DE EF");
    EXPECT_EQ(NamesOf(summary.m_climbing), "BC");
    EXPECT_TRUE(summary.m_refused.empty());
}

// As differences of doubles most of these are a little off: a check with the slope as its limit would report them.
TEST_F(SectionSlopes, AreTheDecimalsThatLevelsAndLengthGive) {
    const struct {
        double upper;
        double lower;
        double length;
        double slope;
    } cases[] = {{100.56, 100.26, 60.0, 5.0},
                 {100.26, 100.56, 60.0, -5.0},
                 {203.4, 203.1, 100.0, 3.0},
                 {12.3, 12.3, 7.0, 0.0},
                 {1.0, 0.0, 3.0, 333.333333333}};
    for (const auto& c : cases) {
        SetLevels("AB", c.upper, c.lower);
        m_network.Set("AB", "length", c.length);
        StoreSlopes(m_network.Topology(), {});
        EXPECT_EQ(Value("AB"), c.slope) << c.upper << " to " << c.lower;
    }
}

TEST_F(SectionSlopes, DesignSlopesAreFilledOnlyWhereThereIsNone) {
    m_network.Set("AB", "SECTION_SLOPE", 4.0);
    EXPECT_EQ(StoreSlopes(m_network.Topology(), {true}).m_designed, 1U);
    EXPECT_EQ(Value("AB", "SECTION_SLOPE"), 4.0);
    EXPECT_NEAR(Value("BC", "SECTION_SLOPE"), -5.0, 1e-11);
    EXPECT_EQ(Value("CD", "SECTION_SLOPE"), -777.0);
}

TEST_F(SectionSlopes, ReadOnlyOnesAreNamedAndAllIsUndone) {
    m_network.Set("AB", "SECTION_SLOPE_CAL", 1.0);
    m_network.Section("BC")->SetReadOnly(true);
    CJournal journal;
    {
        const CJournalScope scope(m_project.Store(), &journal);
        const CSlopeSummary summary = StoreSlopes(m_network.Topology(), {true});
        EXPECT_EQ(NamesOf(summary.m_refused), "BC");
        EXPECT_NEAR(Value("AB"), 5.0, 1e-11);
    }
    journal.Undo(m_project.Store());
    EXPECT_EQ(Value("AB"), 1.0);
    EXPECT_EQ(Value("AB", "SECTION_SLOPE"), -777.0);
}
