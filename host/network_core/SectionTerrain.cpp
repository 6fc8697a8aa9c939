// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
// A section and the ground: its samples of the terrain, its levels at its nodes.
#include "host/gis_core/DataConfiguration.h"
#include "host/gis_core/DataRW.h"
#include "host/gis_core/Utility.h"
#include "host/network_core/Node.h"
#include "host/network_core/Section.h"
#include "host/network_core/TerrainSurfaces.h"

#include <algorithm>
#include <utility>

namespace OLMGis::Topology {

namespace {

/// Samples nearer than this part of the section's length are one: a line through the centre of a cell crosses two lines
/// there, and rounding parts them.
constexpr double SamePlace = 1e-9;

/// Takes the samples from the first-th on into the section's own length: the drawn line may be longer or shorter.
/// Leaves out those that fall on an end, whose height is that of the node, and all but the first at one place.
void FitSamples(std::vector<std::pair<double, double>>& heights, std::size_t first, double drawn, double length) {
    const double tolerance = SamePlace * length;
    auto kept = heights.begin() + static_cast<std::ptrdiff_t>(first);
    double last = 0.0;
    for (auto sample = kept; sample != heights.end(); ++sample) {
        const double distance = sample->first / drawn * length;
        if (distance - last <= tolerance || length - distance <= tolerance)
            continue;
        last = distance;
        *kept++ = {distance, sample->second};
    }
    heights.erase(kept, heights.end());
}

} // namespace

int CSection::GetAllTerrainHeights(int terrainType, std::vector<std::pair<double, double>>& heights,
                                   const char* /*reserved*/) const {
    heights.clear();
    double startHeight = 0.0;
    double endHeight = 0.0;
    if (m_start == NoRow || m_end == NoRow || Start()->GetTerrainHeight(startHeight, terrainType) == 0 ||
        End()->GetTerrainHeight(endHeight, terrainType) == 0)
        return 0;
    const double stored = GetLength2D();
    const double length = stored > 0.0 ? stored : 0.0;
    heights.emplace_back(0.0, startHeight);
    if (ITerrainSurface* const surface = CTerrainSurfaces::Instance()->Find(terrainType)) {
        const std::vector<CPoint> line = GetGeometry();
        if (const double drawn = PolylineLength(line); drawn > 0.0 && length > 0.0) {
            surface->AppendCrossings(line, heights);
            FitSamples(heights, 1, drawn, length);
        }
    }
    heights.emplace_back(length, endHeight);
    return 1;
}

int CSection::GetLevelLineAtNode(std::string_view nodeGuid, Data::CDataBox& box) const {
    static const auto* const startLevel = Data::CDataConfiguration::Instance()->GetDataDefinitionByID("LEVEL_LINE_0");
    static const auto* const endLevel = Data::CDataConfiguration::Instance()->GetDataDefinitionByID("LEVEL_LINE_1");
    constexpr Utility::GuidEqual isSame;
    if (m_start != NoRow && isSame(GetStartingNodeGuid(), nodeGuid))
        return Data::CDataRW::Read(startLevel, this, box, 0, nullptr);
    if (m_end != NoRow && isSame(GetEndingNodeGuid(), nodeGuid))
        return Data::CDataRW::Read(endLevel, this, box, 0, nullptr);
    box.Clear();
    return 0;
}

} // namespace OLMGis::Topology
