// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"
#include "host/project_io/tables/TableColumns.h"

#include <optional>
#include <string>

namespace Cli {

/// The mapping file of columns at a path; nothing for the empty path. Refused or BadInput when it cannot be read.
OLMGis::Utility::Result<std::optional<OLMGis::ProjectIo::CColumnMap>> ReadColumnMap(const std::string& path);

} // namespace Cli
