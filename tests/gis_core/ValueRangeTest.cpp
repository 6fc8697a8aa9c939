// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/gis_core/ValueRange.h"

#include "host/gis_core/AttributeColumn.h"
#include "host/gis_core/DataConfiguration.h"

#include <gtest/gtest.h>

#include <limits>
#include <utility>
#include <vector>

using namespace OLMGis::Data;

namespace {

constexpr double Infinity = std::numeric_limits<double>::infinity();
constexpr double NaN = std::numeric_limits<double>::quiet_NaN();

TEST(ValueRange, JudgesWhatPeopleEnter) {
    using enum enmJudgement;
    const struct {
        const char* key;
        double value;
        enmJudgement judgement;
        const char* explained; ///< of values that are not fine
    } cases[] = {
        {"length", -500, Impossible, "found -500, expected 0 to 1000000 m"},
        {"length", 0, Fine, ""}, // of devices
        {"length", 5001, Unusual, "found 5001, usual are 0 to 5000 m"},
        {"area", -5, Impossible, "found -5, expected 0 to 1000000 ha"},
        {"area", 0, Fine, ""},
        {"area", Infinity, Impossible, "found Infinity, expected 0 to 1000000 ha"},
        {"PIPE_ROUGHNESS", -1, Impossible, "found -1, expected 0 to 1000000 mm"},
        {"PIPE_ROUGHNESS", 0.00075, Unusual, "found 0.00075, usual are 0.01 to 10 mm"}, // 0.75 mm in m
        {"PIPE_ROUGHNESS", 0.0015, Unusual, "found 0.0015, usual are 0.01 to 10 mm"},   // 1.5 mm in m
        {"PIPE_ROUGHNESS", 0.1, Fine, ""},
        {"PIPE_ROUGHNESS", 1.5, Fine, ""},
        {"PIPE_ROUGHNESS", -1000000, Fine, ""}, // calculations read it as absent
        {"PIPE_ROUGHNESS", -1000001, Impossible, "found -1000001, expected 0 to 1000000 mm"},
        {"FLOW_INTIME", -5, Impossible, "found -5, expected 0 to 10000 min"},
        {"FLOW_INTIME", 0, Fine, ""},
        {"FLOW_INTIME", NaN, Impossible, "found NaN, expected 0 to 10000 min"},
        {"coefficient", 1, Fine, ""},
        {"coefficient", 1.1, Unusual, "found 1.1, usual are 0 to 1"},
        {"coefficient", 50, Impossible, "found 50, expected 0 to 2"}, // %
        {"density", -1, Impossible, "found -1, expected 0 to 100000 inh/ha"},
        {"SECTION_SLOPE", -4, Fine, ""},
        {"SECTION_SLOPE", 0, Fine, ""},
        {"SECTION_SLOPE", -Infinity, Impossible, "found -Infinity, expected a finite number"},
        {"FLOW_COEFRET", -1000000, Fine, ""},
        {"FLOW_ATV_N", 0, Unusual, "found 0, usual are 0.01 to 12 1/year"}, // has a defined, infinite result
        {"LEVEL_LINE_POSITION", 5, Impossible, "found 5, expected 0 to 4"},
        {"LEVEL_LINE_0", 121500, Impossible, "found 121500, expected -12000 to 12000 m"}, // mm
        {"MANHOLE_RT", 0, Impossible, "found 0, expected 1 to 10"},
        {"FLOW_RAIN_IDF", Infinity, Fine, ""}, // a result
        {"FLOW_RAIN_IDF", NaN, Fine, ""},
        {"FLOW_POINT", -0.01, Fine, ""},
        {"FLOW_USER", 250, Unusual, "found 250, usual are -200 to 200 m³/s"}, // l/s
    };
    for (const auto& c : cases) {
        const CDataDefinition* const key = FindDefinition(c.key);
        ASSERT_NE(key, nullptr) << c.key;
        EXPECT_EQ(Judge(key->m_range, c.value), c.judgement) << c.key << ' ' << c.value;
        if (c.judgement != Fine) {
            EXPECT_EQ(ExplainJudgement(key->m_range, c.value, key->m_unit), c.explained);
        }
    }
}

TEST(ValueRange, ABoundMayBeExcluded) {
    CValueRange range;
    range.m_min = 0;
    range.m_max = 1;
    range.m_isMinExcluded = true;
    EXPECT_EQ(Judge(range, 0.0), enmJudgement::Impossible);
    EXPECT_EQ(Judge(range, 1.0), enmJudgement::Fine);
    EXPECT_EQ(PossibleValues(range, "m"), "above 0 and up to 1 m");
    range.m_isMaxExcluded = true;
    EXPECT_EQ(Judge(range, 1.0), enmJudgement::Impossible);
    EXPECT_EQ(PossibleValues(range, ""), "above 0 and below 1");
}

/// A range in which nothing is usual, or of which nothing usual is possible, is a slip in the data file.
TEST(ValueRange, TheRangesOfTheInstallationAreSound) {
    for (const auto& key : CDataConfiguration::Instance()->GetDataDefinitions()) {
        const CValueRange& range = key->m_range;
        const CFineBand band = GetFineBand(range);
        EXPECT_LT(band.m_least, band.m_greatest) << key->m_id;
        for (const auto& usual : {range.m_usualMin, range.m_usualMax})
            EXPECT_TRUE(!usual || Judge(range, *usual) == enmJudgement::Fine) << key->m_id;
        for (const double mark : range.m_marks)
            EXPECT_FALSE(mark >= band.m_least && mark <= band.m_greatest) << key->m_id;
    }
}

TEST(ValueRange, AScanOfAColumnFindsWhatAPlainLoopFinds) {
    CTextPool texts;
    for (const enmDataType type : {enmDataType::Double, enmDataType::Int}) {
        CAttributeColumn column(type, texts);
        std::vector<std::pair<std::uint32_t, double>> expected;
        for (std::uint32_t row = 0; row < 1000; ++row) {
            if (row % 7 == 3)
                continue; // null, and null after a value outside
            const double value = row % 131 == 5 ? -2.0 : row % 233 == 0 ? 12.0 : 1.0 + row % 9;
            column.SetStored(row, column.ToStored(CDataBox(value)));
            if (row % 11 == 6)
                column.SetStored(row, {});
            else if (value < 1.0 || value > 9.0)
                expected.emplace_back(row, value);
        }
        ASSERT_GE(expected.size(), 8U);
        if (type == enmDataType::Double) {
            column.SetStored(1001, column.ToStored(CDataBox(NaN)));
            expected.emplace_back(1001, 0.0);
        }
        std::vector<std::pair<std::uint32_t, double>> found;
        column.VisitOutside({1.0, 9.0}, [&found](std::uint32_t row, double value) {
            found.emplace_back(row, row == 1001 ? 0.0 : value);
        });
        EXPECT_EQ(found, expected);
    }
}

} // namespace
