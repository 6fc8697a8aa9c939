// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/input/FormatHelp.h"
#include "apps/cli/input/InputFile.h"
#include "apps/cli/input/Project.h"
#include "apps/cli/verbs/Verbs.h"
#include "host/project_io/tables/CatalogCsv.h"
#include "reports/CatalogListing.h"
#include "reports/ShownText.h"

#include <fmt/format.h>

#include <memory>

namespace Cli {

using OLMGis::ProjectIo::enmCatalogTable;
using OLMGis::Utility::BadArguments;
using Reports::Count;
using Reports::OnOneLine;

namespace {

struct COptions {
    std::string m_action; ///< list, show or import
    std::string m_project;
    std::string m_what; ///< show: name or GUID of a group; import: CSV file, "-" for standard input
    std::string m_kind; ///< pipe or manhole; empty for both, and to detect it by the head line of a table
    COutputOption m_output;
    CFormatOption m_format;
};

CVerbResult Show(const COptions& options, std::ostream& results) {
    const auto found = Reports::FindCatalogGroup(options.m_kind, options.m_what);
    if (!found)
        return BadArguments("GROUP: " + found.GetError().message);
    Print(results, Reports::MakeItemListing(found.Value()), options.m_format.Get());
    return enmExitCode::Done;
}

CVerbResult Import(const COptions& options, CProject& project, CTerminal& terminal) {
    auto input = CInputFile::Open(options.m_what);
    if (!input)
        return input.GetError();
    const std::size_t before = Reports::GetCatalogGroups({}).size();
    std::vector<std::string> warnings;
    const auto entered = OLMGis::ProjectIo::ImportCatalogCsv(input->GetStream(), input->GetName(),
                                                             options.m_kind.empty()     ? enmCatalogTable::Detect
                                                             : options.m_kind == "pipe" ? enmCatalogTable::Pipe
                                                                                        : enmCatalogTable::Manhole,
                                                             OLMGis::ProjectIo::enmCatalogValues::Usual, &warnings);
    if (!entered)
        return entered.GetError();
    for (const std::string& warning : warnings)
        terminal.Warn(warning);
    const std::size_t made = Reports::GetCatalogGroups({}).size() - before;
    if (const auto saved = project.Save(options.m_output); !saved)
        return saved.GetError();
    terminal.Print(fmt::format("{}: {} in {} added", project.GetTarget(options.m_output),
                               Count(static_cast<std::size_t>(entered.Value()), "item"), Count(made, "group")));
    return enmExitCode::Done;
}

/// Whether the arguments fit the action.
OLMGis::Utility::Status CheckArguments(const COptions& options) {
    const bool isImport = options.m_action == "import";
    if (options.m_action == "list" && !options.m_what.empty())
        return BadArguments(
            fmt::format("found \"{}\", expected nothing more after list PROJECT", OnOneLine(options.m_what)));
    if (options.m_action == "show" && options.m_what.empty())
        return BadArguments("found no GROUP, expected the name or GUID of a group to show");
    if (isImport && options.m_what.empty())
        return BadArguments("found no FILE.csv, expected a table to import");
    if (!isImport && !options.m_output.empty())
        return BadArguments("--output: expected only with import");
    if (isImport && options.m_format.Get() != Reports::enmFormat::Text)
        return BadArguments("--json, --format: expected only with list and show");
    return OLMGis::Utility::Done{};
}

CVerbResult RunAction(const COptions& options, CTerminal& terminal, std::ostream& results) {
    if (const auto fit = CheckArguments(options); !fit)
        return fit.GetError();
    const auto project = CProject::Open(options.m_project, terminal);
    if (!project)
        return project.GetError();
    if (options.m_action == "import") {
        project.Value()->Reads(options.m_what);
        if (const auto isFree = project.Value()->CheckOutput(options.m_output); !isFree)
            return isFree.GetError();
        return Import(options, *project.Value(), terminal);
    }
    if (options.m_action == "show")
        return Show(options, results);
    Print(results, Reports::MakeGroupListing(Reports::GetCatalogGroups(options.m_kind)), options.m_format.Get());
    return enmExitCode::Done;
}

} // namespace

CVerb MakeCatalog() {
    const auto options = std::make_shared<COptions>();
    return CVerb("catalog", "list PROJECT | show PROJECT GROUP | import PROJECT FILE.csv [options]",
                 "Show the catalogues of pipes and manholes, or add to the project's own")
        .ArgumentChoice("ACTION", options->m_action, {"list", "show", "import"}, "list, show or import")
        .Project(options->m_project)
        .OptionalArgument(
            "WHAT", options->m_what,
            "show: name or GUID of a group; import: table of pipes or\nmanholes, \"-\" for standard input")
        .Choice("--kind", options->m_kind, {"pipe", "manhole"}, "Default: both; of a table, by its head line")
        .Formats(options->m_format, {"table", "csv", "json"}, "Of list and show; default: table")
        .SaveAs(options->m_output)
        .Examples({"drenova catalog show town.gpkg \"PVC-U EN 1401 SN 8 (SDR 34)\"",
                   "drenova catalog import town.gpkg pipes.csv"})
        .Notes(ListInputFormat("catalog") +
               "\n\nAn import is all or nothing. All items of a group must be in one table.")
        .Runs([options](CTerminal& terminal, std::ostream& results) { return RunAction(*options, terminal, results); });
}

} // namespace Cli
