// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/input/PipeGroups.h"

#include "host/gis_core/ProjectSettings.h"
#include "host/gis_core/Utility.h"
#include "host/network_core/CatalogManager.h"
#include "reports/ShownText.h"

#include <fmt/format.h>

namespace Cli {

using OLMGis::System::CProjectSettings;
using OLMGis::Topology::CCatalogManager;
using OLMGis::Utility::BadArguments;
using OLMGis::Utility::Result;

Result<CPipeGroup> FindPipeGroup(std::string_view text) {
    const auto& pipes = *CCatalogManager::Instance()->GetCatalog(CCatalogManager::PipeCatalog, 1);
    if (auto found = pipes.GetItembyGuid(text); found && found->IsGroup())
        return found;
    if (auto found = pipes.GetGroupByName(text))
        return found;
    std::vector<std::string> names;
    for (const auto& known : pipes.GetGroups())
        names.push_back(known->GetName());
    return BadArguments(fmt::format("found \"{}\", expected the name or GUID of a group of pipes{}",
                                    Reports::OnOneLine(text), Reports::Suggest(text, names)));
}

Result<std::vector<CPipeGroup>> FindPipeGroups(std::string_view option, const std::vector<std::string>& names) {
    std::vector<std::string> wanted = names;
    const std::string setting = CProjectSettings::Instance()->Get(CProjectSettings::PipeGroup);
    if (wanted.empty() && setting.empty())
        return BadArguments(
            fmt::format("{} is required: found none, and the project has no setting {}, expected the name or GUID "
                        "of a group of pipes; drenova catalog list PROJECT lists them",
                        option, CProjectSettings::PipeGroup));
    if (wanted.empty()) {
        option = CProjectSettings::PipeGroup;
        wanted.push_back(setting);
    }
    std::vector<CPipeGroup> groups;
    for (const std::string& name : wanted) {
        auto group = FindPipeGroup(OLMGis::Utility::CUtility::Trim(name));
        if (!group)
            return BadArguments(fmt::format("{}: {}", option, group.GetError().message));
        groups.push_back(std::move(group.Value()));
    }
    return groups;
}

} // namespace Cli
