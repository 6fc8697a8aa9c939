// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/input/Checks.h"
#include "apps/cli/input/OutdatedReading.h"
#include "apps/cli/input/Project.h"
#include "apps/cli/input/RegistryHelp.h"
#include "apps/cli/verbs/Verbs.h"
#include "reports/FindingListing.h"
#include "reports/ShownText.h"

#include <fmt/format.h>

#include <memory>

namespace Cli {

using OLMGis::Utility::Status;
using Reports::Count;

namespace {

struct COptions {
    std::string m_project;
    std::vector<std::string> m_items; ///< ITEM and ITEM.TAG=VALUE; none for all checks with their default values
    std::string m_only;               ///< "module" for its checks alone; empty for all
    CFormatOption m_format;
    bool m_isStrict = false; ///< ends with 1 when something was found
    COutputOption m_output;
};

CVerbResult CheckProject(const COptions& options, CTerminal& terminal, std::ostream& results) {
    const auto project = CProject::Open(options.m_project, terminal);
    if (!project)
        return project.GetError();
    if (const auto isFree = project.Value()->CheckOutput(options.m_output); !isFree)
        return isFree.GetError();
    if (const Status loaded = project.Value()->LoadModule(); !loaded)
        return loaded.GetError();
    const auto requests = ReadCheckArguments(options.m_items, !options.m_only.empty());
    if (!requests)
        return requests.GetError();
    COutdatedReading reading(options.m_project);
    const Status ended = RunChecks(requests.Value(), terminal);
    const bool isOutdated = reading.Report(terminal);
    if (!ended)
        return ended.GetError();
    const auto& findings = *OLMGis::Topology::CFunctionalAnalysisManager::Instance()->GetFindings();
    Print(results, Reports::CListing(Reports::MakeFindingTable(findings)), options.m_format.Get());
    results.flush();
    if (isOutdated && options.m_isStrict)
        return enmExitCode::NothingStored;
    if (const Status saved = project.Value()->Save(options.m_output); !saved)
        return saved.GetError();
    const std::size_t count = Reports::CountFindings(findings);
    terminal.Print(fmt::format("{} of {}", count == 0 ? std::string("no findings") : Count(count, "finding"),
                               Count(findings.size(), "check")));
    terminal.Print(fmt::format("{}: saved", project.Value()->GetTarget(options.m_output)));
    return options.m_isStrict && count > 0 ? enmExitCode::NothingStored : enmExitCode::Done;
}

} // namespace

CVerb MakeCheck() {
    const auto options = std::make_shared<COptions>();
    return CVerb("check", "PROJECT [ITEM...] [ITEM.TAG=VALUE...] [options]", "Check the network against design rules")
        .Project(options->m_project)
        .OptionalArguments("ITEM", options->m_items, "Checks to run; default: all. ITEM.TAG=VALUE sets a limit")
        .Choice("--only", options->m_only, {"module"},
                "Run only the checks of the hydraulics module: slopes, depths,\njunctions, manholes")
        .Formats(options->m_format, {"table", "csv", "json", "geojson"}, "Default: table")
        .Flag("--strict", options->m_isStrict, "Exit code 1 when something was found, or an outdated result was read")
        .SaveAs(options->m_output)
        .Examples({"drenova check town.gpkg", "drenova check town.gpkg 0004_MIN_SLOPE 0004_MIN_SLOPE.VALUE_MIN=3"})
        .Notes("The findings replace those of the project's layer \"findings\".")
        .NotesFrom([] { return ListChecksForHelp(); })
        .Runs([options](CTerminal& terminal, std::ostream& results) {
            return CheckProject(*options, terminal, results);
        });
}

} // namespace Cli
