// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_core/BuiltInCatalog.h"

#include "host/gis_core/InstallationPaths.h"
#include "host/network_core/CatalogGuids.h"
#include "host/network_core/CatalogManager.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <nlohmann/json.hpp>

#include <absl/container/flat_hash_set.h>
#include <algorithm>
#include <array>
#include <cmath>
#include <set>
#include <sstream>
#include <stdexcept>

namespace OLMGis::Topology {

using nlohmann::json;
using Utility::BadInput;
using Utility::Result;

namespace {

constexpr double LargestPipe = 10000.0; // mm
constexpr double RoughestPipe = 10.0;   // mm
constexpr double LargestManhole = 20.0; // m

/// Thrown and caught in this file: a value may be bad in many places of one nested text.
[[noreturn]] void Fail(const std::string& message) {
    throw std::invalid_argument(message);
}

void CheckMembers(const json& object, const std::string& what, const std::set<std::string_view>& members) {
    if (!object.is_object())
        Fail(fmt::format("{}: found {}, expected an object", what, object.type_name()));
    for (const auto& [key, value] : object.items())
        if (!members.contains(key))
            Fail(fmt::format("{}: found the member \"{}\", expected {}", what, key, fmt::join(members, ", ")));
    for (const std::string_view member : members)
        if (!object.contains(member))
            Fail(fmt::format("{}: found no member \"{}\"", what, member));
}

std::string TextAt(const json& object, const char* member, const std::string& what) {
    const json& value = object.at(member);
    if (!value.is_string() || value.get_ref<const std::string&>().empty())
        Fail(fmt::format("{}: {}: expected a text", what, member));
    return value.get<std::string>();
}

double NumberAt(const json& object, const char* member, const std::string& what, double least, double greatest) {
    const json& value = object.at(member);
    if (!value.is_number() || !(value.get<double>() >= least) || !(value.get<double>() <= greatest))
        Fail(fmt::format("{}: {}: found {}, expected a number from {} to {}", what, member, value.dump(), least,
                         greatest));
    return value.get<double>();
}

const json& ListAt(const json& object, const char* member, const std::string& what) {
    const json& value = object.at(member);
    if (!value.is_array() || value.empty())
        Fail(fmt::format("{}: {}: expected a list that is not empty", what, member));
    return value;
}

/// Inside size (mm) of an outside size and the wall; to the micrometre, so that it is the number that people calculate
/// with hand and not its neighbour in binary.
double InsideOf(double outside, double wall, const std::string& what) {
    constexpr double Micrometres = 1000.0;
    const double inside = std::round((outside - 2.0 * wall) * Micrometres) / Micrometres;
    if (inside <= 0.0)
        Fail(fmt::format("{}: found walls of {} mm for an outside size of {} mm", what, wall, outside));
    return inside;
}

CPipeData ReadPipe(const json& row, const std::string& what, enmPipeShape shape, const std::string& type) {
    const Formulas::CShapeKind& kind = Formulas::KindOfShape(shape);
    const bool isCircle = kind.m_dimensions == Formulas::enmShapeDimensions::Diameter;
    if (isCircle)
        CheckMembers(row, what, {"name", "outside_mm", "wall_mm", "roughness_mm"});
    else
        CheckMembers(row, what, {"name", "outside_width_mm", "outside_height_mm", "wall_mm", "roughness_mm"});
    CPipeData pipe;
    pipe.m_shape = shape;
    pipe.m_type = type;
    pipe.m_wall = NumberAt(row, "wall_mm", what, 0.0, LargestPipe);
    pipe.m_roughness = NumberAt(row, "roughness_mm", what, 0.0, RoughestPipe);
    const double width = NumberAt(row, isCircle ? "outside_mm" : "outside_width_mm", what, 1.0, LargestPipe);
    const double height = isCircle ? width : NumberAt(row, "outside_height_mm", what, 1.0, LargestPipe);
    pipe.m_innerWidth = InsideOf(width, pipe.m_wall, what);
    pipe.m_innerHeight = InsideOf(height, pipe.m_wall, what);
    if (kind.m_heightRatio > 0.0 && pipe.m_innerHeight != kind.m_heightRatio * pipe.m_innerWidth)
        Fail(fmt::format("{}: found an inside of {} by {} mm, expected the shape {} {} times as high as wide", what,
                         pipe.m_innerWidth, pipe.m_innerHeight, kind.m_key, kind.m_heightRatio));
    return pipe;
}

CManholeData ReadManhole(const json& row, const std::string& what) {
    CheckMembers(row, what, {"name", "inner_diameter_m", "h1_m", "h2_m", "height_m"});
    CManholeData manhole;
    manhole.m_innerDiameter = NumberAt(row, "inner_diameter_m", what, 0.1, LargestManhole);
    manhole.m_h1 = NumberAt(row, "h1_m", what, 0.0, LargestManhole);
    manhole.m_h2 = NumberAt(row, "h2_m", what, manhole.m_h1, LargestManhole);
    manhole.m_height = NumberAt(row, "height_m", what, manhole.m_h2, LargestManhole);
    return manhole;
}

class CBuiltInReader {
public:
    explicit CBuiltInReader(std::string_view id) : m_id(id), m_isPipe(id == CCatalogManager::PipeCatalog) {}

    std::vector<CBuiltInGroup> Read(const json& file) {
        CheckMembers(file, "the file", {"catalog", "groups"});
        if (const std::string found = TextAt(file, "catalog", "the file"); found != m_id)
            Fail(fmt::format("found the catalogue \"{}\", expected {}", found, m_id));
        std::vector<CBuiltInGroup> groups;
        for (const json& group : ListAt(file, "groups", "the file"))
            groups.push_back(ReadGroup(group));
        return groups;
    }

private:
    CBuiltInGroup ReadGroup(const json& object) {
        constexpr std::string_view AnyGroup = "a group";
        if (m_isPipe)
            CheckMembers(object, std::string(AnyGroup), {"name", "standard", "source", "shape", "type", "pipes"});
        else
            CheckMembers(object, std::string(AnyGroup), {"name", "standard", "source", "manholes"});
        CBuiltInGroup group;
        group.m_name = TextAt(object, "name", std::string(AnyGroup));
        const std::string what = fmt::format("group \"{}\"", group.m_name);
        group.m_standard = TextAt(object, "standard", what);
        group.m_guid = GuidOfCatalogGroup(m_id, group.m_name);
        TakeNew(group.m_name, group.m_guid, what);
        enmPipeShape shape = enmPipeShape::Circle;
        std::string type;
        if (m_isPipe) {
            shape = ShapeAt(object, what);
            type = TextAt(object, "type", what);
        }
        for (const json& row : ListAt(object, m_isPipe ? "pipes" : "manholes", what)) {
            if (!row.is_object() || !row.contains("name"))
                Fail(fmt::format("{}: found an entry without a name", what));
            CBuiltInItem item;
            item.m_name = TextAt(row, "name", what);
            item.m_guid = GuidOfCatalogItem(m_id, group.m_name, item.m_name);
            const std::string entry = fmt::format("{}, \"{}\"", what, item.m_name);
            TakeNew(item.m_name, item.m_guid, entry);
            if (m_isPipe)
                item.m_pipe = ReadPipe(row, entry, shape, type);
            else
                item.m_manhole = ReadManhole(row, entry);
            group.m_items.push_back(std::move(item));
        }
        return group;
    }

    static enmPipeShape ShapeAt(const json& object, const std::string& what) {
        const std::string text = TextAt(object, "shape", what);
        const Formulas::CShapeKind* const kind = Formulas::FindShapeKind(text);
        if (kind == nullptr || kind->m_dimensions == Formulas::enmShapeDimensions::Levels)
            Fail(fmt::format("{}: found the shape \"{}\", expected {}", what, text,
                             fmt::join(Formulas::KeysOfSizedShapes(), ", ")));
        return kind->m_shape;
    }

    void TakeNew(const std::string& name, const std::string& guid, const std::string& what) {
        if (!m_names.insert(name).second || !m_guids.insert(guid).second)
            Fail(fmt::format("{}: the name occurs twice", what));
    }

    std::string m_id;
    bool m_isPipe;
    absl::flat_hash_set<std::string> m_names;
    absl::flat_hash_set<std::string> m_guids;
};

Result<std::vector<CBuiltInGroup>> ReadFile(std::string_view id) {
    const std::string path = Utility::InstallationPaths::DataFile(
        id == CCatalogManager::PipeCatalog ? "catalogs/pipes.json" : "catalogs/manholes.json");
    const auto text = Utility::InstallationPaths::ReadWholeFile(path);
    if (!text)
        return text.GetError();
    std::istringstream stream(text.Value());
    return ParseBuiltInCatalog(stream, path, id);
}

} // namespace

Result<std::vector<CBuiltInGroup>> ParseBuiltInCatalog(std::istream& stream, const std::string& name,
                                                       std::string_view id) {
    try {
        return CBuiltInReader(id).Read(json::parse(stream));
    } catch (const std::invalid_argument& fault) {
        return BadInput(fmt::format("{}: {}", name, fault.what()));
    } catch (const json::exception& error) {
        return BadInput(fmt::format("{}: not a catalogue: {}", name, error.what()));
    }
}

CBuiltInCatalogs* CBuiltInCatalogs::Instance() {
    static CBuiltInCatalogs instance;
    return &instance;
}

const Result<std::vector<CBuiltInGroup>>& CBuiltInCatalogs::GetGroups(std::string_view id) {
    auto found = m_read.find(id);
    if (found == m_read.end())
        found = m_read.emplace(std::string(id), ReadFile(id)).first;
    return found->second;
}

} // namespace OLMGis::Topology
