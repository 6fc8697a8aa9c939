// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/CommandCatalog.h"

#include "apps/cli/InputFile.h"
#include "apps/cli/JsonText.h"
#include "apps/cli/Project.h"
#include "apps/cli/ShownText.h"
#include "apps/cli/Table.h"
#include "host/gis_core/Utility.h"
#include "host/network_core/CatalogManager.h"
#include "host/project_io/tables/CatalogCsv.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <vector>

namespace Cli {

using nlohmann::ordered_json;
using OLMGis::ProjectIo::enmCatalogTable;
using OLMGis::Topology::CCatalogItem;
using OLMGis::Topology::CCatalogManager;
using OLMGis::Topology::CManholeData;
using OLMGis::Topology::CPipeData;
using OLMGis::Topology::enmPipeShape;
using OLMGis::Utility::BadWords;
using OLMGis::Utility::CUtility;
using OLMGis::Utility::Result;

namespace {

struct CShownGroup {
    std::string_view m_kind; ///< pipe or manhole
    boost::shared_ptr<CCatalogItem> m_group;
};

/// The groups of the wanted catalogues, in their order.
std::vector<CShownGroup> GatherGroups(const std::string& kind) {
    std::vector<CShownGroup> groups;
    for (const auto& [each, id] : {std::pair<std::string_view, std::string_view>{"pipe", CCatalogManager::PipeCatalog},
                                   {"manhole", CCatalogManager::ManholeCatalog}})
        if (kind.empty() || kind == each)
            for (const auto& group : CCatalogManager::Instance()->GetCatalog(id, 1)->GetGroups())
                groups.push_back({each, group});
    return groups;
}

std::string_view ShapeName(enmPipeShape shape) {
    switch (shape) {
    case enmPipeShape::Circle:
        return "circle";
    case enmPipeShape::Egg:
        return "egg";
    case enmPipeShape::Box:
        return "box";
    case enmPipeShape::Table:
        break;
    }
    return "table";
}

ordered_json DescribeGroup(const CShownGroup& shown) {
    const CCatalogItem& group = *shown.m_group;
    return {{"kind", shown.m_kind},
            {"name", group.GetName()},
            {"guid", group.GetGUID()},
            {"built_in", group.IsBuiltIn()},
            {"standard", group.GetStandard().empty() ? ordered_json(nullptr) : ordered_json(group.GetStandard())}};
}

/// Members as the columns of a catalogue table.
ordered_json DescribeItem(const CCatalogItem& item) {
    ordered_json object{{"name", item.GetName()}, {"guid", item.GetGUID()}};
    if (const CPipeData* pipe = item.GetPipeData(); pipe != nullptr) {
        object["shape"] = ShapeName(pipe->m_shape);
        object["inner_width_mm"] = pipe->m_innerWidth;
        object["inner_height_mm"] = pipe->m_innerHeight;
        object["wall_mm"] = pipe->m_wall;
        object["roughness_mm"] = pipe->m_roughness;
        object["type"] = pipe->m_type;
        object["min_diameter_mm"] = pipe->m_minDiameter;
        if (pipe->m_shape == enmPipeShape::Table) {
            object["points"] = ordered_json::array();
            for (const auto& point : pipe->m_table)
                object["points"].push_back({{"height_mm", point.m_height}, {"width_mm", point.m_width}});
        }
    }
    if (const CManholeData* manhole = item.GetManholeData(); manhole != nullptr) {
        object["inner_diameter_m"] = manhole->m_innerDiameter;
        object["h1_m"] = manhole->m_h1;
        object["h2_m"] = manhole->m_h2;
        object["height_m"] = manhole->m_height;
    }
    return object;
}

void List(const CCatalogOptions& options, std::ostream& results) {
    const std::vector<CShownGroup> groups = GatherGroups(options.m_kind);
    if (options.m_isJson) {
        ordered_json list = ordered_json::array();
        for (const CShownGroup& shown : groups) {
            list.push_back(DescribeGroup(shown));
            list.back()["item_count"] = shown.m_group->GetSubItems().size();
        }
        PrintJson(results, list);
        return;
    }
    CTable table;
    table.AddColumn("kind");
    table.AddColumn("group");
    table.AddColumn("items", CTable::enmAlign::Right);
    for (const char* head : {"origin", "standard"})
        table.AddColumn(head);
    for (const CShownGroup& shown : groups)
        table.AddRow({std::string(shown.m_kind), shown.m_group->GetName(),
                      fmt::format("{}", shown.m_group->GetSubItems().size()),
                      shown.m_group->IsBuiltIn() ? "built-in" : "project", shown.m_group->GetStandard()});
    table.Print(results);
}

/// The one group of a name or GUID.
Result<CShownGroup> FindGroup(const CCatalogOptions& options) {
    std::vector<CShownGroup> found;
    std::vector<std::string> names;
    for (CShownGroup& shown : GatherGroups(options.m_kind)) {
        if (OLMGis::Utility::GuidEqual()(shown.m_group->GetGUID(), options.m_what))
            return shown;
        names.push_back(shown.m_group->GetName());
        if (shown.m_group->GetName() == options.m_what)
            found.push_back(std::move(shown));
    }
    if (found.size() > 1)
        return BadWords(fmt::format("GROUP: found \"{}\", a name of pipes and of manholes, expected it with --kind",
                                    OnOneLine(options.m_what)));
    if (found.empty())
        return BadWords(fmt::format("GROUP: found \"{}\", expected the name or GUID of a group of the catalogues{}",
                                    OnOneLine(options.m_what), Suggest(options.m_what, names)));
    return std::move(found.front());
}

void PrintPipes(std::ostream& results, const CCatalogItem& group) {
    CTable table;
    table.AddColumn("name");
    table.AddColumn("shape");
    for (const char* head : {"width mm", "height mm", "wall mm", "roughness mm", "min mm"})
        table.AddColumn(head, CTable::enmAlign::Right);
    table.AddColumn("type");
    table.AddColumn("guid");
    for (const auto& item : group.GetSubItems()) {
        const CPipeData& pipe = *item->GetPipeData();
        table.AddRow({item->GetName(), std::string(ShapeName(pipe.m_shape)), CUtility::ToText(pipe.m_innerWidth),
                      CUtility::ToText(pipe.m_innerHeight), CUtility::ToText(pipe.m_wall),
                      CUtility::ToText(pipe.m_roughness),
                      pipe.m_minDiameter > 0.0 ? CUtility::ToText(pipe.m_minDiameter) : std::string(), pipe.m_type,
                      item->GetGUID()});
    }
    table.Print(results);
}

void PrintManholes(std::ostream& results, const CCatalogItem& group) {
    CTable table;
    table.AddColumn("name");
    for (const char* head : {"inner diameter m", "H1 m", "H2 m", "height m"})
        table.AddColumn(head, CTable::enmAlign::Right);
    table.AddColumn("guid");
    for (const auto& item : group.GetSubItems()) {
        const CManholeData& manhole = *item->GetManholeData();
        table.AddRow({item->GetName(), CUtility::ToText(manhole.m_innerDiameter), CUtility::ToText(manhole.m_h1),
                      CUtility::ToText(manhole.m_h2), CUtility::ToText(manhole.m_height), item->GetGUID()});
    }
    table.Print(results);
}

CVerbResult Show(const CCatalogOptions& options, std::ostream& results) {
    const auto found = FindGroup(options);
    if (!found)
        return found.GetError();
    const CCatalogItem& group = *found->m_group;
    if (options.m_isJson) {
        ordered_json object = DescribeGroup(found.Value());
        object["items"] = ordered_json::array();
        for (const auto& item : group.GetSubItems())
            object["items"].push_back(DescribeItem(*item));
        PrintJson(results, object);
    } else if (found->m_kind == "pipe") {
        PrintPipes(results, group);
    } else {
        PrintManholes(results, group);
    }
    return enmExitCode::Done;
}

CVerbResult Import(const CCatalogOptions& options, CProject& project, CTerminal& terminal) {
    auto input = CInputFile::Open(options.m_what);
    if (!input)
        return input.GetError();
    const std::size_t before = GatherGroups({}).size();
    const auto entered = OLMGis::ProjectIo::ImportCatalogCsv(input->GetStream(), input->GetName(),
                                                             options.m_kind.empty()     ? enmCatalogTable::Detect
                                                             : options.m_kind == "pipe" ? enmCatalogTable::Pipe
                                                                                        : enmCatalogTable::Manhole);
    if (!entered)
        return entered.GetError();
    const std::size_t made = GatherGroups({}).size() - before;
    if (const auto saved = project.Save(options.m_output); !saved)
        return saved.GetError();
    terminal.Tell(fmt::format("{}: {} in {} added", project.GetTarget(options.m_output),
                              Count(static_cast<std::size_t>(entered.Value()), "item"), Count(made, "group")));
    return enmExitCode::Done;
}

/// Whether the words fit the action.
OLMGis::Utility::Status CheckWords(const CCatalogOptions& options) {
    const bool isImport = options.m_action == "import";
    if (options.m_action == "list" && !options.m_what.empty())
        return BadWords(fmt::format("found \"{}\", expected no further word for list", OnOneLine(options.m_what)));
    if (options.m_action == "show" && options.m_what.empty())
        return BadWords("found no GROUP, expected the name or GUID of one to show");
    if (isImport && options.m_what.empty())
        return BadWords("found no FILE.csv, expected a table to import");
    if (!isImport && !options.m_output.empty())
        return BadWords("--output: expected only with import");
    if (isImport && options.m_isJson)
        return BadWords("--json: expected only with list and show");
    return OLMGis::Utility::Done{};
}

} // namespace

CVerbResult ShowOrImportCatalog(const CCatalogOptions& options, CTerminal& terminal, std::ostream& results) {
    if (const auto fit = CheckWords(options); !fit)
        return fit.GetError();
    const auto project = CProject::Open(options.m_project, terminal);
    if (!project)
        return project.GetError();
    if (options.m_action == "import")
        return Import(options, *project.Value(), terminal);
    if (options.m_action == "show")
        return Show(options, results);
    List(options, results);
    return enmExitCode::Done;
}

} // namespace Cli
