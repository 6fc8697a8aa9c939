// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/Catalog.h"
#include "host/network_core/LevelLinePosition.h"

#include <boost/shared_ptr.hpp>

#include <string>
#include <string_view>
#include <vector>

namespace OLMGis::Topology {

class CSection;

/// Questions to the pipe catalogue of the active project. One per project context. Lengths in mm. Every operation
/// answers 0, an empty text or null for a null pipe and for an entry that is no pipe (a group).
class CPipeManager {
public:
    static CPipeManager* Instance();

    /// What notes of inputs call the pipes that PIPE_REF of some section names; the pipes of a group, before its name;
    /// the least diameter of a pipe type, before the type.
    static constexpr std::string_view PipesInUseInput = "pipes in use";
    static constexpr std::string_view GroupInput = "group ";
    static constexpr std::string_view TypeInput = "type ";

    /// The pipe of a reference, which is its GUID (case and braces ignored); null when there is none. One hash look-up.
    boost::shared_ptr<CCatalogItem> GetPipe(std::string_view reference);

    /// Greatest inside width of the shape (mm, > 0); the inner diameter of a circle.
    double GetInnerDiameter(const boost::shared_ptr<CCatalogItem>& pipe);

    /// Equivalent sand roughness k (mm, >= 0).
    double GetPipeRoughness(const boost::shared_ptr<CCatalogItem>& pipe);

    /// The pipe type, for the rules of the catalogue; empty for a pipe without one.
    std::string GetPipeTypeID(const boost::shared_ptr<CCatalogItem>& pipe);

    /// Outside width (mm): the inside width plus two walls.
    double GetPipeWidth(const boost::shared_ptr<CCatalogItem>& pipe);

    /// Fills above and below with the distances (mm, >= 0) from the level line at a position (enmLevelLinePosition) to
    /// the outside top and to the outside bottom of the pipe; their sum is the outside height. Returns 1, or 0 without
    /// touching them for no pipe or an unknown position.
    int GetPipeHeight(const boost::shared_ptr<CCatalogItem>& pipe, int levelLinePosition, double& above, double& below);

    /// The pipe of the group of that name with the smallest inner diameter not below diameter (mm): an equal one
    /// counts, and of pipes with the same the first in the catalogue. Null when there is none, for an unknown group and
    /// for not-a-number. One hash look-up and a binary search. The last argument is the interface's: every caller
    /// passes 1.
    boost::shared_ptr<CCatalogItem> GetPipeByInnerDiameter(std::string_view group, double diameter, int mode);

    /// The larger of diameter (mm) and the least diameter that the catalogue allows for the pipe type; diameter for a
    /// type without one. One hash look-up.
    double CalculateMinDiameter(std::string_view pipeType, double diameter);

    /// Depth of the section's pipe at positions (m from the start along the plan line, any order; those beyond an
    /// end count as that end). Fills second with the terrain of the type there (linear between the section's samples)
    /// less the level line (linear from LEVEL_LINE_0 to LEVEL_LINE_1), and first with the cover: second less what the
    /// pipe rises above the level line, the same as second without a pipe. Both in m, in the order of positions.
    /// Returns 1, or 0 and empty lists without a section, positions, either level or terrain.
    int GetPipeDepths(const boost::shared_ptr<CSection>& section, const std::vector<double>& positions, int terrainType,
                      std::vector<double>& first, std::vector<double>& second);
};

} // namespace OLMGis::Topology
