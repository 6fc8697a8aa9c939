// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/base/CoordinateSystem.h"

#include <gmock/gmock.h>

using namespace OLMGis;
using ProjectIo::ParseCrs;
using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

TEST(CoordinateSystem, KnownNumbersGiveTheirDefinition) {
    struct CCase {
        const char* m_text;
        int m_code;
        const char* m_wkt;
        bool m_isGeographic;
    };
    const CCase cases[] = {
        {"EPSG:3765", 3765, R"(PROJCS["HTRS96 / Croatia TM")", false},
        {" epsg:32633 ", 32633, R"(PROJCS["WGS 84 / UTM zone 33N")", false},
        {"EPSG:4326", 4326, R"(GEOGCS["WGS 84")", true},
        {"EPSG:5698", 5698, R"(PROJCS["RGF93)", false}, // with heights; the horizontal part is taken
    };
    for (const CCase& c : cases) {
        SCOPED_TRACE(c.m_text);
        const auto system = ParseCrs(c.m_text);
        ASSERT_TRUE(system) << system.GetError().message;
        EXPECT_EQ(system->m_code, c.m_code);
        EXPECT_THAT(system->m_wkt, StartsWith(c.m_wkt));
        EXPECT_EQ(system->m_isGeographic, c.m_isGeographic);
        EXPECT_EQ(system->m_wkt.find('\n'), std::string::npos);
    }
    EXPECT_EQ(ParseCrs("epsg:3765")->ToText(), "EPSG:3765");
    EXPECT_EQ(ParseCrs("EPSG:3765")->m_name, "HTRS96 / Croatia TM");
}

TEST(CoordinateSystem, SystemsInOtherUnitsNameTheSameOneInMetres) {
    const struct {
        const char* m_text;
        double m_metresPerUnit;
        const char* m_setting; ///< after a conversion to m
    } cases[] = {
        {"EPSG:3765", 1.0, "EPSG:3765"},
        {"EPSG:2263", 1200.0 / 3937.0, "EPSG:32118"}, // New York Long Island, US survey feet
        {"EPSG:2222", 0.3048, "EPSG:26948"},          // Arizona East, international feet
        {"EPSG:32040", 1200.0 / 3937.0, ""},          // NAD27: the register has it in feet only
    };
    for (const auto& c : cases) {
        const auto system = ParseCrs(c.m_text);
        ASSERT_TRUE(system) << c.m_text;
        EXPECT_NEAR(system->m_metresPerUnit, c.m_metresPerUnit, 1e-12) << c.m_text;
        EXPECT_EQ(system->IsInOtherUnit(), c.m_metresPerUnit != 1.0);
        EXPECT_EQ(SettingAfterConversion(system.Value()), c.m_setting);
    }
    EXPECT_FALSE(ParseCrs("EPSG:4326")->IsInOtherUnit()) << "degrees have no factor";
}

TEST(CoordinateSystem, OtherTextsAreRefused) {
    struct CCase {
        const char* m_text;
        const char* m_expected;
    };
    const CCase cases[] = {
        {"", "found \"\", expected EPSG:n"},
        {"3765", "found \"3765\", expected EPSG:n"},
        {"EPSG:", "expected EPSG:n"},
        {"EPSG:37x65", "expected EPSG:n"},
        {"EPSG:-1", "expected EPSG:n"},
        {"EPSG:0", "expected EPSG:n"},
        {"EPSG:99999999999999", "expected EPSG:n"},
        {"+proj=utm +zone=33", "expected EPSG:n"},
        {"EPSG:99999", "EPSG:99999 is not known"},
        {"EPSG:5703", "EPSG:5703 has no plane"}, // heights only
        {"EPSG:4978", "EPSG:4978 has no plane"}, // from the centre of the earth
    };
    for (const CCase& c : cases) {
        SCOPED_TRACE(c.m_text);
        const auto system = ParseCrs(c.m_text);
        ASSERT_FALSE(system);
        EXPECT_EQ(system.GetError().kind, Utility::enmErrorKind::BadInput);
        EXPECT_THAT(system.GetError().message, AllOf(StartsWith("coordinate system: "), HasSubstr(c.m_expected)));
    }
}
