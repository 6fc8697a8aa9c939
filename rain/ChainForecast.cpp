// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/ChainForecast.h"

#include "rain/SectionDataIDF.h"

#include <algorithm>
#include <vector>

namespace {

/// A record, what the memory manager adds to it, and its places in the lists of its section and its node.
constexpr double BytesOfRecord = sizeof(CSectionDataIDF) + 64.0;

} // namespace

CChainForecast ForecastChains(const CVariationNetwork& network) {
    CChainForecast forecast;
    forecast.m_isAtLeast = network.HasUnsettledDirections();
    std::vector<double> mostAbove(network.GetCount(), 0.0);
    std::vector<std::uint32_t> deliveredCounts(network.GetCount(), 0);
    std::vector<std::uint32_t> ready;
    // A head that stands in the list twice is one section here: the list of a run repeats none.
    for (std::uint32_t place = 0; place < network.GetCount(); ++place)
        if (network.GetInputCount(place) == 0)
            ready.push_back(place);
    while (!ready.empty()) {
        const std::uint32_t place = ready.back();
        ready.pop_back();
        const double records = mostAbove[place] + 1.0;
        forecast.m_records += records;
        if (records > forecast.m_mostOfSection) {
            forecast.m_mostOfSection = records;
            forecast.m_greatest = place;
        }
        const std::uint32_t next = network.GetNext(place);
        if (next == CVariationNetwork::Nowhere)
            continue;
        mostAbove[next] = std::max(mostAbove[next], records);
        if (++deliveredCounts[next] == network.GetInputCount(next))
            ready.push_back(next);
    }
    forecast.m_memory = BytesOfRecord * forecast.m_records;
    return forecast;
}
