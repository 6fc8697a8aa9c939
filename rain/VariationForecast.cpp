// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/VariationForecast.h"

#include "rain/VariationCombinations.h"
#include "rain/VariationData.h"
#include "rain/VariationOutcome.h"
#include "rain/VariationTrees.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

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
        : m_network(network), m_trees(trees), m_forecast(forecast), m_places(network.GetCount()),
          m_entriesLeft(entries.m_ofPlace) {}

    void Run() {
        m_live = BytesOfPlace * m_network.GetCount();
        m_forecast.m_memory = m_live;
        CVariationQueue queue(m_network);
        while (!queue.IsEmpty()) {
            const std::uint32_t place = queue.Take();
            Treat(place);
            if (!std::isfinite(m_forecast.m_plainComputations)) {
                // What was not counted to the end is not less than what was.
                constexpr double Endless = std::numeric_limits<double>::infinity();
                m_forecast.m_total = m_forecast.m_ofPlace[place] = Endless;
                m_forecast.m_plainComputations = m_forecast.m_computations = Endless;
                m_forecast.m_memory = m_forecast.m_fileBytes = Endless;
                m_forecast.m_greatest = place;
                return;
            }
            queue.Finish(place);
        }
        m_forecast.m_fileBytes += CountFileBytes();
    }

private:
    /// Sums over lists: of the sections in them, and of the bytes of their names, each with the blank before it.
    struct CListSum {
        double m_sections = 0.0;
        double m_bytes = 0.0;

        CListSum operator+(const CListSum& other) const {
            return {m_sections + other.m_sections, m_bytes + other.m_bytes};
        }
        CListSum operator*(double factor) const { return {m_sections * factor, m_bytes * factor}; }
    };

    struct CPlaceState {
        double m_count = 0.0;   ///< combinations
        CListSum m_sum;         ///< of all of them
        CListSum m_first;       ///< of the first of them
        double m_longest = 0.0; ///< bytes of the longest of them
    };

    void Treat(std::uint32_t place) {
        CPlaceState& state = m_places[place];
        const auto in = m_network.GetIn(place);
        double count = 1.0;
        double longest = OwnName(place).m_bytes;
        CListSum first = OwnName(place);
        bool entersItself = false;
        for (const std::uint32_t above : in) {
            count *= m_places[above].m_count + 1.0;
            longest += m_places[above].m_longest;
            if (m_places[above].m_count > 0.0)
                first = first + m_places[above].m_first;
            entersItself = entersItself || above == place;
        }
        // Each combination of a section above stands beside every choice at the others.
        CListSum sum = OwnName(place) * count;
        for (const std::uint32_t above : in)
            sum = sum + m_places[above].m_sum * (count / (m_places[above].m_count + 1.0));
        if (entersItself) {
            // In place of being left out it is entered with the first new combination, as soon as that is there.
            const double isLeftOut = state.m_count > 0.0 ? 0.0 : 1.0;
            sum = sum + first * (count / (state.m_count + 1.0) - isLeftOut);
            longest += std::max(first.m_bytes, state.m_longest);
        }
        if (state.m_count == 0.0)
            state.m_first = first;
        state.m_count += count;
        state.m_sum = state.m_sum + sum;
        state.m_longest = std::max(state.m_longest, longest);

        m_forecast.m_ofPlace[place] += count;
        m_forecast.m_total += count;
        m_forecast.m_plainComputations += sum.m_sections;
        m_forecast.m_computations += m_trees.IsTreeAbove(place) ? count : sum.m_sections;
        if (m_forecast.m_greatest == Nowhere ||
            m_forecast.m_ofPlace[place] > m_forecast.m_ofPlace[m_forecast.m_greatest])
            m_forecast.m_greatest = place;
        CountMemory(place, count);
    }

    /// Outcomes are kept for the section below, as long as that is still to be treated.
    void CountMemory(std::uint32_t place, double count) {
        m_live += CVariationTable::BytesOfTreatment(m_network.GetIn(place).size());
        const std::uint32_t next = m_network.GetNext(place);
        if (next != Nowhere && m_trees.IsTreeAbove(next) && m_entriesLeft[next] > 0.0)
            m_live += count * sizeof(CVariationOutcome);
        m_forecast.m_memory = std::max(m_forecast.m_memory, m_live);
        if (--m_entriesLeft[place] > 0.0 || !m_trees.IsTreeAbove(place))
            return;
        for (const std::uint32_t above : m_network.GetIn(place))
            if (m_network.GetNext(above) == place)
                m_live -= m_places[above].m_count * sizeof(CVariationOutcome);
    }

    CListSum OwnName(std::uint32_t place) const {
        return {1.0, 1.0 + static_cast<double>(m_network.GetSection(place)->GetName().size())};
    }

    /// The file as it is laid out: heads, the best of each section as a list and as a row, then all combinations with
    /// their numbers. Which are best is not known yet: their lists count as the longest.
    double CountFileBytes() const {
        constexpr double LineBreak = 2.0;
        constexpr double Heads = 169.0;     // the title and the head of the table
        constexpr double RowNumbers = 65.0; // seven numbers of two decimals with tabs and blanks
        double bytes = Heads;
        for (std::uint32_t place = 0; place < m_network.GetCount(); ++place) {
            const CPlaceState& state = m_places[place];
            const double name = OwnName(place).m_bytes - 1.0;
            if (state.m_count > 0.0)
                bytes += LineBreak + name + 2.0 + state.m_longest + LineBreak + name + RowNumbers;
            bytes += LineBreak + name + 4.0 + CountDigitsOfOne(state.m_count);
            bytes += (LineBreak + 2.0) * state.m_count + CountDigits(state.m_count) + state.m_sum.m_bytes;
        }
        return bytes;
    }

    static constexpr std::uint32_t Nowhere = CVariationNetwork::Nowhere;

    /// Of each section: its data with the best record and what that refers to, its place in the network and the queue.
    static constexpr double BytesOfPlace = sizeof(CVariationData) + sizeof(CSectionDataIDF) + 256.0;

    const CVariationNetwork& m_network;
    const CVariationTrees& m_trees;
    CVariationForecast& m_forecast;
    std::vector<CPlaceState> m_places;
    std::vector<double> m_entriesLeft;
    double m_live = 0.0; ///< bytes held now
};

} // namespace

bool CVariationForecast::IsOverflown() const {
    return !std::isfinite(m_total);
}

CVariationForecast ForecastVariations(const CVariationNetwork& network, const CVariationEntries& entries,
                                      const CVariationTrees& trees) {
    CVariationForecast forecast;
    forecast.m_isAtLeast = network.HasUnsettledDirections();
    forecast.m_endless = entries.m_endless;
    if (forecast.m_endless != CVariationForecast::Nowhere)
        return forecast;
    forecast.m_entries = entries.m_total;
    forecast.m_ofPlace.assign(network.GetCount(), 0.0);
    CVariationCounter(network, entries, trees, forecast).Run();
    return forecast;
}
