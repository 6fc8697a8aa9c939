// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_core/PropertiesEx.h"

#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/Utility.h"
#include "host/network_core/PropertyEditing.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>

namespace OLMGis::Topology {

using Data::CDataBox;
using nlohmann::json;
using nlohmann::ordered_json;
using Utility::BadInput;
using Utility::CUtility;
using Utility::Done;
using Utility::Status;

namespace {

/// Keeps a list ascending by order; equal orders keep the order of entering.
template <class T>
void InsertByOrd(std::vector<boost::shared_ptr<T>>& list, const boost::shared_ptr<T>& item) {
    const auto place = std::upper_bound(list.begin(), list.end(), item,
                                        [](const auto& a, const auto& b) { return a->GetOrd() < b->GetOrd(); });
    list.insert(place, item);
}

/// Whether a choice property has the choice that a dependency clause names.
bool StandsOnChoice(const CPropertyEx& property, int choice) {
    const int present = property.GetHiddenValue().AsInt();
    if (!property.HasChoices())
        return present == choice;
    const auto& choices = property.GetConstraints()->GetConstraints();
    const bool isHiddenValue = std::any_of(choices.begin(), choices.end(),
                                           [choice](const auto& c) { return c->GetHiddenValue().AsInt() == choice; });
    if (isHiddenValue)
        return present == choice;
    // Choices stored as message numbers are named by their place: nobody counts them by their numbers.
    const bool isPlace = choice >= 0 && choice < static_cast<int>(choices.size());
    return isPlace && choices[static_cast<std::size_t>(choice)]->GetHiddenValue().AsInt() == present;
}

ordered_json ToJson(const CDataBox& box) {
    switch (box.GetKind()) {
    case CDataBox::enmKind::Int:
        return box.AsInt();
    case CDataBox::enmKind::Double:
        if (const double value = box.AsDouble(); std::isfinite(value))
            return value;
        else if (std::isnan(value))
            return "NaN";
        else
            return value > 0 ? "Infinity" : "-Infinity";
    case CDataBox::enmKind::Text:
        return box.AsText();
    case CDataBox::enmKind::Null:
        break;
    }
    return nullptr;
}

} // namespace

std::string CCategory::GetName() const {
    return Utility::Msg(m_nameMessage);
}

void CCategory::AddPropertyEx(const boost::shared_ptr<CPropertyEx>& property) {
    if (property)
        InsertByOrd(m_properties, property);
}

int CCategory::GetMaxPropertyOrd() const {
    return m_properties.empty() ? 0 : m_properties.back()->GetOrd();
}

void CPropertiesEx::AddCategory(const boost::shared_ptr<CCategory>& category) {
    if (category)
        InsertByOrd(m_categories, category);
}

int CPropertiesEx::GetMaxCategoryOrd() const {
    return m_categories.empty() ? -1 : m_categories.back()->GetOrd();
}

std::vector<boost::shared_ptr<CPropertyEx>> CPropertiesEx::GetAllProperties() const {
    std::vector<boost::shared_ptr<CPropertyEx>> properties;
    for (const auto& category : m_categories)
        properties.insert(properties.end(), category->GetProperties().begin(), category->GetProperties().end());
    return properties;
}

boost::shared_ptr<CPropertyEx> CPropertiesEx::GetPropertyExByTag(std::string_view tag) const {
    for (const auto& category : m_categories)
        for (const auto& property : category->GetProperties())
            if (property->GetTag() == tag)
                return property;
    return nullptr;
}

double CPropertiesEx::GetDblProperty(std::string_view tag, double fallback, int /*useHidden*/) const {
    const auto property = GetPropertyExByTag(tag);
    return property ? property->GetEffectiveValue().AsDouble() : fallback;
}

int CPropertiesEx::GetIntProperty(std::string_view tag, int fallback, int /*useHidden*/) const {
    const auto property = GetPropertyExByTag(tag);
    return property ? property->GetEffectiveValue().AsInt() : fallback;
}

std::string CPropertiesEx::GetStrProperty(std::string_view tag, std::string_view fallback, int /*useHidden*/) const {
    const auto property = GetPropertyExByTag(tag);
    return property ? property->GetEffectiveValue().AsText() : std::string(fallback);
}

void CPropertiesEx::ApplyDependencies() {
    std::vector<std::string> clauses;
    std::vector<std::string> parts;
    std::vector<std::string> tags;
    for (const auto& property : GetAllProperties()) {
        clauses.clear();
        CUtility::SplitString(property->GetDependency(), clauses, '$');
        for (const std::string& clause : clauses) {
            parts.clear();
            if (CUtility::SplitString(clause, parts, ':') != 3)
                continue;
            const auto choice = CUtility::ParseInt(parts[0]);
            const auto state = CUtility::ParseInt(parts[1]);
            if (!choice || !state || *state < 0 || *state > 1 || !StandsOnChoice(*property, *choice))
                continue;
            tags.clear();
            CUtility::SplitString(parts[2], tags, '#');
            for (const std::string& tag : tags)
                if (const auto named = GetPropertyExByTag(tag))
                    named->SetInForce(*state == 1);
        }
    }
}

std::string CPropertiesEx::Serialize() const {
    ordered_json object = ordered_json::object();
    for (const auto& property : GetAllProperties())
        object[property->GetTag()] = ToJson(property->GetEffectiveValue());
    return object.dump(-1, ' ', false, ordered_json::error_handler_t::replace);
}

} // namespace OLMGis::Topology
