// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "reports/ProjectListing.h"

#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/ProjectSettings.h"
#include "host/network_core/TerrainSurfaces.h"
#include "host/project_io/base/CoordinateSystem.h"
#include "host/project_io/terrain/TerrainAttachment.h"
#include "reports/EntityChoice.h"
#include "reports/JsonDocument.h"
#include "reports/ShownText.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <nlohmann/json.hpp>

#include <utility>

namespace Reports {

using nlohmann::ordered_json;
using OLMGis::System::CProjectSettings;

namespace {

/// The settings that decide how a project is to be read.
struct CFrame {
    std::string m_crs; ///< empty for plain plane coordinates
    std::string m_crsName;
    std::string m_edition;
    std::string m_language;
    bool m_isTurkish = false;
    std::vector<std::pair<std::string, std::string>> m_terrain; ///< settings and files of attached rasters
};

CFrame ReadFrame() {
    const CProjectSettings& settings = *CProjectSettings::Instance();
    CFrame frame{settings.Get(CProjectSettings::Crs),
                 {},
                 settings.Get(CProjectSettings::Edition, "STANDARD"),
                 settings.Get(CProjectSettings::Language, "en"),
                 settings.Get(CProjectSettings::Turkish, "0") != "0",
                 {}};
    for (int type = 1; type <= OLMGis::Topology::CTerrainSurfaces::TypeCount; ++type) {
        const std::string name = OLMGis::ProjectIo::TerrainSetting(type);
        if (std::string file = settings.Get(name); !file.empty())
            frame.m_terrain.emplace_back(name, std::move(file));
    }
    if (!frame.m_crs.empty())
        if (const auto crs = OLMGis::ProjectIo::ParseCrs(frame.m_crs))
            frame.m_crsName = crs->m_name;
    return frame;
}

const std::string& GetLabel(const CProjectDigest::CUsedKey& key) {
    return OLMGis::Utility::Msg(key.m_definition->m_labelMessage);
}

std::string GetPlural(const CProjectDigest::CUsedKey& key) {
    return fmt::format("{}s", GetKindName(key.m_definition->m_entityKind));
}

ordered_json DescribeKeys(const std::vector<CProjectDigest::CUsedKey>& keys) {
    ordered_json list = ordered_json::array();
    for (const auto& key : keys)
        list.push_back({{"on", GetPlural(key)},
                        {"key", key.m_definition->m_id},
                        {"count", key.m_count},
                        {"unit", key.m_definition->m_unit},
                        {"label", GetLabel(key)}});
    return list;
}

ordered_json Describe(const CProjectDigest& digest, const CFrame& frame) {
    ordered_json object;
    object["crs"] = frame.m_crs.empty() ? ordered_json(nullptr) : ordered_json(frame.m_crs);
    object["crs_name"] = frame.m_crsName.empty() ? ordered_json(nullptr) : ordered_json(frame.m_crsName);
    object["edition"] = frame.m_edition;
    object["turkish"] = frame.m_isTurkish;
    object["language"] = frame.m_language;
    object["terrain"] = ordered_json::object();
    for (const auto& [name, file] : frame.m_terrain)
        object["terrain"][name] = file;
    object["nodes"] = digest.m_nodeCount;
    object["sections"] = digest.m_sectionCount;
    object["catchments"] = digest.m_catchmentCount;
    object["length_m"] = ToJson(digest.m_length);
    object["area_ha"] = ToJson(digest.m_area);
    for (const auto& kind : digest.m_kinds)
        object["catchment_kinds"][kind.m_name] = {{"catchments", kind.m_count}, {"area_ha", ToJson(kind.m_area)}};
    object["extent"] = nullptr;
    if (digest.m_extent)
        object["extent"] = {ToJson(digest.m_extent->m_minX), ToJson(digest.m_extent->m_minY),
                            ToJson(digest.m_extent->m_maxX), ToJson(digest.m_extent->m_maxY)};
    object["catalogue"] = {
        {"pipe_groups", digest.m_pipeGroupCount}, {"pipes", digest.m_pipeCount}, {"manholes", digest.m_manholeCount}};
    object["values"] = DescribeKeys(digest.m_values);
    object["calculated"] = DescribeKeys(digest.m_calculated);
    object["outdated"] = ordered_json::array();
    for (const auto& result : digest.m_outdated)
        object["outdated"].push_back(
            {{"result", result.m_result->m_id}, {"calculator", result.m_calculator}, {"changed", result.m_changed}});
    return object;
}

CTable MakeOverview(const CProjectDigest& digest, const CFrame& frame) {
    CTable table({TextColumn("item", ""), TextColumn("value", "")});
    table.AddRow({"coordinate system", frame.m_crs.empty() ? "plain plane coordinates, m"
                                                           : fmt::format("{}  {}", frame.m_crs, frame.m_crsName)});
    table.AddRow({"edition", frame.m_edition + (frame.m_isTurkish ? ", Turkish extension" : "")});
    table.AddRow({"language", frame.m_language});
    for (const auto& [name, file] : frame.m_terrain)
        table.AddRow({name, file});
    table.AddRow({"nodes", static_cast<int>(digest.m_nodeCount)});
    table.AddRow({"sections", fmt::format("{}, {:.2f} m in plan", digest.m_sectionCount, digest.m_length)});
    table.AddRow({"catchments", fmt::format("{}, {:.4f} ha", digest.m_catchmentCount, digest.m_area)});
    for (const auto& kind : digest.m_kinds)
        if (kind.m_count > 0)
            table.AddRow({fmt::format("  {}", kind.m_name), fmt::format("{}, {:.4f} ha", kind.m_count, kind.m_area)});
    if (const auto& extent = digest.m_extent)
        table.AddRow({"extent", fmt::format("{:.2f} {:.2f} to {:.2f} {:.2f}", extent->m_minX, extent->m_minY,
                                            extent->m_maxX, extent->m_maxY)});
    table.AddRow(
        {"catalogue", fmt::format("{} in {}, {}", Count(digest.m_pipeCount, "pipe"),
                                  Count(digest.m_pipeGroupCount, "group"), Count(digest.m_manholeCount, "manhole"))});
    return table;
}

void AddKeys(CListing& listing, const char* heading, const std::vector<CProjectDigest::CUsedKey>& keys) {
    if (keys.empty())
        return;
    CTable table({TextColumn("key", "key"), NumberColumn("count", "count"), TextColumn("on", "on"),
                  TextColumn("unit", "unit"), TextColumn("label", "label")});
    for (const auto& key : keys)
        table.AddRow({key.m_definition->m_id, static_cast<int>(key.m_count), GetPlural(key), key.m_definition->m_unit,
                      GetLabel(key)});
    listing.m_blocks.push_back({heading, std::move(table), true});
}

void AddOutdated(CListing& listing, const std::vector<OLMGis::Sewage::COutdatedResult>& results) {
    if (results.empty())
        return;
    CTable table({TextColumn("result", "result"), TextColumn("calculator", "calculator"),
                  TextColumn("changed", "changed since")});
    for (const auto& result : results)
        table.AddRow(
            {result.m_result->m_id, result.m_calculator, fmt::format("{}", fmt::join(result.m_changed, ", "))});
    listing.m_blocks.push_back({"Outdated results (run the calculator again)", std::move(table), true});
}

} // namespace

CListing MakeProjectListing(const CProjectDigest& digest, const std::vector<std::string>& warnings) {
    const CFrame frame = ReadFrame();
    CListing listing(MakeOverview(digest, frame));
    AddKeys(listing, "Values", digest.m_values);
    AddKeys(listing, "Calculated (parameters that runs keep with the sections)", digest.m_calculated);
    AddOutdated(listing, digest.m_outdated);
    ordered_json document = Describe(digest, frame);
    document["warnings"] = warnings;
    listing.m_printDocument = [document = std::move(document)](std::ostream& stream) {
        PrintDocument(stream, document);
    };
    return listing;
}

} // namespace Reports
