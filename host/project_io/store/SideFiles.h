// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <filesystem>
#include <string>

namespace OLMGis::ProjectIo {

/// Files that SQLite keeps beside a database while a program changes it, and that stay when the program is killed.

/// Whether there is a rollback journal with an unfinished change.
bool HasHotJournal(const std::filesystem::path& path);

/// Whether there is a write-ahead log with changes that are not in the file yet.
bool HasWriteAheadLog(const std::filesystem::path& path);

/// Fails when a file of that name has either: the next program of SQLite would read it as part of a new file. name:
/// name of the file in messages.
void CheckSideFiles(const std::filesystem::path& path, const std::string& name);

std::filesystem::path JournalOf(const std::filesystem::path& path);
std::filesystem::path WriteAheadLogOf(const std::filesystem::path& path);

} // namespace OLMGis::ProjectIo
