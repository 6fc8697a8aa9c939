// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "rain/run/NetworkWalk.h"
#include "rain/variations/OutcomeKeeping.h"
#include "rain/variations/VariationData.h"
#include "rain/variations/VariationForecast.h"
#include "rain/variations/VariationOutcome.h"
#include "rain/variations/VariationTable.h"

#include <cstdint>
#include <vector>

namespace Rain {

/// A search over all combinations of what is upstream of each section: which of them gives it the greatest flow.
///
/// Its results are those of walking every combination whole, bit for bit, but a walk repeats for each what it computed
/// for the combinations upstream. Where everything upstream is a tree these records stay the same: times, areas and
/// names of a branch do not depend on the other branches. There a combination costs one section, on the results of its
/// sections upstream; elsewhere it is walked whole. Of a combination upstream only its outcome is kept, see
/// COutcomeKeeping.
class CVariationSearch {
public:
    /// Nothing is owned. The plan is of the network of the input, and ends.
    CVariationSearch(const CRunInput& input, const CRunSettings& settings, const CSearchPlan& plan);

    /// Searches. Ends by itself, or at the first combination that can't be calculated, or when goOn, asked after each
    /// combination with the number tried, says no.
    CRunStop Run(const CGoOn& goOn = {});

    /// Sections that take part, each once.
    const std::vector<std::uint32_t>& GetSections() const { return m_network.GetSections(); }

    /// Null for a section that does not take part.
    const CVariationData* FindData(std::uint32_t section) const;
    const CVariationTable& GetTable() const { return m_table; }

private:
    /// A section that enters the one that is treated.
    struct CEntering {
        const CVariationOutcome* m_outcomes = nullptr; ///< of its combinations
        std::uint64_t m_count = 0;                     ///< of them
        std::uint64_t m_choice = 0;                    ///< the present one; m_count leaves the section out
        CSectionDataIDF m_record;                      ///< its part as the upstream record
        CSectionDataIDF m_above;                       ///< what that is built on
        bool m_repeatsName = false;                    ///< of the section before it in the order of names
    };

    CRunStop Extend(std::uint32_t section, std::uint64_t count, const CGoOn& goOn);
    CRunStop WalkWhole(std::uint32_t section, std::uint64_t count, const CGoOn& goOn);

    std::vector<CEntering> GatherEntering(std::uint32_t section);
    static bool GoToNext(std::vector<CEntering>& entering);
    const CEntering* ChooseUpstream(const std::vector<CEntering>& entering, bool& isReached) const;
    static const CSectionDataIDF* StandIn(CEntering& entering);

    static void Offer(CVariationData& data, const CSectionDataIDF& record, std::uint64_t index);
    void Keep(std::uint32_t section, const CSectionDataIDF* record);

    const CRunInput& m_input;
    const CRunSettings& m_settings;
    const CVariationNetwork& m_network;
    const CVariationTrees& m_trees;
    COutcomeKeeping m_keeping;

    CSectionIteration m_iteration;
    CNetworkWalk m_walk;
    CVariationTable m_table;
    std::vector<CVariationData> m_data;                     ///< by row
    std::vector<std::vector<CVariationOutcome>> m_outcomes; ///< by row
    std::vector<std::size_t> m_nameOrder;                   ///< of the present entering sections
    std::uint64_t m_tried = 0;                              ///< combinations
};

} // namespace Rain
