// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "reports/ParameterFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <utility>

using OLMGis::Utility::enmErrorKind;
using Reports::CParameterFile;
using testing::HasSubstr;

TEST(ParameterFile, ReadsAStreamThatCannotBeRead) {
    std::istringstream broken("{}");
    broken.setstate(std::ios::badbit);
    const auto file = CParameterFile::Read(broken, "p.json", {}, {});
    ASSERT_FALSE(file);
    EXPECT_EQ(file.GetError().kind, enmErrorKind::Refused);
}

TEST(ParameterFile, RefusesOtherFiles) {
    const std::pair<std::string, const char*> cases[] = {
        {"", "p.json: not JSON"},
        {"[1]", "expected one object"},
        {"{\"001_X\": 1}", "p.json: 001_X: found 1"},
        {"{\"001_X\": {\"A\": null}}", "p.json: 001_X: A: found null"},
        {"{\"001_X\": {\"A\": [1]}}", "found [1]"},
        {"{\"001_Y\": {}}", "did you mean 001_X?"},
        {"{\"001_X\": {}, \"a\":\n!}", "line 2"},
        {"{\"checks\": 1}", "p.json: checks: found 1"},
        {"{\"checks\": {\"Y\": {}}}", "p.json: checks: found the check \"Y\", expected one of X, Z"},
        {"{\"checks\": {\"X\": {\"A\": [1]}}}", "p.json: checks: X: A: found [1]"},
        {"{\"checks\": " + std::string(100000, '[') + std::string(100000, ']') + "}", "deeply nested"},
        {std::string(1100000, ' '), "more than 1048576 bytes"},
    };
    for (const auto& [text, message] : cases) {
        const auto file = CParameterFile::Parse(text, "p.json", {"001_X"}, {"X", "Z"});
        ASSERT_FALSE(file) << message;
        EXPECT_EQ(file.GetError().kind, enmErrorKind::BadInput);
        EXPECT_THAT(file.GetError().message, HasSubstr(message));
    }
}

/// JSON has no comments: members that begin with "_" are remarks, wherever they are.
TEST(ParameterFile, LeavesOutRemarks) {
    const auto file = CParameterFile::Parse(
        R"({"_about": [1], "001_X": {"_A": {"unit": "m"}, "A": 2}, "checks": {"_": 0, "X": {"_B": null, "B": 3}}})",
        "p.json", {"001_X"}, {"X"});
    ASSERT_TRUE(file) << file.GetError().message;
    ASSERT_EQ(file->FindValues("001_X")->size(), 1U);
    EXPECT_EQ(file->FindValues("001_X")->front().m_tag, "A");
    ASSERT_EQ(file->FindCheckValues("X")->size(), 1U);
}
