// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/Geometry.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace OLMGis::ProjectIo {

enum class enmJsonKind : std::uint8_t { Null, Boolean, Number, Text, List, Object };

/// One value of a JSON text; of lists and objects only the kind.
struct CJsonValue {
    enmJsonKind m_kind = enmJsonKind::Null;
    double m_number = 0.0; ///< of a number; 0 or 1 of a boolean
    std::string m_text;    ///< of a text

    /// For messages: `the text "abc"`, `the number 3`, `null`.
    std::string Describe() const;
};

/// One property of a feature. The items of a list have no keys. Values that are nested deeper are not kept.
struct CExchangeProperty {
    struct CItem {
        std::string m_key;
        CJsonValue m_value;
    };

    std::string m_key;
    CJsonValue m_value;
    std::vector<CItem> m_items;
};

/// The geometry of a feature, gathered from nested lists of numbers.
class CExchangeGeometry {
public:
    /// A geometry with more points, rings or lists than this is a fault.
    static constexpr std::size_t MostPoints = 10'000'000;

    void Clear();

    void SetGiven() { m_isGiven = true; }
    void SetType(std::string_view type) { m_type = type; }
    void OpenList() { ++m_level; }
    void AddNumber(double number);
    void CloseList();
    void SetFault(std::string fault);

    /// False for null and for an absent geometry.
    bool IsGiven() const { return m_isGiven; }

    /// What is wrong with it, as "found X, expected Y", when it should be a Point, LineString or Polygon; empty when
    /// nothing is. A line has two points at least, a ring is closed and has four.
    std::string FindFault(std::string_view type) const;

    /// All points in order; of a polygon ring after ring.
    const std::vector<Topology::CPoint>& GetPoints() const { return m_points; }

    /// Rings of a polygon without a fault: parts of GetPoints.
    std::size_t GetRingCount() const { return m_ringEnds.size(); }
    std::span<const Topology::CPoint> GetRing(std::size_t ring) const;

    /// Whether a position had more than two numbers.
    bool HasHeights() const { return m_hasHeights; }

private:
    std::string FindRingFault() const;

    std::string m_type;
    std::string m_fault; ///< the first one
    std::vector<Topology::CPoint> m_points;
    std::vector<std::size_t> m_ringEnds; ///< place after the last point of each ring
    Topology::CPoint m_point;
    int m_level = 0;          ///< open lists
    int m_positionLevel = 0;  ///< lists around the numbers; 0 while there was no number
    int m_numbersInPoint = 0; ///< of the position that is being read; 3 for three or more
    bool m_isGiven = false;
    bool m_hasHeights = false;
};

/// One feature of an exchange file. Made once and filled anew for each.
class CExchangeFeature {
public:
    /// More properties than this are a fault, and so are texts that are longer in sum.
    static constexpr std::size_t MostProperties = 256;
    static constexpr std::size_t LongestTexts = std::size_t{1} << 24; ///< bytes

    /// Begins the feature of that number, counted from 1.
    void Begin(std::size_t number);

    std::size_t GetNumber() const { return m_number; }

    /// Enters a property; a repeated key and one too many are faults of the feature.
    CExchangeProperty& AddProperty(std::string_view key);
    CExchangeProperty& GetLastProperty() { return m_properties[m_propertyCount - 1]; }

    std::span<const CExchangeProperty> GetProperties() const { return {m_properties.data(), m_propertyCount}; }

    /// Null when there is none of that key.
    const CExchangeProperty* FindProperty(std::string_view key) const;

    /// The text of a property; empty when there is none or it is not a text.
    std::string_view FindText(std::string_view key) const;

    CExchangeGeometry& GetGeometry() { return m_geometry; }
    const CExchangeGeometry& GetGeometry() const { return m_geometry; }

    /// The first fault that was found while reading, as "found X, expected Y"; empty for none.
    const std::string& GetFault() const { return m_fault; }
    void SetFault(std::string fault);

    /// For messages: `feature 12 (section "A-1")`.
    std::string Label() const;

private:
    std::size_t m_number = 0;
    std::vector<CExchangeProperty> m_properties; ///< never shrinks, so that its texts keep their memory
    std::size_t m_propertyCount = 0;
    CExchangeGeometry m_geometry;
    std::string m_fault; ///< the first one
};

/// The label of a feature; layer and name may be empty.
std::string LabelOfFeature(std::size_t number, std::string_view layer, std::string_view name);

} // namespace OLMGis::ProjectIo
