// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"
#include "host/network_core/TopologyStorage.h"
#include "host/project_io/base/SectionReferences.h"
#include "host/project_io/tables/CsvReader.h"

#include <absl/container/flat_hash_map.h>
#include <absl/container/flat_hash_set.h>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace OLMGis::ProjectIo {

/// The entity that a row of a table describes: one of the project, or a new catchment.
struct CCsvTarget {
    const Data::CAttributeOwner* m_entity = nullptr; ///< null for a new catchment
    Topology::CSection* m_section = nullptr;         ///< of a new catchment, as are the members below
    std::string m_name;
    std::string m_guid;
};

/// Finds the entities of the rows of a table. Made for one table; the topology must not change meanwhile. Linear to
/// make, then a few hash look-ups per row.
class CCsvTargets {
public:
    CCsvTargets(const Topology::CTopologyStorage& topology, Data::enmEntityKind kind, const CCsvReader& reader);

    /// BadInput when the head line has no column that identifies the entity.
    Utility::Status CheckHead() const;

    /// The entity of the current row. kinds: kinds of the catchment in this row, nothing where it has none. BadInput
    /// when there is no such entity, when several fit, when columns contradict each other, and when an earlier row has
    /// the same entity.
    Utility::Result<CCsvTarget> Find(std::optional<int> kinds);

private:
    /// The catchments of one section that have the same kinds.
    struct CAlike {
        const Topology::CCatchment* m_first = nullptr;
        std::uint32_t m_count = 0;
    };

    Utility::Result<CCsvTarget> FindNode();
    Utility::Result<CCsvTarget> FindSection();
    Utility::Result<CCsvTarget> FindCatchment(std::optional<int> kinds);
    Utility::Result<CCsvTarget> KnownCatchment(const Topology::CCatchment& catchment);
    Utility::Result<CCsvTarget> NewCatchment(Topology::CSection& section);
    template <class Entity>
    Utility::Result<CCsvTarget> Agreed(const Entity& entity);
    Utility::Status CheckEnd(std::string_view column, const boost::shared_ptr<Topology::CNode>& node) const;
    Utility::Status CheckFirst(const CCsvTarget& target);
    void IndexCatchments();

    const Topology::CTopologyStorage& m_topology;
    Data::enmEntityKind m_kind;
    const CCsvReader& m_reader;
    CSectionReferences m_references;
    std::optional<std::size_t> m_name;
    std::optional<std::size_t> m_guid;
    std::string_view m_sectionColumn; ///< of catchments: the column that names the section
    std::vector<std::size_t> m_lines; ///< by row of the store: line of the table with the entity, 0 for none
    absl::flat_hash_map<std::uint64_t, CAlike> m_alike;             ///< by section and kinds
    absl::flat_hash_map<std::uint32_t, std::uint32_t> m_nextNumber; ///< by section: number of its next new catchment
    absl::flat_hash_set<std::string, Utility::GuidHash, Utility::GuidEqual> m_newGuids;
};

} // namespace OLMGis::ProjectIo
