// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/Catalog.h"

#include <utility>
#include <vector>

namespace OLMGis::ProjectIo {

/// Outlines of cross-sections as tables of inside width (mm) at heights above the invert (mm). Heights begin at 0 and
/// grow from point to point; between two points the width is linear. Straight sides are exact; arcs and curves are
/// replaced by 64 chords, which keeps the area within 0.1 %.
using CInpOutline = std::vector<Topology::CShapePoint>;

/// Length in mm from m, rounded to 1e-6 mm, so that 1.1 m gives exactly 1100 mm.
double ToInpMillimetres(double metres);

/// width · (h / height)^(1 / exponent), all > 0. IsPowerOutline: whether the exponent gives an outline with an area.
bool IsPowerOutline(double exponent);
CInpOutline PowerOutline(double height, double width, double exponent);

/// A box with one side, bottom or top, bulging out as an arc of a radius. IsRoundedBoxOutline: the arc spans the width
/// and is no higher than the box.
bool IsRoundedBoxOutline(double height, double width, double radius);
CInpOutline RoundBottomOutline(double height, double width, double radius);
CInpOutline RoundTopOutline(double height, double width, double radius);

/// A curve of pairs (depth, width), both relative to the full height, which is in mm. As the format defines, the
/// outline ends in a point at depth 0 below the first pair and goes straight up to the full height above the last one.
/// Empty for depths that do not grow or are outside 0 to 1.
CInpOutline CurveOutline(const std::vector<std::pair<double, double>>& points, double height);

/// A surveyed bed: pairs (station, level) in m, stations not falling; straight between them, vertical at both ends.
/// Empty when it has no depth. factor: stations are multiplied by it. Cost: n log n.
CInpOutline ChannelOutline(const std::vector<std::pair<double, double>>& points, double factor);

} // namespace OLMGis::ProjectIo
