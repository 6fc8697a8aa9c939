// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/CommandSettings.h"

#include "apps/cli/Assignments.h"
#include "apps/cli/KnownSettings.h"
#include "apps/cli/Project.h"
#include "apps/cli/ShownText.h"
#include "host/gis_core/ProjectSettings.h"
#include "host/network_core/TerrainSurfaces.h"
#include "host/project_io/terrain/TerrainAttachment.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>

namespace Cli {

using OLMGis::System::CProjectSettings;
using OLMGis::Utility::BadWords;
using OLMGis::Utility::Done;
using OLMGis::Utility::Error;

namespace {

/// As words that "settings" takes again.
void PrintSettings(std::ostream& results) {
    for (const CKnownSetting& setting : GetKnownSettings()) {
        const std::string value = CProjectSettings::Instance()->Get(setting.m_name, setting.m_default);
        if (!value.empty() || setting.m_isShownEmpty)
            results << setting.m_name << '=' << OnOneLine(value) << '\n';
    }
}

/// Rasters that were just attached must be good; those that were there before are only warned of when they no longer
/// fit the project's coordinate system.
OLMGis::Utility::Status CheckTerrains(const std::vector<CAssignment>& changes, const std::string& project,
                                      CTerminal& terminal) {
    const auto isChanged = [&changes](std::string_view name) {
        return std::any_of(changes.begin(), changes.end(),
                           [name](const CAssignment& change) { return change.m_key == name; });
    };
    for (int type = 1; type <= OLMGis::Topology::CTerrainSurfaces::TypeCount; ++type) {
        const std::string name = OLMGis::ProjectIo::TerrainSetting(type);
        if (!isChanged(name) && !isChanged(CProjectSettings::Crs))
            continue;
        const auto checked = OLMGis::ProjectIo::CheckTerrain(type, project);
        const std::string remark = fmt::format("{}: {}", name, checked ? checked.Value() : checked.GetError().message);
        if (!checked && isChanged(name))
            return Error{checked.GetError().kind, remark};
        if (!checked || !checked->empty())
            terminal.Warn(OnOneLine(remark));
    }
    return Done{};
}

} // namespace

CVerbResult ShowOrChangeSettings(const CSettingsOptions& options, CTerminal& terminal, std::ostream& results) {
    const auto assignments = SplitAssignments(options.m_words, "KEY=VALUE");
    if (!assignments)
        return assignments.GetError();
    if (assignments->empty() && !options.m_output.empty())
        return BadWords("--output: expected a setting to change");
    const auto project = CProject::Open(options.m_project, terminal);
    if (!project)
        return project.GetError();
    if (assignments->empty()) {
        PrintSettings(results);
        return enmExitCode::Done;
    }
    for (const CAssignment& assignment : assignments.Value()) {
        if (const auto done = ChangeSetting(assignment.m_key, assignment.m_value, options.m_project); !done)
            return done.GetError();
    }
    if (const auto good = CheckTerrains(assignments.Value(), options.m_project, terminal); !good)
        return good.GetError();
    if (const std::string warning = GetCrsWarning(); !warning.empty())
        terminal.Warn(warning);
    if (const auto saved = project.Value()->Save(options.m_output); !saved)
        return saved.GetError();
    std::vector<std::string> changed;
    for (const CAssignment& assignment : assignments.Value())
        changed.push_back(fmt::format("{}={}", assignment.m_key, CProjectSettings::Instance()->Get(assignment.m_key)));
    terminal.Tell(fmt::format("{}: {}", project.Value()->GetTarget(options.m_output), fmt::join(changed, ", ")));
    return enmExitCode::Done;
}

} // namespace Cli
