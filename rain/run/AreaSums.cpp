// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/run/AreaSums.h"

#include <utility>

namespace Rain {

CAreaSums::CAreaSums(const CRunInput& input) : m_input(input), m_sums(input.GetRowCount()) {}

void CAreaSums::BeginWalk(std::span<const std::uint32_t> selected, const std::vector<bool>& isSelected) {
    m_isSelected = &isSelected;
    ++m_walk;
    m_hasGap = HasGap(selected);
}

bool CAreaSums::IsMarked(std::uint32_t section) {
    m_marks.resize(m_input.GetRowCount(), 0);
    return std::exchange(m_marks[section], m_search) == m_search;
}

/// Whether a way leads from a selected section over others to a selected one.
bool CAreaSums::HasGap(std::span<const std::uint32_t> selected) {
    ++m_search;
    m_found.clear(); // sections that aren't selected, below selected ones
    for (const std::uint32_t section : selected)
        for (const std::uint32_t out : m_input.GetOut(section))
            if (!(*m_isSelected)[out] && !IsMarked(out))
                m_found.push_back(out);
    for (std::size_t i = 0; i < m_found.size(); ++i) {
        for (const std::uint32_t out : m_input.GetOut(m_found[i])) {
            if ((*m_isSelected)[out])
                return true;
            if (!IsMarked(out))
                m_found.push_back(out);
        }
    }
    return false;
}

double CAreaSums::Sum(std::uint32_t section) {
    if (IsSummed(section))
        return m_sums[section].m_area;
    double sum = m_input.Of(section).m_ownArea;
    bool isSummed = !m_hasGap;
    for (const std::uint32_t in : m_input.GetIn(section)) {
        if (!isSummed)
            break;
        if (!(*m_isSelected)[in])
            continue;
        isSummed = IsSummed(in);
        if (isSummed)
            sum += m_sums[in].m_area;
    }
    if (!isSummed)
        sum = VisitAll(section);
    m_sums[section] = {sum, m_walk};
    return sum;
}

/// Breadth first, each section once.
double CAreaSums::VisitAll(std::uint32_t section) {
    ++m_search;
    m_found.assign(1, section);
    IsMarked(section);
    double sum = m_input.Of(section).m_ownArea;
    for (std::size_t i = 0; i < m_found.size(); ++i) {
        for (const std::uint32_t in : m_input.GetIn(m_found[i])) {
            if (IsMarked(in))
                continue;
            m_found.push_back(in);
            if ((*m_isSelected)[in])
                sum += m_input.Of(in).m_ownArea;
        }
    }
    return sum;
}

} // namespace Rain
