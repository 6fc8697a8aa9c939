// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "rain/run/RunInput.h"

#include <cstdint>
#include <span>
#include <vector>

namespace Rain {

/// The ways on which a variation search goes from section to section. Sections are named by their rows; those of the
/// list that have both nodes take part.
class CVariationNetwork {
public:
    static constexpr std::uint32_t None = CRunNetwork::None;

    /// network is not owned. Linear.
    explicit CVariationNetwork(const CRunNetwork& network);

    const CRunNetwork& GetNetwork() const { return m_network; }
    std::uint32_t GetRowCount() const { return m_network.GetRowCount(); }

    /// Sections that take part, each once, in the order of the list.
    const std::vector<std::uint32_t>& GetSections() const { return m_sections; }
    bool TakesPart(std::uint32_t section) const { return m_network.IsListed(section) && m_network.HasNodes(section); }

    /// Sections that enter the section's start, in network order. So many must have finished before it is complete; one
    /// that doesn't take part has no combinations.
    std::span<const std::uint32_t> GetIn(std::uint32_t section) const { return m_network.GetIn(section); }

    /// Where the search goes on below a section: the only way out or the main outlet; None at an outfall, where no
    /// main outlet is chosen, and where that doesn't take part.
    std::uint32_t GetNext(std::uint32_t section) const {
        const std::uint32_t next = m_network.GetMainOut(section);
        return next != None && TakesPart(next) ? next : None;
    }

    /// Whether several sections leave the section's end. Below such a section the next one is entered once more.
    bool IsBifurcating(std::uint32_t section) const { return m_network.GetOut(section).size() > 1; }

    /// Sections with nothing upstream, in the order of the list, as often as it has them.
    const std::vector<std::uint32_t>& GetHeads() const { return m_heads; }

    /// Whether the search would end at some section because flow divides there and no main outlet is chosen.
    bool HasUnchosenOutlets() const { return m_hasUnchosenOutlets; }

private:
    const CRunNetwork& m_network;
    std::vector<std::uint32_t> m_sections;
    std::vector<std::uint32_t> m_heads;
    bool m_hasUnchosenOutlets = false;
};

} // namespace Rain
