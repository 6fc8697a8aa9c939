// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/CommandExport.h"

#include "apps/cli/DescriptorStream.h"
#include "apps/cli/EntityChoice.h"
#include "apps/cli/Interrupt.h"
#include "apps/cli/Project.h"
#include "host/project_io/exchange/ExchangeExport.h"
#include "host/project_io/tables/CatalogCsv.h"
#include "host/project_io/tables/CsvExport.h"

#include <fmt/format.h>

#include <filesystem>

namespace Cli {

using OLMGis::ProjectIo::enmCatalogKind;
using OLMGis::Utility::BadWords;
using OLMGis::Utility::Status;

namespace {

Status Write(std::ostream& stream, const CExportOptions& options) {
    if (options.m_format == "geojson")
        return OLMGis::ProjectIo::ExportExchange(stream);
    if (options.m_format == "catalog")
        return OLMGis::ProjectIo::ExportCatalog(stream, options.m_kind == "manhole" ? enmCatalogKind::Manhole
                                                                                    : enmCatalogKind::Pipe);
    return OLMGis::ProjectIo::ExportCsv(stream, FindKind(options.m_on).value_or(OLMGis::Data::enmEntityKind::Section));
}

} // namespace

CVerbResult ExportProject(const CExportOptions& options, CTerminal& terminal) {
    const auto project = CProject::Open(options.m_project, terminal);
    if (!project)
        return project.GetError();
    std::error_code ignored;
    if (std::filesystem::equivalent(options.m_project, options.m_output, ignored))
        return BadWords(fmt::format("--output: {} is the project itself", options.m_output));
    if (const Status goesOn = Interrupt::Check(); !goesOn)
        return goesOn.GetError();
    const Status written =
        WriteFileWhole(options.m_output, [&options](std::ostream& stream) { return Write(stream, options); });
    if (!written)
        return written.GetError();
    return enmExitCode::Done;
}

} // namespace Cli
