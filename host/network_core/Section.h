// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/Entity.h"
#include "host/network_core/Geometry.h"

#include <boost/shared_ptr.hpp>

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace OLMGis::Topology {

class CCatalogItem;
class CNode;

/// A reach of sewer from its starting (upper) node to its ending (lower) node, either of which may be missing.
class CSection final : public CEntity {
public:
    CSection(CEntityKey, CTopologyStorage& topology, Data::CAttributeStore& store, Data::CKeptText guid,
             Data::CKeptText name, std::uint32_t start, std::uint32_t end)
        : CEntity(topology, store, Data::enmEntityKind::Section, guid, name), m_start(start), m_end(end) {}

    /// Null when the section has none.
    boost::shared_ptr<CNode> GetStartingNode() const;
    boost::shared_ptr<CNode> GetEndingNode() const;

    /// Row of the node, NoRow when the section has none: for loops over whole networks that work by row.
    static constexpr std::uint32_t NoRow = 0xFFFFFFFFU;
    std::uint32_t GetStartingNodeRow() const { return m_start; }
    std::uint32_t GetEndingNodeRow() const { return m_end; }

    /// Empty when the section has no such node.
    std::string_view GetStartingNodeGuid() const;
    std::string_view GetEndingNodeGuid() const;

    /// Plan length (m): the stored length when there is one, else that of the geometry; 0 without either.
    double GetLength2D() const;

    /// The drawn line from start to end; of a section drawn straight between its nodes these two points; empty where no
    /// line is known.
    std::vector<CPoint> GetGeometry() const;

    /// Fills list with the sections that end at this section's starting node, in the order in which they entered the
    /// network; returns their number. No nulls.
    int GetSectionsIn(std::vector<boost::shared_ptr<CSection>>& list) const;

    /// The same as plain pointers, not owned: for loops over whole networks.
    int GetSectionsIn(std::vector<const CSection*>& list) const;

    /// Fills list with the sections that start at this section's ending node, the main outlet first when one is
    /// chosen, the others in network order; returns their number. No nulls.
    int GetSectionsOut(std::vector<boost::shared_ptr<CSection>>& list) const;

    /// The same as plain pointers, not owned: for loops over whole networks.
    int GetSectionsOut(std::vector<const CSection*>& list) const;

    /// Fills list with every section upstream, nearest first (breadth first over GetSectionsIn), each once, without the
    /// section itself; returns their number. Cost: the size of the upstream network, no recursion.
    int GetPreviousSections(std::vector<boost::shared_ptr<CSection>>& list) const;

    /// The pipe that PIPE_REF names in the catalogue, null when there is none; a group is no pipe.
    boost::shared_ptr<CCatalogItem> GetPipe() const;

    /// The text of PIPE_REF, empty when there is none: what CPipeManager::GetPipe takes.
    std::string GetPipeReference() const;

    /// Fills heights with samples of the terrain: pairs (distance from the start in m, height in m) in ascending
    /// distance, and returns 1; or empties it and returns 0 when an end has no node or its node no height of that type.
    /// Both ends come with the heights of their nodes; between them, where a surface is attached to the type, every
    /// crossing with the lines through its cell centres, once, without places that have no height.
    ///
    /// Distances run along the plan line from 0 to GetLength2D: samples are found on the drawn line and, where a stored
    /// length differs from the drawn one, moved in proportion, so that they go with levels and slopes, which count in
    /// that length. Only the ends come where the drawn line or the length is missing (0 for both distances then). The
    /// last argument is the interface's: every caller passes null.
    int GetAllTerrainHeights(int terrainType, std::vector<std::pair<double, double>>& heights,
                             const char* reserved = nullptr) const;

    /// Fills box with the level line (m) at the end that is at the node and returns 1. Of a section that returns to
    /// its start that is LEVEL_LINE_0. For another node and for a null level the box becomes null and the result is 0.
    int GetLevelLineAtNode(std::string_view nodeGuid, Data::CDataBox& box) const;

    /// Place in the order in which sections entered the network; grows along that order, with gaps after deletions.
    std::uint32_t GetOrder() const { return m_order; }

    boost::shared_ptr<CSection> GetShared() const;

    /// What notes of inputs call the drawn lines, a part of the topology.
    static constexpr std::string_view GeometryInput = "geometry";

private:
    friend class CTopologyStorage;
    /// The nodes themselves, null without one; kept alive by the topology, like every entity.
    template <class List, class ToEntry>
    int ListSectionsOut(List& list, ToEntry toEntry) const;
    CNode* Start() const;
    CNode* End() const;
    void NoteGeometry() const;

    static constexpr std::uint32_t NoLine = 0xFFFFFFFFU;

    std::uint32_t m_start; ///< row of the node, NoRow for none
    std::uint32_t m_end;
    std::uint32_t m_line = NoLine; ///< place of the drawn line at the topology; none for straight between the nodes
    std::uint32_t m_order = 0;
};

} // namespace OLMGis::Topology
