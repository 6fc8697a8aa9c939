// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/Catalog.h"

#include <boost/shared_ptr.hpp>

#include <optional>
#include <string>
#include <string_view>

namespace OLMGis::Topology {

/// The catalogues of the active project: what comes with the installation, and its own groups. One per project context.
class CCatalogManager {
public:
    static CCatalogManager* Instance();

    static constexpr std::string_view PipeCatalog = "PIPE";
    static constexpr std::string_view ManholeCatalog = "MANHOLE";

    /// The catalogue of that id, null for an unknown id. The first call fills in what comes with the installation. The
    /// second argument is the interface's: every caller passes 1.
    CCatalog* GetCatalog(std::string_view id, int useDisk);

    /// Why the catalogues of the installation could not be read, empty when they could. A catalogue that could not be
    /// has only the project's own groups, and references to built-in entries are dead: code that opens or makes
    /// a project asks first.
    std::string GetLoadError();

    /// An entry of a catalogue by GUID, null when there is none.
    boost::shared_ptr<CCatalogItem> GetItemByGuid(std::string_view catalog, std::string_view guid);

private:
    std::optional<CCatalog> m_pipes;
    std::optional<CCatalog> m_manholes;
};

} // namespace OLMGis::Topology
