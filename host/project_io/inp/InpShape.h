// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/Catalog.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace OLMGis::ProjectIo {

/// Shapes of cross-sections that the storm-water format knows.
enum class enmInpShape : std::uint8_t {
    Dummy,
    Circular,
    FilledCircular,
    ForceMain,
    Egg,
    RectClosed,
    RectOpen,
    Trapezoidal,
    Triangular,
    Parabolic,
    Power,
    RectTriangular,
    RectRound,
    ModBasketHandle,
    Custom,
    Irregular,
    HorizEllipse,
    VertEllipse,
    Arch,
    Horseshoe,
    Gothic,
    Catenary,
    SemiElliptical,
    BasketHandle,
    SemiCircular,
    Street,
};

/// The shape of a keyword (case ignored), nothing for an unknown one; and the keyword of a shape.
std::optional<enmInpShape> FindInpShape(std::string_view keyword);
std::string_view GetInpShapeKeyword(enmInpShape shape);

/// The cross-section of a link.
struct CInpCrossSection {
    std::string_view m_linkName;
    std::string_view m_text; ///< name of the shape curve or transect
    std::array<double, 4>
        m_dimensions{}; ///< in the order of the format; lengths in m, ratios and exponents as they are
    int m_barrels = 1;
    enmInpShape m_shape = enmInpShape::Dummy;
    std::size_t m_line = 0;
};

/// How many of the dimensions, from the first one on, must be above 0. The first one is the inside height for all
/// shapes.
std::size_t CountInpPositiveDimensions(enmInpShape shape);

/// Whether the dimension of that place is a length; others are ratios and exponents.
bool IsInpLength(enmInpShape shape, std::size_t place);

/// A shape drawn as a curve: pairs of depth and width, both relative to the full height.
struct CInpShapeCurve {
    std::string_view m_name;
    std::vector<std::pair<double, double>> m_points;
};

/// A surveyed channel: pairs of station and level (m), in the order of the file.
struct CInpTransect {
    std::string_view m_name;
    double m_manning = 0.0;       ///< of the channel, s/m^(1/3)
    bool m_hasOtherBanks = false; ///< its banks have another roughness
    double m_depth = 0.0;         ///< from its lowest to its highest point, m
    double m_stationFactor = 1.0; ///< by which stations are multiplied
    std::vector<std::pair<double, double>> m_points;
};

/// Name of the inside of a pipe in the catalogue; the same for the same inside and any roughness.
struct CInpShapeName {
    std::string_view m_group;
    std::string m_name;
};

/// Name of a cross-section; nothing for shapes whose outline does not follow from their numbers (it is in tables of
/// makers) and for numbers that give no closed outline.
std::optional<CInpShapeName> NameInpShape(const CInpCrossSection& section);

/// The inside of a pipe (mm) with that cross-section; the roughness stays 0. curve and transect: those that the text of
/// the cross-section names, null for none. Nothing where NameInpShape gives no name, and where curve or transect are
/// missing or enclose no area. Cost: n log n in the stations of a transect.
std::optional<Topology::CPipeData> MakeInpPipe(const CInpCrossSection& section, const CInpShapeCurve* curve,
                                               const CInpTransect* transect);

} // namespace OLMGis::ProjectIo
