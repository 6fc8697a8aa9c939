// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"
#include "host/project_io/synthetic/SyntheticLayout.h"

#include <cstddef>
#include <cstdint>

namespace OLMGis::ProjectIo {

/// Greatest number of sections of GenerateNetwork.
inline constexpr std::size_t MostGeneratedSections = 20'000'000;

/// Makes a network in the active project, which must be empty, for tests and measurements: plan coordinates (m, no
/// coordinate system), terrain 1 (m), inverts that fall downstream (m), slopes from them (1/1000), lengths (m), inlet
/// times (min), density weights on a quarter of the sections, one rain catchment (ha) per section and a household
/// catchment with a density (inhabitants/ha) on most. Main outlets are chosen. The same arguments give the same
/// network, GUIDs included, on every machine. Sections are ordered from the heads to the outfalls.
///
/// BadArguments for a number of sections outside 1 to MostGeneratedSections; Refused when the project has a network.
/// Linear, no recursion.
Utility::Status GenerateNetwork(enmNetworkShape shape, std::size_t sections, std::uint64_t seed);

} // namespace OLMGis::ProjectIo
