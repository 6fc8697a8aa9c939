// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/tables/CsvReader.h"
#include "host/project_io/tables/CsvWriter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

using namespace OLMGis;
using namespace OLMGis::ProjectIo;
using ::testing::HasSubstr;

namespace {

/// A table as "column|column" and rows "line:field|field", or the message of its error.
std::string ReadAll(const std::string& text) {
    std::istringstream stream(text);
    CCsvReader reader(stream, "t.csv");
    if (const auto head = reader.ReadHead(); !head)
        return head.GetError().message;
    std::string all;
    for (const std::string& column : reader.GetColumns())
        all += (all.empty() ? "" : "|") + column;
    for (;;) {
        const auto next = reader.Next();
        if (!next)
            return next.GetError().message;
        if (!next.Value())
            return all;
        all += " " + std::to_string(reader.GetLine()) + ":";
        for (std::size_t i = 0; i < reader.GetColumns().size(); ++i)
            all += (i == 0 ? "" : "|") + std::string(reader.GetField(i));
    }
}

} // namespace

TEST(CsvTable, IsReadInAllItsForms) {
    const std::pair<std::string, std::string> rows[] = {
        {"a,b\n1,2\n3,4\n", "a|b 2:1|2 3:3|4"},
        {"a,b\r\n1,2\r\n3,4", "a|b 2:1|2 3:3|4"},
        {"\xEF\xBB\xBF"
         "a,b\n1,2",
         "a|b 2:1|2"},
        {"a;b\n1,5;\"x;y\"\n", "a|b 2:1,5|x;y"},
        {"a\tb;c\td\n1\t2\t3\n", "a|b;c|d 2:1|2|3"},
        {"a;b, in m\n1;2\n", "a|b, in m 2:1|2"},
        {"sep=;\r\na,b;c\r\n1;2\r\n", "a,b|c 3:1|2"},
        {"\"a;x\",b\n1;2,3\n", "a;x|b 2:1;2|3"},
        {" a , b \n 1 ,\t\n", "a|b 2: 1 |\t"},
        {"a\n\"one \"\"x\"\", two\"\n\"\"\n", "a 2:one \"x\", two 3:"},
        {"a,b\n\"1\n2\r\n3\",x\n4,5\n", "a|b 2:1\n2\r\n3|x 5:4|5"},
        {"\n\na,b\n\n1,2\n\r\n\n3,4\n\n", "a|b 5:1|2 8:3|4"},
        {"a,b\n,\n", "a|b 2:|"},
        {"a,b\n12\" pipe,x\n", "a|b 2:12\" pipe|x"},
        {"a,b\n'=1+2,''@x\n", "a|b 2:=1+2|'@x"}, // the apostrophe before a formula
        {"a,b\n'-1.5,'s Hof\n", "a|b 2:'-1.5|'s Hof"},
        {"a", "a"},
        {"a,b\rc,d\r", "a|b 2:c|d"},
        {"имя,č\n1,2", "имя|č 2:1|2"},
    };
    for (const auto& [text, expected] : rows)
        EXPECT_EQ(ReadAll(text), expected) << text;
}

TEST(CsvTable, FaultsNameTheLine) {
    const std::pair<std::string, std::string> rows[] = {
        {"", "t.csv: the file is empty"},
        {"\n\r\n", "t.csv: the file is empty"},
        {"a,,b\n", "line 1: found no name for column 2"},
        {"a,b,a\n", "line 1, column a: found the column twice"},
        {"a,b\n1,2\n\n1,2,3\n", "line 4: found 3 fields, expected 2"},
        {"a,b\n1,2\n3\n", "line 3: found 1 fields, expected 2"},
        {"a,b\n1,\"x\ny\n", "line 2: found a quotation mark that is never closed"},
        {"a,b\n1,\"x\"y\n", "line 2: found text after the closing quotation mark of \"x\""},
        {"a,b\n1,\xC8"
         "\n",
         "line 2: found bytes that are not UTF-8 in \"?\""},
        {std::string("a,b\n1,\0\n", 8), "line 2: found a character of code 0"},
        {"a,b\n1," + std::string(CCsvReader::LongestField + 1, 'x'), "line 2: found a field of more than"},
        {"a\n" + std::string(CCsvReader::MostColumns, ','), "line 2: found more than 1000 fields"},
    };
    for (const auto& [text, expected] : rows)
        EXPECT_THAT(ReadAll(text), HasSubstr(expected)) << text.substr(0, 40);
}

TEST(CsvTable, WhatIsWrittenIsReadBack) {
    const std::vector<std::string> fields = {
        "",    "plain", "a,b",  "a;b", "say \"hi\"", "\"",  "line\nend", "cr\r\n", " blank", "tail ",  "č",   "\"\"",
        "1.5", "\n",    "=1+1", "-x",  "'=a",        "'-1", "@a",        "+1e5",   "\tx",    "-1,5;x", "''+b"};
    std::ostringstream out;
    CCsvWriter writer(out);
    for (std::size_t i = 0; i < fields.size(); ++i)
        writer.Write("c" + std::to_string(i));
    writer.EndRow();
    for (const std::string& field : fields)
        writer.Write(field);
    writer.EndRow();
    ASSERT_TRUE(writer.Finish());
    std::istringstream in(out.str());
    CCsvReader reader(in, "t.csv");
    ASSERT_TRUE(reader.ReadHead());
    ASSERT_TRUE(reader.Next().Value());
    for (std::size_t i = 0; i < fields.size(); ++i)
        EXPECT_EQ(reader.GetField(i), fields[i]);
    EXPECT_FALSE(reader.Next().Value());
    EXPECT_THAT(out.str(), HasSubstr(R"(,'=1+1,'-x,''=a,'-1,'@a,+1e5,')"));

    std::ostringstream single;
    CCsvWriter narrow(single);
    for (const std::string_view field : {"a", "", "b"}) {
        narrow.Write(field);
        narrow.EndRow();
    }
    ASSERT_TRUE(narrow.Finish());
    EXPECT_EQ(ReadAll(single.str()), "a 2: 3:b");
}
