// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/PlaceIndex.h"
#include "host/gis_core/Result.h"
#include "host/gis_core/TextPool.h"
#include "host/gis_core/Utility.h"
#include "host/network_core/Catchment.h"
#include "host/network_core/Connectivity.h"
#include "host/network_core/EntitySlab.h"
#include "host/network_core/Node.h"
#include "host/network_core/Section.h"

#include <boost/shared_ptr.hpp>

#include <absl/container/flat_hash_map.h>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace OLMGis::Topology {

/// The network of a project: its entities, their order and how they join. The one place through which entities come and
/// go; changes are noted in the attribute store's open journal. Texts handed in are copied.
///
/// Names of nodes are unique; names of sections may repeat. Names compare by plain characters, GUIDs without case and
/// braces; within one kind of entity a GUID occurs once.
class CTopologyStorage {
public:
    explicit CTopologyStorage(Data::CAttributeStore& store);
    ~CTopologyStorage();
    CTopologyStorage(const CTopologyStorage&) = delete;
    CTopologyStorage& operator=(const CTopologyStorage&) = delete;

    /// New entities, last in the order of the network. BadInput, and nothing entered, for an empty or repeated GUID, a
    /// repeated node name, a null section of a catchment. Line and rings may be empty; a line that runs straight
    /// between the nodes' points is not kept. Nodes of a section may be null.
    Utility::Result<boost::shared_ptr<CNode>> AddNode(std::string_view guid, std::string_view name,
                                                      const CPoint& point);
    Utility::Result<boost::shared_ptr<CSection>> AddSection(std::string_view guid, std::string_view name, CNode* start,
                                                            CNode* end, std::span<const CPoint> line);
    Utility::Result<boost::shared_ptr<CCatchment>> AddCatchment(std::string_view guid, std::string_view name,
                                                                CSection* section, CRings rings);

    /// Takes an entity out of the network: it becomes a tombstone. A node in use stays (0); a section takes its
    /// catchments with it. 1 when taken out.
    int RemoveNode(CNode& node);
    int RemoveSection(CSection& section);
    int RemoveCatchment(CCatchment& catchment);

    /// All entities in the order of the network, without tombstones; no nulls. Valid until the next change.
    const std::vector<boost::shared_ptr<CNode>>& GetNodes() const { return Live(m_nodes); }
    const std::vector<boost::shared_ptr<CSection>>& GetSections() const { return Live(m_sections); }
    const std::vector<boost::shared_ptr<CCatchment>>& GetCatchments() const { return Live(m_catchments); }

    /// Null when there is none. One hash look-up.
    boost::shared_ptr<CNode> GetNodeByGuid(std::string_view guid) const;
    boost::shared_ptr<CNode> GetNodeByName(std::string_view name) const;
    boost::shared_ptr<CSection> GetSectionByGuid(std::string_view guid) const;
    boost::shared_ptr<CCatchment> GetCatchmentByGuid(std::string_view guid) const;

    /// All sections of a name in network order; empty when there is none.
    std::vector<boost::shared_ptr<CSection>> GetSectionsByName(std::string_view name) const;

    const boost::shared_ptr<CNode>& GetNodeAt(std::uint32_t row) const { return m_nodes.m_rows[row]; }
    const boost::shared_ptr<CSection>& GetSectionAt(std::uint32_t row) const { return m_sections.m_rows[row]; }

    /// The catchments of a section one after the other, in the order in which they entered; null ends.
    CCatchment* GetFirstCatchment(const CSection& section) const;

    /// What notes of inputs call the list of catchments with their sections.
    static constexpr std::string_view AttachmentInput = "sections";
    static CCatchment* GetNextCatchment(const CCatchment& catchment) { return catchment.m_next; }

    /// The section that was chosen as main outlet (MAIN_SECT_OUT), as long as it still leaves the node; else null.
    /// Cost: the sections out.
    CSection* GetChosenMainOutlet(const CNode& node) const;

    /// The section on which flow leaves a node: the chosen main outlet, without one the only section out, else null.
    CSection* GetMainOutlet(const CNode& node) const;

    /// How sections join, with main outlets; never null. Made at the first call and after changes of nodes, sections or
    /// MAIN_SECT_OUT; until then the same for everybody. Who walks keeps the pointer for the walk.
    std::shared_ptr<const CConnectivity> GetConnectivity() const;

    /// Grows with every entity that comes or goes, undo included: who keeps something made of the network sees that it
    /// is outdated.
    std::uint64_t GetChangeCount() const {
        return m_nodes.m_changeCount + m_sections.m_changeCount + m_catchments.m_changeCount;
    }

    /// Rows given out so far, those of deleted entities included.
    std::uint32_t GetNodeRowCount() const { return static_cast<std::uint32_t>(m_nodes.m_rows.size()); }
    std::uint32_t GetSectionRowCount() const { return static_cast<std::uint32_t>(m_sections.m_rows.size()); }

    /// A drawn line by its place, see CSection::GetGeometry.
    std::span<const CPoint> GetLineAt(std::uint32_t place) const { return m_lines[place]; }

    /// Every section upstream of one, see CSection::GetPreviousSections.
    int CollectUpstream(const CSection& section, std::vector<boost::shared_ptr<CSection>>& list) const;

    /// Makes room for a network of known size in one step.
    void Reserve(std::size_t nodes, std::size_t sections, std::size_t catchments);

    Data::CAttributeStore& GetStore() const { return m_store; }

private:
    /// A text of the entity in a row.
    template <class Entity, std::string_view (CEntity::*Text)() const>
    struct CTextOfRow {
        const std::vector<boost::shared_ptr<Entity>>* m_rows;
        std::string_view operator()(std::uint32_t row) const { return ((*m_rows)[row].get()->*Text)(); }
    };
    template <class Entity>
    using CByGuid = Utility::CPlaceIndex<CTextOfRow<Entity, &CEntity::GetGuid>, Utility::GuidHash, Utility::GuidEqual>;
    template <class Entity>
    using CByName = Utility::CPlaceIndex<CTextOfRow<Entity, &CEntity::GetName>, std::hash<std::string_view>,
                                         std::equal_to<std::string_view>>;

    /// One kind of entity: by row, tombstones included, and the live ones where tombstones make a difference.
    template <class Entity>
    struct CEntityList {
        CEntitySlabs<Entity> m_slabs;
        std::vector<boost::shared_ptr<Entity>> m_rows;
        mutable std::vector<boost::shared_ptr<Entity>> m_live;
        mutable bool m_isLiveStale = false;
        std::uint32_t m_deletedCount = 0;
        std::uint64_t m_changeCount = 0; ///< entities that came or went, undo included
        CByGuid<Entity> m_byGuid{{&m_rows}};
        CByName<Entity> m_byName{{&m_rows}};
    };

    template <class Entity>
    class CExistenceStep;

    /// Change counts of everything that the connectivity is made of.
    struct CConnectivityState {
        std::uint64_t m_nodes = 0;
        std::uint64_t m_sections = 0;
        std::uint64_t m_mainOutlets = 0;
        bool operator==(const CConnectivityState&) const = default;
    };

    template <class Entity>
    const std::vector<boost::shared_ptr<Entity>>& Live(const CEntityList<Entity>& list) const;
    template <class Entity, class... Args>
    boost::shared_ptr<Entity> Enter(CEntityList<Entity>& list, std::string_view guid, std::string_view name,
                                    Args&&... args);
    template <class Entity>
    static boost::shared_ptr<Entity> FindByGuid(const CEntityList<Entity>& list, std::string_view guid);
    template <class Entity>
    void NoteExistence(Entity& entity);
    template <class Entity>
    void SetExists(Entity& entity, bool exists);

    void Attach(CNode& node);
    void Detach(CNode& node);
    void Attach(CSection& section);
    void Detach(CSection& section);
    void Attach(CCatchment& catchment);
    void Detach(CCatchment& catchment);

    CEntityList<CNode>& ListOf(const CNode&) { return m_nodes; }
    CEntityList<CSection>& ListOf(const CSection&) { return m_sections; }
    CEntityList<CCatchment>& ListOf(const CCatchment&) { return m_catchments; }

    Data::CAttributeStore& m_store;
    Data::CTextArena m_texts;
    std::deque<std::vector<CPoint>> m_lines;
    CEntityList<CNode> m_nodes;
    CEntityList<CSection> m_sections;
    CEntityList<CCatchment> m_catchments;
    absl::flat_hash_map<std::string_view, std::vector<std::uint32_t>>
        m_repeatedNames;                                             ///< rows of sections after the first
    std::vector<std::pair<CCatchment*, CCatchment*>> m_catchmentsOf; ///< by section row: first and last
    mutable std::shared_ptr<const CConnectivity> m_connectivity;
    mutable CConnectivityState m_connectivityState;
    mutable std::vector<std::uint32_t> m_marks; ///< by section row: the walk that saw it last
    mutable std::uint32_t m_walk = 0;
};

} // namespace OLMGis::Topology
