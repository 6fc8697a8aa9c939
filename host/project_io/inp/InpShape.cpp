// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/inp/InpShape.h"

#include "host/formulas/Units.h"
#include "host/gis_core/Utility.h"
#include "host/project_io/inp/InpOutline.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

namespace OLMGis::ProjectIo {

using Topology::CPipeData;
using Topology::enmPipeShape;

namespace {

constexpr std::string_view CircularGroup = "Imported circular";
constexpr std::string_view EggGroup = "Imported egg";
constexpr std::string_view BoxGroup = "Imported box";
constexpr std::string_view TableGroup = "Imported table";

constexpr std::pair<std::string_view, enmInpShape> Keywords[] = {
    {"DUMMY", enmInpShape::Dummy},
    {"CIRCULAR", enmInpShape::Circular},
    {"FILLED_CIRCULAR", enmInpShape::FilledCircular},
    {"FORCE_MAIN", enmInpShape::ForceMain},
    {"EGG", enmInpShape::Egg},
    {"RECT_CLOSED", enmInpShape::RectClosed},
    {"RECT_OPEN", enmInpShape::RectOpen},
    {"TRAPEZOIDAL", enmInpShape::Trapezoidal},
    {"TRIANGULAR", enmInpShape::Triangular},
    {"PARABOLIC", enmInpShape::Parabolic},
    {"POWER", enmInpShape::Power},
    {"RECT_TRIANGULAR", enmInpShape::RectTriangular},
    {"RECT_ROUND", enmInpShape::RectRound},
    {"MODBASKETHANDLE", enmInpShape::ModBasketHandle},
    {"CUSTOM", enmInpShape::Custom},
    {"IRREGULAR", enmInpShape::Irregular},
    {"HORIZ_ELLIPSE", enmInpShape::HorizEllipse},
    {"VERT_ELLIPSE", enmInpShape::VertEllipse},
    {"ARCH", enmInpShape::Arch},
    {"HORSESHOE", enmInpShape::Horseshoe},
    {"GOTHIC", enmInpShape::Gothic},
    {"CATENARY", enmInpShape::Catenary},
    {"SEMIELLIPTICAL", enmInpShape::SemiElliptical},
    {"BASKETHANDLE", enmInpShape::BasketHandle},
    {"SEMICIRCULAR", enmInpShape::SemiCircular},
    {"STREET", enmInpShape::Street},
};

/// The dimensions of a shape in mm, ratios and exponents as they are.
std::array<double, 4> InMillimetres(const CInpCrossSection& section) {
    std::array<double, 4> dimensions = section.m_dimensions;
    for (std::size_t i = 0; i < dimensions.size(); ++i)
        if (IsInpLength(section.m_shape, i))
            dimensions[i] = ToInpMillimetres(dimensions[i]);
    return dimensions;
}

/// Width of an egg of that height: the format's egg is the standard one of 2:3.
double EggWidth(double height) {
    return ToInpMillimetres(height * 2.0 / 3.0 / Formulas::MillimetresPerMetre);
}

/// Top width of a trapezoid: height, width of the base, run per rise of either side.
double TrapezoidTop(const std::array<double, 4>& d) {
    return d[1] + d[0] * (d[2] + d[3]);
}

CPipeData PlainPipe(enmPipeShape shape, double width, double height) {
    CPipeData pipe;
    pipe.m_shape = shape;
    pipe.m_innerWidth = width;
    pipe.m_innerHeight = height;
    return pipe;
}

std::optional<CPipeData> TablePipe(std::vector<Topology::CShapePoint> outline) {
    if (outline.size() < 2)
        return std::nullopt;
    const auto widest = std::max_element(outline.begin(), outline.end(),
                                         [](const auto& a, const auto& b) { return a.m_width < b.m_width; });
    if (!(widest->m_width > 0.0))
        return std::nullopt;
    CPipeData pipe = PlainPipe(enmPipeShape::Table, widest->m_width, outline.back().m_height);
    pipe.m_table = std::move(outline);
    return pipe;
}

} // namespace

std::optional<enmInpShape> FindInpShape(std::string_view keyword) {
    for (const auto& [known, shape] : Keywords)
        if (Utility::CUtility::EqualIgnoreCase(known, keyword))
            return shape;
    return std::nullopt;
}

std::string_view GetInpShapeKeyword(enmInpShape shape) {
    for (const auto& [keyword, known] : Keywords)
        if (known == shape)
            return keyword;
    return "?";
}

std::size_t CountInpPositiveDimensions(enmInpShape shape) {
    switch (shape) {
    case enmInpShape::Circular:
    case enmInpShape::FilledCircular:
    case enmInpShape::ForceMain:
    case enmInpShape::Egg:
    case enmInpShape::Trapezoidal:
    case enmInpShape::Custom:
        return 1;
    case enmInpShape::RectClosed:
    case enmInpShape::RectOpen:
    case enmInpShape::Triangular:
    case enmInpShape::Parabolic:
        return 2;
    case enmInpShape::Power:
    case enmInpShape::RectTriangular:
    case enmInpShape::RectRound:
    case enmInpShape::ModBasketHandle:
        return 3;
    default:
        return 0;
    }
}

bool IsInpLength(enmInpShape shape, std::size_t place) {
    switch (shape) {
    case enmInpShape::Trapezoidal:
        return place < 2;
    case enmInpShape::RectTriangular:
    case enmInpShape::RectRound:
    case enmInpShape::ModBasketHandle:
        return place < 3;
    case enmInpShape::Circular:
    case enmInpShape::ForceMain:
    case enmInpShape::Egg:
    case enmInpShape::Custom:
        return place == 0;
    default:
        return place < 2;
    }
}

std::optional<CInpShapeName> NameInpShape(const CInpCrossSection& section) {
    const std::array<double, 4> d = InMillimetres(section);
    const std::string_view keyword = GetInpShapeKeyword(section.m_shape);
    const auto table = [&](double width, const std::string& rest) {
        return CInpShapeName{TableGroup, fmt::format("{} {}x{}{}", keyword, width, d[0], rest)};
    };
    switch (section.m_shape) {
    case enmInpShape::Circular:
    case enmInpShape::FilledCircular:
    case enmInpShape::ForceMain:
        return CInpShapeName{CircularGroup, fmt::format("DN {}", d[0])};
    case enmInpShape::Egg:
        return CInpShapeName{EggGroup, fmt::format("EGG {}x{}", EggWidth(d[0]), d[0])};
    case enmInpShape::RectClosed:
    case enmInpShape::RectOpen:
        return CInpShapeName{BoxGroup, fmt::format("BOX {}x{}", d[1], d[0])};
    case enmInpShape::Trapezoidal:
        if (!(TrapezoidTop(d) > 0.0))
            return std::nullopt;
        return table(d[1], fmt::format(" slopes {}/{}", d[2], d[3]));
    case enmInpShape::Triangular:
    case enmInpShape::Parabolic:
        return table(d[1], "");
    case enmInpShape::Power:
        if (!IsPowerOutline(d[2]))
            return std::nullopt;
        return table(d[1], fmt::format(" exponent {}", d[2]));
    case enmInpShape::RectTriangular:
        if (d[2] > d[0])
            return std::nullopt;
        return table(d[1], fmt::format(" triangle {}", d[2]));
    case enmInpShape::RectRound:
    case enmInpShape::ModBasketHandle:
        if (!IsRoundedBoxOutline(d[0], d[1], d[2]))
            return std::nullopt;
        return table(d[1], fmt::format(" radius {}", d[2]));
    case enmInpShape::Custom:
        return CInpShapeName{TableGroup, fmt::format("{} {} height {}", keyword, section.m_text, d[0])};
    case enmInpShape::Irregular:
        return CInpShapeName{TableGroup, fmt::format("{} {}", keyword, section.m_text)};
    default:
        return std::nullopt;
    }
}

std::optional<CPipeData> MakeInpPipe(const CInpCrossSection& section, const CInpShapeCurve* curve,
                                     const CInpTransect* transect) {
    if (!NameInpShape(section))
        return std::nullopt;
    const std::array<double, 4> d = InMillimetres(section);
    switch (section.m_shape) {
    case enmInpShape::Circular:
    case enmInpShape::FilledCircular:
    case enmInpShape::ForceMain:
        return PlainPipe(enmPipeShape::Circle, d[0], d[0]);
    case enmInpShape::Egg:
        return PlainPipe(enmPipeShape::Egg, EggWidth(d[0]), d[0]);
    case enmInpShape::RectClosed:
    case enmInpShape::RectOpen:
        return PlainPipe(enmPipeShape::Box, d[1], d[0]);
    case enmInpShape::Trapezoidal:
        return TablePipe({{0.0, d[1]}, {d[0], TrapezoidTop(d)}});
    case enmInpShape::Triangular:
        return TablePipe({{0.0, 0.0}, {d[0], d[1]}});
    case enmInpShape::Parabolic:
        return TablePipe(PowerOutline(d[0], d[1], 2.0));
    case enmInpShape::Power:
        return TablePipe(PowerOutline(d[0], d[1], d[2]));
    case enmInpShape::RectTriangular:
        return TablePipe(d[2] < d[0] ? std::vector<Topology::CShapePoint>{{0.0, 0.0}, {d[2], d[1]}, {d[0], d[1]}}
                                     : std::vector<Topology::CShapePoint>{{0.0, 0.0}, {d[0], d[1]}});
    case enmInpShape::RectRound:
        return TablePipe(RoundBottomOutline(d[0], d[1], d[2]));
    case enmInpShape::ModBasketHandle:
        return TablePipe(RoundTopOutline(d[0], d[1], d[2]));
    case enmInpShape::Custom:
        return curve == nullptr ? std::nullopt : TablePipe(CurveOutline(curve->m_points, d[0]));
    case enmInpShape::Irregular:
        return transect == nullptr ? std::nullopt
                                   : TablePipe(ChannelOutline(transect->m_points, transect->m_stationFactor));
    default:
        return std::nullopt;
    }
}

} // namespace OLMGis::ProjectIo
