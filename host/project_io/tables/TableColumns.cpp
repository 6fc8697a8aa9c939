// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/tables/TableColumns.h"

#include "host/gis_core/DataConfiguration.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/NearestText.h"
#include "host/gis_core/Utility.h"
#include "host/network_core/Catchment.h"
#include "host/project_io/base/AttributeText.h"
#include "host/project_io/tables/TableText.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <optional>

namespace OLMGis::ProjectIo {

using Data::CDataDefinition;
using Data::enmEntityKind;
using Utility::BadInput;
using Utility::CModuleConfiguration;
using Utility::CUtility;
using Utility::Result;

namespace {

constexpr std::array Languages = {"en", "ro", "bg", "hr", "tr"};

constexpr int NameLabel = 70510;
constexpr int GuidLabel = 70511;
constexpr std::array NodeColumns = {COwnColumn{"name", NameLabel, false}, COwnColumn{"guid", GuidLabel, false},
                                    COwnColumn{"x", 70512, true}, COwnColumn{"y", 70513, true}};
constexpr std::array SectionColumns = {COwnColumn{"name", NameLabel, false}, COwnColumn{"guid", GuidLabel, false},
                                       COwnColumn{"from", 70514, false}, COwnColumn{"to", 70515, false},
                                       COwnColumn{"line", 70516, true}};
constexpr std::array CatchmentColumns = {COwnColumn{"section", 70517, false}, COwnColumn{"name", NameLabel, false},
                                         COwnColumn{"guid", GuidLabel, false}};

struct CShortName {
    std::string_view m_name;
    std::string_view m_key;
    int m_label; ///< number of a label beside that of the attribute
};
constexpr std::array ShortNames = {CShortName{"terrain", "TERRAIN_1", 70518}, CShortName{"pipe", "PIPE_REF", 70519}};

struct CKindLabel {
    int m_kind;
    int m_label;
};
constexpr std::array KindLabels = {CKindLabel{Topology::CatchmentRain, 70520},
                                   CKindLabel{Topology::CatchmentHousehold, 70521},
                                   CKindLabel{Topology::CatchmentIndustrial, 70522}};

/// Calls visit with the text of a message in each language.
template <class Visit>
void ForEachLanguage(std::span<CModuleConfiguration> catalogues, int message, Visit visit) {
    for (CModuleConfiguration& catalogue : catalogues)
        if (catalogue.HasMsg(message))
            visit(FoldText(catalogue.GetMsg(message)));
}

std::vector<CModuleConfiguration> LoadCatalogues() {
    std::vector<CModuleConfiguration> catalogues(Languages.size());
    for (std::size_t i = 0; i < Languages.size(); ++i)
        (void)catalogues[i].SetLanguage(Languages[i]); // an installation may lack a language
    return catalogues;
}

struct CHeadAndUnit {
    std::string_view m_head;
    std::string_view m_unit;
};

/// "width [mm]" and "width (mm)"; nothing where no brackets close the text.
std::optional<CHeadAndUnit> SplitUnit(std::string_view head) {
    for (const auto& [open, close] : {std::pair{'[', ']'}, std::pair{'(', ')'}}) {
        if (!head.ends_with(close))
            continue;
        int depth = 0;
        for (std::size_t i = head.size(); i-- > 0;) {
            depth += head[i] == close ? 1 : head[i] == open ? -1 : 0;
            if (depth == 0)
                return i == 0 ? std::nullopt
                              : std::optional<CHeadAndUnit>(
                                    {CUtility::Trim(head.substr(0, i)), head.substr(i + 1, head.size() - i - 2)});
        }
    }
    return std::nullopt;
}

class CColumnFinder {
public:
    CColumnFinder(enmEntityKind kind, enmTableUse use);

    CTableColumn Find(const std::string& head, const CColumnMap* map, std::string& fault);

private:
    bool FindKey(std::string_view text, CTableColumn& column);
    bool FindWithUnit(std::string_view text, CTableColumn& column, std::string& fault);
    void Use(std::string_view key, CTableColumn& column) const;
    void AddLabels();

    enmEntityKind m_kind;
    std::vector<std::string> m_keys;
    std::map<std::string, std::string, std::less<>> m_folded; ///< key by folded key or label; empty: several keys
    bool m_hasLabels = false;
};

CColumnFinder::CColumnFinder(enmEntityKind kind, enmTableUse use) : m_kind(kind) {
    for (const COwnColumn& own : GetOwnColumns(kind))
        if (use == enmTableUse::Network || !own.m_isNetwork)
            m_keys.emplace_back(own.m_key);
    for (const CShortName& each : ShortNames)
        if (FindByShortName(each.m_name, kind) != nullptr)
            m_keys.emplace_back(each.m_name);
    for (const auto& definition : Data::CDataConfiguration::Instance()->GetDataDefinitions())
        if (definition->m_entityKind == kind)
            m_keys.push_back(definition->m_id);
    for (const std::string& key : m_keys)
        m_folded.emplace(FoldText(key), key);
}

/// Made when a head is no key: the texts of all languages are read then. A label that ends in an explanation in
/// brackets goes without it, too, where no other label is the same.
void CColumnFinder::AddLabels() {
    m_hasLabels = true;
    auto catalogues = LoadCatalogues();
    std::map<std::string, std::string, std::less<>> shortened;
    const auto enter = [](auto& labels, std::string_view label, const std::string& key) {
        const auto [place, isNew] = labels.emplace(label, key);
        if (!isNew && place->second != key)
            place->second.clear();
    };
    const auto add = [&](int message, const std::string& key) {
        ForEachLanguage(catalogues, message, [&](const std::string& label) {
            enter(m_folded, label, key);
            if (const auto split = SplitUnit(label))
                enter(shortened, split->m_head, key);
        });
    };
    for (const COwnColumn& own : GetOwnColumns(m_kind))
        if (std::find(m_keys.begin(), m_keys.end(), own.m_key) != m_keys.end())
            add(own.m_labelMessage, std::string(own.m_key));
    for (const CShortName& each : ShortNames)
        if (FindByShortName(each.m_name, m_kind) != nullptr)
            add(each.m_label, std::string(each.m_name));
    for (const auto& definition : Data::CDataConfiguration::Instance()->GetDataDefinitions())
        if (definition->m_entityKind == m_kind)
            add(definition->m_labelMessage, definition->m_id);
    m_folded.merge(shortened);
}

void CColumnFinder::Use(std::string_view key, CTableColumn& column) const {
    const CDataDefinition* definition = FindByShortName(key, m_kind);
    if (definition == nullptr)
        definition = Data::FindDefinition(key);
    column.m_definition = definition != nullptr && definition->m_entityKind == m_kind ? definition : nullptr;
    column.m_key = column.m_definition != nullptr ? column.m_definition->m_id : std::string(key);
}

bool CColumnFinder::FindKey(std::string_view text, CTableColumn& column) {
    if (std::find(m_keys.begin(), m_keys.end(), text) != m_keys.end()) {
        Use(text, column);
        return true;
    }
    const std::string folded = FoldText(text);
    auto found = m_folded.find(folded);
    if (found == m_folded.end() && !m_hasLabels) {
        AddLabels();
        found = m_folded.find(folded);
    }
    if (found == m_folded.end() || found->second.empty())
        return false;
    Use(found->second, column);
    return true;
}

bool CColumnFinder::FindWithUnit(std::string_view text, CTableColumn& column, std::string& fault) {
    if (FindKey(text, column)) // first, because some labels end in brackets
        return true;
    const auto split = SplitUnit(text);
    if (!split || !FindKey(split->m_head, column))
        return false;
    column.m_unit = split->m_unit;
    const bool isPlace = column.m_key == "x" || column.m_key == "y";
    const std::string unit = column.m_definition != nullptr ? column.m_definition->m_unit : isPlace ? "m" : "";
    const auto conversion = unit.empty() ? std::nullopt : FindUnitConversion(column.m_unit, unit);
    if (conversion && (!isPlace || conversion->IsOne()))
        column.m_conversion = *conversion;
    else
        fault = fmt::format("found the unit {}, expected {}", Quote(column.m_unit),
                            unit.empty() ? "a column without one"
                            : isPlace    ? "m, or no unit for coordinates in that of the coordinate system"
                                         : "one of " + ListUnits(unit));
    return true;
}

CTableColumn CColumnFinder::Find(const std::string& head, const CColumnMap* map, std::string& fault) {
    CTableColumn column;
    column.m_head = head;
    const std::string* mapped = map == nullptr ? nullptr : map->Find(head);
    if (mapped != nullptr && mapped->empty())
        return column;
    const std::string_view text = mapped == nullptr ? std::string_view(head) : *mapped;
    if (FindWithUnit(text, column, fault))
        return column;
    constexpr std::array<std::string_view, Data::EntityKindCount> plurals = {"nodes", "sections", "catchments"};
    const auto split = SplitUnit(text);
    const std::string* const nearest = Utility::FindNearest(split ? split->m_head : text, m_keys);
    fault = fmt::format("found {}{}, expected the key or label of a column of {}{}", Quote(text),
                        mapped == nullptr ? std::string() : " for it in " + map->GetName(),
                        plurals[static_cast<std::size_t>(m_kind)],
                        nearest == nullptr ? std::string() : fmt::format(", did you mean {}?", *nearest));
    return column;
}

} // namespace

std::span<const COwnColumn> GetOwnColumns(enmEntityKind kind) {
    switch (kind) {
    case enmEntityKind::Node:
        return NodeColumns;
    case enmEntityKind::Section:
        return SectionColumns;
    case enmEntityKind::Catchment:
        break;
    }
    return CatchmentColumns;
}

const CDataDefinition* FindByShortName(std::string_view name, enmEntityKind kind) {
    for (const CShortName& each : ShortNames)
        if (each.m_name == name)
            if (const CDataDefinition* found = Data::FindDefinition(each.m_key); found->m_entityKind == kind)
                return found;
    return nullptr;
}

Result<CColumnMap> CColumnMap::Read(std::istream& stream, const std::string& name) {
    CColumnMap map;
    map.m_name = name;
    try {
        const auto json = nlohmann::json::parse(stream);
        if (!json.is_object())
            return BadInput(name + ": found no object, expected {\"head of a column\": \"key\", ...}");
        for (const auto& [head, key] : json.items()) {
            if (!key.is_string() && !key.is_null())
                return BadInput(fmt::format("{}: {}: found {}, expected a key, or null for a column to leave out", name,
                                            Quote(head), Quote(key.dump())));
            map.m_keys[std::string(CUtility::Trim(head))] = key.is_null() ? std::string() : key.get<std::string>();
        }
    } catch (const nlohmann::json::exception& error) {
        return BadInput(fmt::format("{}: not a JSON text: {}", name, error.what()));
    }
    return map;
}

const std::string* CColumnMap::Find(std::string_view head) const {
    const auto found = m_keys.find(head);
    return found == m_keys.end() ? nullptr : &found->second;
}

std::vector<CTableColumn> FindColumns(std::span<const std::string> heads, enmEntityKind kind, enmTableUse use,
                                      const CColumnMap* map, std::vector<std::string>& faults) {
    CColumnFinder finder(kind, use);
    std::vector<CTableColumn> columns;
    for (const std::string& head : heads) {
        std::string fault;
        CTableColumn column = finder.Find(head, map, fault);
        const auto same = [&](const CTableColumn& each) { return each.m_key == column.m_key; };
        if (const auto other = std::find_if(columns.begin(), columns.end(), same);
            fault.empty() && !column.m_key.empty() && other != columns.end())
            fault =
                fmt::format("found {} in this column and in {}, expected it once", column.m_key, Quote(other->m_head));
        if (!fault.empty()) {
            faults.push_back(fmt::format("column {}: {}", Quote(head), fault));
            column.m_key.clear();
        }
        columns.push_back(std::move(column));
    }
    return columns;
}

CKindLabels GetKindLabels() {
    auto catalogues = LoadCatalogues();
    CKindLabels labels;
    for (const CKindLabel& each : KindLabels)
        ForEachLanguage(catalogues, each.m_label,
                        [&](const std::string& label) { labels.emplace(label, each.m_kind); });
    return labels;
}

int KindsOfLabels(std::string_view text, const CKindLabels& labels) {
    const auto separates = [](char each) { return each == '+' || each == '|' || each == ','; };
    std::string words = FoldText(text);
    std::replace_if(words.begin(), words.end(), separates, ' ');
    std::vector<std::string> parts;
    CUtility::SplitString(words, parts, ' ');
    int sum = 0;
    for (const std::string& part : parts) {
        const auto found = labels.find(part);
        if (found == labels.end())
            return 0;
        sum |= found->second;
    }
    return sum;
}

} // namespace OLMGis::ProjectIo
