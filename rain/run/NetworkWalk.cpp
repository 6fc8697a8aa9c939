// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/run/NetworkWalk.h"

namespace Rain {

CNetworkWalk::CNetworkWalk(const CRunInput& input, const CRunSettings& settings)
    : m_input(input), m_settings(settings), m_iteration(settings), m_sums(input), m_isSelected(input.GetRowCount()),
      m_isEntered(input.GetRowCount()), m_records(input.GetRowCount()), m_nodes(input.GetNodeCount()) {}

CRunStop CNetworkWalk::Walk(std::span<const std::uint32_t> sections, const CGoOn& goOn) {
    Clear();
    Prepare(sections);
    for (std::size_t front = 0; front < m_queue.size(); ++front) {
        if (const CRunStop stop = WalkSection(m_queue[front]); stop.IsStopped())
            return stop;
        if (goOn && !goOn(front + 1))
            return CRunStop::Cancel();
    }
    return {};
}

/// Costs what the walk before had selected, not the network: a search walks over many small selections.
void CNetworkWalk::Clear() {
    for (const std::uint32_t section : m_selected)
        m_isSelected[section] = false;
    for (const std::uint32_t section : m_entered) {
        m_isEntered[section] = false;
        m_records[section].clear();
        m_nodes[m_input.GetStart(section)] = {};
    }
    m_selected.clear();
    m_entered.clear();
    m_store.clear();
    m_queue.clear();
}

void CNetworkWalk::Prepare(std::span<const std::uint32_t> sections) {
    for (const std::uint32_t section : sections) {
        if (m_isSelected[section])
            continue;
        m_isSelected[section] = true;
        m_selected.push_back(section);
        if (m_input.HasNodes(section)) {
            m_isEntered[section] = true;
            m_entered.push_back(section);
        }
    }
    m_sums.BeginWalk(m_selected, m_isSelected);
    for (const std::uint32_t section : m_entered) {
        CNodeDataIDF& node = m_nodes[m_input.GetStart(section)];
        if (node.m_inputCount >= 0)
            continue;
        int inputCount = 0;
        for (const std::uint32_t in : m_input.GetIn(section))
            inputCount += m_isSelected[in] ? 1 : 0;
        node = CNodeDataIDF(m_input.GetNodeName(m_input.GetStart(section)), inputCount, m_settings);
    }
    // A head that is listed twice is walked twice. Fixed: others rely on it.
    for (const std::uint32_t section : sections)
        if (m_isEntered[section] && m_nodes[m_input.GetStart(section)].m_inputCount == 0)
            m_queue.push_back(section);
}

CRunStop CNetworkWalk::WalkSection(std::uint32_t section) {
    if (!m_isEntered[section])
        return {};
    CNodeDataIDF* const end = FindOwnNode(m_input.GetEnd(section));
    const auto candidates = FindNode(m_input.GetStart(section))->ChooseUpstream();
    for (std::size_t i = 0;; ++i) {
        const CSectionDataIDF* const previous = i < candidates.size() ? candidates[i] : nullptr;
        const CSectionDataIDF* computed = nullptr;
        if (const CRunStop stop = ComputeSection(section, previous, computed); stop.IsStopped())
            return stop;
        if (end != nullptr)
            end->AddResult(computed);
        // With the partial area effect each candidate counts, and at last the section as a head of the network.
        if (m_settings.m_partialArea == 0 || previous == nullptr)
            break;
    }
    if (end != nullptr && end->m_deliveredCount == end->m_inputCount)
        if (const std::uint32_t next = FindNext(section); next != CRunInput::None)
            m_queue.push_back(next);
    return {};
}

CRunStop CNetworkWalk::ComputeSection(std::uint32_t section, const CSectionDataIDF* previous,
                                      const CSectionDataIDF*& computed) {
    CSectionDataIDF& record = m_store.emplace_back(section, m_input.Of(section), m_settings);
    record.m_totalArea = m_sums.Sum(section);
    record.m_startNode = FindNode(m_input.GetStart(section));
    if (const CRunStop stop = m_iteration.Iterate(record, previous); stop.IsStopped())
        return stop;
    if (m_settings.m_partialArea != 0)
        record.KeepChainArea();
    m_records[section].push_back(&record);
    computed = &record;
    return {};
}

/// The main outlet when it is selected, else the first selected way out; None without one.
std::uint32_t CNetworkWalk::FindNext(std::uint32_t section) const {
    const std::uint32_t main = m_input.GetMainOut(section);
    if (main != CRunInput::None && m_isSelected[main])
        return main;
    for (const std::uint32_t out : m_input.GetOut(section))
        if (m_isSelected[out])
            return out;
    return CRunInput::None;
}

const CRecordList* CNetworkWalk::FindRecords(std::uint32_t section) const {
    return section < m_records.size() && m_isEntered[section] ? &m_records[section] : nullptr;
}

CNodeDataIDF* CNetworkWalk::FindOwnNode(std::uint32_t node) {
    return node < m_nodes.size() && m_nodes[node].m_inputCount >= 0 ? &m_nodes[node] : nullptr;
}

const CNodeDataIDF* CNetworkWalk::FindNode(std::uint32_t node) const {
    return const_cast<CNetworkWalk*>(this)->FindOwnNode(node);
}

} // namespace Rain
