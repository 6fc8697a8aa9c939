// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/NodeDataIDF.h"

#include "rain/RainITPParameters.h"
#include "rain/RecordRelease.h"

#include <cmath>

namespace {

/// Records of other branches that are nearer than this to the best time count as reaching the node with it.
constexpr double SameTime = 0.05;

double TimeToNode(const CSectionDataIDF& record, const CRainITPParameters& params) {
    return params.m_rainfallMode == RainChoices::TurkishParameters ? record.m_inletTime + record.m_flowTime
                                                                   : record.m_upstreamTime;
}

} // namespace

CNodeDataIDF::~CNodeDataIDF() {
    if (m_results.empty())
        return;
    CRecordRelease release;
    for (auto& [name, list] : m_results)
        for (auto& record : list)
            release.Take(std::move(record));
    release.Finish();
}

void CNodeDataIDF::AddResult(const boost::shared_ptr<CSectionDataIDF>& record) {
    m_results[record->m_name].push_back(record);
    m_deliveredCount = static_cast<int>(m_results.size());
}

std::span<const boost::shared_ptr<CSectionDataIDF>> CNodeDataIDF::ChooseUpstream() const {
    if (m_results.empty())
        return {};
    auto best = m_results.begin();
    for (auto branch = std::next(best); branch != m_results.end(); ++branch) {
        const double time = TimeToNode(*branch->second.front(), *m_params);
        const double bestTime = TimeToNode(*best->second.front(), *m_params);
        if ((m_params->m_branchingFlowTime == RainChoices::LongestBranch && time > bestTime) ||
            (m_params->m_branchingFlowTime == RainChoices::ShortestBranch && time < bestTime))
            best = branch;
    }
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
    return std::span(best->second.data(), best->second.size()).subspan(first);
}
