// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/AreaSums.h"

#include "host/network_core/TopologyStorage.h"

#include <algorithm>

using OLMGis::Topology::CNode;
using OLMGis::Topology::CSection;
using OLMGis::Topology::CTopologyStorage;

namespace {

template <class T>
T& AtRow(std::vector<T>& list, std::uint32_t row) {
    if (row >= list.size())
        list.resize(std::max<std::size_t>(row + 1ULL, list.size() * 2));
    return list[row];
}

/// Whether flow can part anywhere: only then branches may have something upstream in common.
bool Divides(const CTopologyStorage& topology) {
    const auto& nodes = topology.GetNodes();
    return std::any_of(nodes.begin(), nodes.end(), [](const auto& node) {
        return node->GetSectionsInCount() > 0 && node->GetSectionsOutCount() > 1;
    });
}

} // namespace

void CAreaSums::Reset() {
    m_walks.clear();
    m_sums.clear();
    m_marks.clear();
    m_walk = 0;
    m_isDivisionKnown = false;
}

void CAreaSums::BeginWalk(const CSectionList& sections, const CSelectedSections& selected) {
    ++m_walk;
    m_hasGap = HasGap(sections, selected);
}

/// Whether a way leads from a selected section over others to a selected one.
bool CAreaSums::HasGap(const CSectionList& sections, const CSelectedSections& selected) {
    const auto any = std::find_if(sections.begin(), sections.end(), [](const auto& section) { return section; });
    if (any == sections.end() || selected.GetCount() >= (*any)->GetTopology().GetSections().size())
        return false;
    std::vector<CSectionPtr> left; // sections that aren't selected, below selected ones
    const auto follow = [&](const CSection& section, bool isSelected) {
        section.GetSectionsOut(m_upstream);
        for (const auto& out : m_upstream) {
            if (selected.Contains(*out)) {
                if (!isSelected)
                    return true;
            } else if (std::uint32_t& mark = AtRow(m_marks, out->GetRow()); mark != m_walk) {
                mark = m_walk;
                left.push_back(out);
            }
        }
        return false;
    };
    for (const auto& section : sections)
        if (section)
            follow(*section, true);
    while (!left.empty()) {
        const CSectionPtr section = std::move(left.back());
        left.pop_back();
        if (follow(*section, false))
            return true;
    }
    return false;
}

double CAreaSums::Sum(const CSectionPtr& section, const CSelectedSections& selected, CSectionInputs& inputs) {
    const std::uint32_t row = section->GetRow();
    if (row < m_walks.size() && m_walks[row] == m_walk)
        return m_sums[row];
    double sum = inputs.Of(section).m_ownArea;
    bool isSummed = !m_hasGap;
    if (isSummed) {
        section->GetSectionsIn(m_in);
        isSummed = !MayOverlap(m_in);
    }
    for (std::size_t i = 0; isSummed && i < m_in.size(); ++i) {
        if (!selected.Contains(*m_in[i]))
            continue;
        const std::uint32_t in = m_in[i]->GetRow();
        isSummed = in < m_walks.size() && m_walks[in] == m_walk;
        if (isSummed)
            sum += m_sums[in];
    }
    if (!isSummed)
        sum = VisitAll(section, selected, inputs);
    AtRow(m_walks, row) = m_walk;
    AtRow(m_sums, row) = sum;
    return sum;
}

bool CAreaSums::MayOverlapAbove(const CSectionPtr& section) {
    section->GetSectionsIn(m_in);
    return MayOverlap(m_in);
}

/// Whether two of the sections that enter a node may have something upstream in common. Selected or not: then the sums
/// of one section are made in one way, whatever is selected.
bool CAreaSums::MayOverlap(const CSectionList& in) {
    if (in.size() < 2)
        return false;
    if (!m_isDivisionKnown) {
        const CTopologyStorage& topology = in.front()->GetTopology();
        m_isDivisionKnown = true;
        m_divides = Divides(topology);
        if (m_divides)
            m_blocks.Find(topology);
    }
    if (!m_divides)
        return false;
    m_blocksOfIn.clear();
    for (const auto& section : in)
        m_blocksOfIn.push_back(m_blocks.Of(*section));
    std::sort(m_blocksOfIn.begin(), m_blocksOfIn.end());
    return std::adjacent_find(m_blocksOfIn.begin(), m_blocksOfIn.end()) != m_blocksOfIn.end();
}

double CAreaSums::VisitAll(const CSectionPtr& section, const CSelectedSections& selected, CSectionInputs& inputs) {
    double sum = inputs.Of(section).m_ownArea;
    section->GetPreviousSections(m_upstream);
    for (const auto& upstream : m_upstream)
        if (selected.Contains(*upstream))
            sum += inputs.Of(upstream).m_ownArea;
    return sum;
}
