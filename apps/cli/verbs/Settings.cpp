// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/input/Assignments.h"
#include "apps/cli/input/HelpTable.h"
#include "apps/cli/input/KnownSettings.h"
#include "apps/cli/input/Project.h"
#include "apps/cli/verbs/Verbs.h"
#include "host/gis_core/DataConfiguration.h"
#include "host/gis_core/DataRW.h"
#include "host/gis_core/ProjectSettings.h"
#include "host/network_core/TerrainSurfaces.h"
#include "host/network_core/TopologyMultiStorage.h"
#include "host/project_io/base/CoordinateSystem.h"
#include "host/project_io/terrain/TerrainAttachment.h"
#include "reports/Listing.h"
#include "reports/ShownText.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <memory>
#include <string_view>
#include <utility>

namespace Cli {

using OLMGis::System::CProjectSettings;
using OLMGis::Utility::BadArguments;
using OLMGis::Utility::Done;
using OLMGis::Utility::Error;
using Reports::OnOneLine;

namespace {

struct COptions {
    std::string m_project;
    std::vector<std::string> m_assignments; ///< KEY=VALUE; none to show the settings
    CFormatOption m_format;
    COutputOption m_output;
};

/// People get one line KEY=VALUE each, as arguments of this verb.
void PrintSettings(std::ostream& results, Reports::enmFormat format) {
    Reports::CTable table({Reports::TextColumn("key", "key"), Reports::TextColumn("value", "value")});
    for (const CKnownSetting& setting : GetKnownSettings()) {
        const std::string value = CProjectSettings::Instance()->Get(setting.m_name, setting.m_default);
        if (value.empty() && !setting.m_isShownEmpty)
            continue;
        if (format == Reports::enmFormat::Text)
            results << setting.m_name << '=' << OnOneLine(value) << '\n';
        table.AddRow({std::string(setting.m_name), value});
    }
    if (format != Reports::enmFormat::Text)
        Print(results, Reports::CListing(std::move(table)), format);
}

/// A raster attached now must be usable; for a former one that no longer fits the project's coordinate system there is
/// a warning.
OLMGis::Utility::Status CheckTerrains(const std::vector<CAssignment>& changes, const std::string& project,
                                      CTerminal& terminal) {
    const auto isChanged = [&changes](std::string_view name) {
        return std::any_of(changes.begin(), changes.end(),
                           [name](const CAssignment& change) { return change.m_key == name; });
    };
    for (int type = 1; type <= OLMGis::Topology::CTerrainSurfaces::TypeCount; ++type) {
        const std::string name = OLMGis::ProjectIo::TerrainSetting(type);
        if (!isChanged(name) && !isChanged(CProjectSettings::Crs))
            continue;
        const auto checked = OLMGis::ProjectIo::CheckTerrain(type, project);
        const std::string remark = fmt::format("{}: {}", name, checked ? checked.Value() : checked.GetError().message);
        if (!checked && isChanged(name))
            return Error{checked.GetError().kind, remark};
        if (!checked || !checked->empty())
            terminal.Warn(OnOneLine(remark));
    }
    return Done{};
}

/// What becomes of lengths: those without a stored value come from coordinates, which a new system does not change.
void ReportLengths(CTerminal& terminal) {
    const auto& sections = OLMGis::Topology::CTopologyMultiStorage::Instance()->GetActiveTopology()->GetSections();
    const auto* const length = OLMGis::Data::FindDefinition("length");
    std::size_t stored = 0;
    OLMGis::Data::CDataBox box;
    for (const auto& section : sections)
        stored += OLMGis::Data::CDataRW::Read(length, section.get(), box, 0, nullptr) != 0 ? 1U : 0U;
    const std::string counts =
        fmt::format("{} of {} have a stored length, which stays; the others take it from the coordinates", stored,
                    Reports::Count(sections.size(), "section"));
    const auto crs = OLMGis::ProjectIo::ParseCrs(CProjectSettings::Instance()->Get(CProjectSettings::Crs));
    if (crs && crs->IsInOtherUnit())
        terminal.Warn(fmt::format("{} is in the unit {}: the coordinates are converted to m (factor {}) when the "
                                  "project is opened next. {}",
                                  crs->ToText(), crs->m_unit, crs->m_metresPerUnit, counts));
    else
        terminal.Note(fmt::format("crs: the coordinates stay as they are. {}", counts));
}

CVerbResult ShowOrChange(const COptions& options, CTerminal& terminal, std::ostream& results) {
    const auto assignments = SplitAssignments(options.m_assignments, "KEY=VALUE");
    if (!assignments)
        return assignments.GetError();
    if (assignments->empty() && !options.m_output.empty())
        return BadArguments("--output: found no KEY=VALUE, expected a setting to change");
    const auto project = CProject::Open(options.m_project, terminal);
    if (!project)
        return project.GetError();
    if (const auto isFree = project.Value()->CheckOutput(options.m_output); !isFree)
        return isFree.GetError();
    if (assignments->empty()) {
        PrintSettings(results, options.m_format.Get());
        return enmExitCode::Done;
    }
    for (const CAssignment& assignment : assignments.Value())
        if (const auto done = ChangeSetting(assignment.m_key, assignment.m_value, options.m_project); !done)
            return done.GetError();
    if (const auto good = CheckTerrains(assignments.Value(), options.m_project, terminal); !good)
        return good.GetError();
    if (std::any_of(assignments->begin(), assignments->end(),
                    [](const CAssignment& change) { return change.m_key == CProjectSettings::Crs; }))
        ReportLengths(terminal);
    if (const std::string warning = GetCrsWarning(); !warning.empty())
        terminal.Warn(warning);
    if (const auto saved = project.Value()->Save(options.m_output); !saved)
        return saved.GetError();
    std::vector<std::string> changed;
    for (const CAssignment& assignment : assignments.Value())
        changed.push_back(fmt::format("{}={}", assignment.m_key, CProjectSettings::Instance()->Get(assignment.m_key)));
    terminal.Print(fmt::format("{}: {}", project.Value()->GetTarget(options.m_output), fmt::join(changed, ", ")));
    return enmExitCode::Done;
}

std::string ListSettings() {
    struct CLine {
        std::string_view m_first;
        std::string_view m_last;
        std::string_view m_values;
    };
    std::vector<CLine> lines; // neighbours that take the same share a line: the ten terrain types
    for (const CKnownSetting& setting : GetKnownSettings()) {
        if (!lines.empty() && lines.back().m_values == setting.m_values)
            lines.back().m_last = setting.m_name;
        else
            lines.push_back({setting.m_name, setting.m_name, setting.m_values});
    }
    Reports::CTable table({Reports::TextColumn("names", ""), Reports::TextColumn("values", "")});
    for (const CLine& line : lines)
        table.AddRow({line.m_first == line.m_last ? std::string(line.m_first)
                                                  : fmt::format("{} to {}", line.m_first, line.m_last),
                      line.m_values});
    return ShowForHelp("Settings", table);
}

} // namespace

CVerb MakeSettings() {
    const auto options = std::make_shared<COptions>();
    return CVerb("settings", "PROJECT [KEY=VALUE...] [options]", "Show or change the settings of a project")
        .Project(options->m_project)
        .OptionalArguments("KEY=VALUE", options->m_assignments, "Settings to change; none: show all")
        .Formats(options->m_format, {"table", "csv", "json"}, "Default: table, lines KEY=VALUE")
        .SaveAs(options->m_output)
        .Examples({"drenova settings town.gpkg", "drenova settings town.gpkg edition=RO terrain_1=ground.tif"})
        .NotesFrom(ListSettings)
        .Runs([options](CTerminal& terminal, std::ostream& results) {
            return ShowOrChange(*options, terminal, results);
        });
}

} // namespace Cli
