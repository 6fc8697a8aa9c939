// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/input/Project.h"
#include "apps/cli/verbs/Verbs.h"
#include "host/gis_core/DataRW.h"
#include "host/network_core/TopologyMultiStorage.h"
#include "host/project_io/base/ProjectValues.h"
#include "host/project_io/tables/CatalogReferences.h"
#include "host/project_io/terrain/TerrainAttachment.h"
#include "host/sewage_core/MissingDensities.h"
#include "reports/EntityChoice.h"
#include "reports/ProjectListing.h"
#include "reports/ShownText.h"

#include <fmt/format.h>

#include <limits>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

namespace Cli {

namespace {

struct COptions {
    std::string m_project;
    CFormatOption m_format;
};

/// Every impossible value, and the unusual ones of each key.
void AppendValues(std::vector<std::string>& warnings) {
    const auto& topology = *OLMGis::Topology::CTopologyMultiStorage::Instance()->GetActiveTopology();
    auto values = OLMGis::ProjectIo::JudgeProject(topology, std::numeric_limits<std::size_t>::max());
    if (const std::size_t count = values.m_impossible.GetCount(); count > 0)
        warnings.push_back(fmt::format("{}; other verbs refuse the project until drenova set or drenova load corrects "
                                       "all of them",
                                       Reports::Count(count, "impossible value")));
    for (const std::string& place : values.m_impossible.GetPlaces())
        warnings.push_back("impossible: " + place);
    for (std::string& unusual : values.m_unusual)
        warnings.push_back(std::move(unusual));
}

/// References that no calculation finds in the catalogues.
void AppendUnknownReferences(std::vector<std::string>& warnings) {
    constexpr std::size_t MostNamed = 20;
    for (const auto& [id, noun] : {std::pair{"PIPE_REF", "pipe"}, std::pair{"MANHOLE_ID", "manhole"}}) {
        const auto& key = *OLMGis::Data::FindDefinition(id);
        std::vector<std::string_view> names;
        OLMGis::Data::CDataBox box;
        for (const auto* entity : Reports::GetAllEntities(key.m_entityKind))
            if (OLMGis::Data::CDataRW::Read(&key, entity, box, 0, nullptr) != 0 &&
                !OLMGis::ProjectIo::IsKnownCatalogReference(key, box))
                names.push_back(Reports::GetShownName(*entity));
        if (!names.empty())
            warnings.push_back(fmt::format("{}: {} with a {} that the catalogue does not have ({}); import it with "
                                           "drenova catalog import, or set another",
                                           id, Reports::Count(names.size(), Reports::GetKindName(key.m_entityKind)),
                                           noun, Reports::FirstNames(names, MostNamed)));
    }
}

/// What opening noticed, rasters that cannot be used, impossible and unusual values, unknown references, and catchments
/// without a density that a calculation needs.
std::vector<std::string> GatherWarnings(const CProject& project, const std::string& path) {
    std::vector<std::string> warnings = project.GetWarnings();
    for (std::string& trouble : OLMGis::ProjectIo::FindTerrainTroubles(path))
        warnings.push_back(std::move(trouble));
    const auto& topology = *OLMGis::Topology::CTopologyMultiStorage::Instance()->GetActiveTopology();
    AppendValues(warnings);
    AppendUnknownReferences(warnings);
    if (auto missing = OLMGis::Sewage::WarnOfMissingDensities(topology))
        warnings.push_back(std::move(*missing));
    return warnings;
}

CVerbResult ShowInfo(const COptions& options, CTerminal& terminal, std::ostream& results) {
    const auto project = CProject::Open(options.m_project, terminal, enmValues::Any);
    if (!project)
        return project.GetError();
    const std::vector<std::string> warnings = GatherWarnings(*project.Value(), options.m_project);
    Print(results, Reports::MakeProjectListing(Reports::MakeProjectDigest(), warnings), options.m_format.Get());
    results.flush();
    // Opening has printed its own ones already.
    for (std::size_t i = project.Value()->GetWarnings().size(); i < warnings.size(); ++i)
        terminal.Warn(Reports::OnOneLine(warnings[i]));
    return enmExitCode::Done;
}

} // namespace

CVerb MakeInfo() {
    const auto options = std::make_shared<COptions>();
    return CVerb("info", "PROJECT [options]", "Show what a project contains")
        .Project(options->m_project)
        .Formats(options->m_format, {"table", "csv", "json"}, "Default: table; csv has its overview alone")
        .Examples({"drenova info town.gpkg", "drenova info town.gpkg --json"})
        .Runs([options](CTerminal& terminal, std::ostream& results) { return ShowInfo(*options, terminal, results); });
}

} // namespace Cli
