// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/variations/VariationNetwork.h"

namespace Rain {

CVariationNetwork::CVariationNetwork(const CRunNetwork& network) : m_network(network) {
    std::vector<bool> isKnown(network.GetRowCount());
    for (const std::uint32_t section : network.GetRows()) {
        if (!network.HasNodes(section))
            continue;
        if (GetIn(section).empty())
            m_heads.push_back(section);
        if (isKnown[section])
            continue;
        isKnown[section] = true;
        m_sections.push_back(section);
        if (IsBifurcating(section) && network.GetMainOut(section) == None)
            m_hasUnchosenOutlets = true;
    }
}

} // namespace Rain
