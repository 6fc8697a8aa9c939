// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/CommandSlopes.h"

#include "apps/cli/Project.h"
#include "apps/cli/ShownText.h"
#include "host/network_core/SectionSlopes.h"
#include "host/network_core/TopologyMultiStorage.h"

#include <fmt/format.h>

namespace Cli {

using OLMGis::Topology::CSection;
using OLMGis::Topology::CSlopeSummary;

namespace {

using CSections = std::vector<boost::shared_ptr<CSection>>;

/// Names the first sections of a list, when there are any.
void TellOf(const CSections& sections, std::string_view what, CTerminal& terminal) {
    constexpr std::size_t mostNamed = 10;
    if (sections.empty())
        return;
    std::string names;
    for (std::size_t i = 0; i < sections.size() && i < mostNamed; ++i)
        names += fmt::format("{}{}", i > 0 ? ", " : "", sections[i]->GetName());
    if (sections.size() > mostNamed)
        names += ", ...";
    terminal.Warn(fmt::format("{} {}: {}", Count(sections.size(), "section"), what, OnOneLine(names)));
}

} // namespace

CVerbResult StoreSlopesOfLevels(const CSlopesOptions& options, CTerminal& terminal) {
    const auto project = CProject::Open(options.m_project, terminal);
    if (!project)
        return project.GetError();
    const auto& topology = *OLMGis::Topology::CTopologyMultiStorage::Instance()->GetActiveTopology();
    const CSlopeSummary summary = OLMGis::Topology::StoreSlopes(topology, {options.m_isForDesign});
    TellOf(summary.m_withoutLevels, "without levels at both ends, left as they are", terminal);
    TellOf(summary.m_withoutLength, "without a length, left as they are", terminal);
    TellOf(summary.m_climbing, "with a level line that climbs, stored with a negative slope", terminal);
    TellOf(summary.m_refused, "that may not be changed", terminal);
    if (summary.m_calculated + summary.m_designed == 0) {
        terminal.Tell("no section has levels and a length: nothing stored");
        return enmExitCode::NothingStored;
    }
    if (const auto saved = project.Value()->Save(options.m_output); !saved)
        return saved.GetError();
    terminal.Tell(fmt::format("{}: SECTION_SLOPE_CAL of {}{}", project.Value()->GetTarget(options.m_output),
                              Count(summary.m_calculated, "section"),
                              options.m_isForDesign
                                  ? fmt::format(", SECTION_SLOPE of {}", Count(summary.m_designed, "section"))
                                  : std::string()));
    return enmExitCode::Done;
}

} // namespace Cli
