// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/synthetic/SyntheticLayout.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace OLMGis::ProjectIo {

namespace {

constexpr std::array<std::pair<std::string_view, enmNetworkShape>, 5> ShapeNames = {{{"line", enmNetworkShape::Line},
                                                                                     {"tree", enmNetworkShape::Tree},
                                                                                     {"comb", enmNetworkShape::Comb},
                                                                                     {"city", enmNetworkShape::City},
                                                                                     {"star", enmNetworkShape::Star}}};

constexpr double Spacing = 50.0; ///< of the grid, m
constexpr double Jitter = 8.0;   ///< greatest distance of nodes from the grid, m

double Round(double value, int decimals) {
    const double scale = std::pow(10.0, decimals);
    return std::round(value * scale) / scale;
}

class CLayoutMaker {
public:
    explicit CLayoutMaker(CSplitMix& random) : m_random(random) {}

    void MakeLine(std::size_t sections);
    void MakeTree(std::size_t sections, std::size_t width, double reliefShare);
    void MakeComb(std::size_t sections);
    void MakeCity(std::size_t sections);
    void MakeStar(std::size_t sections);

    CSyntheticLayout Take() { return std::move(m_layout); }

private:
    std::uint32_t Add(double column, double row, std::uint32_t down, std::uint32_t relief = CSyntheticLayout::Nowhere);
    static std::size_t WidthOf(std::size_t places);

    CSplitMix& m_random;
    CSyntheticLayout m_layout;
    double m_firstColumn = 0.0; ///< where the present grid begins
    double m_firstRow = 0.0;
};

std::uint32_t CLayoutMaker::Add(double column, double row, std::uint32_t down, std::uint32_t relief) {
    const double x = (m_firstColumn + column) * Spacing + m_random.Between(-Jitter, Jitter, 2);
    const double y = (m_firstRow + row) * Spacing + m_random.Between(-Jitter, Jitter, 2);
    m_layout.m_nodes.push_back({{Round(x, 2), Round(y, 2)}, down, relief});
    return static_cast<std::uint32_t>(m_layout.m_nodes.size() - 1);
}

std::size_t CLayoutMaker::WidthOf(std::size_t places) {
    return static_cast<std::size_t>(std::ceil(std::sqrt(static_cast<double>(places))));
}

void CLayoutMaker::MakeLine(std::size_t sections) {
    // Laid back and forth, so that a line of a million sections stays within 50 km.
    const std::size_t width = WidthOf(sections + 1);
    for (std::size_t i = 0; i <= sections; ++i) {
        const std::size_t row = i / width;
        const std::size_t column = row % 2 == 0 ? i % width : width - 1 - i % width;
        Add(static_cast<double>(column), static_cast<double>(row),
            i == 0 ? CSyntheticLayout::Nowhere : static_cast<std::uint32_t>(i - 1));
    }
}

void CLayoutMaker::MakeTree(std::size_t sections, std::size_t width, double reliefShare) {
    constexpr double straightShare = 0.55;
    const std::uint32_t outfall = Add(-1.0, 0.0, CSyntheticLayout::Nowhere);
    std::size_t left = sections;
    for (std::uint32_t k = 0; left > 0; ++k) {
        const auto column = static_cast<std::uint32_t>(k % width);
        const auto row = static_cast<std::uint32_t>(k / width);
        const std::uint32_t beside = outfall + k; // the outfall for the first one
        const std::uint32_t below = row > 0 ? outfall + 1 + k - static_cast<std::uint32_t>(width) : beside;
        const bool isFree = row > 0 && column > 0;
        const bool goesBeside = row == 0 || (isFree && m_random.Unit() >= straightShare);
        const bool hasRelief = isFree && left > 1 && m_random.Unit() < reliefShare;
        Add(column, row, goesBeside ? beside : below,
            hasRelief ? (goesBeside ? below : beside) : CSyntheticLayout::Nowhere);
        left -= hasRelief ? 2 : 1;
    }
}

void CLayoutMaker::MakeComb(std::size_t sections) {
    const std::size_t spine = sections - sections / 2;
    const std::size_t width = WidthOf(spine + 1);
    constexpr double rowsApart = 2.0;
    std::vector<std::pair<double, double>> places;
    for (std::size_t i = 0; i <= spine; ++i) {
        const std::size_t row = i / width;
        const std::size_t column = row % 2 == 0 ? i % width : width - 1 - i % width;
        places.emplace_back(static_cast<double>(column), static_cast<double>(row) * rowsApart);
        Add(places.back().first, places.back().second,
            i == 0 ? CSyntheticLayout::Nowhere : static_cast<std::uint32_t>(i - 1));
    }
    for (std::size_t i = 1; i <= sections / 2; ++i)
        Add(places[i].first, places[i].second + 1.0, static_cast<std::uint32_t>(i));
}

void CLayoutMaker::MakeCity(std::size_t sections) {
    constexpr std::size_t smallest = 20;   // a smaller city has one district
    constexpr std::size_t fewest = 3;      // districts
    constexpr std::size_t ordinary = 4000; // sections of a district
    constexpr double reliefShare = 0.03;
    const std::size_t districts = sections < smallest ? 1 : std::max(fewest, sections / ordinary);
    const std::size_t width = WidthOf(sections / districts + 1);
    const std::size_t perRow = WidthOf(districts);
    for (std::size_t i = 0; i < districts; ++i) {
        const std::size_t column = i % perRow;
        const std::size_t row = i / perRow;
        m_firstColumn = static_cast<double>(column * (width + 3));
        m_firstRow = static_cast<double>(row * (width + 3));
        MakeTree(sections / districts + (i < sections % districts ? 1 : 0), width, reliefShare);
    }
}

void CLayoutMaker::MakeStar(std::size_t sections) {
    // Sections keep a realistic length in a star of any size: heads may share a place of the grid.
    constexpr std::size_t width = 4;
    constexpr double middle = 1.5; // between places of the grid
    const std::uint32_t outfall = Add(-2.0, middle, CSyntheticLayout::Nowhere);
    const std::uint32_t hub = Add(middle, middle, outfall);
    for (std::size_t i = 1; i < sections; ++i) {
        const std::size_t row = i / width % width;
        Add(static_cast<double>(i % width), static_cast<double>(row), hub);
    }
}

} // namespace

std::vector<std::string> GetNetworkShapeNames() {
    std::vector<std::string> names;
    for (const auto& [text, shape] : ShapeNames)
        names.emplace_back(text);
    return names;
}

std::optional<enmNetworkShape> NetworkShapeOfName(std::string_view name) {
    for (const auto& [text, shape] : ShapeNames)
        if (name == text)
            return shape;
    return std::nullopt;
}

std::uint64_t CSplitMix::Next() {
    std::uint64_t z = (m_state += 0x9E3779B97F4A7C15ULL);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ULL;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBULL;
    return z ^ (z >> 31);
}

double CSplitMix::Between(double least, double greatest, int decimals) {
    return Round(least + (greatest - least) * Unit(), decimals);
}

CSyntheticLayout MakeLayout(enmNetworkShape shape, std::size_t sections, CSplitMix& random) {
    CLayoutMaker maker(random);
    switch (shape) {
    case enmNetworkShape::Line:
        maker.MakeLine(sections);
        break;
    case enmNetworkShape::Tree:
        maker.MakeTree(sections, static_cast<std::size_t>(std::ceil(std::sqrt(static_cast<double>(sections)))), 0.0);
        break;
    case enmNetworkShape::Comb:
        maker.MakeComb(sections);
        break;
    case enmNetworkShape::City:
        maker.MakeCity(sections);
        break;
    case enmNetworkShape::Star:
        maker.MakeStar(sections);
        break;
    }
    return maker.Take();
}

} // namespace OLMGis::ProjectIo
