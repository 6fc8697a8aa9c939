// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/network_tables/LineText.h"

#include "host/gis_core/Utility.h"
#include "host/project_io/base/AttributeText.h"
#include "host/project_io/exchange/ExchangeLinker.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <string>

namespace OLMGis::ProjectIo {

using Topology::CPoint;
using Utility::BadInput;
using Utility::CUtility;
using Utility::Result;

namespace {

Utility::Error NotALine(std::string_view text) {
    return BadInput(fmt::format("found {}, expected points as LINESTRING (x y, x y)", Quote(text)));
}

bool IsSamePlace(const CPoint& a, const CPoint& b) {
    return Topology::Distance(a, b) <= SnapTolerance;
}

} // namespace

Result<std::vector<CPoint>> ParseLineText(std::string_view text) {
    constexpr std::array<std::string_view, 3> types = {"linestring", "point", "multipoint"};
    constexpr std::array<std::string_view, 4> dimensions = {"", "z", "m", "zm"};
    const std::size_t open = text.find('(');
    if (open == std::string_view::npos || !CUtility::Trim(text).ends_with(')'))
        return NotALine(text);
    std::string type = CUtility::ToLower(text.substr(0, open));
    std::erase(type, ' ');
    const bool isKnown = std::any_of(types.begin(), types.end(), [&](std::string_view each) {
        return std::any_of(dimensions.begin(), dimensions.end(), [&](std::string_view dimension) {
            return type == std::string(each) + std::string(dimension);
        });
    });
    if (!isKnown)
        return NotALine(text);
    std::string inside(text.substr(open));
    std::replace_if(
        inside.begin(), inside.end(), [](char each) { return each == '(' || each == ')'; }, ' ');
    std::vector<CPoint> points;
    std::vector<std::string> positions;
    CUtility::SplitString(inside, positions, ',');
    for (const std::string& position : positions) {
        std::vector<std::string> numbers;
        CUtility::SplitString(CUtility::Trim(position), numbers, ' ');
        if (numbers.size() < 2)
            return NotALine(text);
        const auto x = CUtility::ParseDouble(numbers[0]);
        const auto y = CUtility::ParseDouble(numbers[1]);
        if (!x || !y)
            return NotALine(text);
        points.push_back({*x, *y});
    }
    if (points.empty())
        return NotALine(text);
    return points;
}

Result<std::vector<CPoint>> JoinLine(const CPoint& start, const std::vector<CPoint>& points, const CPoint& end) {
    if (points.size() > 1 && IsSamePlace(points.front(), end) && IsSamePlace(points.back(), start))
        return BadInput("found a line from the second node to the first, expected one from the first to the second");
    std::vector<CPoint> line;
    if (points.empty() || !IsSamePlace(points.front(), start))
        line.push_back(start);
    line.insert(line.end(), points.begin(), points.end());
    if (points.empty() || !IsSamePlace(points.back(), end))
        line.push_back(end);
    return line;
}

} // namespace OLMGis::ProjectIo
