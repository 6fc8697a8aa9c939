// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
// Depths of pipes below the ground.
#include "host/formulas/Rounding.h"
#include "host/formulas/Units.h"
#include "host/gis_core/DataConfiguration.h"
#include "host/gis_core/DataRW.h"
#include "host/network_core/PipeManager.h"
#include "host/network_core/Section.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace OLMGis::Topology {

namespace {

/// Terrain (m) at a distance (m) within the samples.
double TerrainAt(const std::vector<std::pair<double, double>>& samples, double distance) {
    const auto next =
        std::upper_bound(samples.begin() + 1, samples.end() - 1, distance,
                         [](double value, const std::pair<double, double>& sample) { return value < sample.first; });
    const auto before = next - 1;
    const double gap = next->first - before->first;
    return gap > 0.0 ? std::lerp(before->second, next->second, (distance - before->first) / gap) : before->second;
}

/// Both levels (m) of the section's line; false when one is null.
bool ReadLevels(const CSection& section, std::array<double, 2>& levels) {
    static const std::array<const Data::CDataDefinition*, 2> definitions{
        Data::CDataConfiguration::Instance()->GetDataDefinitionByID("LEVEL_LINE_0"),
        Data::CDataConfiguration::Instance()->GetDataDefinitionByID("LEVEL_LINE_1")};
    Data::CDataBox box;
    for (std::size_t i = 0; i < levels.size(); ++i) {
        if (Data::CDataRW::Read(definitions[i], &section, box, 0, nullptr) == 0)
            return false;
        levels[i] = box.AsDouble();
    }
    return true;
}

/// From the level line up to the outside top of the section's pipe (m); 0 without a pipe.
double HeightAboveLevelLine(const CSection& section) {
    static const auto* const position =
        Data::CDataConfiguration::Instance()->GetDataDefinitionByID("LEVEL_LINE_POSITION");
    Data::CDataBox box; // a null one means the invert
    Data::CDataRW::Read(position, &section, box, 0, nullptr);
    double above = 0.0;
    double below = 0.0;
    CPipeManager::Instance()->GetPipeHeight(section.GetPipe(), box.AsInt(), above, below);
    return above / Formulas::MillimetresPerMetre;
}

} // namespace

int CPipeManager::GetPipeDepths(const boost::shared_ptr<CSection>& section, const std::vector<double>& positions,
                                int terrainType, std::vector<double>& first, std::vector<double>& second) {
    first.clear();
    second.clear();
    std::array<double, 2> levels{};
    std::vector<std::pair<double, double>> samples;
    if (!section || positions.empty() || !ReadLevels(*section, levels) ||
        section->GetAllTerrainHeights(terrainType, samples) == 0)
        return 0;
    const double length = samples.back().first;
    const double above = HeightAboveLevelLine(*section);
    for (const double position : positions) {
        const double distance = std::clamp(position, 0.0, length);
        const double level = std::lerp(levels[0], levels[1], length > 0.0 ? distance / length : 0.0);
        const double depth = TerrainAt(samples, distance) - level;
        second.push_back(Formulas::RoundDerived(depth));
        first.push_back(Formulas::RoundDerived(depth - above));
    }
    return 1;
}

} // namespace OLMGis::Topology
