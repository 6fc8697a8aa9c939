// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/TopologyStorage.h"
#include "host/project_io/base/ValueFaults.h"

#include <string>
#include <string_view>
#include <vector>

namespace OLMGis::ProjectIo {

/// The name by which messages call an entity: of a catchment that of its section.
std::string_view NameForMessages(const Topology::CEntity& entity);

/// What is wrong with the numbers and the geometry of a network, from whichever source they came.
struct CProjectValues {
    CValueFaults m_impossible;
    std::vector<std::string> m_unusual; ///< one sentence per key, with the number of entities and the first names
};

/// Judges every number by the range of its definition, in the order of the definitions, then the geometry. Impossible
/// are a section from a node to itself, one whose length would come from degrees, one with neither a place nor a
/// length, and a catchment whose polygon has no sound area. Unusual is an entered area far from that of the polygon.
/// Linear; a column of usual values costs one vectorised pass. mostPlaces: of impossible values that are listed.
CProjectValues JudgeProject(const Topology::CTopologyStorage& topology,
                            std::size_t mostPlaces = CValueFaults::MostPlaces);

} // namespace OLMGis::ProjectIo
