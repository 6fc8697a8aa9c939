// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <string>
#include <string_view>

namespace OLMGis::ProjectIo {

/// "EPSG:n" from the names that files give a coordinate system of the EPSG registry: "EPSG:3765",
/// "urn:ogc:def:crs:EPSG::3765" (with or without version), "http://www.opengis.net/def/crs/EPSG/0/3765"; letters count
/// without case. Empty for any other text. Whether the registry knows the number is not asked.
std::string EpsgOfName(std::string_view name);

} // namespace OLMGis::ProjectIo
