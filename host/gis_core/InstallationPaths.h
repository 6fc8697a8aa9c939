// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"

#include <string>
#include <string_view>

namespace OLMGis::Utility::InstallationPaths {

/// Folder of the installation's data files (messages, definitions, icons): DRENOVA_DATA when that is set, else
/// ../share/drenova beside the folder of this library. Without a trailing slash.
std::string DataFolder();

/// Full path of a data file, name relative to DataFolder().
std::string DataFile(std::string_view name);

/// The user's own folder of the installation, for reports and pictures: DRENOVA_HOME when that is set, else the folder
/// drenova in the user's data folder (XDG_DATA_HOME, else .local/share in the home folder). Not created here.
std::string HomeFolder();

/// The bytes of a file of at most 1 GiB; no folder, pipe or device. Refused when it cannot be opened or read, naming
/// the file and the reason.
Result<std::string> ReadWholeFile(const std::string& path);

} // namespace OLMGis::Utility::InstallationPaths
