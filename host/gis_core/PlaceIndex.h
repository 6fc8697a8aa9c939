// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/HashTableGrowth.h"

#include <absl/container/flat_hash_set.h>
#include <cstdint>
#include <limits>
#include <string_view>

namespace OLMGis::Utility {

/// The place of nothing in a list.
inline constexpr std::uint32_t NoPlace = std::numeric_limits<std::uint32_t>::max();

/// Finds places of a list by the texts at these places; keeps only places and hashes: 10 to 20 bytes each.
/// TextAt(place) gives the text of a place, which must not change while it is entered; Hash and Equal decide what
/// counts as the same.
template <class TextAt, class Hash, class Equal>
class CPlaceIndex {
public:
    explicit CPlaceIndex(TextAt textAt) : m_textAt(textAt), m_places(0, ByHash(), ByText{textAt}) {}
    CPlaceIndex(const CPlaceIndex&) = delete;
    CPlaceIndex& operator=(const CPlaceIndex&) = delete;

    /// What is kept of a text beside its place.
    static std::uint32_t HashOf(std::string_view text) {
        return static_cast<std::uint32_t>((Hash()(text) * Mixer) >> 32U);
    }

    /// Enters the text at a place; false when the same text is entered already, which then stays.
    bool Insert(std::uint32_t place) {
        MakeRoomForOne(m_places);
        return m_places.insert(CEntry{place, HashOf(m_textAt(place))}).second;
    }

    /// Takes out the entry of exactly this place.
    void Erase(std::uint32_t place) {
        const auto found = m_places.find(Ask(m_textAt(place)));
        if (found != m_places.end() && found->m_place == place)
            m_places.erase(found);
    }

    /// The place of a text, NoPlace when it was never entered.
    std::uint32_t Find(std::string_view text) const {
        const auto found = m_places.find(Ask(text));
        return found == m_places.end() ? NoPlace : found->m_place;
    }

    /// Makes room in one step.
    void Reserve(std::size_t count) { MakeRoom(m_places, count); }

private:
    static constexpr std::uint64_t Mixer = 0x9E3779B97F4A7C15ULL; ///< odd, half of its bits set

    struct CQuestion {
        std::string_view m_text;
        std::uint32_t m_hash;
    };
    static CQuestion Ask(std::string_view text) { return {text, HashOf(text)}; }

    struct CEntry {
        std::uint32_t m_place;
        std::uint32_t m_hash; ///< kept, so that growing looks at no text and a question at none but the one it finds
    };
    struct ByHash {
        using is_transparent = void;
        std::size_t operator()(const CEntry& entry) const { return Spread(entry.m_hash); }
        std::size_t operator()(const CQuestion& question) const { return Spread(question.m_hash); }

        /// The table takes its bits from both ends of 64, and all of them have to differ.
        static std::size_t Spread(std::uint64_t hash) {
            const std::uint64_t product = hash * Mixer;
            return product ^ (product >> 32U);
        }
    };
    struct ByText {
        using is_transparent = void;
        TextAt m_textAt;
        bool operator()(const CEntry& a, const CEntry& b) const {
            return a.m_place == b.m_place ||
                   (a.m_hash == b.m_hash && Equal()(m_textAt(a.m_place), m_textAt(b.m_place)));
        }
        bool operator()(const CQuestion& a, const CEntry& b) const {
            return a.m_hash == b.m_hash && Equal()(a.m_text, m_textAt(b.m_place));
        }
        bool operator()(const CEntry& a, const CQuestion& b) const { return (*this)(b, a); }
    };

    TextAt m_textAt;
    absl::flat_hash_set<CEntry, ByHash, ByText> m_places;
};

} // namespace OLMGis::Utility
