// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/store/SideFiles.h"

#include "host/project_io/base/Failure.h"

#include <fmt/format.h>

#include <array>
#include <fstream>
#include <system_error>

namespace OLMGis::ProjectIo {

namespace fs = std::filesystem;

fs::path JournalOf(const fs::path& path) {
    return path.string() + "-journal";
}

fs::path WriteAheadLogOf(const fs::path& path) {
    return path.string() + "-wal";
}

bool HasHotJournal(const fs::path& path) {
    // A finished journal that is kept for the next change begins with zeros.
    constexpr std::array<unsigned char, 8> Magic = {0xD9, 0xD5, 0x05, 0xF9, 0x20, 0xA1, 0x63, 0xD7};
    std::ifstream journal(JournalOf(path), std::ios::binary);
    for (const unsigned char expected : Magic)
        if (journal.get() != expected)
            return false;
    return true;
}

bool HasWriteAheadLog(const fs::path& path) {
    std::error_code error;
    const auto size = fs::file_size(WriteAheadLogOf(path), error);
    return !error && size > 0;
}

void CheckSideFiles(const fs::path& path, const std::string& name) {
    const bool hasLog = HasWriteAheadLog(path);
    if (!hasLog && !HasHotJournal(path))
        return;
    const fs::path side = hasLog ? WriteAheadLogOf(path) : JournalOf(path);
    FailRefused(fmt::format("{}: another program has unfinished changes of it in {}; close the project there, or save "
                            "under another name",
                            name, side.filename().string()));
}

} // namespace OLMGis::ProjectIo
