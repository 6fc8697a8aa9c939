// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "reports/EntityChoice.h"

#include "host/gis_core/Utility.h"
#include "host/network_core/Catchment.h"
#include "host/network_core/Node.h"
#include "host/network_core/TopologyMultiStorage.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <unordered_set>

namespace Reports {

using OLMGis::Data::enmEntityKind;
using OLMGis::Topology::CCatchment;
using OLMGis::Topology::CEntity;
using OLMGis::Topology::CSection;
using OLMGis::Topology::CTopologyMultiStorage;
using OLMGis::Topology::CTopologyStorage;
using OLMGis::Utility::BadArguments;
using OLMGis::Utility::CUtility;
using OLMGis::Utility::Done;
using OLMGis::Utility::Result;
using OLMGis::Utility::Status;

namespace {

CTopologyStorage& GetTopology() {
    return *CTopologyMultiStorage::Instance()->GetActiveTopology();
}

template <class Entity>
CEntityList ToList(const std::vector<boost::shared_ptr<Entity>>& entities) {
    CEntityList list;
    list.reserve(entities.size());
    for (const auto& entity : entities)
        list.push_back(entity.get());
    return list;
}

/// The section of a name or GUID; null for none. BadArguments for a name that several sections have.
Result<boost::shared_ptr<CSection>> FindSection(std::string_view name) {
    constexpr std::size_t MostGuids = 5;
    const auto named = GetTopology().GetSectionsByName(name);
    if (named.size() == 1)
        return named.front();
    if (named.empty())
        return GetTopology().GetSectionByGuid(name);
    std::vector<std::string_view> guids;
    for (const auto& section : named)
        if (guids.size() < MostGuids)
            guids.push_back(section->GetGuid());
    return BadArguments(fmt::format("{} sections are named \"{}\": expected the GUID of one of them ({}{})",
                                    named.size(), name, fmt::join(guids, ", "),
                                    named.size() > guids.size() ? ", ..." : ""));
}

/// The entities of one name or GUID; an empty list for none.
Result<CEntityList> FindEntities(enmEntityKind kind, std::string_view name) {
    CEntityList found;
    if (kind == enmEntityKind::Node) {
        auto node = GetTopology().GetNodeByName(name);
        if (!node)
            node = GetTopology().GetNodeByGuid(name);
        if (node)
            found.push_back(node.get());
        return found;
    }
    if (kind == enmEntityKind::Catchment)
        if (const auto catchment = GetTopology().GetCatchmentByGuid(name)) {
            found.push_back(catchment.get());
            return found;
        }
    const auto section = FindSection(name);
    if (!section)
        return section.GetError();
    if (!section.Value())
        return found;
    if (kind == enmEntityKind::Section)
        found.push_back(section.Value().get());
    else
        for (const CCatchment* next = GetTopology().GetFirstCatchment(*section.Value()); next != nullptr;
             next = CTopologyStorage::GetNextCatchment(*next))
            found.push_back(next);
    return found;
}

class CChosen {
public:
    void Add(const CEntityList& entities) {
        for (const CEntity* entity : entities)
            if (m_seen.insert(entity).second)
                m_list.push_back(entity);
    }
    CEntityList m_list;

private:
    std::unordered_set<const CEntity*> m_seen;
};

/// The parts of a comma-separated list, blanks around them taken off, empty ones left out.
std::vector<std::string> SplitList(std::string_view text) {
    std::vector<std::string> parts;
    CUtility::SplitString(text, parts, ',');
    std::vector<std::string> trimmed;
    for (const std::string& part : parts)
        if (const std::string_view name = CUtility::Trim(part); !name.empty())
            trimmed.emplace_back(name);
    return trimmed;
}

Status AddText(enmEntityKind kind, const std::string& text, CChosen& chosen) {
    const auto whole = FindEntities(kind, text);
    if (!whole)
        return whole.GetError();
    if (!whole->empty()) {
        chosen.Add(whole.Value());
        return Done{};
    }
    const std::vector<std::string> parts = SplitList(text);
    if (parts.empty())
        return BadArguments(fmt::format("found \"{}\", expected names or GUIDs of {}s", text, GetKindName(kind)));
    for (const std::string& part : parts) {
        const auto found = FindEntities(kind, part);
        if (!found)
            return found.GetError();
        if (found->empty())
            return BadArguments(fmt::format(
                "found \"{}\", expected the name or GUID of a {}", part,
                kind == enmEntityKind::Catchment ? "section with catchments, or of a catchment" : GetKindName(kind)));
        chosen.Add(found.Value());
    }
    return Done{};
}

} // namespace

std::optional<enmEntityKind> FindKind(std::string_view plural) {
    if (plural == "sections")
        return enmEntityKind::Section;
    if (plural == "nodes")
        return enmEntityKind::Node;
    if (plural == "catchments")
        return enmEntityKind::Catchment;
    return std::nullopt;
}

std::string_view GetKindName(enmEntityKind kind) {
    switch (kind) {
    case enmEntityKind::Node:
        return "node";
    case enmEntityKind::Section:
        return "section";
    case enmEntityKind::Catchment:
        break;
    }
    return "catchment";
}

std::string_view GetShownName(const CEntity& entity) {
    if (entity.GetEntityKind() != enmEntityKind::Catchment)
        return entity.GetName();
    const auto section = static_cast<const CCatchment&>(entity).GetSection();
    return section ? section->GetName() : std::string_view();
}

CEntityList GetAllEntities(enmEntityKind kind) {
    switch (kind) {
    case enmEntityKind::Node:
        return ToList(GetTopology().GetNodes());
    case enmEntityKind::Section:
        return ToList(GetTopology().GetSections());
    case enmEntityKind::Catchment:
        break;
    }
    return ToList(GetTopology().GetCatchments());
}

Result<CEntityList> ChooseEntities(enmEntityKind kind, const std::vector<std::string>& texts) {
    CChosen chosen;
    for (const std::string& text : texts)
        if (const Status added = AddText(kind, text, chosen); !added)
            return added.GetError();
    return std::move(chosen.m_list);
}

Result<std::vector<boost::shared_ptr<CSection>>> ChooseSections(const std::vector<std::string>& texts) {
    const auto chosen = ChooseEntities(enmEntityKind::Section, texts);
    if (!chosen)
        return chosen.GetError();
    std::vector<boost::shared_ptr<CSection>> sections;
    for (const CEntity* entity : chosen.Value())
        sections.push_back(GetTopology().GetSectionAt(entity->GetRow()));
    std::sort(sections.begin(), sections.end(),
              [](const auto& a, const auto& b) { return a->GetOrder() < b->GetOrder(); });
    return sections;
}

} // namespace Reports
