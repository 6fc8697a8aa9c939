// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/FetchAhead.h"
#include "host/network_core/Entity.h"
#include "host/network_core/Section.h"

#include <boost/shared_ptr.hpp>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string_view>
#include <utility>
#include <vector>

/// A map from the GUIDs of entities of one network to values, in ascending order of the GUIDs' characters. An entity
/// finds its value by its row, without a search; the order is worked out when it is first asked for.
///
/// Emptying costs the entries, not the rows of the network: it is filled anew for each combination of a search.
template <class Value>
class CGuidMap {
public:
    struct CEntry {
        std::string_view m_guid; ///< belongs to the network, which outlives the map
        std::uint32_t m_row;
        Value m_value;
    };

    /// Enters a value, unless the entity has one: the first entry stays.
    template <class... Args>
    Value& Enter(const OLMGis::Topology::CEntity& entity, Args&&... args) {
        const std::uint32_t row = entity.GetRow();
        if (row >= m_places.size())
            m_places.resize(std::max<std::size_t>(row + 1ULL, m_places.size() * 2), None);
        if (m_places[row] == None) {
            m_places[row] = static_cast<std::uint32_t>(m_entries.size());
            m_entries.push_back({entity.GetGuid(), row, Value(std::forward<Args>(args)...)});
            m_order.clear();
        }
        return m_entries[m_places[row]].m_value;
    }

    /// Null when there is none.
    Value* Find(std::uint32_t row) {
        return row < m_places.size() && m_places[row] != None ? &m_entries[m_places[row]].m_value : nullptr;
    }
    const Value* Find(std::uint32_t row) const { return const_cast<CGuidMap*>(this)->Find(row); }

    /// Has fetched what Find looks at for a row, in two steps, 0 and 1: a walk jumps about in it.
    void Fetch(std::uint32_t row, int step) const {
        if (row >= m_places.size())
            return;
        if (step == 0)
            OLMGis::Utility::FetchAhead(&m_places[row]);
        else if (m_places[row] != None)
            OLMGis::Utility::FetchObjectAhead(&m_entries[m_places[row]]);
    }

    void Clear() {
        for (const CEntry& entry : m_entries)
            m_places[entry.m_row] = None;
        m_entries.clear();
        m_order.clear();
    }

    std::size_t GetCount() const { return m_entries.size(); }

    /// Calls use(guid, value) for all entries in order.
    template <class Use>
    void ForEach(Use&& use) const {
        Sort();
        for (const COrdered& place : m_order)
            use(m_entries[place.m_entry].m_guid, m_entries[place.m_entry].m_value);
    }
    template <class Use>
    void ForEach(Use&& use) {
        Sort();
        for (const COrdered& place : m_order)
            use(m_entries[place.m_entry].m_guid, m_entries[place.m_entry].m_value);
    }

    /// The entry that was entered as the given one, from 0; for loops whose order nobody sees, without sorting.
    const CEntry& GetEntered(std::size_t index) const { return m_entries[index]; }

private:
    static constexpr std::uint32_t None = std::numeric_limits<std::uint32_t>::max();

    /// Most GUIDs differ in their first characters: comparing these needs no look at the texts.
    struct COrdered {
        std::uint64_t m_head;
        std::uint32_t m_entry;
    };

    static std::uint64_t Head(std::string_view guid) {
        std::uint64_t head = 0;
        for (std::size_t i = 0; i < sizeof head; ++i)
            head = head << 8U | (i < guid.size() ? static_cast<unsigned char>(guid[i]) : 0U);
        return head;
    }

    void Sort() const {
        if (m_order.size() == m_entries.size())
            return;
        m_order.reserve(m_entries.size());
        for (const CEntry& entry : m_entries)
            m_order.push_back({Head(entry.m_guid), static_cast<std::uint32_t>(m_order.size())});
        const auto isBefore = [this](const COrdered& a, const COrdered& b) {
            return a.m_head != b.m_head ? a.m_head < b.m_head
                                        : m_entries[a.m_entry].m_guid < m_entries[b.m_entry].m_guid;
        };
        if (!std::is_sorted(m_order.begin(), m_order.end(), isBefore))
            std::sort(m_order.begin(), m_order.end(), isBefore);
    }

    std::vector<CEntry> m_entries; ///< in order of entering
    std::vector<std::uint32_t> m_places;
    mutable std::vector<COrdered> m_order;
};

/// A set of sections of one network, which outlives it, compared by identity. Emptying costs the sections.
class CSelectedSections {
public:
    using CSectionPtr = boost::shared_ptr<OLMGis::Topology::CSection>;

    /// Nulls are kept out.
    void Insert(const CSectionPtr& section) {
        if (!section || Contains(*section))
            return;
        const std::uint32_t row = section->GetRow();
        if (row >= m_byRow.size())
            m_byRow.resize(std::max<std::size_t>(row + 1ULL, m_byRow.size() * 2), nullptr);
        m_byRow[row] = section.get();
        m_rows.push_back(row);
    }
    bool Contains(const OLMGis::Topology::CSection& section) const {
        return section.GetRow() < m_byRow.size() && m_byRow[section.GetRow()] == &section;
    }
    void Clear() {
        for (const std::uint32_t row : m_rows)
            m_byRow[row] = nullptr;
        m_rows.clear();
    }
    std::size_t GetCount() const { return m_rows.size(); }

    /// Has fetched what Contains looks at for a section of this row.
    void Fetch(std::uint32_t row) const { OLMGis::Utility::FetchElementAhead(m_byRow, row); }

private:
    std::vector<const OLMGis::Topology::CSection*> m_byRow;
    std::vector<std::uint32_t> m_rows;
};
