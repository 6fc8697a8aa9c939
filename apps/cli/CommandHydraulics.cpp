// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/CommandHydraulics.h"

#include "apps/cli/HydraulicsListing.h"
#include "apps/cli/Project.h"
#include "apps/cli/ShownText.h"
#include "host/gis_core/Utility.h"
#include "host/network_core/TopologyMultiStorage.h"

#include <fmt/format.h>

#include <array>
#include <string_view>
#include <utility>
#include <vector>

namespace Cli {

using OLMGis::Sewage::CSectionHydraulics;
using OLMGis::Sewage::CSectionHydraulicsReader;
using OLMGis::Sewage::enmHydraulicsGap;
using OLMGis::Utility::BadWords;

namespace {

/// The sections that lack the same; the first of them stand for all.
class CGap {
public:
    CGap(enmHydraulicsGap gap, const char* text) : m_gap(gap), m_text(text) {}

    enmHydraulicsGap GetGap() const { return m_gap; }
    void Add(std::string_view name) {
        constexpr std::size_t MostNames = 5;
        if (m_count++ < MostNames)
            m_names += fmt::format("{}{}", m_names.empty() ? "" : ", ", name);
        else if (m_count == MostNames + 1)
            m_names += ", ...";
    }
    void Tell(CTerminal& terminal) const {
        if (m_count > 0)
            terminal.Warn(OnOneLine(fmt::format("{} {}: {}", Count(m_count, "section"), m_text, m_names)));
    }

private:
    enmHydraulicsGap m_gap;
    const char* m_text;
    std::size_t m_count = 0;
    std::string m_names;
};

} // namespace

CVerbResult CalculateHydraulics(const CHydraulicsOptions& options, CTerminal& terminal, std::ostream& results) {
    const auto viscosity = OLMGis::Utility::CUtility::ParseDouble(options.m_viscosity);
    if (!viscosity || !(*viscosity > 0.0))
        return BadWords(fmt::format("--viscosity: found \"{}\", expected a number above 0, in m²/s",
                                    OnOneLine(options.m_viscosity)));
    const auto project = CProject::Open(options.m_project, terminal);
    if (!project)
        return project.GetError();
    // A network has many sections without a flow or without a pipe while it is being designed; those with both that
    // lack the rest are mistakes.
    std::array gaps = {CGap(enmHydraulicsGap::UnknownPipe, "with a pipe that the catalogue does not know"),
                       CGap(enmHydraulicsGap::Slope, "with a pipe and a flow but without SECTION_SLOPE")};
    CGap overfull(enmHydraulicsGap::None, "overfull");
    std::vector<CHydraulicsRow> rows;
    bool hasStored = false;
    CSectionHydraulicsReader reader(*viscosity);
    for (const auto& section :
         OLMGis::Topology::CTopologyMultiStorage::Instance()->GetActiveTopology()->GetSections()) {
        CSectionHydraulics figures = reader.Calculate(section);
        hasStored = reader.Store(section, figures) != 0 || hasStored;
        for (CGap& gap : gaps)
            if (gap.GetGap() == figures.m_gap)
                gap.Add(section->GetName());
        if (figures.m_gap != enmHydraulicsGap::None)
            continue;
        if (figures.m_isOverfull)
            overfull.Add(section->GetName());
        rows.push_back({section.get(), std::move(figures)});
    }
    for (const CGap& gap : gaps)
        gap.Tell(terminal);
    overfull.Tell(terminal);
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
