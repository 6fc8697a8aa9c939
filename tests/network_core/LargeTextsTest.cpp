// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
//
// Texts and tables that are as large as they may be: what takes more than linear time would not come to an end here.
#include "host/network_core/Catalog.h"
#include "host/network_core/PropertiesEx.h"

#include <boost/make_shared.hpp>
#include <gtest/gtest.h>

#include <string>

using namespace OLMGis::Topology;

TEST(Form, IsRestoredFromAmongAHundredThousandForeignTags) {
    auto category = boost::make_shared<CCategory>();
    CPropertiesEx form;
    form.AddCategory(category);
    CPropertyEx::CreateProperty(category, "A", enmPropertyEditorType::Edit, 0, 0, 1.0, 1.0, 1.0, 1.0, 0, nullptr, "",
                                "");
    std::string text = "{";
    for (int i = 0; i < 100000; ++i)
        text += "\"" + std::to_string(i) + "\":1,";
    text += "\"A\":2.5}";
    ASSERT_TRUE(form.Restore(text));
    EXPECT_EQ(form.GetDblProperty("A", 0.0, 1), 2.5);
    std::string blanks(2'000'000, ' ');
    const auto tooLong = form.Restore(blanks.append("{}"));
    ASSERT_FALSE(tooLong);
    EXPECT_EQ(tooLong.GetError().message, "serialised form: found 2000002 bytes, expected at most 1048576");
}

TEST(Form, RefusesDeepTextsAndKeepsItsValues) {
    auto category = boost::make_shared<CCategory>();
    CPropertiesEx form;
    form.AddCategory(category);
    CPropertyEx::CreateProperty(category, "A", enmPropertyEditorType::Edit, 0, 0, 1.0, 1.0, 1.0, 1.0, 0, nullptr, "",
                                "");
    const std::string deep(500'000, '[');
    for (const std::string& text :
         {deep, "{\"A\":" + deep, "{\"A\":" + deep + std::string(deep.size(), ']') + "}",
          std::string("{\"A\":{\"A\":2}}"), std::string("{\"A\":1e999}"), std::string("{\"A\":2,\"B\":\"\xFF\"}")}) {
        EXPECT_FALSE(form.Restore(text)) << text.substr(0, 20);
        EXPECT_EQ(form.GetDblProperty("A", 0.0, 1), 1.0);
    }
}

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
