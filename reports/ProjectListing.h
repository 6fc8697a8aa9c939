// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "reports/Listing.h"
#include "reports/ProjectDigest.h"

#include <string>
#include <vector>

namespace Reports {

/// Overview of the active project: settings, counts, extent, catalogue, attribute keys with values. The warnings are
/// part of the JSON document alone; people get them beside the listing. Copies all but the definitions.
CListing MakeProjectListing(const CProjectDigest& digest, const std::vector<std::string>& warnings);

} // namespace Reports
