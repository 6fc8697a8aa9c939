// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/input/FormatHelp.h"
#include "apps/cli/input/InputFile.h"
#include "apps/cli/input/Project.h"
#include "apps/cli/verbs/Verbs.h"
#include "host/project_io/Formats.h"
#include "host/project_io/tables/CatalogCsv.h"
#include "reports/ShownText.h"

#include <fmt/format.h>

#include <memory>
#include <string>
#include <vector>

namespace Cli {

using OLMGis::ProjectIo::CFormat;
using OLMGis::ProjectIo::CImportNote;
using OLMGis::ProjectIo::CImportSummary;
using OLMGis::Utility::Done;
using OLMGis::Utility::Result;
using OLMGis::Utility::Status;
using Reports::Count;
using Reports::OnOneLine;

namespace {

struct COptions {
    std::string m_input;    ///< file to read, "-" for standard input
    COutputOption m_output; ///< project to make
    std::string m_format;   ///< key of a format; empty for the one of the input's suffix
    std::string m_catalog;  ///< pipe catalogue table that the network may refer to; empty for none
};

Result<const CFormat*> FindFormat(const COptions& options) {
    return options.m_format.empty() ? OLMGis::ProjectIo::GuessImportFormat(options.m_input)
                                    : OLMGis::ProjectIo::FindImportFormat(options.m_format);
}

Status ImportCatalog(const std::string& path, CTerminal& terminal) {
    auto table = CInputFile::Open(path);
    if (!table)
        return table.GetError();
    std::vector<std::string> warnings;
    const auto entered = OLMGis::ProjectIo::ImportCatalogCsv(table->GetStream(), table->GetName(),
                                                             OLMGis::ProjectIo::enmCatalogTable::Detect,
                                                             OLMGis::ProjectIo::enmCatalogValues::Usual, &warnings);
    if (!entered)
        return entered.GetError();
    for (const std::string& warning : warnings)
        terminal.Warn(warning);
    terminal.Detail(
        fmt::format("{}: {} added to the catalogue", path, Count(static_cast<std::size_t>(entered.Value()), "item")));
    return Done{};
}

Result<CImportSummary> ImportNetwork(const std::string& path, const CFormat& format) {
    auto input = CInputFile::Open(path);
    if (!input)
        return input.GetError();
    return format.m_import(input->GetStream(), input->GetName());
}

void PrintNotes(const CImportSummary& summary, CTerminal& terminal) {
    for (const std::string& warning : summary.m_warnings)
        terminal.Warn(OnOneLine(warning));
    for (const CImportNote& note : summary.m_notes)
        terminal.Note(OnOneLine(fmt::format(
            "{} x {}{}", note.m_count, note.m_what,
            note.m_first.empty() ? std::string()
                                 : fmt::format(" ({}{})", note.m_count > 1 ? "first " : "", note.m_first))));
}

void PrintCounts(std::ostream& results, const COptions& options, const CImportSummary& summary) {
    results << ShowNewProject(options.m_output.m_path, summary.m_nodeCount, summary.m_sectionCount,
                              summary.m_catchmentCount);
    if (summary.m_mainOutletCount > 0)
        results << ", " << Count(summary.m_mainOutletCount, "main outlet");
    if (summary.m_pipeCount > 0)
        results << ", " << Count(summary.m_pipeCount, "catalogue pipe");
    results << '\n';
}

CVerbResult ImportProject(const COptions& options, CTerminal& terminal, std::ostream& results) {
    const auto format = FindFormat(options);
    if (!format)
        return format.GetError();
    const auto project = CProject::MakeEmpty(terminal);
    if (!project)
        return project.GetError();
    project.Value()->Reads(options.m_input);
    if (!options.m_catalog.empty())
        project.Value()->Reads(options.m_catalog);
    if (const Status isFree = project.Value()->CheckOutput(options.m_output); !isFree)
        return isFree.GetError();
    if (!options.m_catalog.empty())
        if (const Status entered = ImportCatalog(options.m_catalog, terminal); !entered)
            return entered.GetError();
    const auto summary = ImportNetwork(options.m_input, *format.Value());
    if (!summary)
        return summary.GetError();
    PrintNotes(summary.Value(), terminal);
    PrintCounts(results, options, summary.Value());
    if (const Status saved = project.Value()->Save(options.m_output); !saved)
        return saved.GetError();
    return enmExitCode::Done;
}

} // namespace

CVerb MakeImport() {
    const auto options = std::make_shared<COptions>();
    const auto formats = OLMGis::ProjectIo::GetImportFormats();
    return CVerb("import", "INPUT -o PROJECT.gpkg [options]", "Create a project from a file of another program")
        .Argument("INPUT", options->m_input, "File to read; \"-\" for standard input, with --format")
        .Output(options->m_output, "PROJECT.gpkg", "Project file to create")
        .Choice("--format", options->m_format, GetFormatKeys(formats), "Format of INPUT; default: by its suffix")
        .Option("--catalog", options->m_catalog, "FILE.csv", "Table of pipes that the network may refer to")
        .Examples({"drenova import town.geojson -o town.gpkg"})
        .Notes(ListFormats(formats, &CFormat::m_reads) +
               "\n\nAfter an error no project is created, and an existing one is unchanged.")
        .Runs([options](CTerminal& terminal, std::ostream& results) {
            return ImportProject(*options, terminal, results);
        });
}

} // namespace Cli
