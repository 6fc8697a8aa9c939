// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"
#include "host/network_core/Catalog.h"

#include <boost/shared_ptr.hpp>

#include <string>
#include <string_view>
#include <vector>

namespace Cli {

using CPipeGroup = boost::shared_ptr<OLMGis::Topology::CCatalogItem>;

/// A group of the active project's pipe catalogue by name or GUID. BadArguments for an unknown one, with the nearest.
OLMGis::Utility::Result<CPipeGroup> FindPipeGroup(std::string_view text);

/// The groups that an option names; without any the one of the setting pipe_group. BadArguments without that, too, and
/// for an unknown one. The message of an error begins with the option or the setting.
OLMGis::Utility::Result<std::vector<CPipeGroup>> FindPipeGroups(std::string_view option,
                                                                const std::vector<std::string>& names);

} // namespace Cli
