// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/project_io/Formats.h"

#include <vector>

namespace Reports {

/// The tables of reports that a project is exported to, as formats; they cannot be in the list of host/project_io,
/// which knows no reports.
const std::vector<OLMGis::ProjectIo::CFormat>& GetTableFormats();

/// Every format that a project is exported to: those of host/project_io, then the tables.
std::vector<const OLMGis::ProjectIo::CFormat*> GetExportFormats();

} // namespace Reports
