// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "reports/FormListing.h"

#include "host/network_core/FormDefinitions.h"
#include "host/project_io/base/StoredPath.h"
#include "reports/JsonDocument.h"
#include "reports/ShownText.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <nlohmann/json.hpp>

#include <optional>
#include <utility>
#include <vector>

namespace Reports {

using nlohmann::ordered_json;
using OLMGis::Data::CDataBox;
using OLMGis::Data::CValueRange;
using OLMGis::Topology::CCategory;
using OLMGis::Topology::CFieldDefinition;
using OLMGis::Topology::CPropertiesEx;
using OLMGis::Topology::CPropertyEx;
using OLMGis::Topology::enmPropertyEditorType;

namespace {

ordered_json TextOrNull(std::string_view text) {
    return text.empty() ? ordered_json() : ordered_json(text);
}

ordered_json DescribeChoices(const CPropertyEx& property) {
    ordered_json choices = ordered_json::array();
    if (property.HasChoices())
        for (const auto& choice : property.GetConstraints()->GetConstraints())
            choices.push_back({{"value", ToJson(choice->GetValue())}, {"hidden", ToJson(choice->GetHiddenValue())}});
    return choices;
}

/// Possible and usual values of a number; nulls for other fields.
void AddRange(ordered_json& object, const CPropertyEx& property) {
    static const CValueRange none;
    const CFieldDefinition* const field = property.GetDefinition();
    const CValueRange& range = field == nullptr ? none : field->m_range;
    const auto add = [&object](const char* key, const std::optional<double>& bound) {
        object[key] = bound ? ordered_json(*bound) : ordered_json();
    };
    add("min", range.m_min);
    add("max", range.m_max);
    add("usual_min", range.m_usualMin);
    add("usual_max", range.m_usualMax);
}

/// "50 to 500 l/(inh·d)"; empty for a field without limits.
std::string ShowUsual(const CPropertyEx& property) {
    const CFieldDefinition* const field = property.GetDefinition();
    if (field == nullptr || (!field->m_range.m_usualMin && !field->m_range.m_usualMax))
        return std::string(property.GetUnit());
    return UsualValues(field->m_range, field->m_unit);
}

ordered_json DescribeProperty(const CPropertyEx& property) {
    ordered_json object;
    object["tag"] = property.GetTag();
    object["alias"] = TextOrNull(property.GetAlias());
    object["name"] = property.GetName();
    object["description"] = property.GetDescription();
    object["editor"] = static_cast<int>(property.GetEditorType());
    object["value"] = ToJson(property.GetValue());
    object["hidden"] = ToJson(property.GetHiddenValue());
    object["default"] = ToJson(property.GetDefaultValue());
    object["choices"] = DescribeChoices(property);
    object["unit"] = TextOrNull(property.GetUnit());
    AddRange(object, property);
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

/// A row of a table of fields, without those columns that the table leaves out.
CTable::CRow MakeRow(const CPropertyEx& property, bool hasForce, bool hasChoices) {
    CTable::CRow row{property.GetTag(), std::string(property.GetAlias()), property.GetEffectiveValue().AsText(),
                     GetEffectiveDefault(property).AsText(), ShowUsual(property)};
    if (hasForce)
        row.emplace_back(property.IsInForce() ? 1 : 0);
    row.emplace_back(property.GetName());
    if (hasChoices)
        row.emplace_back(ShowChoices(property));
    return row;
}

CTable MakeFieldTable(bool hasForce, bool hasChoices) {
    CTable table({TextColumn("tag", "tag"), TextColumn("alias", "alias"), NumberColumn("value", "value"),
                  NumberColumn("default", "default"), TextColumn("usual", "usual")});
    if (hasForce)
        table.AddColumn(FlagColumn("in_force", "in force"));
    table.AddColumn(TextColumn("name", "name"));
    if (hasChoices)
        table.AddColumn(TextColumn("choices", "choices"));
    return table;
}

CTable MakeCategoryTable(const CCategory& category) {
    bool hasChoices = false;
    bool isAllInForce = true;
    for (const auto& property : category.GetProperties()) {
        hasChoices = hasChoices || property->HasChoices();
        isAllInForce = isAllInForce && property->IsInForce();
    }
    CTable table = MakeFieldTable(!isAllInForce, hasChoices);
    for (const auto& property : category.GetProperties())
        table.AddRow(MakeRow(*property, !isAllInForce, hasChoices));
    return table;
}

} // namespace

CListing MakeFormListing(std::string title, const CPropertiesEx& form) {
    CListing listing;
    // Programs read all fields in one table, people one table for each category.
    CTable fields = MakeFieldTable(true, true);
    for (const auto& property : form.GetAllProperties())
        fields.AddRow(MakeRow(*property, true, true));
    listing.m_table = std::move(fields);
    listing.m_blocks.push_back({OnOneLine(title)});
    for (const auto& category : form.GetCategories())
        listing.m_blocks.push_back({OnOneLine(category->GetName()), MakeCategoryTable(*category), true});
    listing.m_printDocument = [document = DescribeForm(form)](std::ostream& stream) {
        PrintDocument(stream, document);
    };
    return listing;
}

void PrintParameterTemplate(std::ostream& stream, const std::string& key, const CPropertiesEx& form,
                            const std::filesystem::path& folder) {
    ordered_json values = ordered_json::object();
    for (const auto& property : form.GetAllProperties()) {
        ordered_json remark{{"alias", TextOrNull(property->GetAlias())}, {"label", property->GetName()}};
        if (!property->GetUnit().empty())
            remark["unit"] = property->GetUnit();
        if (property->GetEditorType() == enmPropertyEditorType::Edit)
            AddRange(remark, *property);
        if (property->HasChoices())
            remark["choices"] = DescribeChoices(*property);
        values["_" + property->GetTag()] = std::move(remark);
        const bool isFile = property->GetEditorType() == enmPropertyEditorType::FilePath;
        const std::string text = property->GetEffectiveValue().AsText();
        values[property->GetTag()] = isFile && !text.empty()
                                         ? ordered_json(OLMGis::ProjectIo::StoredPath(
                                               std::filesystem::absolute(text).lexically_normal(), folder))
                                         : ToJson(property->GetEffectiveValue());
    }
    PrintDocument(stream, {{key, std::move(values)}});
}

} // namespace Reports
