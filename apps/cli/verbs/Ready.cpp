// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/input/Calculators.h"
#include "apps/cli/input/Project.h"
#include "apps/cli/input/RegistryHelp.h"
#include "apps/cli/shell/OutputFile.h"
#include "apps/cli/verbs/Verbs.h"
#include "reports/EntityChoice.h"
#include "reports/ReadyListing.h"
#include "reports/ShownText.h"
#include "reports/TablePrinting.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <memory>
#include <optional>

namespace Cli {

using OLMGis::Data::enmEntityKind;
using OLMGis::Sewage::CMissingInput;
using OLMGis::Sewage::CPlannedRun;
using OLMGis::Utility::Done;
using OLMGis::Utility::Result;
using OLMGis::Utility::Status;

namespace {

struct COptions {
    std::string m_project;
    std::vector<std::string> m_calculators; ///< none for all, or for those of the parameter file
    std::string m_parameterFile;            ///< empty for the values of new forms
    CFormatOption m_format;
    std::string m_template; ///< table to fill in; empty for none
    bool m_replaces = false;
    bool m_isStrict = false;
};

/// The calculators asked for, in the order of the design work, with the values of the parameter file.
Result<std::vector<CPlannedRun>> MakePlan(const COptions& options, CProject& project, CTerminal& terminal) {
    for (const std::string& key : options.m_calculators)
        if (const auto known = FindCalculator(key); !known)
            return known.GetError();
    std::optional<Reports::CParameterFile> file;
    if (!options.m_parameterFile.empty()) {
        auto read = ReadParameterFile(options.m_parameterFile);
        if (!read)
            return read.GetError();
        file = std::move(read.Value());
    }
    // The templates are checked when it is known which of them are written.
    const auto noteFile = [&project](const std::string& read) -> Status {
        project.Reads(read);
        return Done{};
    };
    std::vector<CPlannedRun> plan;
    for (const std::string& key : GetCalculatorKeys()) {
        const auto* const values = file ? file->FindValues(key) : nullptr;
        const bool isAsked =
            std::find(options.m_calculators.begin(), options.m_calculators.end(), key) != options.m_calculators.end();
        if (!(options.m_calculators.empty() ? !file || values != nullptr : isAsked))
            continue;
        auto run = PlanRun(FindCalculator(key).Value(), values == nullptr ? std::vector<CFormValue>() : *values,
                           options.m_project, noteFile, terminal);
        if (!run)
            return run.GetError();
        plan.push_back(std::move(run.Value()));
    }
    return plan;
}

/// The file of a kind of entity: sections in the file itself, others in one beside it.
std::string TemplateOf(const std::string& path, enmEntityKind kind) {
    if (kind == enmEntityKind::Section)
        return path;
    const std::filesystem::path file(path);
    return (file.parent_path() /
            fmt::format("{}-{}s{}", file.stem().string(), Reports::GetKindName(kind), file.extension().string()))
        .string();
}

constexpr std::array EntityKinds = {enmEntityKind::Section, enmEntityKind::Node, enmEntityKind::Catchment};

/// Whether each table to fill in may be written: one that may not leaves none behind.
Status CheckTemplates(const COptions& options, const std::vector<CMissingInput>& missing, const CProject& project) {
    for (const enmEntityKind kind : EntityKinds)
        if (Reports::MakeFillInTable(missing, kind))
            if (Status isFree = project.CheckExport({TemplateOf(options.m_template, kind), options.m_replaces});
                !isFree)
                return isFree;
    return Done{};
}

/// Writes the tables to fill in, one for each kind of entity that lacks something.
Status WriteTemplates(const COptions& options, const std::vector<CMissingInput>& missing, CTerminal& terminal) {
    for (const enmEntityKind kind : EntityKinds) {
        const auto table = Reports::MakeFillInTable(missing, kind);
        if (!table)
            continue;
        const std::string path = TemplateOf(options.m_template, kind);
        const auto write = [&table](std::ostream& stream) -> Status {
            Reports::PrintAsCsv(stream, *table);
            return Done{};
        };
        if (const Status written = WriteOutput({path, options.m_replaces}, write); !written)
            return written;
        const std::string on =
            kind == enmEntityKind::Section ? "" : fmt::format(" --on {}s", Reports::GetKindName(kind));
        terminal.Print(fmt::format("{}: {} to fill in; then: drenova load {} {}{}", path,
                                   Reports::Count(table->GetRowCount(), "row"), options.m_project, path, on));
    }
    return Done{};
}

CVerbResult ShowMissing(const COptions& options, CTerminal& terminal, std::ostream& results) {
    const auto project = CProject::Open(options.m_project, terminal);
    if (!project)
        return project.GetError();
    if (const Status loaded = project.Value()->LoadModule(); !loaded)
        return loaded.GetError();
    if (!options.m_parameterFile.empty())
        project.Value()->Reads(options.m_parameterFile);
    const auto plan = MakePlan(options, *project.Value(), terminal);
    if (!plan)
        return plan.GetError();
    const std::vector<CMissingInput> missing = OLMGis::Sewage::FindMissingInputs(plan.Value());
    if (!options.m_template.empty())
        if (const Status areFree = CheckTemplates(options, missing, *project.Value()); !areFree)
            return areFree.GetError();
    Print(results, Reports::CListing(Reports::MakeReadyTable(missing)), options.m_format.Get());
    results.flush();
    if (!options.m_template.empty()) {
        if (const Status printed = terminal.CheckResults(); !printed)
            return printed.GetError();
        if (const Status written = WriteTemplates(options, missing, terminal); !written)
            return written.GetError();
    }
    terminal.Print(missing.empty()
                       ? fmt::format("{}: nothing is missing", options.m_project)
                       : fmt::format("{}: {} missing", options.m_project, Reports::Count(missing.size(), "value")));
    return options.m_isStrict && !missing.empty() ? enmExitCode::NothingStored : enmExitCode::Done;
}

} // namespace

CVerb MakeReady() {
    const auto options = std::make_shared<COptions>();
    return CVerb("ready", "PROJECT [CALCULATOR...] [options]", "List all that calculators still lack, at once")
        .Project(options->m_project)
        .OptionalArguments("CALCULATOR", options->m_calculators,
                           "Keys of calculators; default: those of --params, else all")
        .Option("--params", options->m_parameterFile, "FILE.json",
                "Parameter file with the values of the forms; default:\nthe values of new forms")
        .Formats(options->m_format, {"table", "csv", "json"}, "Default: table")
        .Option("--template", options->m_template, "FILE.csv",
                "Write a table of what sections lack to fill in and load;\nFILE-nodes.csv and FILE-catchments.csv for "
                "the others")
        .Replace(options->m_replaces)
        .Flag("--strict", options->m_isStrict, "Exit code 1 when something is missing")
        .Examples({"drenova ready town.gpkg --params design.json --template missing.csv",
                   "drenova ready town.gpkg 001_RAIN_ITP --json"})
        .Notes(
            "A value that stops a run, such as a slope of 0, counts as missing. A missing result is listed with the\n"
            "calculator that makes it, unless that one is asked for too: then it runs before. \"on\" is form for a\n"
            "value of the form, whose name is its tag.")
        .NotesFrom(ListCalculatorsForHelp)
        .Runs(
            [options](CTerminal& terminal, std::ostream& results) { return ShowMissing(*options, terminal, results); });
}

} // namespace Cli
