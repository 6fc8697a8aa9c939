// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/run/NodeDataIDF.h"

#include <cmath>

namespace {

/// Records of other branches whose time is nearer to the best than this part of it may take its place.
constexpr double SameTime = 0.05;

} // namespace

void CNodeDataIDF::AddResult(const CSectionDataIDF* record) {
    m_results[record->m_name].push_back(record);
    m_deliveredCount = static_cast<int>(m_results.size());
}

std::span<const CSectionDataIDF* const> CNodeDataIDF::ChooseUpstream() const {
    if (m_results.empty())
        return {};
    Rain::CBranchChoice choice(*m_params);
    auto best = m_results.begin();
    for (auto branch = best; branch != m_results.end(); ++branch)
        if (choice.Offer(branch->second.front()->GetTimeToNode()))
            best = branch;
    std::size_t first = 0;
    if (m_params->m_partialArea != 0) {
        for (auto branch = m_results.begin(); branch != m_results.end(); ++branch) {
            if (branch == best)
                continue; // its own records don't compete with it
            for (std::size_t i = 0; i < branch->second.size(); ++i) {
                const CSectionDataIDF& b = *best->second[first];
                const CSectionDataIDF& r = *branch->second[i];
                if (std::abs(b.m_upstreamTime - r.m_upstreamTime) / b.m_upstreamTime < SameTime &&
                    r.m_flow > b.m_flow) {
                    best = branch;
                    first = i;
                    break;
                }
            }
        }
    }
    return std::span(best->second).subspan(first);
}
