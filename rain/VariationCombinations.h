// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "rain/VariationNetwork.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

/// The combinations of all sections of a search, in the order of trying, without one list of sections being kept.
///
/// A section is treated once or several times. A treatment goes through all choices of one combination, or none, at
/// each section that enters its start, the last of these running fastest. So a combination is its number: from that
/// and from how many combinations stood above when the treatment began, the choices follow, and from these the list.
class CVariationTable {
public:
    /// As many combinations as one section may have: their numbers are unsigned int, whose greatest means none.
    static constexpr std::uint64_t MostCombinations = 0xFFFFFFFEU;

    explicit CVariationTable(std::shared_ptr<const CVariationNetwork> network)
        : m_network(std::move(network)), m_places(m_network->GetCount()) {}

    /// Begins a treatment of a place; how many combinations it has. They count as tried only when they are added: 0,
    /// and no treatment, where there would be too many.
    std::uint64_t BeginTreatment(std::uint32_t place);

    /// One more of the treatment begun last is tried.
    void Add(std::uint32_t place) { ++m_places[place].m_count; }
    std::uint64_t GetCount(std::uint32_t place) const { return m_places[place].m_count; }

    /// Fills list with the places of a combination: the section itself, then what was chosen above each section that
    /// enters it, in order. Cost: its length, no recursion.
    void List(std::uint32_t place, std::uint64_t index, std::vector<std::uint32_t>& list) const;

    const CVariationNetwork& GetNetwork() const { return *m_network; }

    /// Bytes that a treatment takes, however many combinations it has.
    static double BytesOfTreatment(std::size_t inCount) {
        return static_cast<double>(sizeof(CTreatment) + inCount * sizeof(std::uint32_t));
    }

private:
    struct CTreatment {
        std::uint64_t m_first;    ///< number of its first combination
        std::size_t m_firstAbove; ///< in m_counts: combinations of each entering section when it began
    };
    struct CPlace {
        std::uint64_t m_count = 0;
        std::vector<CTreatment> m_treatments;
    };

    struct CChoice {
        std::uint32_t m_place;
        std::uint64_t m_index;
    };
    void PushChoices(const CChoice& of, std::vector<CChoice>& choices) const;

    std::shared_ptr<const CVariationNetwork> m_network;
    std::vector<CPlace> m_places;
    std::vector<std::uint32_t> m_counts;
};

/// The combinations of one section: a list of lists of sections, each made when it is asked for. Copies share.
class CVariationCombinations {
public:
    using CSectionList = CVariationNetwork::CSectionList;

    CVariationCombinations() = default;
    CVariationCombinations(std::shared_ptr<const CVariationTable> table, std::uint32_t place)
        : m_table(std::move(table)), m_place(place) {}

    std::size_t size() const { return m_table ? m_table->GetCount(m_place) : 0; }
    bool empty() const { return size() == 0; }

    /// The combination tried as number index, from 0; it begins with the section itself.
    CSectionList operator[](std::size_t index) const;

    /// Appends the names of its sections, a blank before each.
    void AppendNames(std::size_t index, std::string& text) const;

private:
    std::shared_ptr<const CVariationTable> m_table;
    std::uint32_t m_place = 0;
};
