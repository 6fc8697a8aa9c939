// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/CommandCheck.h"

#include "apps/cli/Checks.h"
#include "apps/cli/FindingListing.h"
#include "apps/cli/Project.h"
#include "apps/cli/ShownText.h"

#include <fmt/format.h>

namespace Cli {

using OLMGis::Topology::CFunctionalAnalysisManager;
using OLMGis::Utility::Done;
using OLMGis::Utility::Status;

namespace {

Status Print(std::ostream& results, const CFindingsByItem& findings, const std::string& format) {
    if (format == "csv")
        return PrintFindingsAsCsv(results, findings);
    if (format == "json")
        PrintFindingsAsJson(results, findings);
    else if (format == "geojson")
        PrintFindingsAsGeoJson(results, findings);
    else
        PrintFindingsAsTable(results, findings);
    return Done{};
}

} // namespace

CVerbResult CheckProject(const CCheckOptions& options, CTerminal& terminal, std::ostream& results) {
    const auto project = CProject::Open(options.m_project, terminal);
    if (!project)
        return project.GetError();
    if (const Status loaded = project.Value()->LoadModule(); !loaded)
        return loaded.GetError();
    const auto requests = ReadCheckWords(options.m_words);
    if (!requests)
        return requests.GetError();
    if (const Status ended = RunChecks(requests.Value(), terminal); !ended)
        return ended.GetError();
    if (const Status saved = project.Value()->Save(options.m_output); !saved)
        return saved.GetError();
    const CFindingsByItem& findings = *CFunctionalAnalysisManager::Instance()->GetFindings();
    if (const Status printed = Print(results, findings, options.m_format); !printed)
        return printed.GetError();
    results.flush();
    const std::size_t count = CountFindings(findings);
    terminal.Tell(fmt::format("{} of {}", count == 0 ? std::string("no findings") : Count(count, "finding"),
                              Count(findings.size(), "check")));
    terminal.Tell(fmt::format("{}: saved", project.Value()->GetTarget(options.m_output)));
    return options.m_isStrict && count > 0 ? enmExitCode::NothingStored : enmExitCode::Done;
}

} // namespace Cli
