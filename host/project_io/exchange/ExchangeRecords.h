// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/TextPool.h"
#include "host/network_core/Geometry.h"
#include "host/project_io/base/StagedAttributes.h"
#include "host/project_io/base/TextIndex.h"
#include "host/project_io/base/ValueFaults.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace OLMGis::ProjectIo {

/// A stretch of CExchangeRecords::m_points.
struct CPointRange {
    std::size_t m_first = 0;
    std::uint32_t m_count = 0;
};

/// The content of an exchange file as compact records in the order of the file; needed because a feature may refer to
/// others that come later. m_feature is the number of the feature in the file; names and GUIDs are in lists of their
/// own, by the place of the record.
struct CExchangeRecords {
    struct CNode {
        std::uint32_t m_nameId = 0; ///< in m_nodeNames
        std::uint32_t m_feature = 0;
    };
    struct CSection {
        std::uint32_t m_from = NoRecord; ///< a name id while reading, a node when linked; NoRecord: snaps
        std::uint32_t m_to = NoRecord;
        std::uint32_t m_feature = 0;
        CPointRange m_line;
    };
    struct CCatchment {
        Data::CKeptText m_sectionText;      ///< name or GUID
        std::uint32_t m_section = NoRecord; ///< when linked
        std::uint32_t m_feature = 0;
        std::size_t m_firstRing = 0; ///< in m_rings
        std::uint32_t m_ringCount = 0;
    };
    struct CMainOutlet {
        std::uint32_t m_nameId = 0; ///< of the node
        std::uint32_t m_feature = 0;
        Data::CKeptText m_sectionText;      ///< name or GUID
        std::uint32_t m_section = NoRecord; ///< when linked
    };

    Data::CTextArena m_texts;
    std::vector<Data::CKeptText> m_nodeNames; ///< by name id; names of nodes and names that refer to nodes
    CNameIndex m_nameIds{{&m_nodeNames}};
    std::vector<std::uint32_t> m_nodeOfName; ///< by name id, NoRecord while no node has the name

    std::vector<CNode> m_nodes;
    std::vector<Topology::CPoint> m_nodePoints;
    std::vector<Data::CKeptText> m_nodeGuids;
    CGuidIndex m_nodesByGuid{{&m_nodeGuids}};

    std::vector<CSection> m_sections;
    std::vector<Data::CKeptText> m_sectionNames;
    std::vector<Data::CKeptText> m_sectionGuids;
    CNameIndex m_sectionsByName{{&m_sectionNames}}; ///< the first one of each name
    CGuidIndex m_sectionsByGuid{{&m_sectionGuids}};
    std::vector<bool> m_isNameRepeated; ///< by section, true at the first section of a name that others have too

    std::vector<CCatchment> m_catchments;
    std::vector<Data::CKeptText> m_catchmentNames; ///< empty for none
    std::vector<Data::CKeptText> m_catchmentGuids;
    CGuidIndex m_catchmentsByGuid{{&m_catchmentGuids}};

    std::vector<CMainOutlet> m_mainOutlets;
    std::vector<Topology::CPoint> m_points; ///< of lines and rings
    std::vector<CPointRange> m_rings;
    CStagedAttributes m_attributes; ///< by the place of the record among its kind
    CValueFaults m_faults;          ///< what is impossible; nothing is entered while there is any

    std::span<const Topology::CPoint> Points(const CPointRange& range) const {
        return std::span(m_points).subspan(range.m_first, range.m_count);
    }
    Topology::CRings RingsOf(const CCatchment& catchment) const {
        Topology::CRings rings;
        rings.reserve(catchment.m_ringCount);
        for (std::uint32_t i = 0; i < catchment.m_ringCount; ++i) {
            const auto ring = Points(m_rings[catchment.m_firstRing + i]);
            rings.emplace_back(ring.begin(), ring.end());
        }
        return rings;
    }
    CPointRange KeepPoints(std::span<const Topology::CPoint> points) {
        const CPointRange range{m_points.size(), static_cast<std::uint32_t>(points.size())};
        m_points.insert(m_points.end(), points.begin(), points.end());
        return range;
    }
};

} // namespace OLMGis::ProjectIo
