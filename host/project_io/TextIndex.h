// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/TextPool.h"
#include "host/gis_core/Utility.h"

#include <tsl/robin_set.h>

#include <cstdint>
#include <functional>
#include <limits>
#include <string_view>
#include <vector>

namespace OLMGis::ProjectIo {

/// The place of nothing in a list of records.
inline constexpr std::uint32_t NoRecord = std::numeric_limits<std::uint32_t>::max();

/// Finds places in a list of texts by text, keeping only the places: some twenty bytes a text. Hash and Equal decide
/// what counts as the same.
template <class Hash, class Equal>
class CTextIndex {
public:
    /// The list is borrowed and may grow; entered texts must not change.
    explicit CTextIndex(const std::vector<Data::CKeptText>& texts)
        : m_places(8, ByPlaceHash{&texts}, ByPlaceEqual{&texts}) {}
    CTextIndex(const CTextIndex&) = delete;
    CTextIndex& operator=(const CTextIndex&) = delete;

    /// Enters the text at a place; false when the same text is entered already, which then stays.
    bool Insert(std::uint32_t place) { return m_places.insert(place).second; }

    /// The place of a text, NoRecord when it was never entered.
    std::uint32_t Find(std::string_view text) const {
        const auto found = m_places.find(text);
        return found == m_places.end() ? NoRecord : *found;
    }

private:
    using CTexts = const std::vector<Data::CKeptText>*;

    struct ByPlaceHash {
        CTexts m_texts;
        std::size_t operator()(std::uint32_t place) const { return Hash()((*m_texts)[place].View()); }
        std::size_t operator()(std::string_view text) const { return Hash()(text); }
    };
    struct ByPlaceEqual {
        using is_transparent = void;
        CTexts m_texts;
        bool operator()(std::uint32_t a, std::uint32_t b) const {
            return a == b || Equal()((*m_texts)[a].View(), (*m_texts)[b].View());
        }
        bool operator()(std::string_view a, std::uint32_t b) const { return Equal()(a, (*m_texts)[b].View()); }
        bool operator()(std::uint32_t a, std::string_view b) const { return Equal()((*m_texts)[a].View(), b); }
    };

    tsl::robin_set<std::uint32_t, ByPlaceHash, ByPlaceEqual, std::allocator<std::uint32_t>, true> m_places;
};

/// Names compare by plain characters, GUIDs without case and braces.
using CNameIndex = CTextIndex<std::hash<std::string_view>, std::equal_to<std::string_view>>;
using CGuidIndex = CTextIndex<Utility::GuidHash, Utility::GuidEqual>;

} // namespace OLMGis::ProjectIo
