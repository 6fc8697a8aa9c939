// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"
#include "host/network_core/CatalogManager.h"
#include "reports/Listing.h"

#include <boost/shared_ptr.hpp>

#include <string>
#include <string_view>
#include <vector>

namespace Reports {

/// A group of the pipe or manhole catalogue.
struct CCatalogGroup {
    std::string_view m_kind; ///< "pipe" or "manhole"
    boost::shared_ptr<OLMGis::Topology::CCatalogItem> m_group;
};

/// The groups of a catalogue, built-in ones first; of both catalogues, pipes first, for an empty kind.
std::vector<CCatalogGroup> GetCatalogGroups(std::string_view kind);

/// The group of a name or GUID. BadArguments for an unknown one, and for the name of a group of pipes and one of
/// manholes.
OLMGis::Utility::Result<CCatalogGroup> FindCatalogGroup(std::string_view kind, const std::string& nameOrGuid);

/// One row per group.
CListing MakeGroupListing(const std::vector<CCatalogGroup>& groups);

/// One row per pipe or manhole of a group, with its dimensions.
CListing MakeItemListing(const CCatalogGroup& group);

} // namespace Reports
