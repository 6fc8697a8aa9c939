// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/CommandInfo.h"

#include "apps/cli/EntityChoice.h"
#include "apps/cli/JsonText.h"
#include "apps/cli/Project.h"
#include "apps/cli/ProjectDigest.h"
#include "apps/cli/ShownText.h"
#include "apps/cli/Table.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/ProjectSettings.h"
#include "host/network_core/TerrainSurfaces.h"
#include "host/network_core/TopologyMultiStorage.h"
#include "host/project_io/base/CoordinateSystem.h"
#include "host/project_io/terrain/TerrainAttachment.h"
#include "host/sewage_core/MissingDensities.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <string>
#include <utility>
#include <vector>

namespace Cli {

using nlohmann::ordered_json;
using OLMGis::System::CProjectSettings;
using OLMGis::Utility::CModuleConfiguration;

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
    return CModuleConfiguration::Instance()->GetMsg(key.m_definition->m_labelMessage);
}

ordered_json DescribeKeys(const std::vector<CProjectDigest::CUsedKey>& keys) {
    ordered_json list = ordered_json::array();
    for (const auto& key : keys)
        list.push_back({{"on", fmt::format("{}s", GetKindName(key.m_definition->m_entityKind))},
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
    return object;
}

void PrintOverview(std::ostream& results, const CProjectDigest& digest, const CFrame& frame) {
    CTable table;
    table.AddColumn("");
    table.AddColumn("");
    table.AddRow({"coordinate system", frame.m_crs.empty() ? "plain plane coordinates, m"
                                                           : fmt::format("{}  {}", frame.m_crs, frame.m_crsName)});
    table.AddRow({"edition", frame.m_edition + (frame.m_isTurkish ? ", Turkish extension" : "")});
    table.AddRow({"language", frame.m_language});
    for (const auto& [name, file] : frame.m_terrain)
        table.AddRow({name, OnOneLine(file)});
    table.AddRow({"nodes", fmt::format("{}", digest.m_nodeCount)});
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
    table.Print(results);
}

void PrintKeys(std::ostream& results, const char* heading, const std::vector<CProjectDigest::CUsedKey>& keys) {
    if (keys.empty())
        return;
    results << '\n' << heading << '\n';
    CTable table;
    table.AddColumn("key");
    table.AddColumn("count", CTable::enmAlign::Right);
    for (const char* head : {"on", "unit", "label"})
        table.AddColumn(head);
    for (const auto& key : keys)
        table.AddRow({key.m_definition->m_id, fmt::format("{}", key.m_count),
                      fmt::format("{}s", GetKindName(key.m_definition->m_entityKind)), key.m_definition->m_unit,
                      GetLabel(key)});
    table.Print(results, "  ");
}

/// What people should know: what opening noticed, rasters that are of no use, and catchments that calculations by
/// density take nonsense for.
std::vector<std::string> GatherWarnings(const CProject& project, const std::string& path) {
    std::vector<std::string> warnings = project.GetWarnings();
    for (std::string& trouble : OLMGis::ProjectIo::FindTerrainTroubles(path))
        warnings.push_back(std::move(trouble));
    const auto& topology = *OLMGis::Topology::CTopologyMultiStorage::Instance()->GetActiveTopology();
    if (auto missing = OLMGis::Sewage::WarnOfMissingDensities(topology))
        warnings.push_back(std::move(*missing));
    return warnings;
}

} // namespace

CVerbResult ShowInfo(const CInfoOptions& options, CTerminal& terminal, std::ostream& results) {
    const auto project = CProject::Open(options.m_project, terminal);
    if (!project)
        return project.GetError();
    const CProjectDigest digest = MakeProjectDigest();
    const CFrame frame = ReadFrame();
    const std::vector<std::string> warnings = GatherWarnings(*project.Value(), options.m_project);
    if (options.m_isJson) {
        ordered_json object = Describe(digest, frame);
        object["warnings"] = warnings;
        PrintJson(results, object);
    } else {
        PrintOverview(results, digest, frame);
        PrintKeys(results, "Values", digest.m_values);
        PrintKeys(results, "Calculated, by the parameters kept with the sections", digest.m_calculated);
    }
    results.flush();
    // Opening told its own ones already.
    for (std::size_t i = project.Value()->GetWarnings().size(); i < warnings.size(); ++i)
        terminal.Warn(OnOneLine(warnings[i]));
    return enmExitCode::Done;
}

} // namespace Cli
