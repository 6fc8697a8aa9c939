// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <utility>
#include <vector>

/// A folder for one test, removed with it. Its name has blanks and letters that paths of users have.
class CFolder {
public:
    CFolder();
    ~CFolder();
    CFolder(const CFolder&) = delete;
    CFolder& operator=(const CFolder&) = delete;

    std::string operator/(std::string_view name) const { return (m_path / name).string(); }

    /// Writes a file and returns its path.
    std::string Write(std::string_view name, std::string_view bytes) const;

    /// Names of what is in the folder, sorted, joined by blanks.
    std::string List() const;

private:
    std::filesystem::path m_path;
};

std::string ReadFile(const std::string& path);

/// The delivered sample network.
std::string SampleNetwork();

struct CEnded {
    int m_code = -1; ///< exit code; 128 and the signal for one that was killed
    std::string m_out;
    std::string m_err;
};

/// How a program is started.
struct CStart {
    std::vector<std::string> m_arguments;
    std::vector<std::pair<std::string, std::string>> m_environment{}; ///< beside the present one
    std::string m_outputTo{};                                         ///< file for standard output; empty to catch it
    int m_input = -1;      ///< descriptor for standard input; -1 for none to read
    bool m_isDeaf = false; ///< nobody reads standard output
};

/// The program drenova, running. Its standard input, if any, is the caller's matter.
class CRunning {
public:
    explicit CRunning(const CStart& start);
    pid_t GetId() const { return m_id; }
    CEnded Wait();

private:
    CFolder m_caught;
    pid_t m_id;
};

/// Runs the program to its end.
CEnded Drenova(const CStart& start);
inline CEnded Drenova(std::vector<std::string> arguments) {
    return Drenova(CStart{std::move(arguments)});
}
