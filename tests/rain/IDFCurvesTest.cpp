// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/curves/IDFCurves.h"

#include "host/gis_core/ModuleConfiguration.h"
#include "tests/support/ReferenceTable.h"
#include "tests/support/ScriptedHost.h"
#include "tests/support/TestProject.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <sys/stat.h>
#include <unistd.h>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// "frequency: duration intensity, ..." of each curve, in order.
std::string Show(const CIDFCurves& curves) {
    std::string text;
    for (const auto& [frequency, curve] : curves.GetCurves()) {
        text += fmt::format("{}{}:", text.empty() ? "" : "; ", frequency);
        for (const auto& [duration, intensity] : curve)
            text += fmt::format(" {}/{}", duration, intensity);
    }
    return text;
}

std::vector<std::size_t> ProblemLines(const CIDFCurves& curves) {
    std::vector<std::size_t> lines;
    for (const auto& problem : curves.GetProblems())
        lines.push_back(problem.m_line);
    return lines;
}

struct CFile {
    const char* m_case;
    std::string m_text;
    int m_result;
    const char* m_curves;
    std::vector<std::size_t> m_problems; ///< their lines
    bool m_printsEnd;                    ///< whether a curve stood open at the end
};

const std::string Fifty = "5" + std::string(44, ' ') + "310.5"; // 50 characters

} // namespace

TEST(IDFCurves, ProblemsAreShownWithoutWhatIsNoText) {
    const CTestProject project;
    CIDFCurves curves;
    std::istringstream file("#1\n5 \xFF\x01\n");
    EXPECT_EQ(curves.Load(file, "curves"), 1);
    ASSERT_EQ(curves.GetProblems().size(), 1U);
    EXPECT_THAT(curves.GetProblems()[0].m_text, ::testing::HasSubstr("??"));
}

// A doubt changes nothing of what is read.
TEST(IDFCurves, DoubtsNameTheirLines) {
    const struct {
        const char* m_text;
        std::vector<std::pair<std::size_t, const char*>> m_doubts;
    } files[] = {
        {"#2\n5 310\n10 228\n20 162\n", {}},
        {"#0.5 1/a\n5 310\n10 228\n", {}},
        {"#1,5\n5 310\n10 228\n", {{1, "1,5"}}},
        {"* a\n#2.5abc\n5 310\n10 228\n", {{2, "2.5abc"}}},
        {"#2\n5 310\n20 200\n10 150\n", {{3, "rises from 150 to 200"}}}, // sorted: 310, 150, 200
        {"#2\n5 310\n", {{1, "single point"}}},
        {"#2\n5 310\n10 -228\n", {{3, "found the intensity -228"}}},
        {"#2\n5 110\n10 84\n60 30\n#50\n5 120\n10 90\n60 31\n", {}},
        // The same as mm/h.
        {"#2\n5 39.6\n10 30.2\n60 10.8\n#50\n5 43.2\n10 32.4\n60 11.2\n", {{5, "look like mm/h"}}},
    };
    for (const auto& file : files) {
        SCOPED_TRACE(file.m_text);
        const CTestProject project;
        CIDFCurves curves;
        std::istringstream input(file.m_text);
        EXPECT_EQ(curves.Load(input, "curves"), 1);
        EXPECT_THAT(curves.GetProblems(), IsEmpty());
        ASSERT_EQ(curves.GetDoubts().size(), file.m_doubts.size());
        for (std::size_t i = 0; i < file.m_doubts.size(); ++i) {
            EXPECT_EQ(curves.GetDoubts()[i].m_line, file.m_doubts[i].first);
            EXPECT_THAT(curves.GetDoubts()[i].m_text, ::testing::HasSubstr(file.m_doubts[i].second));
        }
    }
}

TEST(IDFCurves, FilesLoadAsTheirLinesSay) {
    const std::vector<CFile> files{
        {"the example", "* a comment\n#2\n5 310.5\n10 228\n20 162.25\n", 1, "2: 5/310.5 10/228 20/162.25", {}, true},
        {"tabs, CR LF, byte order mark, no last break",
         "\xEF\xBB\xBF#2\r\n5\t310.5\r\n10  228",
         1,
         "2: 5/310.5 10/228",
         {},
         true},
        {"several marks, words after the number", "##0.5 1/a\n5 1\n", 1, "0.5: 5/1", {}, true},
        {"unsorted points", "#1\n20 1\n5 3\n10 2\n", 1, "1: 5/3 10/2 20/1", {}, true},
        {"only comments", "* a\n* b\n", 0, "", {0}, false},
        {"empty file", "", 0, "", {0}, false},
        {"equal frequencies in other words", "#2\n5 1\n#2.0\n5 9\n", 1, "2: 5/1", {3}, true},
        {"equal durations", "#2\n5 1\n10 2\n5 9\n", 1, "2: 5/1 10/2", {4}, true},
        {"points before the first head", "5 1\n10 2\n#2\n5 3\n", 1, "2: 5/3", {1}, true},
        {"a head without number", "#\n5 1\n#2\n5 3\n", 1, "2: 5/3", {1}, true},
        {"a head without points", "#1\n#2\n5 3\n", 1, "2: 5/3", {1}, true},
        {"the last head without points", "#1\n5 3\n#2\n", 1, "1: 5/3", {3}, false},
        {"an empty line in the second curve", "#1\n5 1\n#2\n5 3\n\n10 2\n", 1, "2: 5/3", {5}, true},
        {"a bad line in the first curve", "#1\n5 1\n10 2\n10\n#2\n5 3\n", 1, "1: 5/1 10/2", {4}, true},
        {"a bad line right after a head", "#1\n5 1\n#2\nx y z\n5 3\n", 0, "", {3, 4, 0}, false},
        {"a bad line before any head", "5\n#1\n5 1\n", 0, "", {1, 0}, false},
        {"three parts", "#1\n5 1 2\n", 0, "", {1, 2, 0}, false},
        {"a blank before the mark", "#1\n5 1\n #2\n5 2\n", 1, "1: 5/1", {3}, true},
        {"words for numbers", "#1\nfive 12x\n", 1, "1: 0/12", {2, 2}, true},
        {"50 characters", "#1\n" + Fifty + "\n", 1, "1: 5/310.5", {}, true},
        {"51 characters", "#1\n5 1\n" + Fifty + " \n", 1, "1: 5/1", {3}, true},
        {"blanks count too", "#1\n5 1" + std::string(48, ' ') + "\n", 0, "", {1, 2, 0}, false},
        {"a long comment", "*" + std::string(500, 'x') + "\n#1\n5 1\n", 1, "1: 5/1", {}, true},
        {"one beyond all bounds", "*" + std::string(3 << 20, 'x') + "\n#1\n5 1\n", 1, "1: 5/1", {}, true},
        {"one that will not end", "#1\n5 1\n#2\n*" + std::string(66U << 20U, 'x') + "\n5 3\n", 0, "", {3, 4, 0}, false},
    };
    for (const CFile& file : files) {
        SCOPED_TRACE(file.m_case);
        const CTestProject project;
        const CScriptedHost host;
        CIDFCurves curves;
        std::istringstream input(file.m_text);
        EXPECT_EQ(curves.Load(input, "curves"), file.m_result);
        EXPECT_EQ(curves.IsValid(), file.m_result != 0);
        EXPECT_EQ(Show(curves), file.m_curves);
        EXPECT_EQ(ProblemLines(curves), file.m_problems);
        EXPECT_EQ(host.m_commandLine, std::vector<std::string>(file.m_printsEnd ? 1 : 0, "\nof4"));
    }
}

TEST(IDFCurves, CharactersCountAndNotBytes) {
    const CTestProject project;
    CIDFCurves curves;
    std::istringstream input("#1\n5 3" + std::string(46, 'x') + "\n10 2\xC4\x8D" + std::string(45, 'x') + "\n");
    EXPECT_EQ(curves.Load(input, ""), 1);
    EXPECT_EQ(Show(curves), "1: 5/3 10/2");
}

TEST(IDFCurves, AMissingFileIsNoCurve) {
    const CTestProject project;
    CIDFCurves curves;
    std::istringstream input("#1\n5 3\n");
    curves.Load(input, "");
    EXPECT_EQ(curves.LoadFromFile("no/such/file.txt"), 0);
    EXPECT_THAT(curves.GetCurves(), IsEmpty());
    EXPECT_EQ(curves.GetPath(), "no/such/file.txt");
    EXPECT_THAT(ProblemLines(curves), ElementsAre(0U));
    EXPECT_EQ(curves.GetCurveIntensity(1, 5), -1.0);
}

/// Reading a pipe that nobody writes to would wait forever, and a second reading would find it empty.
TEST(IDFCurves, APipeIsNoCurveFile) {
    const CTestProject project;
    const std::string path = testing::TempDir() + "drenova-curves-" + std::to_string(getpid());
    ASSERT_EQ(mkfifo(path.c_str(), S_IRUSR | S_IWUSR), 0);
    CIDFCurves curves;
    EXPECT_EQ(curves.LoadFromFile(path), 0);
    unlink(path.c_str());
    ASSERT_THAT(ProblemLines(curves), ElementsAre(0U));
    EXPECT_EQ(curves.GetProblems().front().m_text, "cannot be read: it is no file but a pipe or a device");
}

TEST(IDFCurves, ALargeFileInAnyOrderLoadsInShortTime) {
    const CTestProject project;
    std::string text = "#1\n";
    constexpr int Count = 100000;
    for (int i = 0; i < Count; ++i)
        text += fmt::format("{} {}\n", (i * 7919LL) % Count + 1, 1);
    CIDFCurves curves;
    std::istringstream input(text);
    EXPECT_EQ(curves.Load(input, ""), 1);
    EXPECT_EQ(curves.GetCurves().at(1).size(), std::size_t{Count});
}

TEST(IDFCurves, LookUpsMatchTheReferenceTable) {
    const CTestProject project;
    CIDFCurves curves;
    ASSERT_EQ(curves.LoadFromFile(CasePath("rain/graz-curves.txt")), 1);
    EXPECT_THAT(curves.GetProblems(), IsEmpty());
    for (const auto& row : ReadCases("rain/curve_lookups.txt"))
        EXPECT_NEAR(curves.GetCurveIntensity(row["n"], row["duration_min"]), row["intensity"], 1e-7 * row["intensity"])
            << row.Name(); // printed with 9 digits
    EXPECT_EQ(curves.GetCurveIntensity(0.51, 10), -1.0);
    EXPECT_EQ(curves.GetCurveIntensity(1, std::nan("")), curves.GetCurveIntensity(1, 1e9));
}
