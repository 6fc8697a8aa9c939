// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/sewage_core/IDPTurkParams.h"

#include "tests/support/TestProject.h"

#include <gtest/gtest.h>

#include <cmath>

using OLMGis::Sewage::CIDPTurkParams;

TEST(IDPTurkParams, ATextIsReadInFullOrNotAtAll) {
    const CTestProject project;
    CIDPTurkParams defaults;
    ASSERT_EQ(defaults.Load(), 1);
    ASSERT_GE(defaults.GetRows().size(), 1U);
    struct CRow {
        const char* m_text;
        int m_result;
        std::size_t m_rows;
    };
    for (const CRow& row : {CRow{"0;10:1:2:3", 1, 1},
                            {"12.5;10:1:2:3;20:4:5:6", 1, 2},
                            {" 0 ; 10 : 1 : 2 : 3 ;", 1, 1},
                            {"", 0, 0},
                            {"0", 0, 0},
                            {";10:1:2:3", 0, 0},
                            {"x;10:1:2:3", 0, 0},
                            {"0;10:1:2", 0, 0},
                            {"0;10:1:2:3:4", 0, 0},
                            {"0;10:1:2:3;20:a:5:6", 0, 0},
                            {"10:1:2:3;0", 0, 0}}) {
        CIDPTurkParams params = defaults;
        EXPECT_EQ(params.setValue(row.m_text), row.m_result) << row.m_text;
        EXPECT_EQ(params.GetRows().size(), row.m_result == 1 ? row.m_rows : defaults.GetRows().size()) << row.m_text;
        EXPECT_EQ(params.Load(), 1);
        EXPECT_EQ(params.GetConstantTime(), 0.0);
    }
}

TEST(IDPTurkParams, TheRowFollowsFromTheArea) {
    CIDPTurkParams params;
    EXPECT_EQ(params.getIntesity(1, 10), 0.0) << "no rows yet";
    ASSERT_EQ(params.setValue("0;10:1000:5:1;20:900:0:0.5"), 1);
    EXPECT_DOUBLE_EQ(params.getIntesity(10, 5), 100.0);
    EXPECT_DOUBLE_EQ(params.getIntesity(10.001, 9), 300.0);
    EXPECT_DOUBLE_EQ(params.getIntesity(1e9, 9), 300.0) << "the last row applies to all larger areas";
    ASSERT_EQ(params.setValue("20;10:1000:5:1"), 1);
    EXPECT_DOUBLE_EQ(params.getIntesity(1, 5), 40.0) << "the constant time";
}
