// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/Catalog.h"

#include <utility>
#include <vector>

namespace OLMGis::ProjectIo {

/// Outlines of cross-sections as tables of inside width (mm) at heights above the invert (mm). Heights begin at 0 and
/// grow from point to point; between two points the width is linear. Straight flanks are exact; arcs and curves are
/// followed by 64 chords, which keeps the area within 0.1 %.
using CInpOutline = std::vector<Topology::CShapePoint>;

/// Length in mm from m, to a millionth: 1.1 m are 1100 mm and no last digit more.
double ToInpMillimetres(double metres);

/// width · (h / height)^(1 / exponent), all > 0. IsPowerOutline: exponents that make an outline and not a slit or step.
bool IsPowerOutline(double exponent);
CInpOutline PowerOutline(double height, double width, double exponent);

/// A box with one side, bottom or top, bulging out as an arc of a radius. IsRoundedBoxOutline: the arc spans the width
/// and is no higher than the box.
bool IsRoundedBoxOutline(double height, double width, double radius);
CInpOutline RoundBottomOutline(double height, double width, double radius);
CInpOutline RoundTopOutline(double height, double width, double radius);

/// A curve of pairs (depth, width), both as parts of the full height, which is given in mm. Below the first pair the
/// outline runs to a point at depth 0, above the last one it goes straight up to the full height, as the format's own
/// engine completes it. Empty for depths that do not grow or leave 0 to 1.
CInpOutline CurveOutline(const std::vector<std::pair<double, double>>& points, double height);

/// A surveyed bed: pairs (station, level), m, stations not falling; the bed between them is straight, the ends stand
/// upright. Empty without depth. factor: by which stations are multiplied. Cost: n log n.
CInpOutline ChannelOutline(const std::vector<std::pair<double, double>>& points, double factor);

} // namespace OLMGis::ProjectIo
