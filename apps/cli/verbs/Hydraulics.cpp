// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/input/AttributeKeys.h"
#include "apps/cli/input/OutdatedReading.h"
#include "apps/cli/input/Project.h"
#include "apps/cli/verbs/Verbs.h"
#include "host/gis_core/Utility.h"
#include "reports/HydraulicsListing.h"
#include "reports/OutdatedListing.h"
#include "reports/ShownText.h"

#include <fmt/format.h>

#include <memory>

namespace Cli {

using OLMGis::Utility::BadArguments;

namespace {

struct COptions {
    std::string m_project;
    std::string m_viscosity{"1e-6"}; ///< m²/s
    std::string m_flow;              ///< key; empty for the flow of the design
    bool m_isStrict = false;
    CFormatOption m_format;
    COutputOption m_output;
};

CVerbResult CalculateHydraulics(const COptions& options, CTerminal& terminal, std::ostream& results) {
    const auto viscosity = OLMGis::Utility::CUtility::ParseDouble(options.m_viscosity);
    if (!viscosity || !(*viscosity > 0.0))
        return BadArguments(fmt::format("--viscosity: found \"{}\", expected a number above 0, in m²/s",
                                        Reports::OnOneLine(options.m_viscosity)));
    const auto project = CProject::Open(options.m_project, terminal);
    if (!project)
        return project.GetError();
    if (const auto isFree = project.Value()->CheckOutput(options.m_output); !isFree)
        return isFree.GetError();
    const OLMGis::Data::CDataDefinition* flow = nullptr;
    if (!options.m_flow.empty()) {
        const auto key = FindFlowKey(options.m_flow);
        if (!key)
            return key.GetError();
        flow = key.Value();
    }
    const Reports::CNetworkHydraulics hydraulics = Reports::CalculateNetworkHydraulics(*viscosity, flow);
    terminal.Show(Reports::MakeOutdatedRemarks(hydraulics.m_outdated, options.m_project));
    if (options.m_isStrict && !hydraulics.m_outdated.empty())
        return enmExitCode::NothingStored;
    terminal.Show(hydraulics.m_remarks);
    Print(results, Reports::CListing(Reports::MakeHydraulicsTable(hydraulics.m_rows)), options.m_format.Get());
    results.flush();
    if (hydraulics.m_hasStored)
        if (const auto saved = project.Value()->Save(options.m_output); !saved)
            return saved.GetError();
    if (!hydraulics.m_hasStored) {
        terminal.Print("nothing was stored: no section has a flow, a pipe and a slope");
        return enmExitCode::NothingStored;
    }
    terminal.Print(fmt::format("{}: hydraulics of {} saved", project.Value()->GetTarget(options.m_output),
                               Reports::Count(hydraulics.m_rows.size(), "section")));
    return enmExitCode::Done;
}

} // namespace

CVerb MakeHydraulics() {
    const auto options = std::make_shared<COptions>();
    return CVerb("hydraulics", "PROJECT [options]", "Calculate filling, velocity and capacity of the pipes")
        .Project(options->m_project)
        .Option("--flow", options->m_flow, "KEY", "Flow of each section; default: FLOW_TOTAL, without it FLOW_RAIN_IDF")
        .Option("--viscosity", options->m_viscosity, "NU", "Viscosity of the water, m²/s; default: 1e-6")
        .Formats(options->m_format, {"table", "csv", "json"}, "Default: table, with rounded numbers")
        .Flag("--strict", options->m_isStrict, StrictHelp)
        .SaveAs(options->m_output)
        .Examples({"drenova hydraulics town.gpkg --format csv"})
        .Notes("Every section with a flow, a pipe and a SECTION_SLOPE. The roughness is PIPE_ROUGHNESS, without it\n"
               "that of the pipe. HYD_FILLING, HYD_VELOCITY and HYD_CAPACITY are stored. Exit code: 1 when nothing\n"
               "was stored.")
        .Runs([options](CTerminal& terminal, std::ostream& results) {
            return CalculateHydraulics(*options, terminal, results);
        });
}

} // namespace Cli
