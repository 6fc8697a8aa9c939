// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"
#include "host/network_core/Catalog.h"

#include <istream>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace OLMGis::Topology {

/// One entry of the catalogues that come with the installation: a pipe or a manhole.
struct CBuiltInItem {
    std::string m_name;
    std::string m_guid;
    std::optional<CPipeData> m_pipe;
    std::optional<CManholeData> m_manhole;
};

/// One group of them.
struct CBuiltInGroup {
    std::string m_name;
    std::string m_guid;
    std::string m_standard;
    std::vector<CBuiltInItem> m_items;
};

/// Reads a catalogue of the installation, JSON:
///   {"catalog": "PIPE", "groups": [{"name", "standard", "source", "shape", "type", "pipes": [
///      {"name", "outside_mm" (circles) or "outside_width_mm" and "outside_height_mm", "wall_mm", "roughness_mm"}]}]}
///   {"catalog": "MANHOLE", "groups": [{"name", "standard", "source", "manholes": [
///      {"name", "inner_diameter_m", "h1_m", "h2_m", "height_m"}]}]}
/// Inside sizes are outside sizes less two walls. GUIDs follow from the names (see CatalogGuids.h). id is the catalogue
/// expected, name what errors call the file. BadInput, naming group and item, for anything else than this, for names
/// that repeat (groups, and items over all groups) and for sizes that no pipe or manhole has.
Utility::Result<std::vector<CBuiltInGroup>> ParseBuiltInCatalog(std::istream& stream, const std::string& name,
                                                                std::string_view id);

/// The catalogues of the installation, from data/catalogs. The same for every project; a file is read when its
/// catalogue is first asked for, whole or not at all.
class CBuiltInCatalogs {
public:
    static CBuiltInCatalogs* Instance();

    /// The groups of a catalogue; the error of its file when that could not be read, each time anew.
    const Utility::Result<std::vector<CBuiltInGroup>>& GetGroups(std::string_view id);

private:
    std::map<std::string, Utility::Result<std::vector<CBuiltInGroup>>, std::less<>> m_read; ///< by catalogue
};

} // namespace OLMGis::Topology
