// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/base/ProjectValues.h"

#include "host/formulas/Units.h"
#include "host/gis_core/DataConfiguration.h"
#include "host/gis_core/ProjectSettings.h"
#include "host/project_io/base/AttributeText.h"
#include "host/project_io/base/CoordinateSystem.h"
#include "host/project_io/base/PolygonValidity.h"

#include <fmt/format.h>

namespace OLMGis::ProjectIo {

using Data::CDataDefinition;
using Data::enmEntityKind;
using Data::enmJudgement;
using Topology::CCatchment;
using Topology::CEntity;
using Topology::CSection;
using Topology::CTopologyStorage;

namespace {

/// An entered area is unusual above this share of its polygon: a catchment does not drain more than it covers, apart
/// from coarse drawing ...
constexpr double MostOfPolygon = 1.5;
/// ... and below this one, where the polygon or the unit is wrong rather than most of the ground left out.
constexpr double LeastOfPolygon = 0.05;

class CJudging {
public:
    CJudging(const CTopologyStorage& topology, std::size_t mostPlaces) : m_topology(topology) {
        m_values.m_impossible = CValueFaults(mostPlaces);
    }

    CProjectValues Judge() {
        for (const auto& key : Data::CDataConfiguration::Instance()->GetDataDefinitions())
            JudgeKey(*key);
        JudgeSections();
        JudgeCatchments();
        return std::move(m_values);
    }

private:
    void JudgeKey(const CDataDefinition& key);
    void JudgeSections();
    void JudgeCatchments();
    bool IsUnusualArea(const CCatchment& catchment, CUnusualValues& unusual) const;
    const CEntity* FindEntity(enmEntityKind kind, std::uint32_t row);

    bool IsPlaced(std::uint32_t node) const {
        return node != CSection::NoRow && m_topology.GetNodeAt(node)->GetPoint().IsKnown();
    }

    const CTopologyStorage& m_topology;
    const bool m_isInDegrees = IsActiveProjectInDegrees();
    CProjectValues m_values;
    std::vector<const CCatchment*> m_catchments; ///< by row, made for the first one that is asked for
};

/// Null for a deleted one.
const CEntity* CJudging::FindEntity(enmEntityKind kind, std::uint32_t row) {
    const CEntity* entity = nullptr;
    if (kind == enmEntityKind::Node) {
        entity = m_topology.GetNodeAt(row).get();
    } else if (kind == enmEntityKind::Section) {
        entity = m_topology.GetSectionAt(row).get();
    } else {
        if (m_catchments.empty()) {
            m_catchments.resize(m_topology.GetStore().GetRowCount(kind), nullptr);
            for (const auto& catchment : m_topology.GetCatchments())
                m_catchments[catchment->GetRow()] = catchment.get();
        }
        entity = m_catchments[row];
    }
    return entity == nullptr || entity->IsDeleted() ? nullptr : entity;
}

void CJudging::JudgeKey(const CDataDefinition& key) {
    const Data::CAttributeColumn* const column = m_topology.GetStore().FindColumn(key);
    if (column == nullptr)
        return;
    CUnusualValues unusual;
    column->VisitOutside(Data::GetFineBand(key.m_range), [&](std::uint32_t row, double value) {
        const enmJudgement judgement = Data::Judge(key.m_range, value);
        if (judgement == enmJudgement::Fine)
            return;
        const CEntity* const entity = FindEntity(key.m_entityKind, row);
        if (entity == nullptr)
            return;
        if (judgement == enmJudgement::Unusual)
            unusual.Add(NameForMessages(*entity), TextOfAttribute(Data::CDataBox(value)));
        else
            m_values.m_impossible.Add(
                m_values.m_impossible.IsListed() ? PlaceOfValue(key, NameForMessages(*entity), value) : std::string());
    });
    unusual.Report(key.m_id, "usual are " + Data::UsualValues(key.m_range, key.m_unit), m_values.m_unusual);
}

void CJudging::JudgeSections() {
    const CDataDefinition& length = *Data::FindDefinition("length");
    const Data::CAttributeColumn* const lengths = m_topology.GetStore().FindColumn(length);
    const auto add = [this](const CSection& section, std::string_view text) {
        m_values.m_impossible.Add(fmt::format("section {}: {}", ShownName(section.GetName()), text));
    };
    for (const auto& section : m_topology.GetSections()) {
        const std::uint32_t start = section->GetStartingNodeRow();
        const std::uint32_t end = section->GetEndingNodeRow();
        if (start != CSection::NoRow && start == end)
            add(*section, "leads from a node to itself, expected two nodes");
        const bool hasLength = lengths != nullptr && lengths->IsNotNull(section->GetRow());
        if (!hasLength && m_isInDegrees)
            add(*section, "its length is taken from coordinates in degrees, expected a length, or coordinates in m");
        else if (!hasLength && !(IsPlaced(start) && IsPlaced(end)) && section->GetGeometry().empty())
            add(*section, "found no geometry and no length, expected one of them");
        else if (!hasLength && !(section->GetLength2D() <= *length.m_range.m_max))
            add(*section, fmt::format("its drawn line is {:.6g} m long, expected {}", section->GetLength2D(),
                                      Data::PossibleValues(length.m_range, length.m_unit)));
    }
}

bool CJudging::IsUnusualArea(const CCatchment& catchment, CUnusualValues& unusual) const {
    static const CDataDefinition& key = *Data::FindDefinition("area");
    Data::CDataBox box;
    if (!m_topology.GetStore().Read(key, catchment.GetRow(), box))
        return false;
    const double entered = box.AsDouble();
    const double drawn = Topology::PolygonArea(catchment.GetRings()) / Formulas::SquareMetresPerHectare;
    if (entered <= drawn * MostOfPolygon && (entered <= 0.0 || entered >= drawn * LeastOfPolygon))
        return false;
    unusual.Add(NameForMessages(catchment), fmt::format("{:.6g} ha entered, polygon {:.4g} ha", entered, drawn));
    return true;
}

void CJudging::JudgeCatchments() {
    CUnusualValues unusual;
    std::size_t polygonCount = 0;
    std::size_t unusualCount = 0;
    for (const auto& catchment : m_topology.GetCatchments()) {
        if (catchment->GetRings().empty())
            continue;
        const std::string fault = FindPolygonFault(catchment->GetRings());
        if (fault.empty() && !m_isInDegrees)
            unusualCount += IsUnusualArea(*catchment, unusual) ? 1U : 0U;
        ++polygonCount;
        if (!fault.empty())
            m_values.m_impossible.Add(
                fmt::format("catchment of section {}: polygon {}", ShownName(NameForMessages(*catchment)), fault));
    }
    // Maps of storm-water files are often not to scale: where most areas differ, the polygons prove nothing.
    constexpr std::size_t few = 4;
    const bool isToScale = polygonCount < few || 2 * unusualCount <= polygonCount ||
                           !System::CProjectSettings::Instance()->Get(System::CProjectSettings::Crs).empty();
    if (isToScale)
        unusual.Report("area", "expected that of the polygon or less", m_values.m_unusual);
}

} // namespace

std::string_view NameForMessages(const CEntity& entity) {
    if (entity.GetEntityKind() != enmEntityKind::Catchment)
        return entity.GetName();
    const auto section = static_cast<const CCatchment&>(entity).GetSection();
    return section ? section->GetName() : std::string_view();
}

CProjectValues JudgeProject(const CTopologyStorage& topology, std::size_t mostPlaces) {
    return CJudging(topology, mostPlaces).Judge();
}

} // namespace OLMGis::ProjectIo
