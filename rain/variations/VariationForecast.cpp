// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/variations/VariationForecast.h"

#include "rain/run/NodeDataIDF.h"
#include "rain/variations/OutcomeKeeping.h"
#include "rain/variations/VariationData.h"
#include "rain/variations/VariationOutcome.h"
#include "rain/variations/VariationTable.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace Rain {

namespace {

constexpr std::uint32_t None = CVariationNetwork::None;

/// What a search takes before its first combination. Its tables have a place for each section and each node of the
/// network, also for those that take no part.
double BytesOfTables(const CVariationNetwork& network) {
    // Beside the large records the lists, counts and marks of the search and of its walk.
    constexpr double BytesOfRow = sizeof(CVariationData) + sizeof(CSectionInput) + 256.0;
    constexpr double BytesOfNode = sizeof(CNodeDataIDF) + 16.0;
    // In a walk over a whole combination: its record, its places in the lists of its section and its node.
    constexpr double BytesOfSection = sizeof(CSectionDataIDF) + 256.0;
    return BytesOfRow * network.GetRowCount() + BytesOfNode * network.GetNetwork().GetNodeCount() +
           BytesOfSection * static_cast<double>(network.GetSections().size());
}

/// Counts what a search does at each entry of its queue.
class CVariationCounter {
public:
    CVariationCounter(const CVariationNetwork& network, const CVariationEntries& entries, const CVariationTrees& trees,
                      CVariationForecast& forecast)
        : m_network(network), m_keeping(network, entries, trees), m_forecast(forecast),
          m_counts(network.GetRowCount(), 0.0) {}

    void Run() {
        m_memory = BytesOfTables(m_network);
        m_forecast.m_memory = m_memory;
        CVariationQueue queue(m_network);
        while (!queue.IsEmpty()) {
            const std::uint32_t section = queue.Take();
            Treat(section);
            if (!std::isfinite(m_counts[section])) {
                // What was not counted to the end is not less than what was.
                constexpr double Endless = std::numeric_limits<double>::infinity();
                m_forecast.m_total = m_forecast.m_mostOfSection = m_forecast.m_memory = Endless;
                m_forecast.m_greatest = section;
                return;
            }
            queue.Finish(section);
        }
    }

private:
    void Treat(std::uint32_t section) {
        double count = 1.0;
        for (const std::uint32_t above : m_network.GetIn(section))
            count *= m_counts[above] + 1.0;
        m_counts[section] += count;
        m_forecast.m_total += count;
        if (m_counts[section] > m_forecast.m_mostOfSection) {
            m_forecast.m_mostOfSection = m_counts[section];
            m_forecast.m_greatest = section;
        }
        CountMemory(section, count);
    }

    void CountMemory(std::uint32_t section, double count) {
        m_memory += CVariationTable::BytesOfTreatment(m_network.GetIn(section).size());
        if (m_keeping.IsKept(section))
            m_memory += count * sizeof(CVariationOutcome);
        m_forecast.m_memory = std::max(m_forecast.m_memory, m_memory);
        for (const std::uint32_t above : m_keeping.Finish(section))
            m_memory -= m_counts[above] * sizeof(CVariationOutcome);
    }

    const CVariationNetwork& m_network;
    COutcomeKeeping m_keeping;
    CVariationForecast& m_forecast;
    std::vector<double> m_counts; ///< combinations, by row
    double m_memory = 0.0;        ///< bytes in use at this point of the search
};

} // namespace

CVariationForecast ForecastSearch(const CVariationNetwork& network, const CVariationEntries& entries,
                                  const CVariationTrees& trees) {
    CVariationForecast forecast;
    forecast.m_isAtLeast = network.HasUnchosenOutlets();
    forecast.m_endless = entries.m_endless;
    if (forecast.m_endless == None)
        CVariationCounter(network, entries, trees, forecast).Run();
    return forecast;
}

CVariationForecast ForecastChains(const CVariationNetwork& network) {
    /// A record, what the memory manager adds to it, and its places in the lists of its section and its node.
    constexpr double BytesOfRecord = sizeof(CSectionDataIDF) + 64.0;
    CVariationForecast forecast;
    forecast.m_isAtLeast = network.HasUnchosenOutlets();
    std::vector<double> mostAbove(network.GetRowCount(), 0.0);
    std::vector<std::size_t> deliveredCounts(network.GetRowCount(), 0);
    std::vector<std::uint32_t> ready;
    for (const std::uint32_t section : network.GetSections())
        if (network.GetIn(section).empty())
            ready.push_back(section);
    while (!ready.empty()) {
        const std::uint32_t section = ready.back();
        ready.pop_back();
        const double records = mostAbove[section] + 1.0;
        forecast.m_total += records;
        if (records > forecast.m_mostOfSection) {
            forecast.m_mostOfSection = records;
            forecast.m_greatest = section;
        }
        const std::uint32_t next = network.GetNext(section);
        if (next == None)
            continue;
        mostAbove[next] = std::max(mostAbove[next], records);
        if (++deliveredCounts[next] == network.GetIn(next).size())
            ready.push_back(next);
    }
    forecast.m_memory = BytesOfRecord * forecast.m_total;
    return forecast;
}

} // namespace Rain
