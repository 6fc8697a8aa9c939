// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <string>
#include <string_view>

namespace OLMGis::Topology {

/// GUIDs of catalogue entries whose source gives none: made from their names, the same for the same names, so that a
/// table may be read again and a reference means the same pipe everywhere. catalog: an id of CCatalogManager.
std::string GuidOfCatalogGroup(std::string_view catalog, std::string_view group);
std::string GuidOfCatalogItem(std::string_view catalog, std::string_view group, std::string_view name);

} // namespace OLMGis::Topology
