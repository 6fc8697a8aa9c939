// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <filesystem>
#include <string>

namespace OLMGis::ProjectIo {

/// The path of a file as a project in a folder (full path) keeps it: relative to the folder where both have a common
/// folder besides the root, so that they can be moved together, else as it is. A relative path stays as it is.
std::string StoredPath(const std::filesystem::path& file, const std::filesystem::path& folder);

} // namespace OLMGis::ProjectIo
