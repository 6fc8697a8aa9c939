// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/input/Project.h"
#include "apps/cli/verbs/Verbs.h"
#include "host/network_core/SectionSlopes.h"
#include "host/network_core/TopologyMultiStorage.h"
#include "reports/ShownText.h"

#include <fmt/format.h>

#include <memory>
#include <string_view>

namespace Cli {

using Reports::Count;

namespace {

struct COptions {
    std::string m_project;
    bool m_isForDesign = false; ///< also the design slope where there is none
    COutputOption m_output;
};

void WarnOf(const std::vector<boost::shared_ptr<OLMGis::Topology::CSection>>& sections, std::string_view what,
            CTerminal& terminal) {
    constexpr std::size_t MostNamed = 10;
    std::vector<std::string_view> names;
    for (const auto& section : sections)
        names.push_back(section->GetName());
    if (!names.empty())
        terminal.Warn(Reports::OnOneLine(
            fmt::format("{} {}: {}", Count(names.size(), "section"), what, Reports::FirstNames(names, MostNamed))));
}

CVerbResult StoreSlopes(const COptions& options, CTerminal& terminal) {
    const auto project = CProject::Open(options.m_project, terminal);
    if (!project)
        return project.GetError();
    if (const auto isFree = project.Value()->CheckOutput(options.m_output); !isFree)
        return isFree.GetError();
    const auto& topology = *OLMGis::Topology::CTopologyMultiStorage::Instance()->GetActiveTopology();
    const auto summary = OLMGis::Topology::StoreSlopes(topology, {options.m_isForDesign});
    WarnOf(summary.m_withoutLevels, "without levels at both ends, unchanged", terminal);
    WarnOf(summary.m_withoutLength, "without a length, unchanged", terminal);
    WarnOf(summary.m_climbing, "with a level line that rises, stored with a negative slope", terminal);
    WarnOf(summary.m_refused, "read-only, unchanged", terminal);
    if (summary.m_calculated + summary.m_designed == 0) {
        terminal.Print("no section has levels and a length: nothing stored");
        return enmExitCode::NothingStored;
    }
    if (const auto saved = project.Value()->Save(options.m_output); !saved)
        return saved.GetError();
    terminal.Print(fmt::format("{}: SECTION_SLOPE_CAL of {}{}", project.Value()->GetTarget(options.m_output),
                               Count(summary.m_calculated, "section"),
                               options.m_isForDesign
                                   ? fmt::format(", SECTION_SLOPE of {}", Count(summary.m_designed, "section"))
                                   : std::string()));
    return enmExitCode::Done;
}

} // namespace

CVerb MakeSlopes() {
    const auto options = std::make_shared<COptions>();
    return CVerb("slopes", "PROJECT [--design] [options]", "Store slopes from level lines and plan lengths")
        .Project(options->m_project)
        .Flag("--design", options->m_isForDesign, "Also SECTION_SLOPE where it is null")
        .SaveAs(options->m_output)
        .Examples({"drenova slopes town.gpkg --design"})
        .Notes("SECTION_SLOPE_CAL = (LEVEL_LINE_0 - LEVEL_LINE_1) / length, in 1/1000. Sections without levels or\n"
               "length are listed and keep their values. Exit code: 1 when nothing was stored.")
        .Runs([options](CTerminal& terminal, std::ostream&) { return StoreSlopes(*options, terminal); });
}

} // namespace Cli
