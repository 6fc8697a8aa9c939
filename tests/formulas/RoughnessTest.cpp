// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/formulas/Roughness.h"

#include <gtest/gtest.h>

using OLMGis::Formulas::RoughnessOfManning;

TEST(Roughness, OfManningByStrickler) {
    // (26 · 0.013)^6 = 0.338^6 = 1.49108e-3 m; (26 · 0.01)^6 = 0.26^6 = 3.0892e-4 m.
    EXPECT_NEAR(RoughnessOfManning(0.013), 1.49108, 1e-5);
    EXPECT_NEAR(RoughnessOfManning(0.010), 0.308916, 1e-6);
    EXPECT_EQ(RoughnessOfManning(0.0), 0.0);
    EXPECT_EQ(RoughnessOfManning(-1.0), 0.0);
}
