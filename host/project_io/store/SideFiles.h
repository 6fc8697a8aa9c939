// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <filesystem>

namespace OLMGis::ProjectIo {

/// What other programs of SQLite leave beside a file while they change it, or when they were killed at that.

/// Whether a journal lies beside the file that says how to take a half-made change back.
bool HasHotJournal(const std::filesystem::path& path);

/// Whether a log lies beside the file that holds changes which are not yet in it.
bool HasWriteAheadLog(const std::filesystem::path& path);

std::filesystem::path JournalOf(const std::filesystem::path& path);
std::filesystem::path WriteAheadLogOf(const std::filesystem::path& path);

} // namespace OLMGis::ProjectIo
