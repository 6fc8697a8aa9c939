// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/variations/VariationForecast.h"

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

/// Digits of all numbers from 1 to count, one behind the other.
double CountDigits(double count) {
    double digits = 0.0;
    double least = 1.0; // of the numbers with as many digits
    for (int width = 1; least <= count; ++width, least *= 10.0)
        digits += width * (std::min(count, least * 10.0 - 1.0) - least + 1.0);
    return digits;
}

double CountDigitsOfOne(double number) {
    return number < 10.0 ? 1.0 : std::floor(std::log10(number)) + 1.0;
}

/// Counts what a search does at each entry of its queue.
class CVariationCounter {
public:
    CVariationCounter(const CVariationNetwork& network, const CVariationEntries& entries, const CVariationTrees& trees,
                      CVariationForecast& forecast)
        : m_network(network), m_trees(trees), m_forecast(forecast), m_states(network.GetRowCount()),
          m_entriesLeft(entries.m_ofSection) {}

    void Run() {
        m_live = BytesOfSection * static_cast<double>(m_network.GetSections().size());
        m_forecast.m_memory = m_live;
        CVariationQueue queue(m_network);
        while (!queue.IsEmpty()) {
            const std::uint32_t section = queue.Take();
            Treat(section);
            if (!std::isfinite(m_states[section].m_bytes)) {
                // What was not counted to the end is not less than what was.
                constexpr double Endless = std::numeric_limits<double>::infinity();
                m_forecast.m_total = m_forecast.m_mostOfSection = Endless;
                m_forecast.m_memory = m_forecast.m_fileBytes = Endless;
                m_forecast.m_greatest = section;
                return;
            }
            queue.Finish(section);
        }
        m_forecast.m_fileBytes = CountFileBytes();
    }

private:
    /// Of the combinations of a section. Bytes are those of the names in their lists, each with the blank before it.
    struct CState {
        double m_count = 0.0;
        double m_bytes = 0.0;
        double m_firstBytes = 0.0;   ///< of the first
        double m_longestBytes = 0.0; ///< of the longest
    };

    void Treat(std::uint32_t section) {
        CState& state = m_states[section];
        const double own = BytesOfName(section);
        double count = 1.0;
        double longest = own;
        double first = own;
        bool entersItself = false;
        for (const std::uint32_t above : m_network.GetIn(section)) {
            count *= m_states[above].m_count + 1.0;
            longest += m_states[above].m_longestBytes;
            first += m_states[above].m_firstBytes;
            entersItself = entersItself || above == section;
        }
        // Each combination of a section above goes with every choice at the others.
        double bytes = own * count;
        for (const std::uint32_t above : m_network.GetIn(section))
            bytes += m_states[above].m_bytes * (count / (m_states[above].m_count + 1.0));
        if (entersItself) { // counts as never left out, see CVariationTable
            bytes += first * (count / (state.m_count + 1.0));
            longest += std::max(first, state.m_longestBytes);
        }
        if (state.m_count == 0.0)
            state.m_firstBytes = first;
        state.m_count += count;
        state.m_bytes += bytes;
        state.m_longestBytes = std::max(state.m_longestBytes, longest);
        m_forecast.m_total += count;
        if (state.m_count > m_forecast.m_mostOfSection) {
            m_forecast.m_mostOfSection = state.m_count;
            m_forecast.m_greatest = section;
        }
        CountMemory(section, count);
    }

    /// Outcomes are kept for the section below, as long as that is still to be treated.
    void CountMemory(std::uint32_t section, double count) {
        m_live += CVariationTable::BytesOfTreatment(m_network.GetIn(section).size());
        const std::uint32_t next = m_network.GetNext(section);
        if (next != None && m_trees.IsTreeAbove(next) && m_entriesLeft[next] > 0.0)
            m_live += count * sizeof(CVariationOutcome);
        m_forecast.m_memory = std::max(m_forecast.m_memory, m_live);
        if (--m_entriesLeft[section] > 0.0 || !m_trees.IsTreeAbove(section))
            return;
        for (const std::uint32_t above : m_network.GetIn(section))
            if (m_network.GetNext(above) == section)
                m_live -= m_states[above].m_count * sizeof(CVariationOutcome);
    }

    double BytesOfName(std::uint32_t section) const {
        return 1.0 + static_cast<double>(m_network.GetNetwork().GetSection(section)->GetName().size());
    }

    /// Bytes of the file: heads, the best of each section as a list and as a row, then all combinations with their
    /// numbers. Which are best is not known yet: their lists count as the longest.
    double CountFileBytes() const {
        constexpr double LineBreak = 2.0;
        constexpr double Heads = 169.0;     // the title and the head of the table
        constexpr double RowNumbers = 65.0; // seven numbers of two decimals with tabs and blanks
        double bytes = Heads;
        for (const std::uint32_t section : m_network.GetSections()) {
            const CState& state = m_states[section];
            const double name = BytesOfName(section) - 1.0;
            if (state.m_count > 0.0)
                bytes += LineBreak + name + 2.0 + state.m_longestBytes + LineBreak + name + RowNumbers;
            bytes += LineBreak + name + 4.0 + CountDigitsOfOne(state.m_count);
            bytes += (LineBreak + 2.0) * state.m_count + CountDigits(state.m_count) + state.m_bytes;
        }
        return bytes;
    }

    /// Of each section: its data with the best record and what that refers to, its place in the network and the queue.
    static constexpr double BytesOfSection = sizeof(CVariationData) + sizeof(CSectionDataIDF) + 256.0;

    const CVariationNetwork& m_network;
    const CVariationTrees& m_trees;
    CVariationForecast& m_forecast;
    std::vector<CState> m_states; ///< by row
    std::vector<double> m_entriesLeft;
    double m_live = 0.0; ///< bytes held now
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
