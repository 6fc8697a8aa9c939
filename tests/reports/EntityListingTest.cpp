// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/gis_core/DataConfiguration.h"
#include "reports/AttributeListing.h"
#include "reports/EntityChoice.h"
#include "reports/OutletListing.h"
#include "reports/TablePrinting.h"
#include "tests/support/TestProject.h"
#include "tests/support/TextNetwork.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

using OLMGis::Data::enmEntityKind;
using Reports::CEntityList;
using testing::HasSubstr;

namespace {

std::string TextOf(const Reports::CTable& table) {
    std::ostringstream stream;
    PrintAsText(stream, table);
    return stream.str();
}

/// B has a way in and two ways out.
class Listings : public testing::Test {
protected:
    CTestProject m_project;
    CTextNetwork m_network{"A-B-C-D\n"
                           "B--E"};
};

} // namespace

TEST_F(Listings, EntitiesAreChosenByNameGuidAndList) {
    const std::string guid(m_network.Section("CD")->GetGuid());
    const struct {
        std::vector<std::string> m_texts;
        const char* m_names;
    } cases[] = {
        {{"BC"}, "BC"},
        {{"CD, AB"}, "CD AB"},
        {{guid}, "CD"},
        {{"AB,CD", "AB", guid}, "AB CD"},
    };
    for (const auto& test : cases) {
        const auto chosen = Reports::ChooseEntities(enmEntityKind::Section, test.m_texts);
        ASSERT_TRUE(chosen) << chosen.GetError().message;
        EXPECT_EQ(NamesOf(chosen.Value()), test.m_names);
    }
    const auto sections = Reports::ChooseSections({"CD,AB"});
    ASSERT_TRUE(sections);
    EXPECT_EQ(sections->front()->GetName(), "AB") << "in the order of the network";
    EXPECT_EQ(NamesOf(Reports::GetAllEntities(enmEntityKind::Node)), "A B C D E");
    for (const auto& [text, message] : {std::pair{"XY", "found \"XY\", expected the name or GUID of a section"},
                                        std::pair{",", "expected names or GUIDs of sections"}}) {
        const auto none = Reports::ChooseEntities(enmEntityKind::Section, {text});
        ASSERT_FALSE(none) << text;
        EXPECT_THAT(none.GetError().message, HasSubstr(message));
    }
}

/// GUIDs are for programs, unless people cannot distinguish the rows without them.
TEST_F(Listings, AttributesShowGuidsWhereNamesRepeat) {
    m_network.Set("AB", "SECTION_SLOPE", 5.5);
    const Reports::CDefinitionList keys{
        OLMGis::Data::CDataConfiguration::Instance()->GetDataDefinitionByID("SECTION_SLOPE")};
    const auto once = Reports::ChooseEntities(enmEntityKind::Section, {"AB,BC"});
    EXPECT_THAT(TextOf(Reports::MakeAttributeTable(once.Value(), keys)), testing::StartsWith("name  SECTION_SLOPE\n"));
    const CEntityList twice{once->front(), once->front()};
    EXPECT_THAT(TextOf(Reports::MakeAttributeTable(twice, keys)), HasSubstr(std::string(once->front()->GetGuid())));
    Reports::CTable::CRow row;
    Reports::MakeAttributeTable(once.Value(), keys).ReadRow(1, row);
    EXPECT_FALSE(row.back().IsNotNull());
}

TEST_F(Listings, OutletsNameForksAndTheirSections) {
    const auto forks = Reports::FindForks();
    ASSERT_EQ(forks.size(), 1U);
    const std::string text = TextOf(Reports::MakeOutletListing(forks).m_blocks.front().m_table);
    EXPECT_THAT(text, HasSubstr("B     -            BC BE         AB\n"));
}
