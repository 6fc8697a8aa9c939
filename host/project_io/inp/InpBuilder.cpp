// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/inp/InpBuilder.h"

#include "host/formulas/Roughness.h"
#include "host/formulas/Rounding.h"
#include "host/formulas/Units.h"
#include "host/gis_core/DataRW.h"
#include "host/gis_core/Utility.h"
#include "host/network_core/CatalogManager.h"
#include "host/network_core/Catchment.h"
#include "host/network_core/TopologyMultiStorage.h"
#include "host/project_io/base/PolygonValidity.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace OLMGis::ProjectIo {

using Data::CDataBox;
using Data::CDataDefinition;
using Data::CDataRW;
using Topology::CPoint;
using Utility::CUtility;
using Utility::Done;
using Utility::Error;
using Utility::Status;

namespace {

constexpr std::string_view NamesOfKinds[] = {"conduits", "pumps", "orifices", "weirs", "outlet devices"};

const CDataDefinition* Definition(std::string_view key) {
    return Data::CDataConfiguration::Instance()->GetDataDefinitionByID(key);
}

/// The attributes that an import writes, looked up once.
struct CInpKeys {
    const CDataDefinition* m_terrain = Definition("TERRAIN_1");
    const CDataDefinition* m_length = Definition("length");
    const CDataDefinition* m_levelPosition = Definition("LEVEL_LINE_POSITION");
    const CDataDefinition* m_upperLevel = Definition("LEVEL_LINE_0");
    const CDataDefinition* m_lowerLevel = Definition("LEVEL_LINE_1");
    const CDataDefinition* m_slope = Definition("SECTION_SLOPE");
    const CDataDefinition* m_slopeOfLevels = Definition("SECTION_SLOPE_CAL");
    const CDataDefinition* m_manning = Definition("MANNING_N");
    const CDataDefinition* m_roughness = Definition("PIPE_ROUGHNESS");
    const CDataDefinition* m_pipe = Definition("PIPE_REF");
    const CDataDefinition* m_kinds = Definition("kinds");
    const CDataDefinition* m_area = Definition("area");
    const CDataDefinition* m_coefficient = Definition("coefficient");
};

/// Looked up once: the definitions are the same for every project.
const CInpKeys& Keys() {
    static const CInpKeys keys;
    return keys;
}

void Write(const CDataDefinition* key, const Data::CAttributeOwner& entity, double value) {
    CDataRW::Write(key, &entity, CDataBox(value), nullptr);
}

void WriteInt(const CDataDefinition* key, const Data::CAttributeOwner& entity, int value) {
    CDataRW::Write(key, &entity, CDataBox(value), nullptr);
}

} // namespace

CInpBuilder::CInpBuilder(CInpNetwork& network, const std::string& fileName)
    : m_network(network), m_fileName(fileName),
      m_topology(*Topology::CTopologyMultiStorage::Instance()->GetActiveTopology()) {}

Status CInpBuilder::Build() {
    m_topology.Reserve(m_network.m_nodes.size(), m_network.m_links.size(), m_network.m_subcatchments.size());
    if (auto nodes = AddNodes(); !nodes)
        return nodes;
    if (auto sections = AddSections(); !sections)
        return sections;
    if (auto catchments = AddCatchments(); !catchments)
        return catchments;
    CImportSummary& summary = m_network.m_summary;
    m_roughness.Report(summary);
    summary.m_nodeCount = m_nodes.size();
    summary.m_sectionCount = m_sections.size();
    summary.m_pipeCount = m_pipes.GetCount();
    return m_pipes.Store(*Topology::CCatalogManager::Instance()->GetCatalog(Topology::CCatalogManager::PipeCatalog, 1));
}

Status CInpBuilder::AddNodes() {
    const std::vector<double> crowns = FindCrowns();
    m_nodes.reserve(m_network.m_nodes.size());
    for (std::size_t i = 0; i < m_network.m_nodes.size(); ++i) {
        const CInpNode& record = m_network.m_nodes[i];
        auto node = m_topology.AddNode(CUtility::MakeGuid("inp/node", record.m_name, i), record.m_name, record.m_point);
        if (!node)
            return Error{node.GetError().kind,
                         fmt::format("{}, line {}: {}", m_fileName, record.m_line, node.GetError().message)};
        m_nodes.push_back(node.Value().get());
        // In this format outfalls have no depth, and a depth of 0 means "up to the highest crown of the links at the
        // node".
        const double top =
            record.m_depth > 0.0 ? record.m_invert + record.m_depth : std::max(record.m_invert, crowns[i]);
        if (!(record.m_depth > 0.0))
            m_network.m_summary.Count("nodes without a depth, terrain at the highest crown of their links",
                                      record.m_name);
        Write(Keys().m_terrain, *node.Value(), top);
    }
    return Done();
}

/// The highest crown of the links at each node (m), minus infinity where none is known.
std::vector<double> CInpBuilder::FindCrowns() const {
    std::vector<double> crowns(m_network.m_nodes.size(), -std::numeric_limits<double>::infinity());
    for (const CInpLink& link : m_network.m_links) {
        if (link.m_crossSection == InpNone)
            continue;
        const CInpCrossSection& section = m_network.m_crossSections[link.m_crossSection];
        const double height = GetInpHeight(m_network, section);
        // An unknown level is not-a-number, which std::max leaves out here.
        crowns[link.m_from] = std::max(crowns[link.m_from], link.m_inlet + height);
        crowns[link.m_to] = std::max(crowns[link.m_to], link.m_outlet + height);
    }
    return crowns;
}

Status CInpBuilder::AddSections() {
    m_sections.reserve(m_network.m_links.size());
    for (std::size_t i = 0; i < m_network.m_links.size(); ++i) {
        const CInpLink& link = m_network.m_links[i];
        auto section = m_topology.AddSection(CUtility::MakeGuid("inp/link", link.m_name, i), link.m_name,
                                             m_nodes[link.m_from], m_nodes[link.m_to], LineOf(link));
        if (!section)
            return Error{section.GetError().kind,
                         fmt::format("{}, line {}: {}", m_fileName, link.m_line, section.GetError().message)};
        m_sections.push_back(section.Value().get());
        WriteSection(link, *section.Value());
    }
    return Done();
}

void CInpBuilder::WriteSection(const CInpLink& link, const Topology::CSection& section) {
    WriteInt(Keys().m_levelPosition, section, 0);
    if (!std::isnan(link.m_inlet))
        Write(Keys().m_upperLevel, section, link.m_inlet);
    if (!std::isnan(link.m_outlet))
        Write(Keys().m_lowerLevel, section, link.m_outlet);
    if (link.m_kind == enmInpLinkKind::Conduit) {
        WriteConduit(link, section);
    } else {
        // A device is at one place: its length on the map, in units that the file need not name, is no length over
        // which water travels.
        Write(Keys().m_length, section, 0.0);
        m_network.m_summary.Count(
            fmt::format("{}, taken as sections without a pipe", NamesOfKinds[static_cast<std::size_t>(link.m_kind)]),
            link.m_name);
    }
}

void CInpBuilder::WriteConduit(const CInpLink& link, const Topology::CSection& section) {
    Write(Keys().m_length, section, link.m_length);
    WriteSlope(link, section);
    const CInpCrossSection& shape = m_network.m_crossSections[link.m_crossSection];
    const double manning = ManningOf(link);
    const double roughness = m_roughness.Take(manning, GetInpHeight(m_network, shape), link.m_name);
    if (manning > 0.0) {
        Write(Keys().m_manning, section, manning);
        Write(Keys().m_roughness, section, roughness);
    } else {
        m_network.m_summary.Count("conduits without a roughness", link.m_name);
    }
    const std::uint32_t pipe = m_pipes.Enter(m_network, shape, roughness);
    if (pipe != InpNone)
        CDataRW::Write(Keys().m_pipe, static_cast<const Data::CAttributeOwner*>(&section),
                       CDataBox(m_pipes.GetGuid(pipe)), nullptr);
    NoteCrossSection(link, shape, pipe);
}

void CInpBuilder::WriteSlope(const CInpLink& link, const Topology::CSection& section) {
    if (!(link.m_length > 0.0)) {
        m_network.m_summary.Count("conduits of length 0, left without a slope", link.m_name);
        return;
    }
    // A conduit that climbs keeps its direction and its negative slope: the engineer decides whether it flows the other
    // way, and the checks report it.
    const double slope = Formulas::RoundDerived((link.m_inlet - link.m_outlet) / link.m_length * Formulas::PerMille);
    Write(Keys().m_slope, section, slope);
    Write(Keys().m_slopeOfLevels, section, slope);
    if (slope < 0.0)
        m_network.m_summary.Count("conduits with adverse slope, kept as given", link.m_name);
}

/// Manning's n of a conduit; the format takes it from the surveyed channel where there is one.
double CInpBuilder::ManningOf(const CInpLink& link) const {
    const CInpTransect* transect = FindInpTransect(m_network, m_network.m_crossSections[link.m_crossSection]);
    return transect != nullptr && transect->m_manning > 0.0 ? transect->m_manning : link.m_manning;
}

void CInpBuilder::NoteCrossSection(const CInpLink& link, const CInpCrossSection& shape, std::uint32_t pipe) {
    CImportSummary& summary = m_network.m_summary;
    if (pipe == InpNone)
        summary.Count(fmt::format("conduits of shape {}, left without a pipe", GetInpShapeKeyword(shape.m_shape)),
                      link.m_name);
    if (shape.m_barrels != 1)
        summary.Count("conduits with another number of barrels than one, taken as one", link.m_name);
    if (shape.m_shape == enmInpShape::FilledCircular)
        summary.Count("conduits filled with sediment, taken as clean circles", link.m_name);
    if (shape.m_shape == enmInpShape::ForceMain)
        summary.Count("force mains, taken as circles with the conduit's Manning roughness", link.m_name);
    if (shape.m_shape == enmInpShape::RectOpen)
        summary.Count("open rectangular channels, taken as boxes", link.m_name);
    if (const CInpTransect* transect = FindInpTransect(m_network, shape);
        transect != nullptr && transect->m_hasOtherBanks)
        summary.Count("channels whose banks have another roughness, taken with that of the channel", link.m_name);
}

/// By node: the link that takes what drains to it: the first one out in the order of the network, at an outfall the
/// first one in. The format has no main outlets, so the first one is taken.
std::vector<std::uint32_t> CInpBuilder::FindReceivingLinks() const {
    std::vector<std::uint32_t> receiving(m_network.m_nodes.size(), InpNone);
    const auto enter = [&](auto nodeOf) {
        for (std::uint32_t i = 0; i < m_network.m_links.size(); ++i) {
            std::uint32_t& place = receiving[nodeOf(m_network.m_links[i])];
            if (place == InpNone)
                place = i;
        }
    };
    enter([](const CInpLink& link) { return link.m_from; });
    enter([](const CInpLink& link) { return link.m_to; });
    return receiving;
}

/// By subcatchment: the node that it finally drains to, InpNone for those that drain in a ring.
std::vector<std::uint32_t> CInpBuilder::FindOutletNodes() const {
    const std::vector<CInpSubcatchment>& areas = m_network.m_subcatchments;
    std::vector<std::uint32_t> outlets(areas.size(), InpNone);
    std::vector<bool> isSeen(areas.size(), false);
    std::vector<std::uint32_t> way;
    for (std::uint32_t start = 0; start < areas.size(); ++start) {
        way.clear();
        std::uint32_t at = start;
        while (at != InpNone && !isSeen[at]) {
            isSeen[at] = true;
            outlets[at] = areas[at].m_node;
            way.push_back(at);
            at = areas[at].m_subcatchment;
        }
        // Everything on the way drains to where its end drains; a ring drains nowhere.
        const std::uint32_t outlet = at == InpNone ? outlets[way.back()] : outlets[at];
        for (const std::uint32_t area : way)
            outlets[area] = outlet;
    }
    return outlets;
}

Status CInpBuilder::AddCatchments() {
    const std::vector<std::uint32_t> receiving = FindReceivingLinks();
    const std::vector<std::uint32_t> outlets = FindOutletNodes();
    for (std::size_t i = 0; i < m_network.m_subcatchments.size(); ++i) {
        const CInpSubcatchment& area = m_network.m_subcatchments[i];
        const std::uint32_t link = outlets[i] == InpNone ? InpNone : receiving[outlets[i]];
        if (link == InpNone) {
            m_network.m_summary.Count("subcatchments whose outlet no section serves, left out", area.m_name);
            continue;
        }
        auto catchment = m_topology.AddCatchment(CUtility::MakeGuid("inp/subcatchment", area.m_name, i), area.m_name,
                                                 m_sections[link], RingsOf(area));
        if (!catchment)
            return Error{catchment.GetError().kind,
                         fmt::format("{}, line {}: {}", m_fileName, area.m_line, catchment.GetError().message)};
        ++m_network.m_summary.m_catchmentCount;
        WriteInt(Keys().m_kinds, *catchment.Value(), Topology::CatchmentRain);
        Write(Keys().m_area, *catchment.Value(), area.m_area);
        Write(Keys().m_coefficient, *catchment.Value(), area.m_impervious / Formulas::Percent);
    }
    return Done();
}

std::vector<CPoint> CInpBuilder::GatherPoints(const CInpPointRows& chain, const std::vector<CInpPointRow>& rows) const {
    std::vector<CPoint> points;
    for (std::uint32_t row = chain.m_first; row != InpNone; row = rows[row].m_next) {
        const auto first = m_network.m_points.begin() + static_cast<std::ptrdiff_t>(rows[row].m_first);
        points.insert(points.end(), first, first + static_cast<std::ptrdiff_t>(rows[row].m_count));
    }
    return points;
}

/// Start, vertices, end, without ends whose place is unknown; empty for a straight line between the nodes.
std::vector<CPoint> CInpBuilder::LineOf(const CInpLink& link) const {
    std::vector<CPoint> line = GatherPoints(link.m_vertices, m_network.m_vertexRows);
    if (line.empty())
        return line;
    if (const CPoint& start = m_network.m_nodes[link.m_from].m_point; start.IsKnown())
        line.insert(line.begin(), start);
    if (const CPoint& end = m_network.m_nodes[link.m_to].m_point; end.IsKnown())
        line.push_back(end);
    return line;
}

/// The polygon as a closed ring; empty when it has fewer than three corners or crosses itself.
Topology::CRings CInpBuilder::RingsOf(const CInpSubcatchment& area) {
    std::vector<CPoint> ring = GatherPoints(area.m_polygon, m_network.m_polygonRows);
    // Some programs repeat the first corner at the end, others repeat it twice or not at all.
    while (ring.size() > 1 && ring.back() == ring.front())
        ring.pop_back();
    if (ring.size() < 3) {
        m_network.m_summary.Count(ring.empty() ? "subcatchments without a polygon"
                                               : "subcatchments whose polygon has fewer than three corners",
                                  area.m_name);
        return {};
    }
    ring.push_back(ring.front());
    Topology::CRings rings{std::move(ring)};
    // The area is given as a value: the polygon only shows where it is.
    if (const std::string fault = FindPolygonFault(rings); !fault.empty()) {
        m_network.m_summary.Count(fmt::format("subcatchments whose polygon {}, left without it", fault), area.m_name);
        return {};
    }
    return rings;
}

} // namespace OLMGis::ProjectIo
