// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_core/PropertyEditing.h"

#include "host/gis_core/Utility.h"
#include "host/network_core/CatalogManager.h"
#include "host/network_core/FormDefinitions.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <optional>
#include <string>
#include <vector>

namespace OLMGis::Topology {

using Data::CDataBox;
using Data::enmJudgement;
using Data::Judge;
using Utility::BadArguments;
using Utility::CUtility;
using Utility::Done;
using Utility::Error;
using Utility::Status;

namespace {

constexpr std::size_t MostNamed = 20; ///< choices of a message; a curve file may offer very many

bool SameValue(const CDataBox& a, const CDataBox& b) {
    const bool areNumbers = a.GetKind() != CDataBox::enmKind::Text && b.GetKind() != CDataBox::enmKind::Text;
    if (!a.IsNotNull() || !b.IsNotNull())
        return a.IsNotNull() == b.IsNotNull();
    return areNumbers ? a.AsDouble() == b.AsDouble() : a.AsText() == b.AsText();
}

/// A whole number keeps its kind where the field had one; every other number is a double.
std::optional<CDataBox> ParseNumber(std::string_view text, CDataBox::enmKind former) {
    if (former == CDataBox::enmKind::Int)
        if (const auto whole = CUtility::ParseInt(text))
            return CDataBox(*whole);
    if (const auto number = CUtility::ParseDouble(text))
        return CDataBox(*number);
    return std::nullopt;
}

Error NotTaken(const CPropertyEx& property, std::string_view text, std::string_view expected) {
    return BadArguments(fmt::format("{}: found \"{}\", expected {}", NameField(property), text, expected));
}

/// The choices whose hidden value a text is, as a number where it is one: of equal ones the first.
std::vector<const CConstraint*> FindByHiddenValue(const CPropertyEx& property, std::string_view text) {
    const auto number = CUtility::ParseDouble(text);
    for (const auto& choice : property.GetConstraints()->GetConstraints()) {
        const CDataBox& hidden = choice->GetHiddenValue();
        if (hidden.GetKind() == CDataBox::enmKind::Text ? hidden.TextView() == text
                                                        : number && *number == hidden.AsDouble())
            return {choice.get()};
    }
    return {};
}

/// The choices that show a text: several, where their numbers are shown rounded.
std::vector<const CConstraint*> FindByText(const CPropertyEx& property, std::string_view text) {
    std::vector<const CConstraint*> fitting;
    for (const auto& choice : property.GetConstraints()->GetConstraints())
        if (choice->GetValue().AsText() == text)
            fitting.push_back(choice.get());
    return fitting;
}

std::string NameChoices(const std::vector<const CConstraint*>& choices) {
    std::vector<std::string> names;
    for (const CConstraint* choice : choices)
        if (names.size() < MostNamed)
            names.push_back(fmt::format("{} ({})", choice->GetHiddenValue().AsText(), choice->GetValue().AsText()));
    return fmt::format("{}{}", fmt::join(names, ", "), choices.size() > MostNamed ? ", ..." : "");
}

Status SetChoice(CPropertyEx& property, std::string_view text) {
    if (!property.HasChoices()) {
        const auto number = ParseNumber(text, property.GetHiddenValue().GetKind());
        if (!number)
            return NotTaken(property, text, "a number");
        property.SetHiddenValue(*number);
        property.SetValue(CDataBox(text));
        return Done{};
    }
    std::vector<const CConstraint*> fitting = FindByHiddenValue(property, text);
    if (fitting.empty())
        fitting = FindByText(property, text);
    if (fitting.size() == 1) {
        property.SetHiddenValue(fitting.front()->GetHiddenValue());
        property.SetValue(fitting.front()->GetValue());
        return Done{};
    }
    if (!fitting.empty())
        return NotTaken(property, text,
                        fmt::format("the hidden value of one of those that it fits: {}", NameChoices(fitting)));
    std::vector<const CConstraint*> offered;
    for (const auto& choice : property.GetConstraints()->GetConstraints())
        offered.push_back(choice.get());
    return NotTaken(property, text, fmt::format("one of {}", NameChoices(offered)));
}

boost::shared_ptr<CCatalogItem> FindEntry(const CPropertyEx& property, const CCatalog& catalog, std::string_view text) {
    if (const auto item = catalog.GetItembyGuid(text))
        return property.GetCIPicker_GroupsOnly() != 0 && !item->IsGroup() ? nullptr : item;
    if (auto group = catalog.GetGroupByName(text))
        return group;
    const auto items = catalog.GetItemsByName(text);
    return property.GetCIPicker_GroupsOnly() == 0 && items.size() == 1 ? items.front() : nullptr;
}

Status SetPicked(CPropertyEx& property, std::string_view text) {
    const CCatalog* catalog =
        CCatalogManager::Instance()->GetCatalog(property.GetCIPicker_CatalogId(), property.GetCIPicker_UseDisk());
    std::vector<std::string> entries;
    // A name may contain the separator itself, so the whole text is tried first.
    if (catalog != nullptr && FindEntry(property, *catalog, text) != nullptr)
        entries.emplace_back(text);
    else
        CUtility::SplitString(text, entries, ';');
    if (entries.size() > 1 && property.GetCIPicker_Single() != 0)
        return NotTaken(property, text, "a single entry of the catalogue");
    std::vector<std::string> guids;
    std::vector<std::string> names;
    for (const std::string& word : entries) {
        const auto entry = catalog == nullptr ? nullptr : FindEntry(property, *catalog, CUtility::Trim(word));
        if (!entry)
            return NotTaken(property, word,
                            fmt::format("the name or GUID of {} of the catalogue {}",
                                        property.GetCIPicker_GroupsOnly() != 0 ? "a group" : "an entry",
                                        property.GetCIPicker_CatalogId()));
        guids.push_back(entry->GetGUID());
        names.push_back(entry->GetName());
    }
    property.SetHiddenValue(fmt::format("{}", fmt::join(guids, ";")));
    property.SetValue(fmt::format("{}", fmt::join(names, ";")));
    return Done{};
}

} // namespace

Status SetPropertyText(CPropertyEx& property, std::string_view text) {
    if (property.IsReadOnly() != 0)
        return BadArguments(fmt::format("{}: the field is read-only", NameField(property)));
    switch (property.GetEditorType()) {
    case enmPropertyEditorType::Edit: {
        const auto number = ParseNumber(text, property.GetValue().GetKind());
        if (!number)
            return NotTaken(property, text, "a number");
        if (const CFieldDefinition* const field = property.GetDefinition();
            field != nullptr && Judge(field->m_range, number->AsDouble()) == enmJudgement::Impossible)
            return BadArguments(fmt::format("{}: {}", NameField(property),
                                            ExplainJudgement(field->m_range, number->AsDouble(), field->m_unit)));
        property.SetValue(*number);
        property.SetHiddenValue(*number);
        return Done{};
    }
    case enmPropertyEditorType::CheckBox: {
        const auto state = CUtility::ParseInt(text);
        if (!state || *state < 0 || *state > 1)
            return NotTaken(property, text, "0 or 1");
        property.SetValue(*state);
        property.SetHiddenValue(*state);
        return Done{};
    }
    case enmPropertyEditorType::FilePath:
        property.SetValue(text);
        property.SetHiddenValue(text);
        return Done{};
    case enmPropertyEditorType::ComboBox:
        return SetChoice(property, text);
    case enmPropertyEditorType::CustomDialog:
        property.SetHiddenValue(text);
        return Done{};
    case enmPropertyEditorType::CatalogPicker:
        return SetPicked(property, text);
    }
    return NotTaken(property, text, "a field that can be edited");
}

std::string NameField(const CPropertyEx& property) {
    const std::string_view alias = property.GetAlias();
    return alias.empty() ? property.GetTag() : fmt::format("{} ({})", property.GetTag(), alias);
}

std::optional<std::string> WarnOfUnusual(const CPropertyEx& property) {
    const CFieldDefinition* const field = property.GetDefinition();
    const CDataBox& value = property.GetValue();
    if (field == nullptr || property.GetEditorType() != enmPropertyEditorType::Edit || !value.IsNotNull() ||
        SameValue(value, property.GetDefaultValue()) ||
        Judge(field->m_range, value.AsDouble()) != enmJudgement::Unusual)
        return std::nullopt;
    return fmt::format("{}, {}: {}", NameField(property), property.GetName(),
                       ExplainJudgement(field->m_range, value.AsDouble(), field->m_unit));
}

boost::shared_ptr<CConstraint> FindChoice(const CPropertyEx& property, const CDataBox& hiddenValue) {
    if (property.HasChoices())
        for (const auto& choice : property.GetConstraints()->GetConstraints())
            if (SameValue(choice->GetHiddenValue(), hiddenValue))
                return choice;
    return nullptr;
}

} // namespace OLMGis::Topology
