// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "reports/CalculatorListing.h"
#include "reports/JsonDocument.h"
#include "reports/ShownText.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <nlohmann/json.hpp>

#include <utility>
#include <vector>

namespace Reports {

using nlohmann::ordered_json;
using OLMGis::Data::CDataBox;
using OLMGis::Topology::CCategory;
using OLMGis::Topology::CPropertiesEx;
using OLMGis::Topology::CPropertyEx;

namespace {

ordered_json DescribeProperty(const CPropertyEx& property) {
    ordered_json object;
    object["tag"] = property.GetTag();
    object["name"] = property.GetName();
    object["description"] = property.GetDescription();
    object["editor"] = static_cast<int>(property.GetEditorType());
    object["value"] = ToJson(property.GetValue());
    object["hidden"] = ToJson(property.GetHiddenValue());
    object["default"] = ToJson(property.GetDefaultValue());
    object["choices"] = ordered_json::array();
    if (property.HasChoices())
        for (const auto& choice : property.GetConstraints()->GetConstraints())
            object["choices"].push_back(
                {{"value", ToJson(choice->GetValue())}, {"hidden", ToJson(choice->GetHiddenValue())}});
    object["in_force"] = property.IsInForce();
    return object;
}

ordered_json DescribeForm(const CPropertiesEx& form) {
    ordered_json categories = ordered_json::array();
    for (const auto& category : form.GetCategories()) {
        ordered_json properties = ordered_json::array();
        for (const auto& property : category->GetProperties())
            properties.push_back(DescribeProperty(*property));
        categories.push_back({{"name", category->GetName()}, {"properties", std::move(properties)}});
    }
    return {{"categories", std::move(categories)}};
}

/// Hidden value and text of each choice: "0: One; 1: Other".
std::string ShowChoices(const CPropertyEx& property) {
    std::vector<std::string> choices;
    if (property.HasChoices())
        for (const auto& choice : property.GetConstraints()->GetConstraints())
            choices.push_back(fmt::format("{}: {}", choice->GetHiddenValue().AsText(), choice->GetValue().AsText()));
    return fmt::format("{}", fmt::join(choices, "; "));
}

/// The default of the value that GetEffectiveValue gives, shown or hidden, so that the two compare.
const CDataBox& GetEffectiveDefault(const CPropertyEx& property) {
    const bool isHidden = &property.GetEffectiveValue() == &property.GetHiddenValue();
    return isHidden ? property.GetDefaultHiddenValue() : property.GetDefaultValue();
}

CTable MakeCategoryTable(const CCategory& category) {
    bool hasChoices = false;
    bool isAllInForce = true;
    for (const auto& property : category.GetProperties()) {
        hasChoices = hasChoices || property->HasChoices();
        isAllInForce = isAllInForce && property->IsInForce();
    }
    CTable table({TextColumn("tag", "tag"), NumberColumn("value", "value"), NumberColumn("default", "default")});
    if (!isAllInForce)
        table.AddColumn(FlagColumn("in_force", "in force"));
    table.AddColumn(TextColumn("name", "name"));
    if (hasChoices)
        table.AddColumn(TextColumn("choices", "choices"));
    for (const auto& property : category.GetProperties()) {
        CTable::CRow row{property->GetTag(), property->GetEffectiveValue().AsText(),
                         GetEffectiveDefault(*property).AsText()};
        if (!isAllInForce)
            row.emplace_back(property->IsInForce() ? 1 : 0);
        row.emplace_back(property->GetName());
        if (hasChoices)
            row.emplace_back(ShowChoices(*property));
        table.AddRow(std::move(row));
    }
    return table;
}

} // namespace

CListing MakeFormListing(std::string title, const CPropertiesEx& form) {
    CListing listing;
    listing.m_blocks.push_back({OnOneLine(title)});
    for (const auto& category : form.GetCategories())
        listing.m_blocks.push_back({OnOneLine(category->GetName()), MakeCategoryTable(*category), true});
    listing.m_printDocument = [document = DescribeForm(form)](std::ostream& stream) {
        PrintDocument(stream, document);
    };
    return listing;
}

} // namespace Reports
