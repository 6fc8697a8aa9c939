// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/exchange/ExchangeFeature.h"

#include "host/project_io/base/AttributeText.h"

#include <fmt/format.h>

#include <algorithm>

namespace OLMGis::ProjectIo {

using Topology::CPoint;

std::string CJsonValue::Describe() const {
    switch (m_kind) {
    case enmJsonKind::Null:
        return "null";
    case enmJsonKind::Boolean:
        return m_number != 0.0 ? "true" : "false";
    case enmJsonKind::Number:
        return fmt::format("the number {}", m_number);
    case enmJsonKind::Text:
        return "the text " + Quote(m_text);
    case enmJsonKind::List:
        return "a list";
    case enmJsonKind::Object:
        return "an object";
    }
    return {};
}

void CExchangeGeometry::Clear() {
    m_type.clear();
    m_fault.clear();
    m_points.clear();
    m_ringEnds.clear();
    m_level = m_positionLevel = m_numbersInPoint = 0;
    m_isGiven = m_hasHeights = false;
}

void CExchangeGeometry::SetFault(std::string fault) {
    if (m_fault.empty())
        m_fault = std::move(fault);
}

void CExchangeGeometry::AddNumber(double number) {
    if (m_positionLevel == 0)
        m_positionLevel = m_level;
    if (m_level != m_positionLevel)
        SetFault("found coordinates nested to different depths, expected the same depth for all");
    if (m_numbersInPoint == 0)
        m_point.m_x = number;
    else if (m_numbersInPoint == 1)
        m_point.m_y = number;
    else
        m_hasHeights = true;
    m_numbersInPoint = std::min(m_numbersInPoint + 1, 3); // more than 3 are treated as 3
}

void CExchangeGeometry::CloseList() {
    if (m_positionLevel == 0) {
        SetFault("found an empty list of coordinates, expected at least one position");
    } else if (m_level == m_positionLevel) {
        if (m_numbersInPoint < 2)
            SetFault(fmt::format("found a position of {} numbers, expected two, x and y", m_numbersInPoint));
        if (m_points.size() < MostPoints)
            m_points.push_back(m_point);
        else
            SetFault(fmt::format("found more than {} points, expected fewer", MostPoints));
    } else if (m_level == m_positionLevel - 1) {
        if (m_ringEnds.size() < MostPoints)
            m_ringEnds.push_back(m_points.size());
    }
    m_numbersInPoint = 0;
    --m_level;
}

std::string CExchangeGeometry::FindFault(std::string_view type) const {
    if (m_type != type)
        return fmt::format("found a geometry of the type {}, expected {}", Quote(m_type), type);
    if (!m_fault.empty())
        return m_fault;
    if (m_points.empty())
        return "found a geometry without coordinates, expected some";
    const int level = type == "Point" ? 1 : type == "LineString" ? 2 : 3;
    if (m_positionLevel != level)
        return fmt::format("found coordinates in {} nested lists, expected {} for a {}", m_positionLevel, level, type);
    if (type == "LineString" && m_points.size() < 2)
        return "found a line of one point, expected two at least";
    return type == "Polygon" ? FindRingFault() : std::string();
}

std::string CExchangeGeometry::FindRingFault() const {
    for (std::size_t i = 0; i < m_ringEnds.size(); ++i) {
        const std::span<const CPoint> ring = GetRing(i);
        if (ring.size() < 4)
            return fmt::format("found a ring of {} points, expected four at least", ring.size());
        if (ring.front() != ring.back())
            return fmt::format("found a ring that begins at {} {} and ends at {} {}, expected a closed one",
                               ring.front().m_x, ring.front().m_y, ring.back().m_x, ring.back().m_y);
    }
    return {};
}

std::span<const CPoint> CExchangeGeometry::GetRing(std::size_t ring) const {
    const std::size_t begin = ring == 0 ? 0 : m_ringEnds[ring - 1];
    return std::span(m_points).subspan(begin, m_ringEnds[ring] - begin);
}

void CExchangeFeature::Begin(std::size_t number) {
    m_number = number;
    m_propertyCount = 0;
    m_geometry.Clear();
    m_fault.clear();
}

void CExchangeFeature::SetFault(std::string fault) {
    if (m_fault.empty())
        m_fault = std::move(fault);
}

CExchangeProperty& CExchangeFeature::AddProperty(std::string_view key) {
    if (FindProperty(key) != nullptr)
        SetFault(fmt::format("found the key {} twice, expected it once", Quote(key)));
    if (m_propertyCount == MostProperties) {
        SetFault(fmt::format("found more than {} properties, expected fewer", MostProperties));
        --m_propertyCount;
    }
    if (m_propertyCount == m_properties.size())
        m_properties.emplace_back();
    CExchangeProperty& property = m_properties[m_propertyCount++];
    property.m_key = key;
    property.m_items.clear();
    return property;
}

const CExchangeProperty* CExchangeFeature::FindProperty(std::string_view key) const {
    const auto properties = GetProperties();
    const auto found =
        std::find_if(properties.begin(), properties.end(), [key](const auto& each) { return each.m_key == key; });
    return found == properties.end() ? nullptr : &*found;
}

std::string_view CExchangeFeature::FindText(std::string_view key) const {
    const CExchangeProperty* property = FindProperty(key);
    return property != nullptr && property->m_value.m_kind == enmJsonKind::Text
               ? std::string_view(property->m_value.m_text)
               : std::string_view();
}

std::string CExchangeFeature::Label() const {
    const std::string_view layer = FindText("layer");
    const std::string_view name = FindText("name");
    if (!name.empty())
        return LabelOfFeature(m_number, layer, name);
    if (layer == "catchment")
        return LabelOfFeature(m_number, "catchment of section", FindText("section"));
    if (layer == "main_outlet")
        return LabelOfFeature(m_number, "main_outlet of node", FindText("node"));
    return LabelOfFeature(m_number, layer, {});
}

std::string LabelOfFeature(std::size_t number, std::string_view layer, std::string_view name) {
    if (layer.empty() && name.empty())
        return fmt::format("feature {}", number);
    if (name.empty())
        return fmt::format("feature {} ({})", number, layer);
    return fmt::format("feature {} ({}{}{})", number, layer, layer.empty() ? "" : " ", Quote(name));
}

} // namespace OLMGis::ProjectIo
