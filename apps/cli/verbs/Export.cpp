// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/input/FormatHelp.h"
#include "apps/cli/input/OutdatedReading.h"
#include "apps/cli/input/Project.h"
#include "apps/cli/shell/Interrupt.h"
#include "apps/cli/shell/OutputFile.h"
#include "apps/cli/verbs/Verbs.h"
#include "host/gis_core/Utility.h"
#include "host/project_io/Formats.h"
#include "reports/EntityChoice.h"
#include "reports/ExportFormats.h"
#include "reports/ShownText.h"

#include <fmt/format.h>

#include <filesystem>
#include <memory>

namespace Cli {

using OLMGis::ProjectIo::CExportChoice;
using OLMGis::ProjectIo::enmCatalogKind;
using OLMGis::Utility::BadArguments;
using OLMGis::Utility::CUtility;
using OLMGis::Utility::Status;

namespace {

struct COptions {
    std::string m_project;
    std::string m_format;          ///< key of a format
    COutputOption m_output;        ///< "-" for standard output
    std::string m_on = "sections"; ///< of csv
    std::string m_kind = "pipe";   ///< of catalog
    bool m_isStrict = false;       ///< writes nothing when an outdated result is read
};

CExportChoice MakeChoice(const COptions& options) {
    return {Reports::FindKind(options.m_on).value_or(OLMGis::Data::enmEntityKind::Section),
            options.m_kind == "manhole" ? enmCatalogKind::Manhole : enmCatalogKind::Pipe};
}

CVerbResult ExportProject(const COptions& options, CTerminal& terminal) {
    const auto format = OLMGis::ProjectIo::FindFormat(Reports::GetExportFormats(), options.m_format);
    if (!format)
        return format.GetError();
    if (CUtility::ToLower(std::filesystem::path(options.m_output.m_path).extension().string()) == ".xlsx")
        return BadArguments(fmt::format(
            "--output: found {}, a spreadsheet, expected a file name that ends in one of {}",
            Reports::OnOneLine(options.m_output.m_path), OLMGis::ProjectIo::TextOfSuffixes(*format.Value())));
    const auto project = CProject::Open(options.m_project, terminal);
    if (!project)
        return project.GetError();
    if (const Status isFree = project.Value()->CheckExport(options.m_output); !isFree)
        return isFree.GetError();
    if (const Status goesOn = Interrupt::Check(); !goesOn)
        return goesOn.GetError();
    COutdatedReading reading(options.m_project);
    bool isGivenUp = false;
    const auto write = [&](std::ostream& stream) -> Status {
        Status written = format.Value()->m_export(stream, MakeChoice(options));
        isGivenUp = reading.Report(terminal) && options.m_isStrict;
        if (written && isGivenUp)
            return OLMGis::Utility::Error{OLMGis::Utility::enmErrorKind::Stopped, "an outdated result was read"};
        return written;
    };
    const Status written = WriteOutput(options.m_output, write);
    if (isGivenUp)
        return enmExitCode::NothingStored;
    if (!written)
        return written.GetError();
    return enmExitCode::Done;
}

} // namespace

CVerb MakeExport() {
    const auto options = std::make_shared<COptions>();
    const auto formats = Reports::GetExportFormats();
    return CVerb("export", "PROJECT FORMAT -o FILE [options]", "Write a file for other programs")
        .Project(options->m_project)
        .ArgumentChoice("FORMAT", options->m_format, GetFormatKeys(formats), "One of the formats below")
        .Output(options->m_output, "FILE", "File to write; \"-\" for standard output")
        .On(options->m_on)
        .Choice("--kind", options->m_kind, {"pipe", "manhole"}, "Catalogue of the format catalog; default: pipe")
        .Flag("--strict", options->m_isStrict, StrictHelp)
        .Examples({"drenova export town.gpkg geojson -o town.geojson",
                   "drenova export town.gpkg csv --on nodes -o nodes.csv",
                   "drenova export town.gpkg hydraulics -o hydraulics.csv"})
        .Notes(ListFormats(formats, &OLMGis::ProjectIo::CFormat::m_writes))
        .Runs([options](CTerminal& terminal, std::ostream&) { return ExportProject(*options, terminal); });
}

} // namespace Cli
