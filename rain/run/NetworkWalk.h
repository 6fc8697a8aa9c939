// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "rain/run/AreaSums.h"
#include "rain/run/NodeDataIDF.h"
#include "rain/run/SectionIteration.h"

#include <cstdint>
#include <deque>
#include <span>
#include <vector>

namespace Rain {

/// The walk of a run: from the heads of a network down, each section after all selected sections upstream of it. May
/// walk again and again, each time over other sections; the records of the walk before end then.
class CNetworkWalk {
public:
    /// Neither is owned.
    CNetworkWalk(const CRunInput& input, const CRunSettings& settings);
    CNetworkWalk(const CNetworkWalk&) = delete;
    CNetworkWalk& operator=(const CNetworkWalk&) = delete;

    /// Walks over listed sections by row; those without both nodes take part in nothing but areas and waiting. Ends by
    /// itself or at the first section that can't be calculated. Sections below rings, side outlets and sections that
    /// are not selected are not reached, which is no failure. goOn is asked after each section.
    ///
    /// Cost: linear in the sections; with the partial area effect by chains the square of a chain's length.
    CRunStop Walk(std::span<const std::uint32_t> sections, const CGoOn& goOn = {});

    /// The records of a section, none when the walk did not reach it; null for one that is not selected or lacks a
    /// node.
    const CRecordList* FindRecords(std::uint32_t section) const;

    /// Null for a node at which no selected section starts.
    const CNodeDataIDF* FindNode(std::uint32_t node) const;

    bool IsSelected(std::uint32_t section) const { return m_isSelected[section]; }

    /// The sections with records or without, each once, in no order that matters.
    const std::vector<std::uint32_t>& GetSections() const { return m_entered; }

private:
    void Clear();
    void Prepare(std::span<const std::uint32_t> sections);
    CRunStop WalkSection(std::uint32_t section);
    CRunStop ComputeSection(std::uint32_t section, const CSectionDataIDF* previous, const CSectionDataIDF*& computed);
    CNodeDataIDF* FindOwnNode(std::uint32_t node);
    std::uint32_t FindNext(std::uint32_t section) const;

    const CRunInput& m_input;
    const CRunSettings& m_settings;
    CSectionIteration m_iteration;
    CAreaSums m_sums;

    std::vector<bool> m_isSelected; ///< by row
    std::vector<bool> m_isEntered;  ///< by row: selected and with both nodes
    std::vector<std::uint32_t> m_selected;
    std::vector<std::uint32_t> m_entered;
    std::vector<CRecordList> m_records;  ///< by row
    std::vector<CNodeDataIDF> m_nodes;   ///< by row of node; blank where no selected section starts
    std::deque<CSectionDataIDF> m_store; ///< all records; they keep their places
    std::vector<std::uint32_t> m_queue;
};

} // namespace Rain
