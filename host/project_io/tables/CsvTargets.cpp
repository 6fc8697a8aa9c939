// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/tables/CsvTargets.h"

#include "host/gis_core/DataRW.h"
#include "host/gis_core/HashTableGrowth.h"
#include "host/project_io/base/AttributeText.h"

#include <fmt/format.h>

#include <algorithm>

namespace OLMGis::ProjectIo {

using Data::enmEntityKind;
using Topology::CCatchment;
using Topology::CNode;
using Topology::CSection;
using Utility::CUtility;
using Utility::Done;
using Utility::Result;
using Utility::Status;

namespace {

/// Means any kinds; sums of kinds are 0 to 7.
constexpr int AnyKinds = 8;

std::uint64_t AlikeKey(const CSection& section, int kinds) {
    return static_cast<std::uint64_t>(section.GetRow()) * (AnyKinds + 1) + static_cast<std::uint64_t>(kinds);
}

} // namespace

CCsvTargets::CCsvTargets(const Topology::CTopologyStorage& topology, enmEntityKind kind, const CCsvReader& reader)
    : m_topology(topology), m_kind(kind), m_reader(reader), m_references(topology), m_name(reader.FindColumn("name")),
      m_guid(reader.FindColumn("guid")), m_sectionColumn(reader.FindColumn("section") ? "section" : "name"),
      m_lines(topology.GetStore().GetRowCount(kind), 0) {
    if (kind == enmEntityKind::Catchment)
        IndexCatchments();
}

void CCsvTargets::IndexCatchments() {
    const Data::CDataDefinition* const key = Data::CDataConfiguration::Instance()->GetDataDefinitionByID("kinds");
    Data::CDataBox box;
    for (const auto& catchment : m_topology.GetCatchments()) {
        Data::CDataRW::Read(key, catchment, box, 0, nullptr);
        const auto section = catchment->GetSection();
        for (const int kinds : {box.AsInt() % AnyKinds, AnyKinds}) {
            Utility::MakeRoomForOne(m_alike);
            CAlike& alike = m_alike[AlikeKey(*section, kinds)];
            if (alike.m_count++ == 0)
                alike.m_first = catchment.get();
        }
    }
}

Status CCsvTargets::CheckHead() const {
    if (m_name || m_guid || (m_kind == enmEntityKind::Catchment && m_reader.FindColumn("section")))
        return Done();
    return m_reader.Fault("found no column name or guid, expected one of them to identify the entities");
}

Result<CCsvTarget> CCsvTargets::Find(std::optional<int> kinds) {
    Result<CCsvTarget> target = m_kind == enmEntityKind::Node      ? FindNode()
                                : m_kind == enmEntityKind::Section ? FindSection()
                                                                   : FindCatchment(kinds);
    if (target)
        if (const Status first = CheckFirst(target.Value()); !first)
            return first.GetError();
    return target;
}

Status CCsvTargets::CheckFirst(const CCsvTarget& target) {
    if (target.m_entity == nullptr)
        return Done();
    std::size_t& line = m_lines[target.m_entity->GetRow()];
    if (line != 0)
        return m_reader.Fault(
            fmt::format("found an entity that is on line {} already, expected one row for each", line));
    line = m_reader.GetLine();
    return Done();
}

template <class Entity>
Result<CCsvTarget> CCsvTargets::Agreed(const Entity& entity) {
    if (!entity)
        return m_reader.Fault("guid", fmt::format("found {}, expected the GUID of one of the project's entities",
                                                  Quote(m_reader.GetField(m_guid))));
    const std::string_view name = m_reader.GetField(m_name);
    if (!name.empty() && name != entity->GetName() && !Utility::GuidEqual()(name, entity->GetGuid()))
        return m_reader.Fault("name", fmt::format("found {} on the row of the GUID of {}, expected them to agree",
                                                  Quote(name), Quote(entity->GetName())));
    CCsvTarget target;
    target.m_entity = entity.get();
    return target;
}

Result<CCsvTarget> CCsvTargets::FindNode() {
    const std::string_view guid = m_reader.GetField(m_guid);
    if (!guid.empty())
        return Agreed(m_topology.GetNodeByGuid(guid));
    const std::string_view name = m_reader.GetField(m_name);
    auto node = m_topology.GetNodeByName(name);
    if (!node)
        node = m_topology.GetNodeByGuid(name);
    if (!node)
        return m_reader.Fault(m_name ? "name" : "guid",
                              fmt::format("found {}, expected the name or GUID of a node", Quote(name)));
    CCsvTarget target;
    target.m_entity = node.get();
    return target;
}

Status CCsvTargets::CheckEnd(std::string_view column, const boost::shared_ptr<CNode>& node) const {
    const std::string_view given = m_reader.GetField(m_reader.FindColumn(column));
    if (given.empty() || (node && node->GetName() == given))
        return Done();
    return m_reader.Fault(column, fmt::format("found {}, expected {}: a table changes attributes and no ends",
                                              Quote(given), node ? Quote(node->GetName()) : "an empty cell"));
}

Result<CCsvTarget> CCsvTargets::FindSection() {
    const std::string_view guid = m_reader.GetField(m_guid);
    Result<boost::shared_ptr<CSection>> found =
        guid.empty() ? m_references.Find(m_reader.GetField(m_name))
                     : Result<boost::shared_ptr<CSection>>(m_topology.GetSectionByGuid(guid));
    if (!found)
        return m_reader.Fault(m_name ? "name" : "guid", found.GetError().message);
    Result<CCsvTarget> target = Agreed(found.Value());
    if (!target)
        return target;
    if (const Status from = CheckEnd("from", found.Value()->GetStartingNode()); !from)
        return from.GetError();
    if (const Status to = CheckEnd("to", found.Value()->GetEndingNode()); !to)
        return to.GetError();
    return target;
}

Result<CCsvTarget> CCsvTargets::FindCatchment(std::optional<int> kinds) {
    if (const std::string_view guid = m_reader.GetField(m_guid); !guid.empty())
        if (const auto catchment = m_topology.GetCatchmentByGuid(guid))
            return KnownCatchment(*catchment);
    const auto column = m_reader.FindColumn(m_sectionColumn);
    if (!column)
        return m_reader.Fault(
            "guid", fmt::format("found {}, expected the GUID of a catchment", Quote(m_reader.GetField(m_guid))));
    const auto section = m_references.Find(m_reader.GetField(column));
    if (!section)
        return m_reader.Fault(m_sectionColumn, section.GetError().message);
    if (!m_reader.GetField(m_guid).empty())
        return NewCatchment(*section.Value());
    const auto alike = m_alike.find(AlikeKey(*section.Value(), kinds.value_or(AnyKinds)));
    if (alike == m_alike.end())
        return NewCatchment(*section.Value());
    if (alike->second.m_count > 1)
        return m_reader.Fault(m_sectionColumn,
                              fmt::format("found {}, which has {} catchments{}, expected the guid of one of them",
                                          Quote(m_reader.GetField(column)), alike->second.m_count,
                                          kinds ? " of these kinds" : ""));
    return KnownCatchment(*alike->second.m_first);
}

Result<CCsvTarget> CCsvTargets::KnownCatchment(const CCatchment& catchment) {
    const auto section = catchment.GetSection();
    const std::string_view name = m_reader.GetField(m_name);
    const std::string_view given = m_reader.GetField(m_reader.FindColumn("section"));
    const auto isSection = [&](std::string_view text) {
        return text == section->GetName() || Utility::GuidEqual()(text, section->GetGuid());
    };
    if (!given.empty() && !isSection(given))
        return m_reader.Fault("section", fmt::format("found {}, expected {}: a table changes attributes and not the "
                                                     "section of a catchment",
                                                     Quote(given), Quote(section->GetName())));
    if (!name.empty() && name != catchment.GetName() && (m_sectionColumn == "section" || !isSection(name)))
        return m_reader.Fault("name", fmt::format("found {} on the row of the catchment {}, expected them to agree",
                                                  Quote(name), Quote(catchment.GetName())));
    CCsvTarget target;
    target.m_entity = &catchment;
    return target;
}

Result<CCsvTarget> CCsvTargets::NewCatchment(CSection& section) {
    CCsvTarget target;
    target.m_section = &section;
    const auto alike = m_alike.find(AlikeKey(section, AnyKinds));
    const std::uint32_t first = alike == m_alike.end() ? 1 : alike->second.m_count + 1;
    Utility::MakeRoomForOne(m_nextNumber);
    std::uint32_t& number = m_nextNumber.insert({section.GetRow(), first}).first->second;
    target.m_name = m_sectionColumn == "section" ? m_reader.GetField(m_name) : std::string_view();
    if (target.m_name.empty())
        target.m_name = fmt::format("{}/{}", section.GetName(), number);
    target.m_guid = m_reader.GetField(m_guid);
    const bool isGiven = !target.m_guid.empty();
    const auto isTaken = [&] {
        Utility::MakeRoomForOne(m_newGuids);
        return m_topology.GetCatchmentByGuid(target.m_guid) || !m_newGuids.insert(target.m_guid).second;
    };
    if (isGiven) {
        if (isTaken())
            return m_reader.Fault(
                "guid", fmt::format("found {} on an earlier row, too, expected it once", Quote(target.m_guid)));
        ++number;
        return target;
    }
    do
        target.m_guid = CUtility::MakeGuid("catchment", section.GetGuid(), number++);
    while (isTaken());
    return target;
}

} // namespace OLMGis::ProjectIo
