// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

namespace OLMGis::Topology {

/// Which line of the pipe the levels LEVEL_LINE_0 and LEVEL_LINE_1 of a section describe, as LEVEL_LINE_POSITION
/// stores it.
enum enmLevelLinePosition : int {
    LevelLineInsideBottom = 0, ///< invert
    LevelLineAxis = 1,         ///< half the inside height
    LevelLineInsideTop = 2,
    LevelLineOutsideBottom = 3,
    LevelLineOutsideTop = 4
};

} // namespace OLMGis::Topology
