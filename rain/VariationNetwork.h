// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/sewage_core/IFlowCalculator.h"

#include <cstdint>
#include <span>
#include <vector>

/// The sections of a variation search as plain numbers, and the ways on which the search goes from one to the next. A
/// section is named by its place: its number among those of the list that have both nodes, each counted once.
class CVariationNetwork {
public:
    using CSection = OLMGis::Topology::CSection;
    using CSectionList = OLMGis::Sewage::CSectionList;

    static constexpr std::uint32_t Nowhere = 0xFFFFFFFFU;

    /// sections: may hold nulls, sections without a node and repetitions. Main outlets are taken as they stand. Linear.
    explicit CVariationNetwork(const CSectionList& sections);

    std::uint32_t GetCount() const { return static_cast<std::uint32_t>(m_places.size()); }
    const boost::shared_ptr<CSection>& GetSection(std::uint32_t place) const { return m_places[place].m_section; }

    /// Nowhere for a section that is not among them.
    std::uint32_t FindPlace(const CSection& section) const {
        return section.GetRow() < m_placeOfRow.size() ? m_placeOfRow[section.GetRow()] : Nowhere;
    }

    /// Places of the sections that enter the section's start, in network order, without those that have no place: such
    /// a section has no combinations and so changes none.
    std::span<const std::uint32_t> GetIn(std::uint32_t place) const {
        return {m_in.data() + m_places[place].m_firstIn, m_places[place].m_inPlaces};
    }

    /// How many sections enter the section's start, those without a place included: so many must have finished.
    std::uint32_t GetInputCount(std::uint32_t place) const { return m_places[place].m_inputCount; }

    /// Where the search goes on behind a section: the only way out, or the main one of several; Nowhere at an outfall
    /// and where no main way is settled.
    std::uint32_t GetNext(std::uint32_t place) const { return m_places[place].m_next; }

    /// Whether several sections leave the section's end. Behind such a section the next one is entered once more.
    bool IsBifurcating(std::uint32_t place) const { return m_places[place].m_isBifurcating; }

    /// Sections with nothing upstream, in the order of the list, as often as they stand in it.
    const std::vector<std::uint32_t>& GetHeads() const { return m_heads; }

    /// Whether some section has several ways out and none of them settled, so that the search would end there.
    bool HasUnsettledDirections() const { return m_hasUnsettledDirections; }

private:
    struct CPlace {
        boost::shared_ptr<CSection> m_section;
        std::uint32_t m_firstIn = 0;
        std::uint32_t m_inPlaces = 0;
        std::uint32_t m_inputCount = 0;
        std::uint32_t m_next = Nowhere;
        bool m_isBifurcating = false;
    };

    void EnterSections(const CSectionList& sections);
    void Join(CPlace& place, CSectionList& scratch);

    std::vector<CPlace> m_places;
    std::vector<std::uint32_t> m_placeOfRow;
    std::vector<std::uint32_t> m_in; ///< of all places, one behind the other
    std::vector<std::uint32_t> m_heads;
    bool m_hasUnsettledDirections = false;
};
