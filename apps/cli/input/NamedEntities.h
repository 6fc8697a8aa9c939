// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"
#include "reports/EntityChoice.h"

#include <string>
#include <string_view>
#include <vector>

namespace Cli {

/// The entities that --names lists, see Reports::ChooseEntities; all of the kind when the list is empty. The message of
/// an error begins with the option.
OLMGis::Utility::Result<Reports::CEntityList> ChooseOrAll(OLMGis::Data::enmEntityKind kind,
                                                          const std::vector<std::string>& names);

/// The sections that an option lists, in the order of the network.
OLMGis::Utility::Result<std::vector<boost::shared_ptr<OLMGis::Topology::CSection>>>
ChooseSections(std::string_view option, const std::vector<std::string>& names);

} // namespace Cli
