// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/CommandHydraulics.h"

#include "apps/cli/HydraulicsListing.h"
#include "apps/cli/NetworkHydraulics.h"
#include "apps/cli/Project.h"
#include "apps/cli/ShownText.h"
#include "host/gis_core/Utility.h"

#include <fmt/format.h>

namespace Cli {

using OLMGis::Utility::BadWords;

CVerbResult CalculateHydraulics(const CHydraulicsOptions& options, CTerminal& terminal, std::ostream& results) {
    const auto viscosity = OLMGis::Utility::CUtility::ParseDouble(options.m_viscosity);
    if (!viscosity || !(*viscosity > 0.0))
        return BadWords(fmt::format("--viscosity: found \"{}\", expected a number above 0, in m²/s",
                                    OnOneLine(options.m_viscosity)));
    const auto project = CProject::Open(options.m_project, terminal);
    if (!project)
        return project.GetError();
    const auto [rows, hasStored] = CalculateNetworkHydraulics(*viscosity, terminal);
    if (hasStored)
        if (const auto saved = project.Value()->Save(options.m_output); !saved)
            return saved.GetError();
    if (options.m_isJson || options.m_format == "json")
        PrintHydraulicsAsJson(results, rows);
    else if (options.m_format == "csv")
        // What standard output does not take is the program's matter, once for all verbs.
        (void)PrintHydraulicsAsCsv(results, rows);
    else if (!rows.empty())
        PrintHydraulicsAsTable(results, rows);
    results.flush();
    if (!hasStored) {
        terminal.Tell("nothing was stored: no section has a flow, a pipe and a slope");
        return enmExitCode::NothingStored;
    }
    terminal.Tell(fmt::format("{}: hydraulics of {} saved", project.Value()->GetTarget(options.m_output),
                              Count(rows.size(), "section")));
    return enmExitCode::Done;
}

} // namespace Cli
