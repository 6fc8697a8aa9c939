// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "reports/BalanceListing.h"

#include "reports/JsonDocument.h"
#include "reports/RainListing.h"
#include "reports/ShownText.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

namespace Reports {

using nlohmann::ordered_json;
using OLMGis::Data::CDataBox;
using OLMGis::Topology::CNode;

namespace {

std::vector<std::string_view> GetNames(const std::vector<const CNode*>& nodes) {
    std::vector<std::string_view> names;
    names.reserve(nodes.size());
    for (const CNode* node : nodes)
        names.push_back(node->GetName());
    return names;
}

CDataBox ToBox(const std::optional<double>& value) {
    return value ? CDataBox(*value) : CDataBox();
}

CDataBox NameOf(const CNode* node) {
    return node == nullptr ? CDataBox() : CDataBox(std::string(node->GetName()));
}

ordered_json ToJson(const std::optional<double>& value) {
    return value ? Reports::ToJson(*value) : ordered_json(nullptr);
}

ordered_json Describe(const CBalanceRow& row) {
    ordered_json object;
    object["node"] = row.m_node == nullptr ? ordered_json(nullptr) : ordered_json(row.m_node->GetName());
    object["section"] = row.m_section->GetName();
    object["sections_above"] = row.m_sectionsAbove;
    object["area_above"] = Reports::ToJson(row.m_areaAbove);
    object["area_arriving"] = Reports::ToJson(row.m_areaArriving);
    object["waste_above"] = ToJson(row.m_inhabitantsAbove);
    object["waste_arriving"] = ToJson(row.m_inhabitantsArriving);
    object["flow_above"] = ToJson(row.m_flowAbove);
    object["transit_arriving"] = ToJson(row.m_transitArriving);
    object["total_arriving"] = ToJson(row.m_totalArriving);
    object["lost_at"] = GetNames(row.m_lostAt);
    return object;
}

struct CWording {
    const char* m_what;
    const char* m_unit;
    int m_decimals;
};

CWording WordingOf(enmBalanced quantity) {
    switch (quantity) {
    case enmBalanced::Area:
        return {"ha of contributing area", "ha", 2};
    case enmBalanced::Inhabitants:
        return {"inhabitants", "inhabitants", 1};
    case enmBalanced::Flow:
        return {"m³/s of flow", "m³/s", 4};
    }
    return {"", "", 0};
}

} // namespace

CListing MakeBalanceListing(const std::vector<CBalanceRow>& rows) {
    CTable table({TextColumn("node", "end node"), TextColumn("section", "section"),
                  NumberColumn("sections_above", "sections above"), NumberColumn("area_above", "area above", "ha", 4),
                  NumberColumn("area_arriving", "area arriving", "ha", 4),
                  NumberColumn("waste_above", "inhabitants above", "inh", 0),
                  NumberColumn("waste_arriving", "inhabitants arriving", "inh", 0),
                  NumberColumn("flow_above", "flow above", "m³/s", 5),
                  NumberColumn("transit_arriving", "transit arriving", "m³/s", 5),
                  NumberColumn("total_arriving", "total arriving", "m³/s", 5),
                  TextColumn("lost_at", "leaves the way at")});
    for (const CBalanceRow& row : rows)
        table.AddRow({NameOf(row.m_node), std::string(row.m_section->GetName()), static_cast<int>(row.m_sectionsAbove),
                      row.m_areaAbove, row.m_areaArriving, ToBox(row.m_inhabitantsAbove),
                      ToBox(row.m_inhabitantsArriving), ToBox(row.m_flowAbove), ToBox(row.m_transitArriving),
                      ToBox(row.m_totalArriving), fmt::format("{}", fmt::join(GetNames(row.m_lostAt), " "))});
    CListing listing(std::move(table));
    listing.m_printDocument = [&rows](std::ostream& stream) {
        ordered_json list = ordered_json::array();
        for (const CBalanceRow& row : rows)
            list.push_back(Describe(row));
        PrintDocument(stream, list);
    };
    return listing;
}

CRemark DescribeLoss(const CLoss& loss, const std::vector<COutletChoice>& choices, const std::string& projectPath) {
    constexpr std::size_t MostNodes = 10;
    const CWording wording = WordingOf(loss.m_quantity);
    std::vector<std::string> places;
    for (std::size_t i = 0; i < std::min(loss.m_at.size(), MostNodes); ++i)
        places.push_back(fmt::format("{} ({:.{}f} {})", loss.m_at[i].first->GetName(), loss.m_at[i].second,
                                     wording.m_decimals, wording.m_unit));
    std::string text = fmt::format("{:.{}f} of {:.{}f} {} never arrive at an end of the network; lost at {}: {}{}.",
                                   loss.m_lost, wording.m_decimals, loss.m_entered, wording.m_decimals, wording.m_what,
                                   Count(loss.m_at.size(), "node"), fmt::join(places, ", "),
                                   loss.m_at.size() > MostNodes ? ", ..." : "");
    if (choices.empty()) {
        text += " No other main outlets carry more: look for ways out of a node that meet again, and for rings.";
    } else {
        std::vector<std::string> outlets;
        for (const COutletChoice& choice : choices)
            outlets.push_back(fmt::format("{}={}", choice.first->GetName(), choice.second->GetName()));
        text += fmt::format(" More arrives with other main outlets: drenova directions {} --set {}", projectPath,
                            fmt::join(outlets, " "));
    }
    return {CRemark::enmKind::Warning, OnOneLine(text)};
}

CRemarks MakeLossRemarks(const std::string& calculator, const std::string& projectPath) {
    static const std::vector<std::pair<std::string_view, std::vector<enmBalanced>>> quantities = {
        {RainCalculator, {enmBalanced::Area}},
        {"01_WASTE_AREAS", {enmBalanced::Inhabitants}},
        {"01_WASTE_PERCENT", {enmBalanced::Inhabitants}},
        {"03_FC_TRANSIT", {enmBalanced::Flow}},
        {"04_FC_TOTAL", {enmBalanced::Area, enmBalanced::Flow}},
    };
    CRemarks remarks;
    for (const auto& [key, balanced] : quantities)
        if (key == calculator)
            for (const enmBalanced quantity : balanced)
                if (const auto loss = FindLoss(quantity))
                    remarks.push_back(DescribeLoss(*loss, FindBetterOutlets(quantity), projectPath));
    return remarks;
}

} // namespace Reports
