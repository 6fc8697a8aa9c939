// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"
#include "host/project_io/synthetic/SyntheticLayout.h"

#include <cstddef>
#include <cstdint>

namespace OLMGis::ProjectIo {

/// As many sections as GenerateNetwork makes at most.
inline constexpr std::size_t MostGeneratedSections = 20'000'000;

/// Makes a network in the active project, which must be empty, to try and measure the system on: plan coordinates (m,
/// no coordinate system), terrain 1, levels that fall all the way down, slopes that follow from them, lengths, inlet
/// times, density weights on a quarter of the sections, one rain catchment a section and a household catchment with a
/// density on most. Main outlets are settled. Everything comes from the seed by fixed rules: the same arguments give
/// the same network, GUIDs included, on every machine. Sections stand in the order from the heads to the outfalls.
///
/// BadWords for a number of sections outside 1 to MostGeneratedSections; Refused when the project has a network.
/// Linear, no recursion.
Utility::Status GenerateNetwork(enmNetworkShape shape, std::size_t sections, std::uint64_t seed);

} // namespace OLMGis::ProjectIo
