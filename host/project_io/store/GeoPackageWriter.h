// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <string>

namespace OLMGis::ProjectIo {

class CReadableFile;

/// Writes the active project into an existing empty file, as a GeoPackage. name: name of the file in errors. The same
/// content and save counter give the same bytes. source: file from which content of other programs is copied; null for
/// none. Throws CFailure, after which the caller must
/// discard the file. Cost: linear, except for the sorts of the spatial index.
void WriteGeoPackage(const std::string& path, const std::string& name, int saveCounter, const CReadableFile* source);

} // namespace OLMGis::ProjectIo
