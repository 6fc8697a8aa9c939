// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/base/CoordinateSystem.h"

#include "host/gis_core/Utility.h"

#include <fmt/format.h>
#include <proj.h>

#include <memory>

namespace OLMGis::ProjectIo {

using Utility::BadInput;
using Utility::Refused;
using Utility::Result;

namespace {

struct CloseContext {
    void operator()(PJ_CONTEXT* context) const { proj_context_destroy(context); }
};
struct CloseObject {
    void operator()(PJ* object) const { proj_destroy(object); }
};
using CObject = std::unique_ptr<PJ, CloseObject>;

bool IsGeographic(PJ_TYPE type) {
    return type == PJ_TYPE_GEOGRAPHIC_2D_CRS || type == PJ_TYPE_GEOGRAPHIC_3D_CRS;
}

/// The horizontal part of a system that also has heights, else the system itself.
CObject Horizontal(PJ_CONTEXT* context, CObject system) {
    if (proj_get_type(system.get()) != PJ_TYPE_COMPOUND_CRS)
        return system;
    return CObject(proj_crs_get_sub_crs(context, system.get(), 0));
}

bool IsPlane(PJ_TYPE type) {
    return type == PJ_TYPE_PROJECTED_CRS || IsGeographic(type);
}

} // namespace

std::string CCoordinateSystem::ToText() const {
    return fmt::format("EPSG:{}", m_code);
}

std::optional<int> ParseEpsgCode(std::string_view text) {
    constexpr std::string_view Authority = "EPSG:";
    text = Utility::CUtility::Trim(text);
    if (!Utility::CUtility::EqualIgnoreCase(text.substr(0, Authority.size()), Authority))
        return std::nullopt;
    const std::string_view digits = text.substr(Authority.size());
    if (digits.empty() || digits.find_first_not_of("0123456789") != std::string_view::npos)
        return std::nullopt;
    const std::optional<int> code = Utility::CUtility::ParseInt(digits);
    return code && *code > 0 ? code : std::nullopt;
}

Result<CCoordinateSystem> ParseCrs(std::string_view text) {
    const std::optional<int> code = ParseEpsgCode(text);
    if (!code)
        return BadInput(fmt::format("coordinate system: found \"{}\", expected EPSG:n, for instance EPSG:3765", text));
    const std::unique_ptr<PJ_CONTEXT, CloseContext> context(proj_context_create());
    if (!context)
        return Refused("coordinate systems: the PROJ library could not be started");
    proj_log_level(context.get(), PJ_LOG_NONE);
    proj_context_set_enable_network(context.get(), 0);
    if (proj_context_get_database_metadata(context.get(), "EPSG.VERSION") == nullptr)
        return Refused("coordinate systems: the register of PROJ (proj.db) cannot be read");

    const std::string number = std::to_string(*code);
    CObject system(proj_create_from_database(context.get(), "EPSG", number.c_str(), PJ_CATEGORY_CRS, 0, nullptr));
    if (!system)
        return BadInput(
            fmt::format("coordinate system: EPSG:{} is not known, expected a number of the EPSG register", number));
    const CObject plane = Horizontal(context.get(), std::move(system));
    if (!plane || !IsPlane(proj_get_type(plane.get())))
        return BadInput(
            fmt::format("coordinate system: EPSG:{} has no plane of coordinates, expected a projected one", number));
    const char* const options[] = {"MULTILINE=NO", nullptr};
    const char* const wkt = proj_as_wkt(context.get(), plane.get(), PJ_WKT1_GDAL, options);
    if (wkt == nullptr)
        return BadInput(fmt::format("coordinate system: EPSG:{} cannot be written as well-known text", number));
    return CCoordinateSystem{*code, proj_get_name(plane.get()), wkt, IsGeographic(proj_get_type(plane.get()))};
}

} // namespace OLMGis::ProjectIo
