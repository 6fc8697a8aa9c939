// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_core/Section.h"

#include "host/gis_core/DataConfiguration.h"
#include "host/network_core/Node.h"
#include "host/network_core/PipeManager.h"
#include "host/network_core/TopologyStorage.h"

namespace OLMGis::Topology {

namespace {

const Data::CDataDefinition* Definition(std::string_view id) {
    return Data::CDataConfiguration::Instance()->GetDataDefinitionByID(id);
}

} // namespace

CNode* CSection::Start() const {
    return m_start == NoRow ? nullptr : GetTopology().GetNodeAt(m_start).get();
}

CNode* CSection::End() const {
    return m_end == NoRow ? nullptr : GetTopology().GetNodeAt(m_end).get();
}

boost::shared_ptr<CNode> CSection::GetStartingNode() const {
    return m_start == NoRow ? nullptr : GetTopology().GetNodeAt(m_start);
}

boost::shared_ptr<CNode> CSection::GetEndingNode() const {
    return m_end == NoRow ? nullptr : GetTopology().GetNodeAt(m_end);
}

std::string_view CSection::GetStartingNodeGuid() const {
    return m_start == NoRow ? std::string_view() : Start()->GetGuid();
}

std::string_view CSection::GetEndingNodeGuid() const {
    return m_end == NoRow ? std::string_view() : End()->GetGuid();
}

double CSection::GetLength2D() const {
    static const Data::CDataDefinition* const stored = Definition("length");
    Data::CDataBox box;
    if (stored != nullptr && GetStore().Read(*stored, GetRow(), box))
        return box.AsDouble();
    NoteGeometry();
    if (m_line != NoLine)
        return PolylineLength(GetTopology().GetLineAt(m_line));
    const bool isDrawn =
        m_start != NoRow && m_end != NoRow && Start()->GetPoint().IsKnown() && End()->GetPoint().IsKnown();
    return isDrawn ? Distance(Start()->GetPoint(), End()->GetPoint()) : 0.0;
}

void CSection::NoteGeometry() const {
    if (Data::CInputNotes* const notes = GetStore().GetInputNotes(); notes != nullptr)
        notes->Note(Data::Inputs::Topology, GeometryInput);
}

std::vector<CPoint> CSection::GetGeometry() const {
    NoteGeometry();
    if (m_line != NoLine) {
        const std::span<const CPoint> line = GetTopology().GetLineAt(m_line);
        return {line.begin(), line.end()};
    }
    if (m_start == NoRow || m_end == NoRow || !Start()->GetPoint().IsKnown() || !End()->GetPoint().IsKnown())
        return {};
    return {Start()->GetPoint(), End()->GetPoint()};
}

int CSection::GetSectionsIn(std::vector<boost::shared_ptr<CSection>>& list) const {
    list.clear();
    return m_start == NoRow ? 0 : Start()->GetSectionsIn(list);
}

int CSection::GetSectionsIn(std::vector<const CSection*>& list) const {
    list.clear();
    return m_start == NoRow ? 0 : Start()->GetSectionsIn(list);
}

int CSection::GetSectionsOut(std::vector<boost::shared_ptr<CSection>>& list) const {
    return ListSectionsOut(list, [](const CSection* section) { return section->GetShared(); });
}

int CSection::GetSectionsOut(std::vector<const CSection*>& list) const {
    return ListSectionsOut(list, [](const CSection* section) { return section; });
}

template <class List, class ToEntry>
int CSection::ListSectionsOut(List& list, ToEntry toEntry) const {
    list.clear();
    if (m_end == NoRow)
        return 0;
    const CSection* const main = End()->m_out.size() > 1 ? GetTopology().GetChosenMainOutlet(*End()) : nullptr;
    if (main != nullptr)
        list.push_back(toEntry(main));
    for (const CSection* section : End()->m_out)
        if (section != main)
            list.push_back(toEntry(section));
    return static_cast<int>(list.size());
}

int CSection::GetPreviousSections(std::vector<boost::shared_ptr<CSection>>& list) const {
    return GetTopology().CollectUpstream(*this, list);
}

boost::shared_ptr<CCatalogItem> CSection::GetPipe() const {
    static const Data::CDataDefinition* const reference = Definition("PIPE_REF");
    const Data::CAttributeColumn* column = reference == nullptr ? nullptr : GetStore().FindColumn(*reference);
    const std::string_view guid = column == nullptr ? std::string_view() : column->ReadText(GetRow());
    return guid.empty() ? nullptr : CPipeManager::Instance()->GetPipe(guid);
}

std::string CSection::GetPipeReference() const {
    static const Data::CDataDefinition* const reference = Definition("PIPE_REF");
    const Data::CAttributeColumn* column = reference == nullptr ? nullptr : GetStore().FindColumn(*reference);
    return column == nullptr ? std::string() : std::string(column->ReadText(GetRow()));
}

boost::shared_ptr<CSection> CSection::GetShared() const {
    return GetTopology().GetSectionAt(GetRow());
}

} // namespace OLMGis::Topology
