// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/Catalog.h"

#include <boost/shared_ptr.hpp>

#include <string_view>

namespace OLMGis::Topology {

/// The catalogues of the active project. One per project context.
class CCatalogManager {
public:
    static CCatalogManager* Instance();

    static constexpr std::string_view PipeCatalog = "PIPE";
    static constexpr std::string_view ManholeCatalog = "MANHOLE";

    /// The catalogue of that id, null for an unknown id. The second argument is the interface's: every caller passes 1.
    CCatalog* GetCatalog(std::string_view id, int useDisk);

    /// An entry of a catalogue by GUID, null when there is none.
    boost::shared_ptr<CCatalogItem> GetItemByGuid(std::string_view catalog, std::string_view guid);

private:
    CCatalog m_pipes{std::string(PipeCatalog)};
    CCatalog m_manholes{std::string(ManholeCatalog)};
};

} // namespace OLMGis::Topology
