// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"

#include <functional>
#include <string>

namespace OLMGis::ProjectIo {

/// Writes a file whole or not at all, guarded as a save of a project is: into a temporary file beside it, flushed to
/// the disk, renamed at the end, after waiting for programs that use the former file. After an error, that of write or
/// of the system, the former file is unchanged and no other is left. Refused when there is one and it may not be
/// replaced. write: gets the descriptor of the new, empty file.
Utility::Status WriteGuarded(const std::string& path, bool mayReplace,
                             const std::function<Utility::Status(int descriptor)>& write);

} // namespace OLMGis::ProjectIo
