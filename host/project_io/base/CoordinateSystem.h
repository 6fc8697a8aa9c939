// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"

#include <optional>
#include <string>
#include <string_view>

namespace OLMGis::ProjectIo {

/// A coordinate system of the EPSG register.
struct CCoordinateSystem {
    int m_code = 0;               ///< EPSG number
    std::string m_name;           ///< "HTRS96 / Croatia TM"
    std::string m_wkt;            ///< definition as well-known text, the version 1 that GIS programs read
    bool m_isGeographic = false;  ///< coordinates are degrees, so that lengths and areas make no sense
    std::string m_unit;           ///< of the coordinates, as the register calls it: "metre", "US survey foot", "degree"
    double m_metresPerUnit = 1.0; ///< of plane coordinates
    int m_metreCode = 0; ///< EPSG number of the same system in m, its own where it is in m; 0 where there is none

    /// Whether coordinates have to be converted before lengths and areas are taken from them.
    bool IsInOtherUnit() const { return !m_isGeographic && m_metresPerUnit != 1.0; }

    /// The text of the project's setting: "EPSG:3765".
    std::string ToText() const;
};

/// The number in "EPSG:n" (case ignored, blanks around it allowed); nothing for any other text. The EPSG register is
/// not read.
std::optional<int> ParseEpsgCode(std::string_view text);

/// The coordinate system of "EPSG:n", from the register of PROJ. BadInput for any other text, for an unknown number and
/// for a system without plane coordinates (heights, geocentric). Refused when the register cannot be read. Costs some
/// milliseconds, for the system that was asked for last a copy.
Utility::Result<CCoordinateSystem> ParseCrs(std::string_view text);

/// Whether the coordinates of the active project are degrees; false where its setting names no known system.
bool IsActiveProjectInDegrees();

/// What a conversion to m changed, for the user; the new setting is "EPSG:n" or, without m_metreCode, empty.
std::string DescribeConversion(const CCoordinateSystem& system);
std::string SettingAfterConversion(const CCoordinateSystem& system);

} // namespace OLMGis::ProjectIo
