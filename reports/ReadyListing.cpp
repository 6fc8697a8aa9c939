// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "reports/ReadyListing.h"

#include "reports/EntityChoice.h"
#include "reports/ShownText.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <map>
#include <set>
#include <unordered_set>

namespace Reports {

using OLMGis::Data::CDataBox;
using OLMGis::Data::enmEntityKind;
using OLMGis::Sewage::CLack;
using OLMGis::Sewage::CMissingInput;
using OLMGis::Topology::CEntity;

namespace {

std::string_view KindOf(const CLack& lack) {
    return lack.m_entity == nullptr ? "section" : GetKindName(lack.m_entity->GetEntityKind());
}

CTable::CRow MakeRow(const CMissingInput& missing) {
    const CLack& lack = missing.m_lack;
    CTable::CRow row{missing.m_calculator, lack.m_key};
    if (lack.m_isOfForm)
        row.insert(row.end(), {CDataBox("form"), CDataBox(lack.m_key), CDataBox()});
    else if (lack.m_entity == nullptr)
        row.insert(row.end(), {CDataBox("sections"), CDataBox(), CDataBox()});
    else
        row.insert(row.end(), {CDataBox(fmt::format("{}s", KindOf(lack))), CDataBox(GetShownName(*lack.m_entity)),
                               CDataBox(lack.m_entity->GetGuid())});
    row.push_back(lack.m_found);
    row.emplace_back(lack.m_expected);
    return row;
}

/// The entities of a kind that lack something, each once, and the keys, each once, both in order.
struct CFillIn {
    CEntityList m_entities;
    std::vector<std::string> m_keys;
};

CFillIn Gather(const std::vector<CMissingInput>& missing, enmEntityKind kind) {
    CFillIn fillIn;
    std::unordered_set<const CEntity*> seen;
    for (const CMissingInput& entry : missing) {
        const CEntity* const entity = entry.m_lack.m_entity;
        if (entity == nullptr || entity->GetEntityKind() != kind)
            continue;
        if (seen.insert(entity).second)
            fillIn.m_entities.push_back(entity);
        if (std::find(fillIn.m_keys.begin(), fillIn.m_keys.end(), entry.m_lack.m_key) == fillIn.m_keys.end())
            fillIn.m_keys.push_back(entry.m_lack.m_key);
    }
    return fillIn;
}

/// Whether each name of a kind names one entity of the project.
bool DoNamesIdentify(enmEntityKind kind) {
    if (kind == enmEntityKind::Catchment)
        return false;
    std::unordered_set<std::string_view> names;
    for (const CEntity* entity : GetAllEntities(kind))
        if (entity->GetName().empty() || !names.insert(entity->GetName()).second)
            return false;
    return true;
}

/// Lacks of one key.
struct CGroup {
    const CLack* m_first = nullptr;
    bool m_isAlike = true; ///< whether all have the same expectation
    std::vector<const CEntity*> m_entities;
    std::vector<std::string> m_found; ///< each unusable value once
};

/// " (found 0, -1)"; empty where nothing was found.
std::string ShowFound(const CGroup& group) {
    constexpr std::size_t Most = 5;
    return group.m_found.empty()
               ? std::string()
               : fmt::format(" (found {})", FirstNames({group.m_found.begin(), group.m_found.end()}, Most));
}

/// The command that repairs a group: for all, for those few, or by a table.
std::string Advise(const CGroup& group, const std::string& project, const std::string& calculator, std::size_t most) {
    const enmEntityKind kind = group.m_first->m_entity->GetEntityKind();
    if (group.m_first->m_isOfForm)
        return fmt::format("drenova run {} {} {}=VALUE", project, calculator, group.m_first->m_key);
    if (group.m_first->m_key == "MAIN_SECT_OUT")
        return fmt::format("drenova directions {} --auto", project);
    const std::string on = kind == enmEntityKind::Section ? "" : fmt::format(" --on {}s", GetKindName(kind));
    const std::string value = group.m_first->m_example.empty() ? "VALUE" : group.m_first->m_example;
    const std::string set = fmt::format("drenova set {} {}={}{}", project, group.m_first->m_key, value, on);
    if (group.m_entities.size() == GetAllEntities(kind).size())
        return set + " --all";
    if (group.m_entities.size() > most)
        return fmt::format("drenova ready {} {} --template missing.csv", project, calculator);
    std::vector<std::string_view> names;
    for (const CEntity* entity : group.m_entities)
        if (const std::string_view name = GetShownName(*entity);
            std::find(names.begin(), names.end(), name) == names.end())
            names.push_back(name);
    return fmt::format("{} --names {}", set, fmt::join(names, ","));
}

} // namespace

CTable MakeReadyTable(const std::vector<CMissingInput>& missing) {
    CTable table({TextColumn("calculator", "calculator"), TextColumn("key", "key"), TextColumn("on", "on"),
                  TextColumn("name", "name"), TextColumn("guid", "guid", enmReader::Programs),
                  NumberColumn("found", "found"), TextColumn("expected", "expected")});
    table.SetRows(missing.size(),
                  [&missing](std::size_t row, CTable::CRow& values) { values = MakeRow(missing[row]); });
    return table;
}

std::optional<CTable> MakeFillInTable(const std::vector<CMissingInput>& missing, enmEntityKind kind) {
    const CFillIn fillIn = Gather(missing, kind);
    if (fillIn.m_entities.empty())
        return std::nullopt;
    const bool hasGuids = !DoNamesIdentify(kind);
    CTable table({TextColumn("name", "name")});
    if (hasGuids)
        table.AddColumn(TextColumn("guid", "guid"));
    for (const std::string& key : fillIn.m_keys)
        table.AddColumn(TextColumn(key, key));
    for (const CEntity* entity : fillIn.m_entities) {
        CTable::CRow row(table.GetColumns().size());
        row[0] = CDataBox(GetShownName(*entity));
        if (hasGuids)
            row[1] = CDataBox(entity->GetGuid());
        table.AddRow(std::move(row));
    }
    return table;
}

std::vector<std::string> SummariseLacks(const std::vector<CLack>& lacks, const std::string& project,
                                        const std::string& calculator) {
    constexpr std::size_t MostNames = 20;
    std::vector<std::string> order;
    std::map<std::string, CGroup> groups;
    for (const CLack& lack : lacks) {
        if (lack.m_entity == nullptr)
            continue;
        CGroup& group = groups[lack.m_key];
        if (group.m_first == nullptr) {
            group.m_first = &lack;
            order.push_back(lack.m_key);
        }
        group.m_isAlike = group.m_isAlike && lack.m_expected == group.m_first->m_expected;
        group.m_entities.push_back(lack.m_entity);
        if (const std::string found = lack.m_found.IsNotNull() ? lack.m_found.AsText() : std::string();
            !found.empty() && std::find(group.m_found.begin(), group.m_found.end(), found) == group.m_found.end())
            group.m_found.push_back(found);
    }
    std::vector<std::string> lines;
    for (const std::string& key : order) {
        const CGroup& group = groups[key];
        std::vector<std::string_view> names;
        for (const CEntity* entity : group.m_entities)
            names.push_back(GetShownName(*entity));
        lines.push_back(OnOneLine(fmt::format(
            "{} {} no {}{}{}: {}{}. Set it: {}", Count(names.size(), KindOf(*group.m_first)),
            names.size() == 1 ? "has" : "have", group.m_found.empty() ? "" : "usable ", key, ShowFound(group),
            FirstNames(names, MostNames), group.m_isAlike ? "; expected " + group.m_first->m_expected : std::string(),
            Advise(group, project, calculator, MostNames))));
    }
    return lines;
}

} // namespace Reports
