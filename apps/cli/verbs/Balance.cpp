// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/input/OutdatedReading.h"
#include "apps/cli/input/Project.h"
#include "apps/cli/verbs/Verbs.h"
#include "reports/BalanceListing.h"

#include <memory>

namespace Cli {

namespace {

struct COptions {
    std::string m_project;
    CFormatOption m_format;
};

CVerbResult ShowBalance(const COptions& options, CTerminal& terminal, std::ostream& results) {
    const auto project = CProject::Open(options.m_project, terminal);
    if (!project)
        return project.GetError();
    COutdatedReading reading(options.m_project);
    const std::vector<Reports::CBalanceRow> rows = Reports::MakeBalance();
    Print(results, Reports::MakeBalanceListing(rows), options.m_format.Get());
    results.flush();
    reading.Report(terminal);
    using Reports::enmBalanced;
    for (const auto quantity : {enmBalanced::Area, enmBalanced::Inhabitants, enmBalanced::Flow})
        if (const auto loss = Reports::FindLoss(quantity))
            terminal.Show({Reports::DescribeLoss(*loss, Reports::FindBetterOutlets(quantity), options.m_project)});
    if (rows.empty())
        terminal.Print("no section ends the network");
    return enmExitCode::Done;
}

} // namespace

CVerb MakeBalance() {
    const auto options = std::make_shared<COptions>();
    return CVerb("balance", "PROJECT [options]", "Compare what is entered with what arrives at the ends of the network")
        .Project(options->m_project)
        .Formats(options->m_format, {"table", "csv", "json"}, "Default: table, with rounded numbers")
        .Examples({"drenova balance town.gpkg", "drenova balance town.gpkg --json"})
        .Notes(
            "One row for each section at whose end the network ends. \"Above\" counts all sections from which a way\n"
            "leads there, itself included; \"arriving\" is what its results carry: the area of the rain run, flow\n"
            "of the transit run with its own, total flow. No run stores inhabitants that arrive: they are carried\n"
            "along the main outlets. The last column names the nodes where the difference leaves the way, to\n"
            "another end or for good; a warning reports what never arrives at any end.")
        .Runs(
            [options](CTerminal& terminal, std::ostream& results) { return ShowBalance(*options, terminal, results); });
}

} // namespace Cli
