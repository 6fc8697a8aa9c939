// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

/// Values of the form's choices as they are stored. Those of modes and time rules are the numbers of the messages that
/// name them. Fixed: parameter files and stored forms rely on them.
namespace RainChoices {

inline constexpr int CurveFile = 2481;       ///< RAINFALL_MODE
inline constexpr int Formula = 2484;         ///< RAINFALL_MODE
inline constexpr int TimeToLowerEnd = 11090; ///< STORM_CAD
inline constexpr int TimeToUpperEnd = 11091; ///< STORM_CAD
inline constexpr int LongestBranch = 11088;  ///< BRANCHING_FLOW_TIME
inline constexpr int ShortestBranch = 11089; ///< BRANCHING_FLOW_TIME
inline constexpr int KeepExistingPipe = 1;   ///< USE_EXISTING_PIPE
inline constexpr int ExistingPipeGroup = 2;  ///< USE_EXISTING_PIPE
inline constexpr int PartialAreaChains = 1;  ///< PARTIAL_AREA_EFFECT
inline constexpr int PartialAreaSearch = 2;  ///< PARTIAL_AREA_EFFECT

} // namespace RainChoices
