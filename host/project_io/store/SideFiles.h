// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <filesystem>

namespace OLMGis::ProjectIo {

/// Files that SQLite keeps beside a database while a program changes it, and that stay when the program is killed.

/// Whether there is a rollback journal with an unfinished change.
bool HasHotJournal(const std::filesystem::path& path);

/// Whether there is a write-ahead log with changes that are not in the file yet.
bool HasWriteAheadLog(const std::filesystem::path& path);

std::filesystem::path JournalOf(const std::filesystem::path& path);
std::filesystem::path WriteAheadLogOf(const std::filesystem::path& path);

} // namespace OLMGis::ProjectIo
