// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/input/ColumnMap.h"
#include "apps/cli/input/FormatHelp.h"
#include "apps/cli/input/InputFile.h"
#include "apps/cli/input/Project.h"
#include "apps/cli/verbs/Verbs.h"
#include "host/project_io/Formats.h"
#include "host/project_io/base/CoordinateSystem.h"
#include "host/project_io/network_tables/TableImport.h"
#include "host/project_io/network_tables/TableTemplate.h"
#include "host/project_io/tables/CatalogCsv.h"
#include "reports/ShownText.h"

#include <fmt/format.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace Cli {

using OLMGis::ProjectIo::CFormat;
using OLMGis::ProjectIo::CImportNote;
using OLMGis::ProjectIo::CImportSummary;
using OLMGis::ProjectIo::CNetworkTables;
using OLMGis::Utility::BadArguments;
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
    std::string m_nodes;    ///< table; empty for none, as are the others
    std::string m_sections;
    std::string m_catchments;
    std::string m_map;      ///< mapping file of their columns
    std::string m_crs;      ///< EPSG:n of their coordinates
    std::string m_template; ///< folder for empty tables
    std::string m_catalog;  ///< pipe catalogue table that the network may refer to; empty for none
};

bool HasTables(const COptions& options) {
    return !options.m_nodes.empty() || !options.m_sections.empty() || !options.m_catchments.empty();
}

/// Whether the options make one of the three ways to use the verb.
Status CheckOptions(const COptions& options) {
    const bool hasTables = HasTables(options);
    if (!options.m_template.empty()) {
        const bool isAlone = options.m_input.empty() && options.m_output.empty() && options.m_format.empty() &&
                             options.m_catalog.empty() && options.m_map.empty() && options.m_crs.empty() && !hasTables;
        return isAlone ? Status(Done{}) : BadArguments("--template: found further options, expected the folder alone");
    }
    if (options.m_output.empty())
        return BadArguments("-o: found none, expected -o PROJECT.gpkg, the project file to create");
    if (hasTables && !options.m_input.empty())
        return BadArguments(fmt::format("found the input {} and tables, expected one of them", options.m_input));
    if (hasTables && !options.m_format.empty())
        return BadArguments("--format: found it with --nodes and --sections, which are CSV, expected one of them");
    if (hasTables && (options.m_nodes.empty() || options.m_sections.empty()))
        return BadArguments(fmt::format("{}: found none, expected --nodes N.csv and --sections S.csv",
                                        options.m_nodes.empty() ? "--nodes" : "--sections"));
    if (!hasTables && (!options.m_map.empty() || !options.m_crs.empty()))
        return BadArguments(fmt::format("{}: found it without tables, expected --nodes N.csv and --sections S.csv",
                                        options.m_map.empty() ? "--crs" : "--map"));
    if (!hasTables && options.m_input.empty())
        return BadArguments("found no input, expected INPUT, or --nodes N.csv and --sections S.csv");
    if (!options.m_crs.empty())
        if (const auto system = OLMGis::ProjectIo::ParseCrs(options.m_crs); !system)
            return BadArguments("--crs: " + system.GetError().message);
    return Done{};
}

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

Result<CImportSummary> ImportFile(const COptions& options) {
    const auto format = FindFormat(options);
    if (!format)
        return format.GetError();
    auto input = CInputFile::Open(options.m_input);
    if (!input)
        return input.GetError();
    return format.Value()->m_import(input->GetStream(), input->GetName());
}

Result<CImportSummary> ImportTables(const COptions& options) {
    const auto map = ReadColumnMap(options.m_map);
    if (!map)
        return map.GetError();
    CNetworkTables tables;
    tables.m_crs = options.m_crs;
    tables.m_map = map.Value() ? &*map.Value() : nullptr;
    std::vector<CInputFile> files;
    files.reserve(3);
    for (const auto& [path, source] :
         {std::pair{&options.m_nodes, &tables.m_nodes}, std::pair{&options.m_sections, &tables.m_sections},
          std::pair{&options.m_catchments, &tables.m_catchments}}) {
        if (path->empty())
            continue;
        auto file = CInputFile::Open(*path);
        if (!file)
            return file.GetError();
        files.push_back(std::move(file.Value()));
        *source = {&files.back().GetStream(), files.back().GetName()};
    }
    return OLMGis::ProjectIo::ImportTables(tables);
}

CVerbResult WriteTemplate(const std::string& folder, std::ostream& results) {
    const auto written = OLMGis::ProjectIo::WriteTableTemplate(folder);
    if (!written)
        return written.GetError();
    for (const std::string& path : written.Value())
        results << OnOneLine(path) << '\n';
    return enmExitCode::Done;
}

void PrintNotes(const CImportSummary& summary, CTerminal& terminal) {
    for (const std::string& reading : summary.m_readings)
        terminal.Note(OnOneLine(reading));
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
    if (const Status usable = CheckOptions(options); !usable)
        return usable.GetError();
    if (!options.m_template.empty())
        return WriteTemplate(options.m_template, results);
    if (!HasTables(options))
        if (const auto format = FindFormat(options); !format)
            return format.GetError();
    const auto project = CProject::MakeEmpty(terminal);
    if (!project)
        return project.GetError();
    for (const std::string* input : {&options.m_input, &options.m_nodes, &options.m_sections, &options.m_catchments,
                                     &options.m_map, &options.m_catalog})
        if (!input->empty())
            project.Value()->Reads(*input);
    if (const Status isFree = project.Value()->CheckOutput(options.m_output); !isFree)
        return isFree.GetError();
    if (!options.m_catalog.empty())
        if (const Status entered = ImportCatalog(options.m_catalog, terminal); !entered)
            return entered.GetError();
    const auto summary = HasTables(options) ? ImportTables(options) : ImportFile(options);
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
    return CVerb("import", "INPUT|--nodes N.csv --sections S.csv -o PROJECT.gpkg [options]",
                 "Create a project from a file of another program or from tables")
        .OptionalArgument("INPUT", options->m_input, "File to read; \"-\" for standard input, with --format")
        .Option("-o,--output", options->m_output.m_path, "PROJECT.gpkg", "Project file to create")
        .Choice("--format", options->m_format, GetFormatKeys(formats), "Format of INPUT; default: by its suffix")
        .Option("--nodes", options->m_nodes, "N.csv", "Table of nodes: name, x, y, terrain and attributes")
        .Option("--sections", options->m_sections, "S.csv", "Table of sections: name, from, to, length and attributes")
        .Option("--catchments", options->m_catchments, "C.csv", "Table of catchments: section, kinds, area, ...")
        .Option("--map", options->m_map, "MAP.json", "Meaning of the tables' columns: {\"head\": \"key\", ...}")
        .Option("--crs", options->m_crs, "EPSG:n", "Coordinate system of the tables; default: plane coordinates in m")
        .Option("--template", options->m_template, "FOLDER", "Only write three empty tables and their explanation")
        .Option("--catalog", options->m_catalog, "FILE.csv", "Table of pipes that the network may refer to")
        .Replace(options->m_output.m_replaces)
        .Examples({"drenova import town.geojson -o town.gpkg", "drenova import --template town",
                   "drenova import --nodes N.csv --sections S.csv -o town.gpkg --crs EPSG:3765"})
        .Notes(ListFormats(formats, &CFormat::m_reads) +
               "\n\nSeparator, decimal sign and encoding of tables are found out and reported. Columns go by key, by "
               "label or by\nthe mapping file; heads may have units, \"length [cm]\"."
               "\n\nAfter an error no project is created, and an existing one is unchanged.")
        .Runs([options](CTerminal& terminal, std::ostream& results) {
            return ImportProject(*options, terminal, results);
        });
}

} // namespace Cli
