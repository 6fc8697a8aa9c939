// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/CommandExport.h"

#include "apps/cli/DescriptorStream.h"
#include "apps/cli/EntityChoice.h"
#include "apps/cli/Interrupt.h"
#include "apps/cli/Project.h"
#include "host/project_io/Formats.h"

#include <fmt/format.h>

#include <filesystem>

namespace Cli {

using OLMGis::ProjectIo::CExportChoice;
using OLMGis::ProjectIo::enmCatalogKind;
using OLMGis::Utility::BadWords;
using OLMGis::Utility::Status;

namespace {

CExportChoice MakeChoice(const CExportOptions& options) {
    return {FindKind(options.m_on).value_or(OLMGis::Data::enmEntityKind::Section),
            options.m_kind == "manhole" ? enmCatalogKind::Manhole : enmCatalogKind::Pipe};
}

} // namespace

CVerbResult ExportProject(const CExportOptions& options, CTerminal& terminal) {
    const auto format = OLMGis::ProjectIo::FindExportFormat(options.m_format);
    if (!format)
        return format.GetError();
    const auto project = CProject::Open(options.m_project, terminal);
    if (!project)
        return project.GetError();
    std::error_code ignored;
    if (std::filesystem::equivalent(options.m_project, options.m_output, ignored))
        return BadWords(fmt::format("--output: {} is the project itself", options.m_output));
    if (const Status goesOn = Interrupt::Check(); !goesOn)
        return goesOn.GetError();
    const auto write = [&](std::ostream& stream) { return format.Value()->m_export(stream, MakeChoice(options)); };
    const Status written = WriteFileWhole(options.m_output, write);
    if (!written)
        return written.GetError();
    return enmExitCode::Done;
}

} // namespace Cli
