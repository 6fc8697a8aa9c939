// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/input/Project.h"
#include "apps/cli/verbs/Verbs.h"
#include "reports/CalculatorListing.h"

#include <memory>

namespace Cli {

namespace {

CVerbResult ListCalculators(Reports::enmFormat format, CTerminal& terminal, std::ostream& results) {
    const auto project = CProject::MakeEmpty(terminal);
    if (!project)
        return project.GetError();
    if (const auto loaded = project.Value()->LoadModule(); !loaded)
        return loaded.GetError();
    Print(results, Reports::MakeCalculatorListing(), format);
    return enmExitCode::Done;
}

} // namespace

CVerb MakeCalculators() {
    const auto format = std::make_shared<CFormatOption>();
    return CVerb("calculators", "[options]", "List the calculators in the order of the design work")
        .Formats(*format, {"table", "csv", "json"}, "Default: table")
        .Examples({"drenova calculators"})
        .Runs([format](CTerminal& terminal, std::ostream& results) {
            return ListCalculators(format->Get(), terminal, results);
        });
}

} // namespace Cli
