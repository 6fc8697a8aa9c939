// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Utility.h"
#include "host/network_core/TopologyMultiStorage.h"
#include "host/sewage_core/FlowDirection.h"
#include "rain/run/NetworkWalk.h"
#include "rain/variations/VariationData.h"

#include <deque>
#include <map>
#include <string>
#include <vector>

/// The plain variation search: every combination is kept as a list of sections and walked whole from its heads. What
/// the search in use is compared with.
class CPlainSearch {
public:
    using CSection = OLMGis::Topology::CSection;
    using CSectionPtr = boost::shared_ptr<CSection>;
    using CSectionList = std::vector<CSectionPtr>;

    struct CData {
        std::size_t m_inputCount = 0;
        std::size_t m_visitedCount = 0;
        std::size_t m_bestIndex = NoBest;
        CSectionDataIDF m_best;
        std::vector<CSectionList> m_combinations;
    };
    static constexpr std::size_t NoBest = 0xFFFFFFFF;

    /// Without a walk combinations are only counted. mostEntries and mostCombinations bound what is tried; with 0
    /// combinations the queue runs alone.
    CPlainSearch(Rain::CNetworkWalk* walk, double mostEntries, double mostCombinations)
        : m_walk(walk), m_mostEntries(mostEntries), m_mostCombinations(mostCombinations) {}

    int Run(const CSectionList& sections) {
        CSectionList in;
        for (auto s = sections.rbegin(); s != sections.rend(); ++s)
            if (*s && (*s)->GetStartingNode() && (*s)->GetEndingNode())
                m_variations.try_emplace(std::string((*s)->GetGuid())).first->second.m_inputCount =
                    static_cast<std::size_t>((*s)->GetSectionsIn(in));
        std::deque<CSectionPtr> queue;
        for (const auto& s : sections)
            if (s && Find(s) != nullptr && s->GetSectionsIn(in) == 0)
                queue.push_back(s);
        while (!queue.empty()) {
            const CSectionPtr s = queue.front();
            queue.pop_front();
            if (++m_entries > m_mostEntries || (m_mostCombinations > 0.0 && !Treat(s)))
                return 0;
            CSectionList out;
            s->GetSectionsOut(out);
            if (out.empty())
                continue;
            const CSectionPtr next =
                out.size() == 1 ? out.front() : OLMGis::Sewage::CFlowDirection::GetMainOutSection(s->GetEndingNode());
            if (!next || Find(next) == nullptr)
                continue;
            if (++Find(next)->m_visitedCount == Find(next)->m_inputCount)
                queue.push_back(next);
            if (out.size() > 1)
                queue.push_back(next);
        }
        return 1;
    }

    /// The account of the search as it is appended to variations.txt.
    std::string MakeText() const {
        using OLMGis::Utility::CUtility;
        const std::string lineBreak = "\r\n";
        std::string text = lineBreak + "Best variations: ";
        for (const auto& [guid, data] : m_variations)
            if (data.m_bestIndex != NoBest)
                text += lineBreak + std::string(data.m_best.m_name) + ": " +
                        ListText(data.m_combinations[data.m_bestIndex]);
        text += lineBreak + CUtility::Format("%s\t%s\t%s\t%s\t%s\t%s\t%s\t%s", "S_NAME", "FLOW_IDF_INTENSITY",
                                             "FLOW_IDF_CONC_TIME", "FLOW_IDF_MJ_TIME", "FLOW_IDF_TIME", "FLOW_RAIN_IDF",
                                             "FLOW_IDF_AREA_CORRECTED_SECT", "FLOW_IDF_AREA_CORRECTED_TOTAL");
        for (const auto& [guid, data] : m_variations)
            if (const auto& best = data.m_best; data.m_bestIndex != NoBest)
                text += lineBreak + CUtility::Format("%s\t%.2f\t %.2f\t %.2f\t %.2f\t %.2f\t %.2f\t %.2f", best.m_name,
                                                     best.m_intensity, best.GetConcentrationTime(), best.m_upstreamTime,
                                                     best.m_flowTime, best.m_flow, best.m_ownArea, best.m_totalArea);
        for (const auto& [guid, data] : m_variations) {
            const auto section =
                OLMGis::Topology::CTopologyMultiStorage::Instance()->GetActiveTopology()->GetSectionByGuid(guid);
            text += lineBreak + CUtility::Format("%s ", section->GetName()) +
                    CUtility::Format(" - %d", data.m_combinations.size());
            for (std::size_t i = 0; i < data.m_combinations.size(); ++i)
                text += lineBreak + CUtility::Format("%d :%s", i + 1, ListText(data.m_combinations[i]));
        }
        return text;
    }

    CData* Find(const CSectionPtr& section) {
        const auto found = m_variations.find(std::string(section->GetGuid()));
        return found == m_variations.end() ? nullptr : &found->second;
    }

    std::map<std::string, CData> m_variations;
    double m_entries = 0.0;
    double m_combinations = 0.0;
    double m_computations = 0.0; ///< sections of all combinations
    Rain::CRunStop m_stop;       ///< of the combination that failed

private:
    static std::string ListText(const CSectionList& combination) {
        std::string text;
        for (const auto& section : combination)
            text += " " + std::string(section->GetName());
        return text;
    }

    bool Treat(const CSectionPtr& s) {
        CData& data = *Find(s);
        CSectionList in;
        s->GetSectionsIn(in);
        std::vector<std::size_t> sizes;
        for (const auto& above : in)
            sizes.push_back(1 + (Find(above) == nullptr ? 0 : Find(above)->m_combinations.size()));
        std::vector<std::size_t> counters(in.size(), 0);
        while (true) {
            CSectionList combination{s};
            for (std::size_t j = 0; j < in.size(); ++j)
                if (const CData* above = Find(in[j]); above != nullptr && counters[j] < above->m_combinations.size()) {
                    const CSectionList chosen = above->m_combinations[counters[j]];
                    combination.insert(combination.end(), chosen.begin(), chosen.end());
                }
            data.m_combinations.push_back(combination);
            m_computations += static_cast<double>(combination.size());
            if (++m_combinations > m_mostCombinations || !Try(s, data))
                return false;
            std::size_t place = in.size();
            while (place > 0 && counters[place - 1] == sizes[place - 1] - 1)
                counters[--place] = 0;
            if (place == 0)
                return true;
            ++counters[place - 1];
        }
    }

    bool Try(const CSectionPtr& s, CData& data) {
        if (m_walk == nullptr)
            return true;
        std::vector<std::uint32_t> rows;
        for (const auto& section : data.m_combinations.back())
            rows.push_back(section->GetRow());
        m_stop = m_walk->Walk(rows);
        if (m_stop.IsStopped())
            return false;
        const Rain::CRecordList* records = m_walk->FindRecords(s->GetRow());
        if (records == nullptr || records->empty())
            return true; // the walk did not come to the section
        const CSectionDataIDF& record = *records->front();
        if (data.m_bestIndex == NoBest || record.m_flow > data.m_best.m_flow) {
            data.m_bestIndex = data.m_combinations.size() - 1;
            data.m_best = record;
        }
        return true;
    }

    Rain::CNetworkWalk* m_walk;
    double m_mostEntries;
    double m_mostCombinations;
};
