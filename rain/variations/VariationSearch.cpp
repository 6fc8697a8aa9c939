// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/variations/VariationSearch.h"

#include <algorithm>
#include <numeric>

namespace Rain {

CVariationSearch::CVariationSearch(const CRunInput& input, const CRunSettings& settings, const CSearchPlan& plan)
    : m_input(input), m_settings(settings), m_network(plan.m_network), m_trees(plan.m_trees),
      m_keeping(m_network, plan.m_entries, m_trees), m_iteration(settings), m_walk(input, settings), m_table(m_network),
      m_data(input.GetRowCount()), m_outcomes(input.GetRowCount()) {
    for (const std::uint32_t section : GetSections())
        m_data[section].m_inputCount = static_cast<int>(m_network.GetIn(section).size());
}

const CVariationData* CVariationSearch::FindData(std::uint32_t section) const {
    return section < m_data.size() && m_network.TakesPart(section) ? &m_data[section] : nullptr;
}

CRunStop CVariationSearch::Run(const CGoOn& goOn) {
    CVariationQueue queue(m_network);
    while (!queue.IsEmpty()) {
        const std::uint32_t section = queue.Take();
        const std::uint64_t count = m_table.BeginTreatment(section);
        if (m_keeping.IsKept(section))
            m_outcomes[section].reserve(m_outcomes[section].size() + count);
        const CRunStop stop =
            m_trees.IsTreeAbove(section) ? Extend(section, count, goOn) : WalkWhole(section, count, goOn);
        if (stop.IsStopped())
            return stop;
        for (const std::uint32_t above : m_keeping.Finish(section))
            std::vector<CVariationOutcome>().swap(m_outcomes[above]);
        queue.Finish(section);
    }
    for (const std::uint32_t section : GetSections())
        m_data[section].m_visitedCount = queue.GetVisitedCount(section);
    return {};
}

/// Every choice at the entering sections, each by computing the one section.
CRunStop CVariationSearch::Extend(std::uint32_t section, std::uint64_t count, const CGoOn& goOn) {
    std::vector<CEntering> entering = GatherEntering(section);
    const CSectionDataIDF blank(section, m_input.Of(section), m_settings);
    CSectionDataIDF record;
    const std::uint64_t first = m_table.GetCount(section);
    for (std::uint64_t i = 0; i < count; ++i, GoToNext(entering)) {
        m_table.Add(section);
        bool isReached = true;
        const CEntering* const upstream = ChooseUpstream(entering, isReached);
        if (isReached) {
            record = blank;
            // In the order of CAreaSums: results agree to the last bit.
            record.m_totalArea = blank.m_ownArea;
            for (const CEntering& in : entering)
                if (in.m_choice < in.m_count)
                    record.m_totalArea += in.m_outcomes[in.m_choice].m_totalArea;
            const auto* const previous =
                upstream == nullptr ? nullptr : StandIn(entering[static_cast<std::size_t>(upstream - entering.data())]);
            if (const CRunStop stop = m_iteration.Iterate(record, previous); stop.IsStopped())
                return stop;
            Offer(m_data[section], record, first + i);
        }
        Keep(section, isReached ? &record : nullptr);
        if (++m_tried; goOn && !goOn(m_tried))
            return CRunStop::Cancel();
    }
    return {};
}

/// Every combination of this treatment by a walk.
CRunStop CVariationSearch::WalkWhole(std::uint32_t section, std::uint64_t count, const CGoOn& goOn) {
    const std::uint64_t first = m_table.GetCount(section);
    std::vector<std::uint32_t> combination;
    for (std::uint64_t i = 0; i < count; ++i) {
        m_table.Add(section);
        m_table.List(section, first + i, combination);
        if (const CRunStop stop = m_walk.Walk(combination); stop.IsStopped())
            return stop;
        const CRecordList* const records = m_walk.FindRecords(section);
        const bool isReached = records != nullptr && !records->empty();
        if (isReached)
            Offer(m_data[section], *records->front(), first + i);
        Keep(section, isReached ? records->front() : nullptr);
        if (++m_tried; goOn && !goOn(m_tried))
            return CRunStop::Cancel();
    }
    return {};
}

std::vector<CVariationSearch::CEntering> CVariationSearch::GatherEntering(std::uint32_t section) {
    const auto in = m_network.GetIn(section);
    std::vector<CEntering> entering(in.size());
    for (std::size_t j = 0; j < in.size(); ++j) {
        entering[j].m_outcomes = m_outcomes[in[j]].data();
        entering[j].m_count = m_outcomes[in[j]].size();
        entering[j].m_record = CSectionDataIDF(in[j], m_input.Of(in[j]), m_settings);
    }
    const auto name = [&](std::size_t j) { return m_input.Of(in[j]).m_name; };
    m_nameOrder.resize(in.size());
    std::iota(m_nameOrder.begin(), m_nameOrder.end(), std::size_t{0});
    std::sort(m_nameOrder.begin(), m_nameOrder.end(), [&](std::size_t a, std::size_t b) { return name(a) < name(b); });
    for (std::size_t n = 1; n < m_nameOrder.size(); ++n)
        entering[m_nameOrder[n]].m_repeatsName = name(m_nameOrder[n]) == name(m_nameOrder[n - 1]);
    return entering;
}

/// The next choice, the last place running fastest; false after the last.
bool CVariationSearch::GoToNext(std::vector<CEntering>& entering) {
    for (auto in = entering.rbegin(); in != entering.rend(); ++in) {
        if (in->m_choice < in->m_count) {
            ++in->m_choice;
            return true;
        }
        in->m_choice = 0;
    }
    return false;
}

/// The branch that goes on; null when all are left out. Not reached is the section where one that enters it was not,
/// and where two of one name enter: these count as one, so that one always seems to be missing.
const CVariationSearch::CEntering* CVariationSearch::ChooseUpstream(const std::vector<CEntering>& entering,
                                                                    bool& isReached) const {
    CBranchChoice choice(m_settings);
    const CEntering* best = nullptr;
    bool isNameTaken = false;
    for (const std::size_t j : m_nameOrder) {
        const CEntering& in = entering[j];
        isNameTaken = isNameTaken && in.m_repeatsName;
        if (in.m_choice >= in.m_count)
            continue;
        const CVariationOutcome& outcome = in.m_outcomes[in.m_choice];
        isReached = isReached && outcome.m_isComputed && !isNameTaken;
        isNameTaken = true;
        if (choice.Offer(m_settings.GetTimeToNode(outcome.m_inletTime, outcome.m_flowTime, outcome.m_upstreamTime)))
            best = &in;
    }
    return best;
}

/// The record of an entering section with all that the section below asks of it.
const CSectionDataIDF* CVariationSearch::StandIn(CEntering& entering) {
    const CVariationOutcome& outcome = entering.m_outcomes[entering.m_choice];
    CSectionDataIDF& record = entering.m_record;
    record.m_upstreamTime = outcome.m_upstreamTime;
    record.m_flowTime = outcome.m_flowTime;
    record.m_inletTime = outcome.m_inletTime;
    record.m_carrierTime = outcome.m_carrierTime;
    record.m_previous = &entering.m_above;
    entering.m_above.m_carrierTime = outcome.m_takenCarrierTime;
    return &record;
}

/// Takes a record as the best when it is the first or has more flow, without the records that it was built on: these
/// end before it.
void CVariationSearch::Offer(CVariationData& data, const CSectionDataIDF& record, std::uint64_t index) {
    if (data.m_bestIndex != CVariationData::NoBest && !(record.m_flow > data.m_best.m_flow))
        return;
    data.m_bestIndex = static_cast<unsigned int>(index);
    data.m_best = record;
    data.m_best.m_startNode = nullptr;
    data.m_best.m_previous = nullptr;
}

void CVariationSearch::Keep(std::uint32_t section, const CSectionDataIDF* record) {
    if (!m_keeping.IsKept(section))
        return;
    CVariationOutcome outcome;
    if (record != nullptr)
        outcome = {record->m_upstreamTime,
                   record->m_flowTime,
                   record->m_inletTime,
                   record->m_carrierTime,
                   record->m_previous == nullptr ? 0.0 : record->m_previous->m_carrierTime,
                   record->m_totalArea,
                   true};
    m_outcomes[section].push_back(outcome);
}

} // namespace Rain
