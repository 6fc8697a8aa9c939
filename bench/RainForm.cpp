// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "bench/RainForm.h"

#include "host/network_core/CatalogManager.h"
#include "host/network_core/PropertyEditing.h"
#include "rain/curves/RainChoices.h"

#include <fmt/format.h>

namespace Bench {

using OLMGis::Topology::CCatalogManager;
using OLMGis::Topology::CPipeData;
using OLMGis::Utility::Done;
using OLMGis::Utility::Status;

namespace {

constexpr const char* GroupName = "Pipes of the benchmarks";

} // namespace

Status AddRainPipes() {
    auto& catalog = *CCatalogManager::Instance()->GetCatalog(CCatalogManager::PipeCatalog, 1);
    if (catalog.GetGroupByName(GroupName))
        return Done{};
    const auto group = catalog.AddGroup("bench-pipes", GroupName);
    if (!group)
        return group.GetError();
    constexpr double Least = 200.0;      // mm
    constexpr double Greatest = 250.0e3; // mm
    for (double width = Least; width < Greatest; width *= 1.12) {
        CPipeData pipe;
        pipe.m_innerWidth = pipe.m_innerHeight = width;
        pipe.m_roughness = 1.0;
        const std::string name = fmt::format("DN {:.0f}", width);
        if (const auto added = catalog.AddPipe(*group.Value(), "bench " + name, name, pipe); !added)
            return added.GetError();
    }
    return Done{};
}

void FillRainForm(OLMGis::Topology::CPropertiesEx& form) {
    const auto set = [&form](const char* tag, const std::string& text) {
        if (const auto property = form.GetPropertyExByTag(tag))
            static_cast<void>(SetPropertyText(*property, text));
    };
    set("RAINFALL_MODE", fmt::format("{}", RainChoices::Formula));
    set("PIPE_GROUP", GroupName);
}

} // namespace Bench
