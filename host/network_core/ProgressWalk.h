// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/CoreProgressBar.h"

#include <string_view>
#include <vector>

namespace OLMGis::Topology {

/// The frame of every run: shows the caption with the number of entities, then for each in order its position and its
/// test. A user who cancels ends the walk. Not CProgress, which restores the display also after an exception:
/// here that leaves the display as it is, for the code that runs the items to restore. Fixed: others rely on it.
template <class Entity, class Test>
void WalkWithProgress(std::string_view caption, const std::vector<Entity>& entities, Test test) {
    auto* const progress = Utility::CCoreProgressBar::Instance();
    progress->SaveState();
    progress->Show(caption, 0, static_cast<int>(entities.size()));
    for (std::size_t i = 0; i < entities.size() && progress->SetPosition(static_cast<int>(i)) != 0; ++i)
        test(entities[i]);
    progress->Hide();
    progress->RestoreState();
}

} // namespace OLMGis::Topology
