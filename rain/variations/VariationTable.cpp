// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/variations/VariationTable.h"

#include <algorithm>
#include <limits>

namespace Rain {

std::uint64_t CVariationTable::BeginTreatment(std::uint32_t section) {
    CTreated& treated = m_sections[section];
    const std::uint64_t room = MostCombinations - treated.m_count;
    std::uint64_t count = 1;
    for (const std::uint32_t above : m_network.GetIn(section)) {
        const std::uint64_t choices = m_sections[above].m_count + 1;
        if (count > room / choices)
            return 0;
        count *= choices;
    }
    if (count > room)
        return 0;
    treated.m_treatments.push_back({treated.m_count, m_counts.size()});
    for (const std::uint32_t above : m_network.GetIn(section))
        m_counts.push_back(static_cast<std::uint32_t>(m_sections[above].m_count));
    return count;
}

void CVariationTable::List(std::uint32_t section, std::uint64_t index, std::vector<std::uint32_t>& list) const {
    list.clear();
    std::vector<CChoice> choices{{section, index}};
    while (!choices.empty()) {
        const CChoice choice = choices.back();
        choices.pop_back();
        list.push_back(choice.m_section);
        PushChoices(choice, choices);
    }
}

/// The choices at the entering sections, the first on top.
void CVariationTable::PushChoices(const CChoice& of, std::vector<CChoice>& choices) const {
    const auto& treatments = m_sections[of.m_section].m_treatments;
    const auto next =
        std::upper_bound(treatments.begin(), treatments.end(), of.m_index,
                         [](std::uint64_t index, const CTreatment& treatment) { return index < treatment.m_first; });
    const CTreatment& treatment = *std::prev(next);
    const auto in = m_network.GetIn(of.m_section);
    std::uint64_t number = of.m_index - treatment.m_first;
    const bool isFirst = number == 0;
    for (std::size_t j = in.size(); j-- > 0;) {
        const std::uint64_t count = m_counts[treatment.m_firstAbove + j];
        const std::uint64_t choice = number % (count + 1);
        number /= count + 1;
        // A section that enters itself gains combinations while it is treated: after the first of them the place for
        // leaving it out names that one.
        if (choice < count || (in[j] == of.m_section && !isFirst))
            choices.push_back({in[j], choice});
    }
}

} // namespace Rain
