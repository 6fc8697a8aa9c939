// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/input/ColumnMap.h"
#include "apps/cli/input/FormatHelp.h"
#include "apps/cli/input/InputFile.h"
#include "apps/cli/input/MainOutlets.h"
#include "apps/cli/input/Project.h"
#include "apps/cli/verbs/Verbs.h"
#include "host/project_io/tables/CsvLoad.h"
#include "reports/EntityChoice.h"
#include "reports/ShownText.h"

#include <fmt/format.h>

#include <memory>

namespace Cli {

using Reports::Count;

namespace {

struct COptions {
    std::string m_project;
    std::string m_table; ///< "-" for standard input
    std::string m_map;   ///< mapping file of columns; empty for none
    std::string m_on = "sections";
    COutputOption m_output;
};

CVerbResult LoadAttributes(const COptions& options, CTerminal& terminal) {
    const auto kind = Reports::FindKind(options.m_on).value_or(OLMGis::Data::enmEntityKind::Section);
    auto table = CInputFile::Open(options.m_table);
    if (!table)
        return table.GetError();
    const auto map = ReadColumnMap(options.m_map);
    if (!map)
        return map.GetError();
    const auto project = CProject::Open(options.m_project, terminal, enmValues::Any);
    if (!project)
        return project.GetError();
    project.Value()->Reads(options.m_table);
    if (!options.m_map.empty())
        project.Value()->Reads(options.m_map);
    if (const auto isFree = project.Value()->CheckOutput(options.m_output); !isFree)
        return isFree.GetError();
    const CLoadedMainOutlets mainOutlets;
    const std::size_t before = Reports::GetAllEntities(kind).size();
    const auto stored =
        OLMGis::ProjectIo::LoadCsv(table->GetStream(), table->GetName(), kind, map.Value() ? &*map.Value() : nullptr);
    if (!stored)
        return stored.GetError();
    if (const auto resolved = mainOutlets.ResolveChanged(table->GetName()); !resolved)
        return resolved.GetError();
    terminal.Note(Reports::OnOneLine(stored->m_reading));
    const std::size_t made = Reports::GetAllEntities(kind).size() - before;
    if (const auto saved = project.Value()->Save(options.m_output); !saved)
        return saved.GetError();
    const std::string noun(Reports::GetKindName(kind));
    terminal.Print(fmt::format("{}: {} of {}s loaded{}", project.Value()->GetTarget(options.m_output),
                               Count(static_cast<std::size_t>(stored->m_count), "value"), noun,
                               made > 0 ? ", " + Count(made, "new " + noun) : ""));
    return enmExitCode::Done;
}

} // namespace

CVerb MakeLoad() {
    const auto options = std::make_shared<COptions>();
    return CVerb("load", "PROJECT TABLE.csv [options]", "Store attribute values from a table")
        .Project(options->m_project)
        .Argument(
            "TABLE", options->m_table,
            "CSV with a head line of keys or labels, entities by the\ncolumn name or guid; \"-\" for standard input")
        .Option("--map", options->m_map, "MAP.json", "Meaning of columns: {\"head\": \"key\", ...}")
        .On(options->m_on)
        .SaveAs(options->m_output)
        .Examples({"drenova load town.gpkg slopes.csv        with slopes.csv:   name,SECTION_SLOPE",
                   "                                                             MAIN-01,5.5"})
        .Notes(ListInputFormat("csv") +
               "\n\nAn empty cell leaves the value, the word null removes it. All or nothing. On catchments, rows "
               "without a match become new catchments of the section that they "
               "name.")
        .Runs([options](CTerminal& terminal, std::ostream&) { return LoadAttributes(*options, terminal); });
}

} // namespace Cli
