// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "reports/CalculatorListing.h"

#include "host/network_core/FunctionalAnalysisManager.h"
#include "host/sewage_core/FlowCalculatorManager.h"
#include "reports/JsonDocument.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <nlohmann/json.hpp>

#include <utility>
#include <vector>

namespace Reports {

using nlohmann::ordered_json;
using OLMGis::Sewage::CFlowCalculatorManager;
using OLMGis::Sewage::IFlowCalculator;

namespace {

std::vector<std::string> GetOutputKeys(const IFlowCalculator& calculator) {
    std::vector<std::string> keys;
    for (const auto* definition : calculator.GetOutputDefinitions())
        if (definition != nullptr)
            keys.push_back(definition->m_id);
    return keys;
}

} // namespace

CListing MakeCalculatorListing() {
    CTable table({TextColumn("key", "key"), TextColumn("name", "name"), TextColumn("group", "group"),
                  FlagColumn("whole_network", "whole network"), FlagColumn("preview", "preview"),
                  TextColumn("outputs", "results")});
    const auto calculators = CFlowCalculatorManager::Instance()->GetCalculators();
    ordered_json document = ordered_json::array();
    for (const auto& calculator : calculators) {
        const std::vector<std::string> outputs = GetOutputKeys(*calculator);
        const bool isWhole = calculator->IsWholeNetworkCalculator() != 0;
        const bool hasPreview = calculator->IsPreviewAvailable() != 0;
        table.AddRow({calculator->GetKey(), calculator->GetCalculatorName(), calculator->GetCalculatorGroupName(),
                      isWhole ? 1 : 0, hasPreview ? 1 : 0, fmt::format("{}", fmt::join(outputs, " "))});
        document.push_back({{"key", calculator->GetKey()},
                            {"name", calculator->GetCalculatorName()},
                            {"group", calculator->GetCalculatorGroupName()},
                            {"whole_network", isWhole},
                            {"preview", hasPreview},
                            {"outputs", outputs}});
    }
    CListing listing(std::move(table));
    listing.m_printDocument = [document = std::move(document)](std::ostream& stream) {
        PrintDocument(stream, document);
    };
    return listing;
}

CTable MakeCheckTable() {
    CTable table({TextColumn("key", "key"), TextColumn("name", "name"), TextColumn("tags", "tags")});
    for (const auto& item : OLMGis::Topology::CFunctionalAnalysisManager::Instance()->GetItems()) {
        std::vector<std::string> tags;
        if (const auto form = item->CreateProperties())
            for (const auto& property : form->GetAllProperties())
                tags.push_back(property->GetTag());
        table.AddRow({item->GetItemKey(), item->GetItemName(), fmt::format("{}", fmt::join(tags, " "))});
    }
    return table;
}

} // namespace Reports
