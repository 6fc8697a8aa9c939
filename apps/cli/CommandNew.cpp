// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/CommandNew.h"

#include "apps/cli/KnownSettings.h"
#include "apps/cli/Project.h"
#include "host/gis_core/ProjectSettings.h"

#include <fmt/format.h>

#include <utility>
#include <vector>

namespace Cli {

using OLMGis::System::CProjectSettings;

CVerbResult MakeNewProject(const CNewOptions& options, CTerminal& terminal) {
    const auto project = CProject::MakeEmpty(terminal);
    if (!project)
        return project.GetError();
    std::vector<std::pair<std::string_view, std::string_view>> settings;
    if (!options.m_edition.empty())
        settings.emplace_back(CProjectSettings::Edition, options.m_edition);
    if (!options.m_crs.empty())
        settings.emplace_back(CProjectSettings::Crs, options.m_crs);
    if (options.m_isTurkish)
        settings.emplace_back(CProjectSettings::Turkish, "1");
    for (const auto& [name, value] : settings)
        if (const auto changed = ChangeSetting(name, value, options.m_project); !changed)
            return changed.GetError();
    if (const auto isFree = CheckNewFile(options.m_project, options.m_replaces); !isFree)
        return isFree.GetError();
    if (const std::string warning = GetCrsWarning(); !warning.empty())
        terminal.Warn(warning);
    if (const auto saved = project.Value()->Save(options.m_project); !saved)
        return saved.GetError();
    terminal.Tell(fmt::format("{}: an empty project", options.m_project));
    return enmExitCode::Done;
}

} // namespace Cli
