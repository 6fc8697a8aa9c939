// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/base/CoordinateSystem.h"

#include "host/gis_core/ProjectSettings.h"
#include "host/gis_core/Utility.h"

#include <fmt/format.h>
#include <proj.h>

#include <cmath>
#include <memory>
#include <utility>

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

/// The factor to m (of degrees to radians) and the name of the unit.
struct CUnit {
    double m_factor = 1.0;
    std::string m_name;
};

CUnit UnitOf(PJ_CONTEXT* context, const PJ* system) {
    CUnit unit;
    const CObject axes(proj_crs_get_coordinate_system(context, system));
    const char* name = nullptr;
    if (axes && proj_cs_get_axis_info(context, axes.get(), 0, nullptr, nullptr, nullptr, &unit.m_factor, &name, nullptr,
                                      nullptr) != 0)
        unit.m_name = name;
    return unit;
}

/// Whether multiplying coordinates by the factor gives those of the other system, to a millimetre.
bool IsScaledBy(PJ_CONTEXT* context, const PJ* system, const PJ* scaled, double factor) {
    constexpr double tolerance = 1e-3;
    const CObject operation(proj_create_crs_to_crs_from_pj(context, system, scaled, nullptr, nullptr));
    if (!operation)
        return false;
    for (const double place : {1e6, 2e6}) {
        const PJ_COORD moved = proj_trans(operation.get(), PJ_FWD, proj_coord(place, place, 0.0, 0.0));
        if (!(std::abs(moved.xy.x - place * factor) < tolerance && std::abs(moved.xy.y - place * factor) < tolerance))
            return false;
    }
    return true;
}

/// The number of the same system in m. The register calls systems in feet as those in m, with "(ftUS)" or "(ft)" after
/// the name. 0 where there is none.
int FindMetreCode(PJ_CONTEXT* context, const PJ* system, double metresPerUnit) {
    std::string name = proj_get_name(system);
    const std::size_t suffix = name.rfind(" (ft");
    if (suffix == std::string::npos)
        return 0;
    name.resize(suffix);
    const PJ_TYPE type = PJ_TYPE_PROJECTED_CRS;
    constexpr int most = 10;
    PJ_OBJ_LIST* const found = proj_create_from_name(context, "EPSG", name.c_str(), &type, 1, 0, most, nullptr);
    int code = 0;
    for (int i = 0; found != nullptr && code == 0 && i < proj_list_get_count(found); ++i) {
        const CObject candidate(proj_list_get(context, found, i));
        const char* const number = proj_get_id_code(candidate.get(), 0);
        if (number != nullptr && name == proj_get_name(candidate.get()) &&
            UnitOf(context, candidate.get()).m_factor == 1.0 &&
            IsScaledBy(context, system, candidate.get(), metresPerUnit))
            code = Utility::CUtility::ParseInt(number).value_or(0);
    }
    proj_list_destroy(found);
    return code;
}

Result<CCoordinateSystem> ReadRegister(int code) {
    const std::unique_ptr<PJ_CONTEXT, CloseContext> context(proj_context_create());
    if (!context)
        return Refused("coordinate systems: the PROJ library could not be started");
    proj_log_level(context.get(), PJ_LOG_NONE);
    proj_context_set_enable_network(context.get(), 0);
    if (proj_context_get_database_metadata(context.get(), "EPSG.VERSION") == nullptr)
        return Refused("coordinate systems: the register of PROJ (proj.db) cannot be read");

    const std::string number = std::to_string(code);
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
    CCoordinateSystem known;
    known.m_code = known.m_metreCode = code;
    known.m_name = proj_get_name(plane.get());
    known.m_wkt = wkt;
    known.m_isGeographic = IsGeographic(proj_get_type(plane.get()));
    CUnit unit = UnitOf(context.get(), plane.get());
    known.m_unit = std::move(unit.m_name);
    if (!known.m_isGeographic)
        known.m_metresPerUnit = unit.m_factor;
    if (known.IsInOtherUnit())
        known.m_metreCode = FindMetreCode(context.get(), plane.get(), known.m_metresPerUnit);
    return known;
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
    // The register never changes while a program runs; a command asks several times for the system of its project.
    thread_local std::optional<CCoordinateSystem> last;
    if (last && last->m_code == *code)
        return *last;
    auto system = ReadRegister(*code);
    if (system)
        last = system.Value();
    return system;
}

bool IsActiveProjectInDegrees() {
    const std::string setting = System::CProjectSettings::Instance()->Get(System::CProjectSettings::Crs);
    if (setting.empty())
        return false;
    const auto system = ParseCrs(setting);
    return system && system->m_isGeographic;
}

std::string SettingAfterConversion(const CCoordinateSystem& system) {
    return system.m_metreCode == 0 ? std::string() : fmt::format("EPSG:{}", system.m_metreCode);
}

std::string DescribeConversion(const CCoordinateSystem& system) {
    const std::string kept = system.m_metreCode == 0
                                 ? "the register has no such system in m, so they are plain plane coordinates now"
                                 : fmt::format("they are in {} now", SettingAfterConversion(system));
    return fmt::format("{} ({}) is in the unit {}: the coordinates were converted to m (factor {}); {}. Lengths, areas "
                       "and levels that are given as values are taken as m and ha",
                       system.ToText(), system.m_name, system.m_unit, system.m_metresPerUnit, kept);
}

} // namespace OLMGis::ProjectIo
