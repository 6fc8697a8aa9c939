// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "reports/OutletListing.h"

#include "host/network_core/TopologyMultiStorage.h"
#include "host/sewage_core/FlowDirection.h"
#include "reports/JsonDocument.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <nlohmann/json.hpp>

#include <string_view>
#include <utility>

namespace Reports {

using nlohmann::ordered_json;
using OLMGis::Data::CDataBox;
using OLMGis::Topology::CSection;

namespace {

using CSections = std::vector<boost::shared_ptr<CSection>>;

ordered_json Describe(const CSection& section) {
    return {{"name", section.GetName()}, {"guid", section.GetGuid()}};
}

ordered_json Describe(const CSections& sections) {
    ordered_json list = ordered_json::array();
    for (const auto& section : sections)
        list.push_back(Describe(*section));
    return list;
}

ordered_json Describe(const CFork& fork) {
    ordered_json object{{"node", fork.m_node->GetName()}, {"guid", fork.m_node->GetGuid()}};
    object["in"] = Describe(fork.m_in);
    object["out"] = Describe(fork.m_out);
    object["main_outlet"] = fork.m_mainOutlet == nullptr ? ordered_json(nullptr) : Describe(*fork.m_mainOutlet);
    return object;
}

} // namespace

std::vector<CFork> FindForks() {
    const auto& topology = *OLMGis::Topology::CTopologyMultiStorage::Instance()->GetActiveTopology();
    std::vector<CFork> forks;
    for (const auto& node : topology.GetNodes()) {
        if (!OLMGis::Sewage::CFlowDirection::NeedsMainOutlet(*node))
            continue;
        CFork fork{node.get(), {}, {}, topology.GetChosenMainOutlet(*node)};
        node->GetSectionsIn(fork.m_in);
        node->GetSectionsOut(fork.m_out);
        forks.push_back(std::move(fork));
    }
    return forks;
}

std::string JoinNames(const CSections& sections) {
    std::vector<std::string_view> names;
    for (const auto& section : sections)
        names.push_back(section->GetName());
    return fmt::format("{}", fmt::join(names, " "));
}

CListing MakeOutletListing(const std::vector<CFork>& forks) {
    CColumn outlet = TextColumn("main_outlet", "main outlet");
    outlet.m_show = [](const CDataBox& value) { return value.IsNotNull() ? value.AsText() : std::string("-"); };
    CTable table(
        {TextColumn("node", "node"), outlet, TextColumn("out", "sections out"), TextColumn("in", "sections in")});
    table.SetRows(forks.size(), [&forks](std::size_t row, CTable::CRow& values) {
        const CFork& fork = forks[row];
        values[0].SetText(fork.m_node->GetName());
        if (fork.m_mainOutlet != nullptr)
            values[1].SetText(fork.m_mainOutlet->GetName());
        values[2].SetText(JoinNames(fork.m_out));
        values[3].SetText(JoinNames(fork.m_in));
    });
    CListing listing(std::move(table));
    listing.m_printDocument = [&forks](std::ostream& stream) {
        ordered_json document = ordered_json::array();
        for (const CFork& fork : forks)
            document.push_back(Describe(fork));
        PrintDocument(stream, document);
    };
    return listing;
}

} // namespace Reports
