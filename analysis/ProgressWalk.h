// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/CoreProgressBar.h"
#include "host/gis_core/FetchAhead.h"

#include <string_view>
#include <vector>

namespace Analysis {

/// Has fetched what the tests of later entities need: the entity, its texts, for they name the culprit, and what fetch
/// knows beside.
template <class Entity, class Fetch>
void FetchLaterEntities(const std::vector<Entity>& entities, std::size_t present, Fetch& fetch) {
    constexpr std::size_t Itself = 44;
    constexpr std::size_t Steps[] = {32, 20, 8};
    if (present + Itself < entities.size())
        OLMGis::Utility::FetchObjectAhead(entities[present + Itself].get());
    if (const std::size_t place = present + Steps[0]; place < entities.size() && entities[place])
        entities[place]->FetchTexts();
    for (int step = 0; step < 3; ++step)
        if (const std::size_t place = present + Steps[step]; place < entities.size())
            fetch(entities[place], step);
}

/// The frame of every run: shows the caption with the number of entities, then for each in order its place and its
/// test. A user who gives up ends the walk. An exception leaves the display as it is: whoever runs items puts it right.
/// fetch(entity, step) is told of entities that come later, in steps 0 to 2, so that what they need is at hand by then.
template <class Entity, class Test, class Fetch>
void WalkWithProgress(std::string_view caption, const std::vector<Entity>& entities, Test test, Fetch fetch) {
    auto* const progress = OLMGis::Utility::CCoreProgressBar::Instance();
    progress->SaveState();
    progress->Show(caption, 0, static_cast<int>(entities.size()));
    for (std::size_t i = 0; i < entities.size(); ++i) {
        if (progress->SetPosition(static_cast<int>(i)) == 0)
            break;
        FetchLaterEntities(entities, i, fetch);
        test(entities[i]);
    }
    progress->Hide();
    progress->RestoreState();
}

template <class Entity, class Test>
void WalkWithProgress(std::string_view caption, const std::vector<Entity>& entities, Test test) {
    WalkWithProgress(caption, entities, test, [](const Entity& /*entity*/, int /*step*/) {});
}

/// For tests of a section with its nodes.
template <class Section>
void FetchNodes(const Section& section, int step) {
    if (section && step < 2)
        section->FetchNodes(step);
}

/// For tests of a section against those that follow it.
template <class Section>
void FetchSectionsOut(const Section& section, int step) {
    if (section)
        section->FetchSectionsOut(step);
}

} // namespace Analysis
