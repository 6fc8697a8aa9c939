// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/DataDefinition.h"
#include "host/sewage_calculations/OutdatedResults.h"

#include <array>
#include <cstddef>
#include <optional>
#include <vector>

namespace Reports {

/// Counts and sums of the active project.
struct CProjectDigest {
    struct CExtent {
        double m_minX = 0.0; ///< all in the project's coordinates
        double m_minY = 0.0;
        double m_maxX = 0.0;
        double m_maxY = 0.0;
    };

    /// A key with values, and on how many entities.
    struct CUsedKey {
        const OLMGis::Data::CDataDefinition* m_definition = nullptr;
        std::size_t m_count = 0;
    };

    /// Catchments of one kind; one of several kinds counts for each.
    struct CKindOfCatchment {
        const char* m_name = "";
        int m_kind = 0; ///< bit, see OLMGis::Topology::enmCatchmentKind
        std::size_t m_count = 0;
        double m_area = 0.0; ///< ha
    };

    std::size_t m_nodeCount = 0;
    std::size_t m_sectionCount = 0;
    std::size_t m_catchmentCount = 0;
    double m_length = 0.0;           ///< plan length of all sections, m
    double m_area = 0.0;             ///< of all catchments, ha
    std::optional<CExtent> m_extent; ///< none where nothing is drawn
    std::array<CKindOfCatchment, 3> m_kinds{};
    std::vector<CUsedKey> m_values;     ///< in the order of all definitions, parameters of runs left out
    std::vector<CUsedKey> m_calculated; ///< keys under which runs keep their parameters
    std::size_t m_pipeGroupCount = 0;
    std::size_t m_pipeCount = 0;
    std::size_t m_manholeCount = 0;
    std::vector<OLMGis::Sewage::COutdatedResult> m_outdated; ///< results that no longer fit their inputs
};

/// Linear in entities, their vertices and values.
CProjectDigest MakeProjectDigest();

} // namespace Reports
