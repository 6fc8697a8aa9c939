// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "rain/variations/VariationNetwork.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Rain {

/// The combinations of all sections of a search, in the order of trying, without one list of sections being kept.
///
/// A section is treated once or several times. A treatment goes through all choices of one combination, or none, at
/// each section that enters its start, the last of these running fastest. So a combination is its number: from that
/// and from how many combinations there were above when the treatment began, the choices follow, and from these the
/// list.
class CVariationTable {
public:
    /// As many combinations as one section may have: their numbers are unsigned int, whose greatest means none.
    static constexpr std::uint64_t MostCombinations = 0xFFFFFFFEU;

    /// network is not owned.
    explicit CVariationTable(const CVariationNetwork& network)
        : m_network(network), m_sections(network.GetRowCount()) {}

    /// Begins a treatment of a section; how many combinations it has. They count as tried only when they are added: 0,
    /// and no treatment, where there would be too many.
    std::uint64_t BeginTreatment(std::uint32_t section);

    /// One more of the treatment begun last is tried.
    void Add(std::uint32_t section) { ++m_sections[section].m_count; }
    std::uint64_t GetCount(std::uint32_t section) const { return m_sections[section].m_count; }

    /// The sections of a combination, tried as number index from 0: the section itself, then what was chosen above each
    /// section that enters it, in order. Cost: its length, no recursion.
    void List(std::uint32_t section, std::uint64_t index, std::vector<std::uint32_t>& list) const;

    /// Bytes that a treatment takes, however many combinations it has.
    static double BytesOfTreatment(std::size_t inCount) {
        return static_cast<double>(sizeof(CTreatment) + inCount * sizeof(std::uint32_t));
    }

private:
    struct CTreatment {
        std::uint64_t m_first;    ///< number of its first combination
        std::size_t m_firstAbove; ///< in m_counts: combinations of each entering section when it began
    };
    struct CTreated {
        std::uint64_t m_count = 0;
        std::vector<CTreatment> m_treatments;
    };

    struct CChoice {
        std::uint32_t m_section;
        std::uint64_t m_index;
    };
    void PushChoices(const CChoice& of, std::vector<CChoice>& choices) const;

    const CVariationNetwork& m_network;
    std::vector<CTreated> m_sections; ///< by row
    std::vector<std::uint32_t> m_counts;
};

} // namespace Rain
