// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/PlaceIndex.h"
#include "host/gis_core/Result.h"
#include "host/gis_core/TextPool.h"
#include "host/network_core/Geometry.h"
#include "host/project_io/base/ImportSummary.h"
#include "host/project_io/inp/InpShape.h"

#include <array>
#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace OLMGis::ProjectIo {

/// The index of nothing.
inline constexpr std::uint32_t InpNone = std::numeric_limits<std::uint32_t>::max();

/// Names compare without the case of ASCII letters, as the format defines.
struct InpNameHash {
    std::size_t operator()(std::string_view name) const;
};
struct InpNameEqual {
    bool operator()(std::string_view a, std::string_view b) const;
};
using CInpIndex = std::unordered_map<std::string_view, std::uint32_t, InpNameHash, InpNameEqual>;

/// The name of the record at a place.
template <class Record>
struct CInpNameAt {
    const std::vector<Record>* m_records;
    std::string_view operator()(std::uint32_t place) const { return (*m_records)[place].m_name; }
};

/// Finds records by name.
template <class Record>
using CInpNames = Utility::CPlaceIndex<CInpNameAt<Record>, InpNameHash, InpNameEqual>;

struct CInpNode {
    std::string_view m_name;
    double m_invert = 0.0; ///< level of the bottom, m
    double m_depth = 0.0;  ///< greatest depth, m; 0 means up to the highest crown of its links
    Topology::CPoint m_point;
    std::size_t m_line = 0;
};

enum class enmInpLinkKind : std::uint8_t { Conduit, Pump, Orifice, Weir, Outlet };

/// A row of points that belongs to an object: consecutive lines of the same name. The rows of one object are chained.
struct CInpPointRow {
    std::string_view m_name;
    std::size_t m_first = 0; ///< in CInpNetwork::m_points
    std::size_t m_count = 0;
    std::uint32_t m_next = InpNone;
};

/// Where the rows of points of one object begin and end.
struct CInpPointRows {
    std::uint32_t m_first = InpNone;
    std::uint32_t m_last = InpNone;
};

struct CInpLink {
    std::string_view m_name;
    std::string_view m_fromName;
    std::string_view m_toName;
    std::uint32_t m_from = InpNone; ///< node
    std::uint32_t m_to = InpNone;
    double m_length = 0.0;    ///< m, of conduits
    double m_manning = 0.0;   ///< Manning's n, s/m^(1/3), of conduits; 0 where unknown
    double m_inlet = 0.0;     ///< level at the upper end, m, not-a-number for none; an offset until ResolveInpNetwork
    double m_outlet = 0.0;    ///< the same at the lower end
    CInpPointRows m_vertices; ///< between the two nodes
    std::uint32_t m_crossSection = InpNone;
    enmInpLinkKind m_kind = enmInpLinkKind::Conduit;
    std::size_t m_line = 0;
};

struct CInpSubcatchment {
    std::string_view m_name;
    std::string_view m_outletName;
    std::uint32_t m_node = InpNone;         ///< it drains to a node ...
    std::uint32_t m_subcatchment = InpNone; ///< ... or onto another subcatchment
    double m_area = 0.0;                    ///< ha
    double m_impervious = 0.0;              ///< %
    CInpPointRows m_polygon;
    std::size_t m_line = 0;
};

/// The place of a node on the map.
struct CInpCoordinate {
    std::string_view m_nodeName;
    Topology::CPoint m_point;
};

/// What is kept of a storm-water file, as plain records in the order of the file. Texts are stored in m_texts.
struct CInpNetwork {
    bool m_isUs = true;               ///< lengths in feet and areas in acres, until ResolveInpNetwork
    bool m_isOffsetElevation = false; ///< offsets of links are levels and not heights above the invert of the node
    std::vector<CInpNode> m_nodes;
    std::vector<CInpLink> m_links;
    std::vector<CInpCrossSection> m_crossSections;
    std::vector<CInpSubcatchment> m_subcatchments;
    std::vector<CInpCoordinate> m_coordinates;
    std::vector<CInpPointRow> m_vertexRows;
    std::vector<CInpPointRow> m_polygonRows;
    std::vector<Topology::CPoint> m_points; ///< map units, never converted
    std::vector<CInpShapeCurve> m_curves;
    std::vector<CInpTransect> m_transects;
    CInpNames<CInpNode> m_nodesByName{{&m_nodes}}; ///< this and the next two are filled by ResolveInpNetwork
    CInpNames<CInpLink> m_linksByName{{&m_links}};
    CInpNames<CInpSubcatchment> m_subcatchmentsByName{{&m_subcatchments}};
    CInpIndex m_curvesByName;
    CInpIndex m_transectsByName;
    Data::CTextArena m_texts;
    CImportSummary m_summary; ///< notes what could not be imported as it is
};

/// The transect that the text of a cross-section names, null for none. One hash look-up for irregular shapes.
const CInpTransect* FindInpTransect(const CInpNetwork& network, const CInpCrossSection& section);

/// Inside height of a cross-section (m); 0 where it is unknown.
double GetInpHeight(const CInpNetwork& network, const CInpCrossSection& section);

/// Resolves references by name and converts everything to m and ha, once: afterwards no record has feet, offsets or
/// unresolved names. BadInput, naming line and object, for contradictions: a name that repeats, a link to an
/// unknown node, a conduit without cross-section, a cross-section without link, a subcatchment with an unknown outlet.
/// fileName: name of the file in messages. Linear.
Utility::Status ResolveInpNetwork(CInpNetwork& network, const std::string& fileName);

} // namespace OLMGis::ProjectIo
