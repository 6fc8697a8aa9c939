// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "rain/run/SectionDataIDF.h"

#include <map>
#include <span>
#include <string_view>

/// What reaches a node at which a selected section starts, in one walk: the results of the sections that end there.
class CNodeDataIDF {
public:
    using CBranches = std::map<std::string_view, Rain::CRecordList>; ///< no list is empty

    CNodeDataIDF() = default;
    CNodeDataIDF(std::string_view name, int inputCount, const Rain::CRunSettings& settings)
        : m_name(name), m_inputCount(inputCount), m_params(&settings) {}

    /// Adds a finished record, not null, after those of the same section name. Sections of one name count as one.
    void AddResult(const CSectionDataIDF* record);

    /// The branch that goes on downstream where branches meet, see CBranchChoice. With the partial area effect a record
    /// of another branch that is less than 5 % away in time takes its place when it has the greater flow.
    ///
    /// Returns the records of the branch from the best one on; empty when nothing has reached the node. Valid until the
    /// next AddResult.
    std::span<const CSectionDataIDF* const> ChooseUpstream() const;

    std::string_view m_name;                      ///< belongs to the network, which outlives the record
    CBranches m_results;                          ///< by section name
    int m_inputCount = -1;                        ///< selected sections that enter the node; -1 for a blank record
    const Rain::CRunSettings* m_params = nullptr; ///< not owned
    int m_deliveredCount = 0;                     ///< keys of m_results
};
