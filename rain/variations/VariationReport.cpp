// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/variations/VariationReport.h"

#include "host/gis_core/Utility.h"

#include <string>
#include <vector>

using OLMGis::Utility::CUtility;

namespace Rain {

namespace {

constexpr const char* Break = "\r\n";
constexpr std::size_t PieceLength = 1U << 16U;

/// The last column is the area of the combination, which is the effective one in a search.
std::string ResultRow(const CSectionDataIDF& r) {
    return CUtility::Format("%s\t%.2f\t %.2f\t %.2f\t %.2f\t %.2f\t %.2f\t %.2f", r.m_name, r.m_intensity,
                            r.GetConcentrationTime(), r.m_upstreamTime, r.m_flowTime, r.m_flow, r.m_ownArea,
                            r.m_totalArea);
}

} // namespace

bool WriteVariations(const CRunInput& input, const CVariationSearch& search,
                     const std::function<bool(std::string_view text, std::uint64_t written)>& append) {
    std::string text = CUtility::Format("%sBest variations: ", Break);
    std::uint64_t written = 0;
    bool goesOn = true;
    const auto pass = [&](bool isLast) {
        if (!goesOn || (!isLast && text.size() < PieceLength))
            return;
        goesOn = append(text, written);
        text.clear();
    };
    std::vector<std::uint32_t> combination;
    const auto appendNames = [&](std::uint32_t section, std::uint64_t index) {
        search.GetTable().List(section, index, combination);
        for (const std::uint32_t each : combination) {
            text += ' ';
            text += input.Of(each).m_name;
        }
    };
    auto sections = search.GetSections();
    input.SortByGuid(sections);
    for (const std::uint32_t section : sections) {
        const CVariationData& data = *search.FindData(section);
        if (data.m_bestIndex == CVariationData::NoBest)
            continue;
        text += CUtility::Format("%s%s: ", Break, data.m_best.m_name);
        appendNames(section, data.m_bestIndex);
        pass(false);
    }
    text += Break;
    text += "S_NAME\tFLOW_IDF_INTENSITY\tFLOW_IDF_CONC_TIME\tFLOW_IDF_MJ_TIME\tFLOW_IDF_TIME\tFLOW_RAIN_IDF\t"
            "FLOW_IDF_AREA_CORRECTED_SECT\tFLOW_IDF_AREA_CORRECTED_TOTAL";
    for (const std::uint32_t section : sections) {
        const CVariationData& data = *search.FindData(section);
        if (data.m_bestIndex == CVariationData::NoBest)
            continue;
        text += Break;
        text += ResultRow(data.m_best);
        pass(false);
    }
    for (const std::uint32_t section : sections) {
        if (!goesOn)
            break;
        const std::uint64_t count = search.GetTable().GetCount(section);
        text += CUtility::Format("%s%s  - %d", Break, input.Of(section).m_name, count);
        for (std::uint64_t i = 0; i < count && goesOn; ++i, ++written) {
            text += CUtility::Format("%s%d :", Break, i + 1);
            appendNames(section, i);
            pass(false);
        }
    }
    pass(true);
    return goesOn;
}

} // namespace Rain
