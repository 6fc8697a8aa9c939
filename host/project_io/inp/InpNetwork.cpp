// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/inp/InpNetwork.h"

#include "host/gis_core/Utility.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <optional>

namespace OLMGis::ProjectIo {

using Utility::BadInput;
using Utility::Done;
using Utility::Error;
using Utility::Status;

namespace {

constexpr double MetresPerFoot = 0.3048;
constexpr double HectaresPerAcre = 43560.0 * MetresPerFoot * MetresPerFoot / 10000.0;

char ToUpper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

/// Finds records by name. Names mostly come in the order of the records, so the record that was found last and the next
/// one are compared before the index is asked.
template <class Record>
class CInpLookUp {
public:
    CInpLookUp(const std::vector<Record>& records, const CInpNames<Record>& index)
        : m_records(records), m_index(index) {}

    std::uint32_t Find(std::string_view name) {
        for (std::size_t place = m_last; place < std::min(m_last + 2, m_records.size()); ++place) {
            if (InpNameEqual()(m_records[place].m_name, name)) {
                m_last = place;
                return static_cast<std::uint32_t>(place);
            }
        }
        const std::uint32_t found = m_index.Find(name);
        if (found != InpNone)
            m_last = found;
        return found;
    }

private:
    const std::vector<Record>& m_records;
    const CInpNames<Record>& m_index;
    std::size_t m_last = 0;
};

Error AtLine(const std::string& fileName, std::size_t line, const std::string& found, std::string_view expected) {
    return BadInput(fmt::format("{}, line {}: found {}, expected {}", fileName, line, found, expected));
}

/// Enters the names of one kind of record; no name may repeat.
template <class Record>
std::optional<Error> IndexNames(CInpNames<Record>& index, const std::vector<Record>& records, std::string_view kind,
                                const std::string& fileName) {
    index.Reserve(records.size());
    for (std::uint32_t place = 0; place < records.size(); ++place) {
        if (index.Insert(place))
            continue;
        const Record& record = records[place];
        return AtLine(fileName, record.m_line,
                      fmt::format("the {} \"{}\" again (first in line {})", kind, record.m_name,
                                  records[index.Find(record.m_name)].m_line),
                      fmt::format("each {} once", kind));
    }
    return std::nullopt;
}

std::optional<Error> IndexAllNames(CInpNetwork& network, const std::string& fileName) {
    if (auto error = IndexNames(network.m_nodesByName, network.m_nodes, "node", fileName))
        return error;
    if (auto error = IndexNames(network.m_linksByName, network.m_links, "link", fileName))
        return error;
    return IndexNames(network.m_subcatchmentsByName, network.m_subcatchments, "subcatchment", fileName);
}

void PlaceNodes(CInpNetwork& network) {
    CInpLookUp nodes(network.m_nodes, network.m_nodesByName);
    for (const CInpCoordinate& coordinate : network.m_coordinates) {
        const std::uint32_t node = nodes.Find(coordinate.m_nodeName);
        if (node != InpNone)
            network.m_nodes[node].m_point = coordinate.m_point;
        else
            network.m_summary.Count("coordinates of unknown nodes left out", coordinate.m_nodeName);
    }
    network.m_coordinates = {};
    for (const CInpNode& node : network.m_nodes)
        if (!node.m_point.IsKnown())
            network.m_summary.Count("nodes without coordinates", node.m_name);
}

/// Appends a row of points to the others of its object.
void Append(CInpPointRows& chain, std::vector<CInpPointRow>& rows, std::uint32_t row) {
    if (chain.m_first == InpNone)
        chain.m_first = row;
    else
        rows[chain.m_last].m_next = row;
    chain.m_last = row;
}

/// Gives each row of points to the object of its name; ownerless: note for a row without one.
template <class Record>
void JoinPointRows(std::vector<CInpPointRow>& rows, std::vector<Record>& owners, const CInpNames<Record>& ownersByName,
                   CInpPointRows Record::*chain, const char* ownerless, CImportSummary& summary) {
    CInpLookUp lookUp(owners, ownersByName);
    for (std::uint32_t row = 0; row < rows.size(); ++row) {
        const std::uint32_t owner = lookUp.Find(rows[row].m_name);
        if (owner != InpNone)
            Append(owners[owner].*chain, rows, row);
        else
            summary.Count(ownerless, rows[row].m_name);
    }
}

void JoinPointRows(CInpNetwork& network) {
    JoinPointRows(network.m_vertexRows, network.m_links, network.m_linksByName, &CInpLink::m_vertices,
                  "vertices of unknown links left out", network.m_summary);
    JoinPointRows(network.m_polygonRows, network.m_subcatchments, network.m_subcatchmentsByName,
                  &CInpSubcatchment::m_polygon, "polygons of other objects than subcatchments left out",
                  network.m_summary);
}

std::optional<Error> JoinLinks(CInpNetwork& network, const std::string& fileName) {
    CInpLookUp starts(network.m_nodes, network.m_nodesByName);
    CInpLookUp ends(network.m_nodes, network.m_nodesByName);
    for (CInpLink& link : network.m_links) {
        link.m_from = starts.Find(link.m_fromName);
        link.m_to = ends.Find(link.m_toName);
        if (link.m_from == InpNone || link.m_to == InpNone) {
            const std::string_view missing = link.m_from == InpNone ? link.m_fromName : link.m_toName;
            return AtLine(fileName, link.m_line, fmt::format("link \"{}\" at the node \"{}\"", link.m_name, missing),
                          "a node of the file");
        }
        if (link.m_from == link.m_to)
            return AtLine(fileName, link.m_line,
                          fmt::format("link \"{}\" from the node \"{}\" to itself", link.m_name, link.m_fromName),
                          "two different nodes");
    }
    return std::nullopt;
}

std::optional<Error> JoinCrossSections(CInpNetwork& network, const std::string& fileName) {
    CInpLookUp links(network.m_links, network.m_linksByName);
    for (std::uint32_t i = 0; i < network.m_crossSections.size(); ++i) {
        const CInpCrossSection& section = network.m_crossSections[i];
        const std::uint32_t link = links.Find(section.m_linkName);
        if (link == InpNone)
            return AtLine(fileName, section.m_line,
                          fmt::format("a cross-section of the link \"{}\"", section.m_linkName), "a link of the file");
        if (network.m_links[link].m_crossSection != InpNone)
            network.m_summary.Count("links with several cross-sections, of which the last one counts",
                                    section.m_linkName);
        network.m_links[link].m_crossSection = i;
    }
    for (const CInpLink& link : network.m_links)
        if (link.m_kind == enmInpLinkKind::Conduit && link.m_crossSection == InpNone)
            return AtLine(fileName, link.m_line, fmt::format("conduit \"{}\" without a cross-section", link.m_name),
                          "a line of [XSECTIONS] for each conduit (is the file cut short?)");
    return std::nullopt;
}

std::optional<Error> JoinSubcatchments(CInpNetwork& network, const std::string& fileName) {
    CInpLookUp nodes(network.m_nodes, network.m_nodesByName);
    CInpLookUp areas(network.m_subcatchments, network.m_subcatchmentsByName);
    for (CInpSubcatchment& area : network.m_subcatchments) {
        area.m_node = nodes.Find(area.m_outletName);
        if (area.m_node != InpNone)
            continue;
        area.m_subcatchment = areas.Find(area.m_outletName);
        if (area.m_subcatchment == InpNone)
            return AtLine(fileName, area.m_line,
                          fmt::format("subcatchment \"{}\" with the outlet \"{}\"", area.m_name, area.m_outletName),
                          "a node or subcatchment of the file");
    }
    return std::nullopt;
}

/// Feet to m and acres to ha. Map coordinates have their own unit and stay.
void ConvertToMetres(CInpNetwork& network) {
    for (CInpNode& node : network.m_nodes) {
        node.m_invert *= MetresPerFoot;
        node.m_depth *= MetresPerFoot;
    }
    for (CInpLink& link : network.m_links) {
        link.m_length *= MetresPerFoot;
        link.m_inlet *= MetresPerFoot;
        link.m_outlet *= MetresPerFoot;
    }
    for (CInpCrossSection& section : network.m_crossSections)
        for (std::size_t i = 0; i < section.m_dimensions.size(); ++i)
            if (IsInpLength(section.m_shape, i))
                section.m_dimensions[i] *= MetresPerFoot;
    for (CInpSubcatchment& area : network.m_subcatchments)
        area.m_area *= HectaresPerAcre;
    for (CInpTransect& transect : network.m_transects)
        for (auto& [station, level] : transect.m_points) {
            station *= MetresPerFoot;
            level *= MetresPerFoot;
        }
}

/// Depths of the surveyed channels, each calculated once.
void MeasureTransects(CInpNetwork& network) {
    for (CInpTransect& transect : network.m_transects) {
        const auto [lowest, highest] =
            std::minmax_element(transect.m_points.begin(), transect.m_points.end(),
                                [](const auto& a, const auto& b) { return a.second < b.second; });
        if (lowest != transect.m_points.end())
            transect.m_depth = highest->second - lowest->second;
    }
}

/// The level of a conduit's end from its offset, which is a height above the invert of the node or a level, by the
/// options of the file; without an offset the invert.
double EndLevel(double offset, const CInpNode& node, bool isElevation) {
    if (std::isnan(offset))
        return node.m_invert;
    return isElevation ? offset : node.m_invert + offset;
}

void SetLevels(CInpNetwork& network) {
    for (CInpLink& link : network.m_links) {
        const CInpNode& from = network.m_nodes[link.m_from];
        const CInpNode& to = network.m_nodes[link.m_to];
        const bool isConduit = link.m_kind == enmInpLinkKind::Conduit;
        // Of other links the format has at most the level of the upper end; the other stays unknown.
        if (isConduit || !std::isnan(link.m_inlet))
            link.m_inlet = EndLevel(link.m_inlet, from, network.m_isOffsetElevation);
        if (isConduit)
            link.m_outlet = EndLevel(link.m_outlet, to, network.m_isOffsetElevation);
        if (link.m_inlet < from.m_invert || link.m_outlet < to.m_invert)
            network.m_summary.Count("links that begin or end below the invert of their node, kept as given",
                                    link.m_name);
    }
}

} // namespace

std::size_t InpNameHash::operator()(std::string_view name) const {
    std::uint64_t hash = 14695981039346656037ULL; // FNV-1a
    for (const char c : name) {
        hash ^= static_cast<unsigned char>(ToUpper(c));
        hash *= 1099511628211ULL;
    }
    return hash ^ (hash >> 32);
}

bool InpNameEqual::operator()(std::string_view a, std::string_view b) const {
    return Utility::CUtility::EqualIgnoreCase(a, b);
}

const CInpTransect* FindInpTransect(const CInpNetwork& network, const CInpCrossSection& section) {
    if (section.m_shape != enmInpShape::Irregular)
        return nullptr;
    const auto transect = network.m_transectsByName.find(section.m_text);
    return transect == network.m_transectsByName.end() ? nullptr : &network.m_transects[transect->second];
}

double GetInpHeight(const CInpNetwork& network, const CInpCrossSection& section) {
    if (const CInpTransect* transect = FindInpTransect(network, section); transect != nullptr)
        return transect->m_depth;
    return section.m_dimensions[0];
}

Status ResolveInpNetwork(CInpNetwork& network, const std::string& fileName) {
    if (auto error = IndexAllNames(network, fileName))
        return *error;
    PlaceNodes(network);
    if (auto error = JoinLinks(network, fileName))
        return *error;
    if (auto error = JoinCrossSections(network, fileName))
        return *error;
    if (auto error = JoinSubcatchments(network, fileName))
        return *error;
    JoinPointRows(network);
    if (network.m_isUs)
        ConvertToMetres(network);
    MeasureTransects(network);
    SetLevels(network);
    return Done();
}

} // namespace OLMGis::ProjectIo
