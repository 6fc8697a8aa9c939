// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/gis_core/InstallationPaths.h"

#include <fmt/format.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <dlfcn.h>
#include <filesystem>
#include <fstream>
#include <pwd.h>
#include <system_error>
#include <unistd.h>

namespace OLMGis::Utility::InstallationPaths {

namespace {

std::string Environment(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? std::string() : std::string(value);
}

std::filesystem::path FolderOfThisLibrary() {
    Dl_info info{};
    if (dladdr(reinterpret_cast<const void*>(&DataFolder), &info) == 0 || info.dli_fname == nullptr)
        return {};
    std::error_code ignored;
    return std::filesystem::canonical(info.dli_fname, ignored).parent_path();
}

/// As the system's list of users has it, for processes without an environment, such as those of timers.
std::string HomeOfUser() {
    std::array<char, std::size_t{1} << 14> bytes{};
    struct passwd user {};
    struct passwd* found = nullptr;
    if (::getpwuid_r(::getuid(), &user, bytes.data(), bytes.size(), &found) != 0 || found == nullptr)
        return {};
    return found->pw_dir;
}

} // namespace

std::string DataFolder() {
    if (std::string set = Environment("DRENOVA_DATA"); !set.empty())
        return set;
    // Debian puts libraries one folder deeper (lib/x86_64-linux-gnu), the build tree does not.
    const std::filesystem::path library = FolderOfThisLibrary();
    for (const auto& up : {library.parent_path(), library.parent_path().parent_path()}) {
        std::error_code ignored;
        if (const auto folder = up / "share" / "drenova"; std::filesystem::is_directory(folder, ignored))
            return folder.string();
    }
    return (library.parent_path() / "share" / "drenova").string();
}

std::string DataFile(std::string_view name) {
    return DataFolder() + "/" + std::string(name);
}

std::string HomeFolder() {
    if (std::string set = Environment("DRENOVA_HOME"); !set.empty())
        return set;
    // Relative paths in these two are no folders of the user's but accidents.
    if (std::string data = Environment("XDG_DATA_HOME"); data.starts_with('/'))
        return data + "/drenova";
    std::string home = Environment("HOME");
    if (!home.starts_with('/'))
        home = HomeOfUser();
    return home + "/.local/share/drenova";
}

Result<std::string> ReadWholeFile(const std::string& path) {
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored))
        return Refused(fmt::format("{}: cannot be read: it is a folder", path));
    // A pipe gives its bytes once and may wait forever, a device may never end.
    if (std::filesystem::exists(path, ignored) && !std::filesystem::is_regular_file(path, ignored))
        return Refused(fmt::format("{}: cannot be read: it is no file but a pipe or a device", path));
    errno = 0;
    std::ifstream stream(path, std::ios::binary);
    if (!stream)
        return Refused(fmt::format("{}: cannot be opened: {}", path, std::generic_category().message(errno)));
    std::string bytes;
    constexpr std::size_t Step = std::size_t{1} << 16;
    constexpr std::size_t Most = std::size_t{1} << 30; // far above any data file
    for (std::size_t size = 0; stream; bytes.resize(size)) {
        if (size > Most)
            return Refused(fmt::format("{}: cannot be read: it has more than {} bytes", path, Most));
        bytes.resize(size + Step);
        stream.read(bytes.data() + size, static_cast<std::streamsize>(Step));
        size += static_cast<std::size_t>(stream.gcount());
    }
    if (stream.bad())
        return Refused(fmt::format("{}: cannot be read: {}", path, std::generic_category().message(errno)));
    return bytes;
}

} // namespace OLMGis::Utility::InstallationPaths
