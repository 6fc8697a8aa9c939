// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_core/TopologyStorage.h"

#include "host/gis_core/DataConfiguration.h"
#include "host/gis_core/NotificationFramework.h"
#include "host/gis_core/ShortName.h"

#include <fmt/format.h>

#include <algorithm>
#include <cassert>

namespace OLMGis::Topology {

using Utility::BadInput;
using Utility::NoPlace;
using Utility::Result;

namespace {

/// Puts a section among others at its place in the order of the network; the ordinary case is the end.
template <class Refs>
void InsertInOrder(Refs& refs, CSection* section) {
    auto place = refs.end();
    while (place != refs.begin() && (*(place - 1))->GetOrder() > section->GetOrder())
        --place;
    refs.insert(place, section);
}

/// Takes the entry of a section out. The last one is looked at first: what is taken back entered last.
template <class Refs>
void Erase(Refs& refs, const CSection* section) {
    if (!refs.empty() && refs.back() == section) {
        refs.pop_back();
        return;
    }
    if (const auto found = std::find(refs.begin(), refs.end(), section); found != refs.end())
        refs.erase(found);
}

bool IsStraight(std::span<const CPoint> line, const CNode* start, const CNode* end) {
    return line.size() == 2 && start != nullptr && end != nullptr && line[0] == start->GetPoint() &&
           line[1] == end->GetPoint();
}

const Data::CAttributeColumn* FindMainOutletColumn(const Data::CAttributeStore& store) {
    static const Data::CDataDefinition* const definition =
        Data::CDataConfiguration::Instance()->GetDataDefinitionByID("MAIN_SECT_OUT");
    return definition == nullptr ? nullptr : store.FindColumn(*definition);
}

} // namespace

/// Taking an entity into or out of the network; the same step serves both directions.
template <class Entity>
class CTopologyStorage::CExistenceStep final : public Data::IJournalStep {
public:
    CExistenceStep(CTopologyStorage& topology, Entity& entity) : m_topology(topology), m_entity(entity) {}
    void Undo() override { m_topology.SetExists(m_entity, m_entity.IsDeleted()); }
    void Redo() override { Undo(); }

private:
    CTopologyStorage& m_topology;
    Entity& m_entity;
};

CTopologyStorage::CTopologyStorage(Data::CAttributeStore& store) : m_store(store) {}

CTopologyStorage::~CTopologyStorage() = default;

template <class Entity>
const std::vector<boost::shared_ptr<Entity>>& CTopologyStorage::Live(const CEntityList<Entity>& list) const {
    if (list.m_deletedCount == 0)
        return list.m_rows;
    if (list.m_isLiveStale) {
        list.m_live.clear();
        std::copy_if(list.m_rows.begin(), list.m_rows.end(), std::back_inserter(list.m_live),
                     [](const auto& entity) { return !entity->IsDeleted(); });
        list.m_isLiveStale = false;
    }
    return list.m_live;
}

template const std::vector<boost::shared_ptr<CNode>>& CTopologyStorage::Live(const CEntityList<CNode>&) const;
template const std::vector<boost::shared_ptr<CSection>>& CTopologyStorage::Live(const CEntityList<CSection>&) const;
template const std::vector<boost::shared_ptr<CCatchment>>& CTopologyStorage::Live(const CEntityList<CCatchment>&) const;

template <class Entity, class... Args>
boost::shared_ptr<Entity> CTopologyStorage::Enter(CEntityList<Entity>& list, std::string_view guid,
                                                  std::string_view name, Args&&... args) {
    boost::shared_ptr<Entity> entity = list.m_slabs.Make(CEntityKey(), *this, m_store, m_texts.Keep(guid),
                                                         m_texts.Keep(name), std::forward<Args>(args)...);
    assert(entity->GetRow() == list.m_rows.size());
    list.m_rows.push_back(entity);
    list.m_isLiveStale = true;
    ++list.m_changeCount;
    Attach(*entity);
    NoteExistence(*entity);
    return entity;
}

template <class Entity>
void CTopologyStorage::NoteExistence(Entity& entity) {
    if (Data::CJournal* journal = m_store.GetJournal(); journal != nullptr)
        journal->NoteStep(std::make_unique<CExistenceStep<Entity>>(*this, entity));
}

template <class Entity>
void CTopologyStorage::SetExists(Entity& entity, bool exists) {
    if (exists != entity.IsDeleted())
        return;
    CEntityList<Entity>& list = ListOf(entity);
    list.m_isLiveStale = true;
    ++list.m_changeCount;
    if (exists) {
        --list.m_deletedCount;
        entity.m_isDeleted = false;
        Attach(entity);
    } else {
        Detach(entity);
        ++list.m_deletedCount;
        entity.m_isDeleted = true;
    }
}

Result<boost::shared_ptr<CNode>> CTopologyStorage::AddNode(std::string_view guid, std::string_view name,
                                                           const CPoint& point) {
    if (guid.empty() || m_nodes.m_byGuid.Find(guid) != NoPlace)
        return BadInput(fmt::format("node {}: the GUID \"{}\" occurs twice or is empty", Utility::ShortName(name),
                                    Utility::ShortName(guid)));
    if (m_nodes.m_byName.Find(name) != NoPlace)
        return BadInput(
            fmt::format("node {}: the name occurs twice, expected unique names of nodes", Utility::ShortName(name)));
    return Enter(m_nodes, guid, name, point);
}

Result<boost::shared_ptr<CSection>> CTopologyStorage::AddSection(std::string_view guid, std::string_view name,
                                                                 CNode* start, CNode* end,
                                                                 std::span<const CPoint> line) {
    if (guid.empty() || m_sections.m_byGuid.Find(guid) != NoPlace)
        return BadInput(fmt::format("section {}: the GUID \"{}\" occurs twice or is empty", Utility::ShortName(name),
                                    Utility::ShortName(guid)));
    const auto rowOf = [](const CNode* node) { return node == nullptr ? CSection::NoRow : node->GetRow(); };
    auto section = Enter(m_sections, guid, name, rowOf(start), rowOf(end));
    if (line.size() >= 2 && !IsStraight(line, start, end)) {
        section->m_line = static_cast<std::uint32_t>(m_lines.size());
        m_lines.emplace_back(line.begin(), line.end());
    }
    return section;
}

Result<boost::shared_ptr<CCatchment>> CTopologyStorage::AddCatchment(std::string_view guid, std::string_view name,
                                                                     CSection* section, CRings rings) {
    if (guid.empty() || m_catchments.m_byGuid.Find(guid) != NoPlace)
        return BadInput(fmt::format("catchment {}: the GUID \"{}\" occurs twice or is empty", Utility::ShortName(name),
                                    Utility::ShortName(guid)));
    if (section == nullptr)
        return BadInput(fmt::format("catchment {}: found no section, expected the section that it drains to",
                                    Utility::ShortName(name)));
    return Enter(m_catchments, guid, name, section, std::move(rings));
}

int CTopologyStorage::RemoveNode(CNode& node) {
    if (node.IsDeleted() || !node.m_in.empty() || !node.m_out.empty())
        return 0;
    SetExists(node, false);
    NoteExistence(node);
    return 1;
}

int CTopologyStorage::RemoveSection(CSection& section) {
    if (section.IsDeleted())
        return 0;
    while (CCatchment* catchment = GetFirstCatchment(section))
        RemoveCatchment(*catchment);
    SetExists(section, false);
    NoteExistence(section);
    Notification::CNotificationFramework::Instance()->Notify({Notification::enmEvent::EntityDeleted,
                                                              std::string(section.GetGuid()),
                                                              std::string(section.GetStartingNodeGuid())});
    return 1;
}

int CTopologyStorage::RemoveCatchment(CCatchment& catchment) {
    if (catchment.IsDeleted())
        return 0;
    SetExists(catchment, false);
    NoteExistence(catchment);
    return 1;
}

void CTopologyStorage::Attach(CNode& node) {
    m_nodes.m_byGuid.Insert(node.GetRow());
    m_nodes.m_byName.Insert(node.GetRow());
}

void CTopologyStorage::Detach(CNode& node) {
    m_nodes.m_byGuid.Erase(node.GetRow());
    m_nodes.m_byName.Erase(node.GetRow());
}

void CTopologyStorage::Attach(CSection& section) {
    section.m_order = section.GetRow();
    m_sections.m_byGuid.Insert(section.GetRow());
    if (!m_sections.m_byName.Insert(section.GetRow())) {
        Utility::MakeRoomForOne(m_repeatedNames);
        m_repeatedNames[section.GetName()].push_back(section.GetRow());
    }
    if (CNode* end = section.End())
        InsertInOrder(end->m_in, &section);
    if (CNode* start = section.Start())
        InsertInOrder(start->m_out, &section);
    if (section.GetRow() >= m_catchmentsOf.size())
        m_catchmentsOf.resize(section.GetRow() + 1);
}

void CTopologyStorage::Detach(CSection& section) {
    m_sections.m_byGuid.Erase(section.GetRow());
    m_sections.m_byName.Erase(section.GetRow());
    if (const auto repeated = m_repeatedNames.find(section.GetName()); repeated != m_repeatedNames.end()) {
        std::vector<std::uint32_t>& rows = repeated->second;
        std::erase(rows, section.GetRow());
        // The first of the name went: the next one takes its place in the index.
        if (!rows.empty() && m_sections.m_byName.Find(section.GetName()) == NoPlace) {
            m_sections.m_byName.Insert(rows.front());
            rows.erase(rows.begin());
        }
    }
    if (CNode* end = section.End())
        Erase(end->m_in, &section);
    if (CNode* start = section.Start())
        Erase(start->m_out, &section);
}

void CTopologyStorage::Attach(CCatchment& catchment) {
    m_catchments.m_byGuid.Insert(catchment.GetRow());
    auto& [first, last] = m_catchmentsOf[catchment.m_section->GetRow()];
    if (last == nullptr) {
        first = last = &catchment;
    } else if (last->GetRow() < catchment.GetRow()) {
        last->m_next = &catchment;
        last = &catchment;
    } else {
        CCatchment** link = &first;
        while ((*link)->GetRow() < catchment.GetRow())
            link = &(*link)->m_next;
        catchment.m_next = *link;
        *link = &catchment;
    }
}

void CTopologyStorage::Detach(CCatchment& catchment) {
    m_catchments.m_byGuid.Erase(catchment.GetRow());
    auto& [first, last] = m_catchmentsOf[catchment.m_section->GetRow()];
    CCatchment* before = nullptr;
    for (CCatchment* c = first; c != &catchment; c = c->m_next)
        before = c;
    (before == nullptr ? first : before->m_next) = catchment.m_next;
    if (last == &catchment)
        last = before;
    catchment.m_next = nullptr;
}

template <class Entity>
boost::shared_ptr<Entity> CTopologyStorage::FindByGuid(const CEntityList<Entity>& list, std::string_view guid) {
    const std::uint32_t row = list.m_byGuid.Find(guid);
    return row == NoPlace ? nullptr : list.m_rows[row];
}

boost::shared_ptr<CNode> CTopologyStorage::GetNodeByGuid(std::string_view guid) const {
    return FindByGuid(m_nodes, guid);
}

boost::shared_ptr<CSection> CTopologyStorage::GetSectionByGuid(std::string_view guid) const {
    return FindByGuid(m_sections, guid);
}

boost::shared_ptr<CCatchment> CTopologyStorage::GetCatchmentByGuid(std::string_view guid) const {
    return FindByGuid(m_catchments, guid);
}

boost::shared_ptr<CNode> CTopologyStorage::GetNodeByName(std::string_view name) const {
    const std::uint32_t row = m_nodes.m_byName.Find(name);
    return row == NoPlace ? nullptr : m_nodes.m_rows[row];
}

std::vector<boost::shared_ptr<CSection>> CTopologyStorage::GetSectionsByName(std::string_view name) const {
    std::vector<boost::shared_ptr<CSection>> sections;
    if (const std::uint32_t row = m_sections.m_byName.Find(name); row != NoPlace)
        sections.push_back(m_sections.m_rows[row]);
    if (const auto repeated = m_repeatedNames.find(name); repeated != m_repeatedNames.end())
        for (const std::uint32_t row : repeated->second)
            sections.push_back(m_sections.m_rows[row]);
    std::sort(sections.begin(), sections.end(),
              [](const auto& a, const auto& b) { return a->GetOrder() < b->GetOrder(); });
    return sections;
}

CCatchment* CTopologyStorage::GetFirstCatchment(const CSection& section) const {
    if (Data::CInputNotes* const notes = m_store.GetInputNotes(); notes != nullptr)
        notes->Note(Data::Inputs::Catchments, AttachmentInput);
    return section.GetRow() < m_catchmentsOf.size() ? m_catchmentsOf[section.GetRow()].first : nullptr;
}

CSection* CTopologyStorage::GetChosenMainOutlet(const CNode& node) const {
    const Data::CAttributeColumn* const column = FindMainOutletColumn(m_store);
    const std::string_view guid = column == nullptr ? std::string_view() : column->ReadText(node.GetRow());
    if (guid.empty())
        return nullptr;
    const auto chosen = std::find_if(node.m_out.begin(), node.m_out.end(), [guid](const CSection* section) {
        return Utility::GuidEqual()(section->GetGuid(), guid);
    });
    return chosen == node.m_out.end() ? nullptr : *chosen;
}

CSection* CTopologyStorage::GetMainOutlet(const CNode& node) const {
    return node.m_out.size() == 1 ? node.m_out.front() : GetChosenMainOutlet(node);
}

std::shared_ptr<const CConnectivity> CTopologyStorage::GetConnectivity() const {
    const Data::CAttributeColumn* const column = FindMainOutletColumn(m_store);
    const CConnectivityState state{m_nodes.m_changeCount, m_sections.m_changeCount,
                                   column == nullptr ? 0 : column->GetChangeCount()};
    if (!m_connectivity || !(m_connectivityState == state)) {
        m_connectivity = std::make_shared<const CConnectivity>(*this);
        m_connectivityState = state;
    }
    return m_connectivity;
}

int CTopologyStorage::CollectUpstream(const CSection& section, std::vector<boost::shared_ptr<CSection>>& list) const {
    list.clear();
    m_marks.resize(m_sections.m_rows.size(), 0);
    const std::uint32_t walk = ++m_walk;
    m_marks[section.GetRow()] = walk;
    const auto enterSectionsInto = [&](const CNode* node) {
        if (node == nullptr)
            return;
        for (CSection* in : node->m_in) {
            if (m_marks[in->GetRow()] == walk)
                continue;
            m_marks[in->GetRow()] = walk;
            list.push_back(m_sections.m_rows[in->GetRow()]);
        }
    };
    enterSectionsInto(section.Start());
    for (std::size_t i = 0; i < list.size(); ++i)
        enterSectionsInto(list[i]->Start());
    return static_cast<int>(list.size());
}

void CTopologyStorage::Reserve(std::size_t nodes, std::size_t sections, std::size_t catchments) {
    const auto reserve = [this](auto& list, Data::enmEntityKind kind, std::size_t count) {
        list.m_rows.reserve(count);
        list.m_byGuid.Reserve(count);
        m_store.Expect(kind, static_cast<std::uint32_t>(count));
    };
    reserve(m_nodes, Data::enmEntityKind::Node, nodes);
    m_nodes.m_byName.Reserve(nodes);
    reserve(m_sections, Data::enmEntityKind::Section, sections);
    m_sections.m_byName.Reserve(sections);
    m_catchmentsOf.reserve(sections);
    reserve(m_catchments, Data::enmEntityKind::Catchment, catchments);
}

} // namespace OLMGis::Topology
