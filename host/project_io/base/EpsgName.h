// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <string>
#include <string_view>

namespace OLMGis::ProjectIo {

/// "EPSG:n" from the names by which files call a coordinate system of the EPSG register: "EPSG:3765",
/// "urn:ogc:def:crs:EPSG::3765" (with or without version), "http://www.opengis.net/def/crs/EPSG/0/3765"; letter case
/// is ignored. Empty for any other text. Does not check whether the register has the number.
std::string EpsgOfName(std::string_view name);

} // namespace OLMGis::ProjectIo
