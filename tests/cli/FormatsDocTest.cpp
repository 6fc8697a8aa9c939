// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
//
// The examples of docs/formats.md, read by the program: a block below a line "`name`:" is a file of that name, and the
// lines of sh blocks are commands on these files, run in their order.
#include "tests/cli/Program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <iterator>
#include <sstream>
#include <utility>

namespace {

/// The blocks of the text, written into a folder.
class CExamples {
public:
    explicit CExamples(const std::string& text) {
        std::istringstream lines(text);
        std::string name;
        for (std::string line; std::getline(lines, line);) {
            if (line.starts_with("```"))
                TakeBlock(lines, line == "```sh", std::exchange(name, {}));
            else if (line.starts_with('`') && line.ends_with("`:"))
                name = line.substr(1, line.size() - 3);
        }
    }

    const std::vector<std::string>& GetNames() const { return m_names; }
    const std::vector<std::string>& GetCommands() const { return m_commands; }

    CEnded Run(const std::string& command) const {
        std::istringstream stream(command);
        const std::vector<std::string> words{std::istream_iterator<std::string>(stream), {}};
        CStart start{{words.begin() + 1, words.end()}};
        start.m_folder = m_folder / "";
        return Drenova(start);
    }

private:
    void TakeBlock(std::istream& lines, bool isCommands, const std::string& name) {
        std::string block;
        for (std::string line; std::getline(lines, line) && line != "```"; block += line + "\n")
            if (isCommands)
                m_commands.push_back(line);
        if (isCommands)
            return;
        EXPECT_NE(name, "") << "an example without a file name: " << block;
        m_names.push_back(name);
        m_folder.Write(name, block);
    }

    CFolder m_folder;
    std::vector<std::string> m_names;
    std::vector<std::string> m_commands;
};

} // namespace

TEST(FormatsDoc, EveryExampleIsReadByTheCommandBelowIt) {
    const CExamples examples(ReadFile(DRENOVA_SOURCE_DIR "/docs/formats.md"));
    std::string all;
    for (const std::string& command : examples.GetCommands()) {
        ASSERT_TRUE(command.starts_with("drenova ")) << command;
        const CEnded ended = examples.Run(command);
        EXPECT_EQ(ended.m_code, 0) << command << "\n" << ended.m_err;
        all += command + " ";
    }
    EXPECT_EQ(examples.GetNames().size(), 8U);
    for (const std::string& name : examples.GetNames())
        EXPECT_THAT(all, testing::HasSubstr(" " + name + " "));
}
