// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/input/KnownSettings.h"
#include "apps/cli/input/Project.h"
#include "apps/cli/verbs/Verbs.h"
#include "host/gis_core/ProjectSettings.h"
#include "host/project_io/base/CoordinateSystem.h"

#include <fmt/format.h>

#include <memory>
#include <string_view>
#include <utility>
#include <vector>

namespace Cli {

using OLMGis::System::CProjectSettings;

namespace {

struct COptions {
    std::string m_project; ///< file to make
    std::string m_crs;     ///< EPSG:n, empty for plain plane coordinates
    std::string m_edition; ///< empty for the usual one
    bool m_isTurkish = false;
    bool m_replaces = false; ///< an existing file
};

/// Coordinates of a project are in m: in place of a system in feet the same one in m.
void TakeCrsInMetres(CTerminal& terminal) {
    CProjectSettings& settings = *CProjectSettings::Instance();
    const auto system = OLMGis::ProjectIo::ParseCrs(settings.Get(CProjectSettings::Crs));
    if (!system || !system->IsInOtherUnit())
        return;
    const std::string inMetres = SettingAfterConversion(system.Value());
    terminal.Warn(fmt::format("{} ({}) is in the unit {}, coordinates of a project are in m: {}", system->ToText(),
                              system->m_name, system->m_unit,
                              inMetres.empty() ? "the project has plain plane coordinates, because the register has "
                                                 "no such system in m"
                                               : "the project is in " + inMetres));
    settings.Set(CProjectSettings::Crs, inMetres);
}

CVerbResult MakeProject(const COptions& options, CTerminal& terminal) {
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
    if (const auto isFree = CheckOutput({options.m_project, options.m_replaces}, {}); !isFree)
        return isFree.GetError();
    TakeCrsInMetres(terminal);
    if (const std::string warning = GetCrsWarning(); !warning.empty())
        terminal.Warn(warning);
    if (const auto saved = project.Value()->Save({options.m_project, options.m_replaces}); !saved)
        return saved.GetError();
    terminal.Print(fmt::format("{}: empty project created", options.m_project));
    return enmExitCode::Done;
}

} // namespace

CVerb MakeNew() {
    const auto options = std::make_shared<COptions>();
    return CVerb("new", "PROJECT.gpkg [options]", "Create an empty project")
        .Argument("PROJECT", options->m_project, "File to create")
        .Option("--crs", options->m_crs, "EPSG:n", "Coordinate system; default: plain plane coordinates in m")
        .Choice("--edition", options->m_edition, GetEditions(), "National edition; default: " + GetEditions().front())
        .Flag("--turkish", options->m_isTurkish, "Switch the Turkish extension on")
        .Replace(options->m_replaces)
        .Examples({"drenova new town.gpkg --crs EPSG:25832 --edition RO"})
        .Runs([options](CTerminal& terminal, std::ostream&) { return MakeProject(*options, terminal); });
}

} // namespace Cli
