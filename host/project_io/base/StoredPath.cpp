// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/base/StoredPath.h"

#include <iterator>

namespace OLMGis::ProjectIo {

std::string StoredPath(const std::filesystem::path& file, const std::filesystem::path& folder) {
    if (!file.is_absolute())
        return file.string();
    const auto inFile = std::next(file.begin()); // after the root, which does not count as a common folder
    const auto inFolder = std::next(folder.begin());
    const bool sharesFolder = inFile != file.end() && inFolder != folder.end() && *inFile == *inFolder;
    return (sharesFolder || folder == folder.root_path() ? file.lexically_relative(folder) : file).string();
}

} // namespace OLMGis::ProjectIo
