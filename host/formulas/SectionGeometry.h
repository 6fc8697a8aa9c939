// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

namespace OLMGis::Formulas {

/// Shape of the inside of a pipe. What is particular to each is in one list, see ShapeKinds.
enum class enmSectionShape { Circle, Egg, Box, Table };

/// One level of a table shape.
struct CSectionLevel {
    double m_height = 0.0; ///< above the invert (m)
    double m_width = 0.0;  ///< inside width there (m, >= 0)
};

/// Inside of a section, all in m. Without a size nothing flows through it.
struct CSectionShape {
    enmSectionShape m_kind = enmSectionShape::Circle;
    double m_width = 0.0;  ///< m; the diameter of a circle
    double m_height = 0.0; ///< m; not read for a circle (its height is its width) and a table (its levels give it)
    std::vector<CSectionLevel> m_levels; ///< of a table: two or more, heights not falling
};

/// The wetted part of a section.
struct CWetSection {
    double m_area = 0.0;            ///< m²
    double m_perimeter = 0.0;       ///< wetted length of the wall (m); closed all round when the section is full
    double m_surfaceWidth = 0.0;    ///< m, 0 when the section is full
    double m_perimeterGrowth = 0.0; ///< dP/dh (-), large where the wall is nearly level; 0 when the section is full

    /// m, 0 for a dry section.
    double GetHydraulicRadius() const { return m_perimeter > 0.0 ? m_area / m_perimeter : 0.0; }
};

/// The wetted part at a water depth (m above the invert).
/// At the inside height and above the section is full: its whole area and its whole wall. The perimeter of a box, and
/// of a table with a wide top, jumps there by the width of the top. Bad input: all 0, never NaN, for a depth or a
/// dimension of 0 or below, beyond 1000 km, or not a number. Source: plane geometry of circular arcs. Cost: constant,
/// of a table its levels.
CWetSection WetCircle(double diameter, double depth);

/// Egg of crown radius B/2, flank radius F and invert radius B/4, tangential at the joins. Height 1.5 B gives F = 1.5
/// B, the normal egg 2:3 (DIN 4263). Other heights keep crown and invert, with the F that joins them smoothly: F =
/// 2 (D² + 3 B²/16) / B, D = H - 3 B/4. H = B is the circle; an egg lower than wide is bad input.
CWetSection WetEgg(double width, double height, double depth);

CWetSection WetBox(double width, double height, double depth);

/// Straight walls between the levels. The width of the lowest level is a flat bed; two levels of equal height are a
/// ledge.
CWetSection WetTable(std::span<const CSectionLevel> levels, double depth);

CWetSection WetShape(const CSectionShape& shape, double depth);

/// The full section.
CWetSection FullShape(const CSectionShape& shape);

/// Inside height (m), 0 where bad input leaves no section.
double HeightOfShape(const CSectionShape& shape);

/// What a shape is described by.
enum class enmShapeDimensions { Diameter, WidthAndHeight, Levels };

/// Everything that is particular to one shape.
struct CShapeKind {
    enmSectionShape m_shape;
    std::string_view m_key; ///< in files, catalogues and options
    enmShapeDimensions m_dimensions;
    double m_heightRatio; ///< height to width of the sizes that are made; 0 where any occurs
    CWetSection (*m_wet)(const CSectionShape& shape, double depth); ///< see WetShape
    double (*m_height)(const CSectionShape& shape);                 ///< see HeightOfShape
};

/// The one list of shapes, in the order of enmSectionShape.
std::span<const CShapeKind> ShapeKinds();

const CShapeKind& KindOfShape(enmSectionShape shape);

/// Null for an unknown key.
const CShapeKind* FindShapeKind(std::string_view key);

/// Keys of all shapes, in the order of the list.
std::vector<std::string_view> ShapeKeys();

/// Keys of the shapes that a width and a height describe, a circle among them, in the order of the list.
std::vector<std::string_view> KeysOfSizedShapes();

/// a - sin a (a in rad, >= 0; sine: sin a) without loss of digits at small angles: twice the area of a segment of the
/// unit circle.
double SegmentTerm(double angle, double sine);

/// Goes through the layers of a table from below, for calculations over the whole table instead of one depth.
class CTableWalk {
public:
    explicit CTableWalk(std::span<const CSectionLevel> levels);

    /// Moves to the next layer (between two levels of different height), the lowest first. False after the last one;
    /// the walk then stays at the top of the table.
    bool Next();

    /// Heights (m) of the layer.
    double GetBottom() const { return m_levels[m_upper - 1].m_height; }
    double GetTop() const { return m_levels[m_upper].m_height; }

    /// The wetted part with a free water surface at a height (m) within the layer.
    CWetSection WetAt(double height) const;

private:
    std::span<const CSectionLevel> m_levels;
    std::size_t m_upper = 0;  ///< level above the layer; 0 before the first
    double m_area = 0.0;      ///< below the layer
    double m_perimeter = 0.0; ///< below the layer
};

} // namespace OLMGis::Formulas
