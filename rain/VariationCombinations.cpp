// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/VariationCombinations.h"

#include <algorithm>
#include <limits>

std::uint64_t CVariationTable::BeginTreatment(std::uint32_t place) {
    CPlace& treated = m_places[place];
    const std::uint64_t room = MostCombinations - treated.m_count;
    std::uint64_t count = 1;
    for (const std::uint32_t above : m_network->GetIn(place)) {
        const std::uint64_t choices = m_places[above].m_count + 1;
        if (count > room / choices)
            return 0;
        count *= choices;
    }
    if (count > room)
        return 0;
    treated.m_treatments.push_back({treated.m_count, m_counts.size()});
    for (const std::uint32_t above : m_network->GetIn(place))
        m_counts.push_back(static_cast<std::uint32_t>(m_places[above].m_count));
    return count;
}

void CVariationTable::List(std::uint32_t place, std::uint64_t index, std::vector<std::uint32_t>& list) const {
    list.clear();
    std::vector<CChoice> choices{{place, index}};
    while (!choices.empty()) {
        const CChoice choice = choices.back();
        choices.pop_back();
        list.push_back(choice.m_place);
        PushChoices(choice, choices);
    }
}

/// The choices at the entering sections, the first on top.
void CVariationTable::PushChoices(const CChoice& of, std::vector<CChoice>& choices) const {
    const auto& treatments = m_places[of.m_place].m_treatments;
    const auto behind =
        std::upper_bound(treatments.begin(), treatments.end(), of.m_index,
                         [](std::uint64_t index, const CTreatment& treatment) { return index < treatment.m_first; });
    const CTreatment& treatment = *std::prev(behind);
    const auto in = m_network->GetIn(of.m_place);
    std::uint64_t number = of.m_index - treatment.m_first;
    const bool isFirst = number == 0;
    for (std::size_t j = in.size(); j-- > 0;) {
        const std::uint64_t count = m_counts[treatment.m_firstAbove + j];
        const std::uint64_t choice = number % (count + 1);
        number /= count + 1;
        // A section that enters itself gains combinations while it is treated: after the first of them the place for
        // leaving it out names that one.
        if (choice < count || (in[j] == of.m_place && !isFirst))
            choices.push_back({in[j], choice});
    }
}

CVariationCombinations::CSectionList CVariationCombinations::operator[](std::size_t index) const {
    std::vector<std::uint32_t> places;
    m_table->List(m_place, index, places);
    CSectionList sections;
    sections.reserve(places.size());
    for (const std::uint32_t place : places)
        sections.push_back(m_table->GetNetwork().GetSection(place));
    return sections;
}

void CVariationCombinations::AppendNames(std::size_t index, std::string& text) const {
    std::vector<std::uint32_t> places;
    m_table->List(m_place, index, places);
    for (const std::uint32_t place : places) {
        text += ' ';
        text += m_table->GetNetwork().GetSection(place)->GetName();
    }
}
