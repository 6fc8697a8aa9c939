// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/AreaSums.h"

#include "host/network_core/TopologyStorage.h"

#include <algorithm>

using OLMGis::Topology::CSection;

namespace {

template <class T>
T& AtRow(std::vector<T>& list, std::uint32_t row) {
    if (row >= list.size())
        list.resize(std::max<std::size_t>(row + 1ULL, list.size() * 2));
    return list[row];
}

} // namespace

void CAreaSums::Reset() {
    m_sums.clear();
    m_marks.clear();
    m_walk = 0;
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
    if (IsSummed(row))
        return m_sums[row].m_area;
    double sum = inputs.Of(section).m_ownArea;
    bool isSummed = !m_hasGap;
    if (isSummed)
        section->GetSectionsIn(m_in);
    for (std::size_t i = 0; isSummed && i < m_in.size(); ++i) {
        if (!selected.Contains(*m_in[i]))
            continue;
        const std::uint32_t in = m_in[i]->GetRow();
        isSummed = IsSummed(in);
        if (isSummed)
            sum += m_sums[in].m_area;
    }
    if (!isSummed)
        sum = VisitAll(section, selected, inputs);
    AtRow(m_sums, row) = {sum, m_walk};
    return sum;
}

double CAreaSums::VisitAll(const CSectionPtr& section, const CSelectedSections& selected, CSectionInputs& inputs) {
    double sum = inputs.Of(section).m_ownArea;
    section->GetPreviousSections(m_upstream);
    for (const auto& upstream : m_upstream)
        if (selected.Contains(*upstream))
            sum += inputs.Of(upstream).m_ownArea;
    return sum;
}
