// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/Entity.h"
#include "host/network_core/Geometry.h"

#include <boost/container/small_vector.hpp>
#include <boost/shared_ptr.hpp>

#include <vector>

namespace OLMGis::Topology {

class CSection;

/// Where sections meet: a manhole, an outfall, a fitting.
class CNode final : public CEntity {
public:
    CNode(CEntityKey, CTopologyStorage& topology, Data::CAttributeStore& store, Data::CKeptText guid,
          Data::CKeptText name, const CPoint& point)
        : CEntity(topology, store, Data::enmEntityKind::Node, guid, name), m_point(point) {}

    const CPoint& GetPoint() const { return m_point; }

    /// Fills list with the sections that end or start here, each once, in the order in which they entered the network;
    /// returns their number. No nulls.
    int GetConnectedSections(std::vector<boost::shared_ptr<CSection>>& list) const;

    /// The same as plain pointers, not owned: for loops over whole networks.
    int GetConnectedSections(std::vector<const CSection*>& list) const;

    /// Fills list with the sections that start here, in network order; returns their number. No nulls.
    int GetSectionsOut(std::vector<boost::shared_ptr<CSection>>& list) const;

    /// The same for the sections that end here.
    int GetSectionsIn(std::vector<boost::shared_ptr<CSection>>& list) const;

    /// The same as plain pointers, not owned: for loops over whole networks.
    int GetSectionsIn(std::vector<const CSection*>& list) const;

    /// Fills height (m) with the terrain of a type here and returns 1: the attribute TERRAIN_n, else the height of the
    /// surface that is attached to the type. Without either, and for a type outside 1 to 10, 0, and height as it was.
    int GetTerrainHeight(double& height, int terrainType) const;

    int GetSectionsInCount() const { return static_cast<int>(m_in.size()); }
    int GetSectionsOutCount() const { return static_cast<int>(m_out.size()); }

private:
    friend class CTopologyStorage;
    friend class CSection;

    template <class List, class ToEntry>
    int ListConnectedSections(List& list, ToEntry toEntry) const;

    /// Most nodes join few sections: these are stored inside the node.
    using CSectionRefs = boost::container::small_vector<CSection*, 2>;

    CPoint m_point;
    CSectionRefs m_in;  ///< sections that end here, in network order
    CSectionRefs m_out; ///< sections that start here, in network order
};

} // namespace OLMGis::Topology
