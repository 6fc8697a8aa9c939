// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/project_io/store/ProjectTables.h"
#include "host/project_io/store/SqlReader.h"

#include <string>

namespace OLMGis::ProjectIo {

/// Reads only the meta table of a project file. Throws CFailure.
CProjectMeta ReadGeoPackageMeta(const CSqliteDatabase& database);

/// Fills the active project, which must be empty, from a project file. Throws CFailure, after which the caller must
/// discard the half-filled project. Linear.
CProjectMeta ReadGeoPackage(const CSqliteDatabase& database, CWarnings& warnings);

} // namespace OLMGis::ProjectIo
