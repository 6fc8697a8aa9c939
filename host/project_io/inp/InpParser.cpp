// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/inp/InpParser.h"

#include "host/gis_core/Utility.h"

#include <fmt/format.h>

#include <cmath>
#include <limits>

namespace OLMGis::ProjectIo {

using Utility::CUtility;

namespace {

constexpr CInpQuantity Elevation{"elevation", -1e5, 1e5};
constexpr CInpQuantity Depth{"greatest depth", 0.0, 1e5};
constexpr CInpQuantity Length{"length", 0.0, 1e7};
constexpr CInpQuantity Manning{"roughness", 0.0, 100.0};
constexpr CInpQuantity Offset{"offset", -1e5, 1e5};
constexpr CInpQuantity Dimension{"dimension", 0.0, 1e5};
constexpr CInpQuantity Barrels{"number of barrels", 0.0, 1000.0};
constexpr CInpQuantity Area{"area", 0.0, 1e8};
constexpr CInpQuantity Imperviousness{"imperviousness in %", 0.0, 100.0};
constexpr CInpQuantity Coordinate{"coordinate", -1e12, 1e12};
constexpr CInpQuantity Station{"station", -1e7, 1e7};
constexpr CInpQuantity StationFactor{"width factor", 0.0, 1e4};
constexpr CInpQuantity CurveValue{"curve value", -1e9, 1e9};

constexpr double NoOffset = std::numeric_limits<double>::quiet_NaN();

bool IsOneOf(std::string_view word, std::initializer_list<std::string_view> choices) {
    for (const std::string_view choice : choices)
        if (CUtility::EqualIgnoreCase(word, choice))
            return true;
    return false;
}

} // namespace

bool CInpParser::ReadAll() {
    while (m_reader.Next())
        if (!ReadLine())
            return false;
    return !m_reader.GetError();
}

bool CInpParser::ReadLine() {
    switch (m_reader.GetSection()) {
    case enmInpSection::Options:
        return ReadOption();
    case enmInpSection::Junctions:
    case enmInpSection::Storage:
        return ReadNode(2);
    case enmInpSection::Outfalls:
        return ReadNode(0);
    case enmInpSection::Dividers:
        return ReadDivider();
    case enmInpSection::Conduits:
        return ReadConduit();
    case enmInpSection::Pumps:
        return ReadLink(enmInpLinkKind::Pump, 0);
    case enmInpSection::Orifices:
        return ReadLink(enmInpLinkKind::Orifice, 4);
    case enmInpSection::Weirs:
        return ReadLink(enmInpLinkKind::Weir, 4);
    case enmInpSection::Outlets:
        return ReadLink(enmInpLinkKind::Outlet, 3);
    case enmInpSection::CrossSections:
        return ReadCrossSection();
    case enmInpSection::Transects:
        return ReadTransect();
    case enmInpSection::Curves:
        return ReadCurve();
    case enmInpSection::Subcatchments:
        return ReadSubcatchment();
    case enmInpSection::Coordinates:
        return ReadCoordinate();
    case enmInpSection::Vertices:
        return ReadRowPoint(m_network.m_vertexRows);
    case enmInpSection::Polygons:
        return ReadRowPoint(m_network.m_polygonRows);
    case enmInpSection::Other:
        break;
    }
    m_reader.CountUnread();
    return true;
}

bool CInpParser::RequireTokens(std::size_t count, std::string_view expected) {
    if (m_reader.GetTokens().size() >= count)
        return true;
    return m_reader.Fail(fmt::format("a line of {} columns", m_reader.GetTokens().size()), expected);
}

bool CInpParser::ReadOption() {
    const std::string_view value = m_reader.GetToken(1);
    if (IsOneOf(m_reader.GetToken(0), {"FLOW_UNITS"})) {
        m_network.m_isUs = IsOneOf(value, {"CFS", "GPM", "MGD"});
        if (m_network.m_isUs || IsOneOf(value, {"CMS", "LPS", "MLD"}))
            return true;
        return m_reader.Fail(fmt::format("the flow unit \"{}\"", value), "CFS, GPM, MGD, CMS, LPS or MLD");
    }
    if (IsOneOf(m_reader.GetToken(0), {"LINK_OFFSETS"})) {
        m_network.m_isOffsetElevation = IsOneOf(value, {"ELEVATION"});
        if (m_network.m_isOffsetElevation || IsOneOf(value, {"DEPTH"}))
            return true;
        return m_reader.Fail(fmt::format("the kind of offsets \"{}\"", value), "DEPTH or ELEVATION");
    }
    m_reader.CountUnread();
    return true;
}

/// depthPlace: column of the greatest depth, 0 when the line has none.
bool CInpParser::ReadNode(std::size_t depthPlace) {
    CInpNode node;
    node.m_line = m_reader.GetLineNumber();
    node.m_name = Keep(m_reader.GetToken(0));
    if (!m_reader.ReadNumber(1, Elevation, node.m_invert))
        return false;
    if (depthPlace > 0 && !m_reader.ReadOptionalNumber(depthPlace, Depth, node.m_depth))
        return false;
    m_network.m_nodes.push_back(node);
    return true;
}

bool CInpParser::ReadDivider() {
    // Name, elevation, diverted link, kind, values of the kind, greatest depth.
    const std::string_view kind = m_reader.GetToken(3);
    if (IsOneOf(kind, {"OVERFLOW"}))
        return ReadNode(4);
    if (IsOneOf(kind, {"CUTOFF", "TABULAR"}))
        return ReadNode(5);
    if (IsOneOf(kind, {"WEIR"}))
        return ReadNode(7);
    return m_reader.Fail(fmt::format("the kind of divider \"{}\"", kind), "OVERFLOW, CUTOFF, TABULAR or WEIR");
}

/// offsetPlace: column of the offset at the upper end, 0 when the line has none.
bool CInpParser::ReadLink(enmInpLinkKind kind, std::size_t offsetPlace) {
    if (!RequireTokens(3, "name, upper node and lower node of a link"))
        return false;
    CInpLink link;
    link.m_line = m_reader.GetLineNumber();
    link.m_kind = kind;
    link.m_name = Keep(m_reader.GetToken(0));
    link.m_fromName = Keep(m_reader.GetToken(1));
    link.m_toName = Keep(m_reader.GetToken(2));
    link.m_inlet = link.m_outlet = NoOffset;
    if (offsetPlace > 0 && !ReadOffset(offsetPlace, link.m_inlet))
        return false;
    m_network.m_links.push_back(link);
    return true;
}

bool CInpParser::ReadConduit() {
    if (!ReadLink(enmInpLinkKind::Conduit, 0))
        return false;
    CInpLink& conduit = m_network.m_links.back();
    return m_reader.ReadNumber(3, Length, conduit.m_length) && m_reader.ReadNumber(4, Manning, conduit.m_manning) &&
           ReadOffset(5, conduit.m_inlet) && ReadOffset(6, conduit.m_outlet);
}

/// "*" and the end of the line mean no offset.
bool CInpParser::ReadOffset(std::size_t place, double& offset) {
    return m_reader.GetToken(place) == "*" || m_reader.ReadOptionalNumber(place, Offset, offset);
}

bool CInpParser::ReadCrossSection() {
    if (!RequireTokens(3, "link, shape and dimensions of a cross-section"))
        return false;
    CInpCrossSection section;
    section.m_line = m_reader.GetLineNumber();
    const std::optional<enmInpShape> shape = FindInpShape(m_reader.GetToken(1));
    if (!shape)
        return m_reader.Fail(fmt::format("the shape \"{}\"", m_reader.GetToken(1)),
                             "a shape of the format such as CIRCULAR or RECT_CLOSED");
    section.m_shape = *shape;
    section.m_linkName = Keep(m_reader.GetToken(0));
    const bool isNamed = *shape == enmInpShape::Irregular || *shape == enmInpShape::Street;
    if (isNamed || *shape == enmInpShape::Custom)
        section.m_text = Keep(m_reader.GetToken(isNamed ? 2 : 3));
    // The name of a curve or transect takes the place of a dimension; only a custom shape also has a height.
    const std::size_t dimensionCount = isNamed ? 0 : *shape == enmInpShape::Custom ? 1 : section.m_dimensions.size();
    for (std::size_t i = 0; i < dimensionCount; ++i) {
        if (!m_reader.ReadOptionalNumber(2 + i, Dimension, section.m_dimensions[i]))
            return false;
        if (i < CountInpPositiveDimensions(*shape) && !(section.m_dimensions[i] > 0.0))
            return m_reader.Fail(fmt::format("no dimension above 0 in column {} of the cross-section of \"{}\"", 3 + i,
                                             section.m_linkName),
                                 "a dimension above 0");
    }
    double barrels = 1.0;
    if (!m_reader.ReadOptionalNumber(6, Barrels, barrels))
        return false;
    section.m_barrels = static_cast<int>(barrels);
    m_network.m_crossSections.push_back(section);
    return true;
}

bool CInpParser::ReadTransect() {
    const std::string_view kind = m_reader.GetToken(0);
    if (IsOneOf(kind, {"NC"})) {
        double left = 0.0;
        double right = 0.0;
        double channel = 0.0;
        if (!m_reader.ReadNumber(1, Manning, left) || !m_reader.ReadNumber(2, Manning, right) ||
            !m_reader.ReadNumber(3, Manning, channel))
            return false;
        // A 0 keeps the previous value.
        if (channel > 0.0)
            m_channelManning = channel;
        m_hasOtherBanks = (left > 0.0 && left != m_channelManning) || (right > 0.0 && right != m_channelManning);
        return true;
    }
    if (IsOneOf(kind, {"X1"}))
        return ReadTransectHead();
    if (IsOneOf(kind, {"GR"}))
        return ReadTransectPoints();
    m_reader.CountUnread();
    return true;
}

bool CInpParser::ReadTransectHead() {
    if (!RequireTokens(2, "X1 and the name of a transect"))
        return false;
    CInpTransect transect;
    transect.m_name = Keep(m_reader.GetToken(1));
    transect.m_manning = m_channelManning;
    transect.m_hasOtherBanks = m_hasOtherBanks;
    if (!m_reader.ReadOptionalNumber(9, StationFactor, transect.m_stationFactor))
        return false;
    if (transect.m_stationFactor == 0.0)
        transect.m_stationFactor = 1.0;
    const auto place = static_cast<std::uint32_t>(m_network.m_transects.size());
    if (!m_network.m_transectsByName.emplace(transect.m_name, place).second)
        return m_reader.Fail(fmt::format("the transect \"{}\" again", transect.m_name), "each transect once");
    m_network.m_transects.push_back(std::move(transect));
    return true;
}

bool CInpParser::ReadTransectPoints() {
    if (m_network.m_transects.empty())
        return m_reader.Fail("points of a channel without a transect", "a line X1 with its name before them");
    auto& points = m_network.m_transects.back().m_points;
    for (std::size_t place = 1; place < m_reader.GetTokens().size(); place += 2) {
        double level = 0.0;
        double station = 0.0;
        if (!m_reader.ReadNumber(place, Elevation, level) || !m_reader.ReadNumber(place + 1, Station, station))
            return false;
        if (!points.empty() && station < points.back().first)
            return m_reader.Fail(fmt::format("station {} after station {}", station, points.back().first),
                                 "stations that do not fall");
        points.emplace_back(station, level);
    }
    return true;
}

bool CInpParser::ReadCurve() {
    const std::string_view name = m_reader.GetToken(0);
    const bool hasKind = m_reader.GetTokens().size() > 1 && !CUtility::ParseDouble(m_reader.GetToken(1));
    auto curve = m_network.m_curvesByName.find(name);
    if (hasKind && IsOneOf(m_reader.GetToken(1), {"SHAPE"}) && curve == m_network.m_curvesByName.end()) {
        const std::string_view kept = Keep(name);
        curve = m_network.m_curvesByName.emplace(kept, static_cast<std::uint32_t>(m_network.m_curves.size())).first;
        m_network.m_curves.push_back({kept, {}});
    }
    if (curve == m_network.m_curvesByName.end()) {
        m_reader.CountUnread(); // curves of pumps, storage and the like
        return true;
    }
    for (std::size_t place = hasKind ? 2 : 1; place < m_reader.GetTokens().size(); place += 2) {
        double depth = 0.0;
        double width = 0.0;
        if (!m_reader.ReadNumber(place, CurveValue, depth) || !m_reader.ReadNumber(place + 1, CurveValue, width))
            return false;
        m_network.m_curves[curve->second].m_points.emplace_back(depth, width);
    }
    return true;
}

bool CInpParser::ReadSubcatchment() {
    if (!RequireTokens(5, "name, rain gage, outlet, area and imperviousness of a subcatchment"))
        return false;
    CInpSubcatchment area;
    area.m_line = m_reader.GetLineNumber();
    area.m_name = Keep(m_reader.GetToken(0));
    area.m_outletName = Keep(m_reader.GetToken(2));
    if (!m_reader.ReadNumber(3, Area, area.m_area) || !m_reader.ReadNumber(4, Imperviousness, area.m_impervious))
        return false;
    m_network.m_subcatchments.push_back(area);
    return true;
}

bool CInpParser::ReadPoint(Topology::CPoint& point) {
    return m_reader.ReadNumber(1, Coordinate, point.m_x) && m_reader.ReadNumber(2, Coordinate, point.m_y);
}

bool CInpParser::ReadCoordinate() {
    CInpCoordinate coordinate;
    coordinate.m_nodeName = Keep(m_reader.GetToken(0));
    if (!ReadPoint(coordinate.m_point))
        return false;
    m_network.m_coordinates.push_back(coordinate);
    return true;
}

bool CInpParser::ReadRowPoint(std::vector<CInpPointRow>& rows) {
    Topology::CPoint point;
    if (!ReadPoint(point))
        return false;
    if (rows.empty() || rows.back().m_name != m_reader.GetToken(0) ||
        rows.back().m_first + rows.back().m_count != m_network.m_points.size()) {
        CInpPointRow row;
        row.m_name = Keep(m_reader.GetToken(0));
        row.m_first = m_network.m_points.size();
        rows.push_back(row);
    }
    ++rows.back().m_count;
    m_network.m_points.push_back(point);
    return true;
}

} // namespace OLMGis::ProjectIo
