// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "tests/cli/Program.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <sys/wait.h>
#include <unistd.h>

CFolder::CFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "drenova čž ł 水-XXXXXX").string();
    EXPECT_NE(::mkdtemp(name.data()), nullptr);
    m_path = name;
}

CFolder::~CFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

std::string CFolder::Write(std::string_view name, std::string_view bytes) const {
    std::ofstream(m_path / name, std::ios::binary) << bytes;
    return *this / name;
}

std::string CFolder::List() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(m_path))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    std::string list;
    for (const std::string& name : names)
        list += (list.empty() ? "" : " ") + name;
    return list;
}

std::string ReadFile(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::string SampleNetwork() {
    return DRENOVA_SOURCE_DIR "/data/samples/rivertown.geojson";
}

namespace {

/// In the child, between fork and exec.
void Prepare(const CStart& start, const std::string& out, const std::string& err) {
    const auto redirect = [](int from, int to) {
        if (from < 0 || ::dup2(from, to) < 0)
            ::_exit(126);
    };
    redirect(start.m_input >= 0 ? start.m_input : ::open("/dev/null", O_RDONLY), STDIN_FILENO);
    redirect(::open(err.c_str(), O_WRONLY | O_CREAT, 0666), STDERR_FILENO);
    int ends[2] = {-1, -1};
    if (start.m_isDeaf && ::pipe(ends) == 0) {
        ::close(ends[0]);
        redirect(ends[1], STDOUT_FILENO);
    } else {
        redirect(::open(out.c_str(), O_WRONLY | O_CREAT, 0666), STDOUT_FILENO);
    }
    for (const auto& [name, value] : start.m_environment)
        ::setenv(name.c_str(), value.c_str(), 1);
    std::signal(SIGINT, SIG_DFL);
    std::signal(SIGPIPE, SIG_DFL);
}

pid_t StartProgram(const CStart& start, const std::string& out, const std::string& err) {
    std::vector<std::string> texts{"drenova"};
    texts.insert(texts.end(), start.m_arguments.begin(), start.m_arguments.end());
    std::vector<char*> arguments;
    arguments.reserve(texts.size() + 1);
    for (std::string& text : texts)
        arguments.push_back(text.data());
    arguments.push_back(nullptr);
    const pid_t id = ::fork();
    if (id == 0) {
        Prepare(start, start.m_outputTo.empty() ? out : start.m_outputTo, err);
        ::execv(DRENOVA_PROGRAM, arguments.data());
        ::_exit(127);
    }
    return id;
}

} // namespace

CRunning::CRunning(const CStart& start) : m_id(StartProgram(start, m_caught / "out", m_caught / "err")) {}

CEnded CRunning::Wait() {
    int state = 0;
    EXPECT_EQ(::waitpid(m_id, &state, 0), m_id);
    CEnded ended;
    ended.m_code = WIFEXITED(state) ? WEXITSTATUS(state) : 128 + WTERMSIG(state);
    ended.m_out = ReadFile(m_caught / "out");
    ended.m_err = ReadFile(m_caught / "err");
    return ended;
}

CEnded Drenova(const CStart& start) {
    return CRunning(start).Wait();
}
