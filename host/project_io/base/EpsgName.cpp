// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/base/EpsgName.h"

#include "host/gis_core/Utility.h"
#include "host/project_io/base/CoordinateSystem.h"

#include <array>
#include <optional>

namespace OLMGis::ProjectIo {

using Utility::CUtility;

std::string EpsgOfName(std::string_view name) {
    const std::string lower = CUtility::ToLower(CUtility::Trim(name));
    constexpr std::array<std::string_view, 4> openings = {
        "epsg:", "urn:ogc:def:crs:epsg:", "http://www.opengis.net/def/crs/epsg/",
        "https://www.opengis.net/def/crs/epsg/"};
    for (const std::string_view opening : openings) {
        if (!lower.starts_with(opening))
            continue;
        std::string_view rest = std::string_view(lower).substr(opening.size());
        if (opening != openings.front()) {
            const std::size_t version = rest.find_first_of(":/");
            rest = version == std::string_view::npos ? std::string_view() : rest.substr(version + 1);
        }
        const std::optional<int> code = ParseEpsgCode("EPSG:" + std::string(rest));
        return code ? "EPSG:" + CUtility::ToText(*code) : std::string();
    }
    return {};
}

} // namespace OLMGis::ProjectIo
