// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_core/Selector.h"

#include "tests/support/TestProject.h"
#include "tests/support/TextNetwork.h"

#include <gtest/gtest.h>

using namespace OLMGis;

TEST(Selector, GathersAllThatIsInTheNetwork) {
    CTestProject project;
    const CTextNetwork net("A-B-C");
    net.AddCatchment("BC", 1, 2.0);
    net.Topology().RemoveSection(*net.Section("AB"));
    Selection::CSelectionSet set;
    EXPECT_EQ(Selection::CSelector::LoopInstance()->selectActSysAllElements(set), 5);
    EXPECT_EQ(Selection::CSelector::LoopInstance()->selectActSysAllElements(set), 5) << "filled anew";
    EXPECT_EQ(NamesOf(set.GetEntities()), "A B C BC catchment-0");
}
