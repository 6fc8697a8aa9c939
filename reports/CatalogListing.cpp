// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "reports/CatalogListing.h"

#include "host/formulas/SectionGeometry.h"
#include "reports/JsonDocument.h"
#include "reports/ShownText.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <utility>

namespace Reports {

using nlohmann::ordered_json;
using OLMGis::Data::CDataBox;
using OLMGis::Formulas::KindOfShape;
using OLMGis::Topology::CCatalogItem;
using OLMGis::Topology::CCatalogManager;
using OLMGis::Topology::CManholeData;
using OLMGis::Topology::CPipeData;
using OLMGis::Topology::enmPipeShape;
using OLMGis::Utility::BadArguments;
using OLMGis::Utility::Result;

namespace {

ordered_json DescribeGroup(const CCatalogGroup& each) {
    const CCatalogItem& group = *each.m_group;
    return {{"kind", each.m_kind},
            {"name", group.GetName()},
            {"guid", group.GetGUID()},
            {"built_in", group.IsBuiltIn()},
            {"standard", group.GetStandard().empty() ? ordered_json(nullptr) : ordered_json(group.GetStandard())}};
}

/// Members as the columns of a catalogue table.
ordered_json DescribeItem(const CCatalogItem& item) {
    ordered_json object{{"name", item.GetName()}, {"guid", item.GetGUID()}};
    if (const CPipeData* pipe = item.GetPipeData(); pipe != nullptr) {
        object["shape"] = KindOfShape(pipe->m_shape).m_key;
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

CTable MakePipeTable(const CCatalogItem& group) {
    CTable table(
        {TextColumn("name", "name"), TextColumn("shape", "shape"), NumberColumn("inner_width_mm", "inner width", "mm"),
         NumberColumn("inner_height_mm", "inner height", "mm"), NumberColumn("wall_mm", "wall", "mm"),
         NumberColumn("roughness_mm", "roughness", "mm"), NumberColumn("min_diameter_mm", "min diameter", "mm"),
         TextColumn("type", "type"), TextColumn("guid", "guid")});
    for (const auto& item : group.GetSubItems()) {
        const CPipeData& pipe = *item->GetPipeData();
        table.AddRow({item->GetName(), KindOfShape(pipe.m_shape).m_key, pipe.m_innerWidth, pipe.m_innerHeight,
                      pipe.m_wall, pipe.m_roughness,
                      pipe.m_minDiameter > 0.0 ? CDataBox(pipe.m_minDiameter) : CDataBox(), pipe.m_type,
                      item->GetGUID()});
    }
    return table;
}

CTable MakeManholeTable(const CCatalogItem& group) {
    CTable table({TextColumn("name", "name"), NumberColumn("inner_diameter_m", "inner diameter", "m"),
                  NumberColumn("h1_m", "H1", "m"), NumberColumn("h2_m", "H2", "m"),
                  NumberColumn("height_m", "height", "m"), TextColumn("guid", "guid")});
    for (const auto& item : group.GetSubItems()) {
        const CManholeData& manhole = *item->GetManholeData();
        table.AddRow(
            {item->GetName(), manhole.m_innerDiameter, manhole.m_h1, manhole.m_h2, manhole.m_height, item->GetGUID()});
    }
    return table;
}

} // namespace

std::vector<CCatalogGroup> GetCatalogGroups(std::string_view kind) {
    std::vector<CCatalogGroup> groups;
    for (const auto& [each, id] : {std::pair<std::string_view, std::string_view>{"pipe", CCatalogManager::PipeCatalog},
                                   {"manhole", CCatalogManager::ManholeCatalog}})
        if (kind.empty() || kind == each)
            for (const auto& group : CCatalogManager::Instance()->GetCatalog(id, 1)->GetGroups())
                groups.push_back({each, group});
    return groups;
}

Result<CCatalogGroup> FindCatalogGroup(std::string_view kind, const std::string& nameOrGuid) {
    std::vector<CCatalogGroup> found;
    std::vector<std::string> names;
    for (CCatalogGroup& each : GetCatalogGroups(kind)) {
        if (OLMGis::Utility::GuidEqual()(each.m_group->GetGUID(), nameOrGuid))
            return each;
        names.push_back(each.m_group->GetName());
        if (each.m_group->GetName() == nameOrGuid)
            found.push_back(std::move(each));
    }
    if (found.size() > 1)
        return BadArguments(
            fmt::format("found \"{}\", which is the name of a group of pipes and of a group of manholes; "
                        "expected the kind too",
                        OnOneLine(nameOrGuid)));
    if (found.empty())
        return BadArguments(fmt::format("found \"{}\", expected the name or GUID of a group of the catalogues{}",
                                        OnOneLine(nameOrGuid), Suggest(nameOrGuid, names)));
    return std::move(found.front());
}

CListing MakeGroupListing(const std::vector<CCatalogGroup>& groups) {
    CTable table({TextColumn("kind", "kind"), TextColumn("name", "group"), TextColumn("guid", "", enmReader::Programs),
                  NumberColumn("item_count", "items"), FlagColumn("built_in", "built-in"),
                  TextColumn("standard", "standard")});
    ordered_json document = ordered_json::array();
    for (const CCatalogGroup& each : groups) {
        const CCatalogItem& group = *each.m_group;
        const std::size_t count = group.GetSubItems().size();
        table.AddRow({each.m_kind, group.GetName(), group.GetGUID(), static_cast<int>(count), group.IsBuiltIn() ? 1 : 0,
                      group.GetStandard()});
        document.push_back(DescribeGroup(each));
        document.back()["item_count"] = count;
    }
    CListing listing(std::move(table));
    listing.m_printDocument = [document = std::move(document)](std::ostream& stream) {
        PrintDocument(stream, document);
    };
    return listing;
}

CListing MakeItemListing(const CCatalogGroup& group) {
    CListing listing(group.m_kind == "pipe" ? MakePipeTable(*group.m_group) : MakeManholeTable(*group.m_group));
    listing.m_printDocument = [group](std::ostream& stream) {
        ordered_json document = DescribeGroup(group);
        document["items"] = ordered_json::array();
        for (const auto& item : group.m_group->GetSubItems())
            document["items"].push_back(DescribeItem(*item));
        PrintDocument(stream, document);
    };
    return listing;
}

} // namespace Reports
