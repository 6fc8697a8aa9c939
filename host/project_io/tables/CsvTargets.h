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

/// What a row of a table is about: an entity of the project, or a catchment that it will get.
struct CCsvTarget {
    const Data::CAttributeOwner* m_entity = nullptr; ///< null for a new catchment
    Topology::CSection* m_section = nullptr;         ///< of a new catchment, like the following
    std::string m_name;
    std::string m_guid;
};

/// Finds what the rows of a table are about. Made for one table, while the topology stays as it is. Linear to make,
/// then a few hash look-ups a row, whatever hangs on one section.
class CCsvTargets {
public:
    CCsvTargets(const Topology::CTopologyStorage& topology, Data::enmEntityKind kind, const CCsvReader& reader);

    /// Whether the column serves to tell the entity and is no attribute.
    bool IsTelling(std::string_view column) const;

    /// BadInput when the head line has no column that tells the entity.
    Utility::Status CheckHead() const;

    /// The target of the present row. kinds: the row's kinds of a catchment, nothing where it gives none. BadInput when
    /// there is no such entity, when several fit, when columns contradict each other or an earlier row was about it.
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
    std::string_view m_sectionColumn; ///< of catchments: the column that tells the section
    std::vector<std::size_t> m_lines; ///< by row of the store: the line that was about the entity, 0 for none
    absl::flat_hash_map<std::uint64_t, CAlike> m_alike;             ///< by section and kinds
    absl::flat_hash_map<std::uint32_t, std::uint32_t> m_nextNumber; ///< by section: number of its next new catchment
    absl::flat_hash_set<std::string, Utility::GuidHash, Utility::GuidEqual> m_newGuids;
};

} // namespace OLMGis::ProjectIo
