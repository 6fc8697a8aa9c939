// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/input/OutdatedReading.h"

#include "host/gis_core/ProjectContext.h"
#include "reports/OutdatedListing.h"

#include <utility>

namespace Cli {

COutdatedReading::COutdatedReading(std::string project)
    : m_project(std::move(project)), m_outdated(OLMGis::Sewage::FindOutdatedResults()) {
    m_scope.emplace(OLMGis::System::CProjectContext::Active().GetAttributes(), m_notes);
}

bool COutdatedReading::Report(CTerminal& terminal) {
    m_scope.reset();
    const auto read = OLMGis::Sewage::SelectRead(m_outdated, m_notes);
    terminal.Show(Reports::MakeOutdatedRemarks(read, m_project));
    return !read.empty();
}

} // namespace Cli
