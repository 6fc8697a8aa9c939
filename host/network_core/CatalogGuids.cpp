// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_core/CatalogGuids.h"

#include "host/gis_core/Utility.h"

#include <fmt/format.h>

namespace OLMGis::Topology {

using Utility::CUtility;

std::string GuidOfCatalogGroup(std::string_view catalog, std::string_view group) {
    return CUtility::MakeGuid(fmt::format("catalog/{} group", CUtility::ToLower(catalog)), group, 0);
}

std::string GuidOfCatalogItem(std::string_view catalog, std::string_view group, std::string_view name) {
    return CUtility::MakeGuid(fmt::format("catalog/{}/{}", CUtility::ToLower(catalog), group), name, 0);
}

} // namespace OLMGis::Topology
