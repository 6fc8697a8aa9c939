// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/Catalog.h"

#include <boost/shared_ptr.hpp>

#include <string_view>

namespace OLMGis::Topology {

class CNode;

/// Questions to the manhole catalogue of the active project. One per project context. Lengths in m. Every operation
/// answers 0 or null for a null node, a null item and an entry that is no manhole (a group).
class CManholeManager {
public:
    static CManholeManager* Instance();

    /// The manhole of a GUID (case and braces ignored), null when there is none. One hash look-up.
    boost::shared_ptr<CCatalogItem> GetManhole(std::string_view id);

    /// Inner diameter (m).
    double GetManholeInnerDiameter(const boost::shared_ptr<CCatalogItem>& manhole);

    /// Height of cover and adjusting rings at a node (m): its attribute MANHOLE_H1 where it has one, else the item's.
    double GetManholeH1(const CNode* node, const boost::shared_ptr<CCatalogItem>& manhole);

    /// From the terrain down to the lower edge of cone or slab (m): MANHOLE_H2 of the node where it has one, else the
    /// item's.
    double GetManholeH2(const CNode* node, const boost::shared_ptr<CCatalogItem>& manhole);

    /// Whole height (m) of the item.
    double GetManholeHeight(const boost::shared_ptr<CNode>& node, const boost::shared_ptr<CCatalogItem>& manhole);
};

} // namespace OLMGis::Topology
