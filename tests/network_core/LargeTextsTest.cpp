// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
//
// Texts and tables that are as large as they may be: what takes more than linear time would not come to an end here.
#include "host/network_core/Catalog.h"

#include <gtest/gtest.h>

#include <string>

using namespace OLMGis::Topology;

TEST(Catalog, OneNameInFiftyThousandGroups) {
    CCatalog catalog("PIPE");
    for (int i = 0; i < 50000; ++i) {
        const std::string number = std::to_string(i);
        const auto group = catalog.AddGroup("g" + number, "group " + number).Value();
        ASSERT_TRUE(catalog.AddPipe(*group, "p" + number, "DN 300", {}));
        ASSERT_FALSE(catalog.AddPipe(*group, "q" + number, "DN 300", {}));
    }
    EXPECT_EQ(catalog.GetItemsByName("DN 300").size(), 50000U);
}
