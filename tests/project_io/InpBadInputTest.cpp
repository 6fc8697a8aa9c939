// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
//
// Files that are not a storm-water network, or contradict themselves: refused with line, found and expected.
#include "tests/project_io/InpTestProject.h"

#include <gtest/gtest.h>

using namespace OLMGis;

namespace {

const std::string Good = "[JUNCTIONS]\nA 10 2\n[OUTFALLS]\nO 9 FREE\n[CONDUITS]\nc A O 100 0.013 0 0\n"
                         "[XSECTIONS]\nc CIRCULAR 0.3 0 0 0 1\n[SUBCATCHMENTS]\ns rg A 1.5 50\n[COORDINATES]\nA 1 2\n";

} // namespace

TEST(InpBadInput, NamesLineFindingAndExpectation) {
    const struct {
        std::string text;
        const char* message; // its beginning, after the name of the file
    } cases[] = {
        {"", ": not a storm-water network file: found none of its sections in 0 lines"},
        {"\n\n", ": not a storm-water network file: found none of its sections in 2 lines"},
        {"Dear all,\nplease find enclosed\n", ": not a storm-water network file: found none"},
        {"[SOMETHING]\nA 10 2\n", ": not a storm-water network file: found none of its sections"},
        {"[TITLE]\nempty\n[JUNCTIONS]\n", ": not a storm-water network file: found no node in 3 lines"},
        {std::string("SQLite format 3\0\x10", 17), ", line 1: found a zero byte (a binary file or UTF-16)"},
        {"[JUNCTIONS]\n" + std::string(70000, 'x'), ", line 2: found a line of more than 65536 characters"},
        {"[JUNCTIONS]\nSch\xE4"
         "cht 10 2\n",
         ", line 2: found the bytes \"Sch?cht 10 2\", which are not UTF-8"},
        {"[JUNCTIONS]\nA\n",
         ", line 2: found no elevation of \"A\" (the line ends early), expected a number in column 2"},
        {"[JUNCTIONS]\nA 10,5 2\n", ", line 2: found \"10,5\" as elevation of \"A\", expected a number from"},
        {"[JUNCTIONS]\nA nan 2\n", ", line 2: found \"nan\" as elevation"},
        {"[JUNCTIONS]\nA 1e400 2\n", ", line 2: found \"1e400\" as elevation"},
        {"[JUNCTIONS]\nA 10 -2\n", ", line 2: found \"-2\" as greatest depth of \"A\", expected a number from 0"},
        {"[JUNCTIONS]\n\"\" 10 2\n", ", line 2: found an empty name"},
        {Good + "[STORAGE]\na 10 2\n",
         ", line 14: found the node \"a\" again (first in line 2), expected each node once"},
        {Good + "[PUMPS]\nC A O\n", ", line 14: found the link \"C\" again (first in line 6), expected each link once"},
        {Good + "[PUMPS]\np A\n", ", line 14: found a line of 2 columns, expected name, upper node and lower node"},
        {Good + "[PUMPS]\np A X\n", ", line 14: found link \"p\" at the node \"X\", expected a node of the file"},
        {Good + "[PUMPS]\np A a\n", ", line 14: found link \"p\" from the node \"A\" to itself"},
        {Good + "[CONDUITS]\nd A O 100 0.013\n", ", line 14: found conduit \"d\" without a cross-section"},
        {Good + "[CONDUITS]\nd A O -5 0.013\n", ", line 14: found \"-5\" as length of \"d\""},
        {Good + "[CONDUITS]\nd A O 5 -0.013\n", ", line 14: found \"-0.013\" as roughness of \"d\""},
        {Good + "[XSECTIONS]\nd CIRCULAR 1\n", ", line 14: found a cross-section of the link \"d\""},
        {Good + "[XSECTIONS]\nc OVAL 1\n", ", line 14: found the shape \"OVAL\", expected a shape of the format"},
        {Good + "[XSECTIONS]\nc CIRCULAR 0\n", ", line 14: found no dimension above 0 in column 3"},
        {Good + "[XSECTIONS]\nc RECT_CLOSED 1\n", ", line 14: found no dimension above 0 in column 4"},
        {Good + "[SUBCATCHMENTS]\ns rg A 1 50\n", ", line 14: found the subcatchment \"s\" again (first in line 10)"},
        {Good + "[SUBCATCHMENTS]\nt rg X 1 50\n", ", line 14: found subcatchment \"t\" with the outlet \"X\""},
        {Good + "[SUBCATCHMENTS]\nt rg A 1 150\n", ", line 14: found \"150\" as imperviousness in % of \"t\""},
        {Good + "[SUBCATCHMENTS]\nt rg A -1 50\n", ", line 14: found \"-1\" as area of \"t\""},
        {Good + "[COORDINATES]\nA 1 east\n", ", line 14: found \"east\" as coordinate of \"A\""},
        {Good + "[DIVIDERS]\nD 1 c SIDEWAYS 5\n", ", line 14: found the kind of divider \"SIDEWAYS\""},
        {Good + "[OPTIONS]\nFLOW_UNITS M3H\n", ", line 14: found the flow unit \"M3H\", expected CFS, GPM"},
        {Good + "[OPTIONS]\nLINK_OFFSETS BOTH\n", ", line 14: found the kind of offsets \"BOTH\""},
        {Good + "[TRANSECTS]\nGR 1 2\n", ", line 14: found points of a channel without a transect"},
        {Good + "[TRANSECTS]\nX1 T 2\nGR 1 5 1 4\n", ", line 15: found station 4 after station 5"},
        {Good + "[TRANSECTS]\nX1 T 2\nX1 t 2\n", ", line 15: found the transect \"t\" again"},
        {Good + "[TRANSECTS]\nX1 T 2\nGR 1 5 1\n", ", line 15: found no station of \"GR\" (the line ends early)"},
        {Good + "[CURVES]\nk SHAPE 0 1 0.5\n", ", line 14: found no curve value of \"k\" (the line ends early)"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.message);
        const CInpTestProject net(c.text);
        ASSERT_FALSE(net.IsImported());
        EXPECT_TRUE(net.Message().starts_with(std::string("net.inp") + c.message)) << net.Message();
    }
    EXPECT_TRUE(CInpTestProject(Good).IsImported()) << "what the bad ones are made from";
}

TEST(InpBadInput, AFailingStreamIsRefused) {
    class CFailing : public std::streambuf {
        int_type underflow() override { throw std::ios_base::failure("disk"); }
    } buffer;
    std::istream stream(&buffer);
    const CTestProject project;
    const auto answer = ProjectIo::ImportInp(stream, "net.inp");
    ASSERT_FALSE(answer);
    EXPECT_EQ(answer.GetError().kind, Utility::enmErrorKind::Refused);
}

TEST(InpBadInput, FilesCutShortAndBytesTurnedNeverBreakTheReader) {
    const std::string text = Good +
                             "[VERTICES]\nc 1 1\n[Polygons]\ns 0 0\ns 1 0\ns 1 1\n[TRANSECTS]\nNC 1 1 1\nX1 T 2\n"
                             "GR 1 0 0 1\n[CURVES]\nk SHAPE 0 1 1 1\n[OPTIONS]\nFLOW_UNITS LPS\n";
    for (std::size_t length = 0; length < text.size(); ++length) {
        const CInpTestProject net(text.substr(0, length));
        EXPECT_TRUE(net.IsImported() || !net.Message().empty());
    }
    for (std::size_t place = 0; place < text.size(); ++place)
        for (const char byte : {'\0', '\n', '"', ';', '[', '9', '-', ' ', '\xFF'}) {
            std::string turned = text;
            turned[place] = byte;
            const CInpTestProject net(turned);
            if (net.IsImported())
                EXPECT_EQ(net.Topology().GetSections().size(), net.Summary().m_sectionCount);
            else
                EXPECT_NE(net.Message().find("found"), std::string::npos) << net.Message();
        }
}

TEST(InpBadInput, HeadingsWithoutEndDoNotFillTheSummary) {
    std::string text = Good;
    for (int i = 0; i < 5000; ++i)
        text += "[UNKNOWN" + std::to_string(i) + "]\nx\n";
    const CInpTestProject net(text);
    ASSERT_TRUE(net.IsImported()) << net.Message();
    EXPECT_LE(net.Summary().m_notes.size(), 70U);
    std::size_t lines = 0;
    for (const auto& note : net.Summary().m_notes)
        if (note.m_what.starts_with("lines of "))
            lines += note.m_count;
    EXPECT_EQ(lines, 5000U) << "each is counted";
}
