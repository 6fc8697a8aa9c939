// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/input/Project.h"
#include "apps/cli/verbs/Verbs.h"
#include "reports/EntityChoice.h"
#include "reports/KeyListing.h"

#include <memory>

namespace Cli {

namespace {

struct COptions {
    std::string m_on; ///< empty for all kinds
    CFormatOption m_format;
};

CVerbResult ListKeys(const COptions& options, CTerminal& terminal, std::ostream& results) {
    const auto project = CProject::MakeEmpty(terminal);
    if (!project)
        return project.GetError();
    if (const auto loaded = project.Value()->LoadModule(); !loaded)
        return loaded.GetError();
    Print(results, Reports::MakeKeyListing(Reports::FindKind(options.m_on)), options.m_format.Get());
    return enmExitCode::Done;
}

} // namespace

CVerb MakeKeys() {
    const auto options = std::make_shared<COptions>();
    return CVerb("keys", "[options]", "List the attribute keys with units, ranges, and who writes and reads them")
        .Choice("--on", options->m_on, {"sections", "nodes", "catchments"}, "Kind of entity; default: all")
        .Formats(options->m_format, {"table", "csv", "json"}, "Default: table")
        .Examples({"drenova keys --on sections", "drenova keys --format csv > keys.csv"})
        .Notes("Values outside min and max are refused, those outside usual min and usual max give a warning.\n"
               "written by: the calculators that store the key, \"hydraulics\" for the verb. read by: also checks.")
        .Runs([options](CTerminal& terminal, std::ostream& results) { return ListKeys(*options, terminal, results); });
}

} // namespace Cli
