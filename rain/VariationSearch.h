// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "rain/FlowCalculator_RainITP.h"
#include "rain/VariationForecast.h"
#include "rain/VariationOutcome.h"
#include "rain/VariationTrees.h"

#include <cstdint>
#include <memory>
#include <vector>

/// A search over all combinations of what lies upstream of each section: which of them gives it the greatest flow.
///
/// Its results are those of walking every combination whole, bit for bit, but a walk repeats for each what it computed
/// for the combinations upstream. Where everything upstream is a tree these records hold unchanged: times, areas and
/// names of a branch see nothing of the other branches. There a combination costs one section, on what its sections
/// upstream came to; elsewhere it is walked whole. Of a combination upstream only its outcome is kept, and only as long
/// as the section below is still to be treated.
class CVariationSearch {
public:
    /// The maps and inputs belong to the calculator's run; variations is filled anew.
    CVariationSearch(CFlowCalculator_RainITP& calculator, CGuidMap<CVariationData>& variations, CSectionInputs& inputs,
                     const CFlowCalculator_RainITP::CSectionList& sections);

    /// 1 after the whole search; 0 with an alert when a combination can't be calculated or the search is too large,
    /// and without one when the user cancelled.
    int Run();

private:
    using CSection = OLMGis::Topology::CSection;
    using CSectionPtr = CFlowCalculator_RainITP::CSectionPtr;
    using CRecordPtr = CFlowCalculator_RainITP::CRecordPtr;

    /// A section that enters the one that is treated.
    struct CEntering {
        const CVariationOutcome* m_outcomes = nullptr; ///< of its combinations
        std::uint64_t m_count = 0;                     ///< of them
        std::uint64_t m_choice = 0;                    ///< the one in hand; m_count leaves the section out
        CRecordPtr m_record;                           ///< stands for it as the upstream record
        bool m_repeatsName = false;                    ///< of the section before it in the order of names
    };

    bool SearchAll();
    bool Treat(std::uint32_t place);
    bool Extend(std::uint32_t place, std::uint64_t count);
    bool WalkWhole(std::uint32_t place, std::uint64_t count);

    std::vector<CEntering> GatherEntering(std::uint32_t place);
    static bool GoToNext(std::vector<CEntering>& entering);
    const CEntering* ChooseUpstream(const std::vector<CEntering>& entering, bool& isReached) const;
    void StandIn(const CEntering& entering) const;
    double TimeToNode(const CVariationOutcome& outcome) const;

    void Offer(CVariationData& data, const CSectionDataIDF& record, std::uint64_t index) const;
    void Keep(std::uint32_t place, const CSectionDataIDF* record);
    bool IsKept(std::uint32_t place) const;
    void FinishEntry(std::uint32_t place);
    bool Proceed(double computations);

    CFlowCalculator_RainITP& m_calculator;
    const CRainITPParameters& m_params;
    CGuidMap<CVariationData>& m_variations;
    CSectionInputs& m_inputs;

    std::shared_ptr<const CVariationNetwork> m_network;
    CVariationEntries m_entries;
    CVariationTrees m_trees;
    CVariationForecast m_forecast;
    std::shared_ptr<CVariationTable> m_table;
    std::vector<std::vector<CVariationOutcome>> m_outcomes; ///< by place
    std::vector<std::size_t> m_nameOrder;                   ///< of the entering sections in hand
    double m_done = 0.0;                                    ///< computations
};
