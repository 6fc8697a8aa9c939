// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"

#include <string>
#include <vector>

namespace OLMGis::ProjectIo {

/// Writes nodes.csv, sections.csv and catchments.csv with head lines only, and README.txt, which explains each column:
/// key, label, unit, possible values. The folder is made where it is missing. Returns the paths. Refused, and nothing
/// written, where one of the files exists; Refused when the system does not let us write.
Utility::Result<std::vector<std::string>> WriteTableTemplate(const std::string& folder);

} // namespace OLMGis::ProjectIo
