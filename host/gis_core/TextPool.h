// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <absl/container/flat_hash_map.h>
#include <cstdint>
#include <cstring>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace OLMGis::Data {

/// Keeps repeated texts once. An id stays valid for the life of the pool; nothing is ever taken out.
class CTextPool {
public:
    /// The id of a text, entering it at its first sight. One hash look-up; the text that came last costs a comparison.
    std::uint32_t Intern(std::string_view text);

    /// The text of an id that Intern gave. Stable address.
    std::string_view Get(std::uint32_t id) const { return m_texts[id]; }

    std::size_t GetCount() const { return m_texts.size(); }

private:
    std::deque<std::string> m_texts;
    absl::flat_hash_map<std::string_view, std::uint32_t> m_ids;
    std::uint32_t m_last = 0;
};

/// A text in an arena, in the size of one pointer.
class CKeptText {
public:
    CKeptText() = default;

    std::string_view View() const {
        if (m_data == nullptr)
            return {};
        std::uint32_t size = 0;
        std::memcpy(&size, m_data, sizeof size);
        return {m_data + sizeof size, size};
    }

private:
    friend class CTextArena;
    explicit CKeptText(const char* data) : m_data(data) {}

    const char* m_data = nullptr; ///< 4 bytes of length, then the text
};

/// Keeps texts of which most occur once (names, GUIDs) end to end in large blocks: no allocation a text. Nothing is
/// ever taken out; addresses are stable.
class CTextArena {
public:
    /// A copy of text that lives as long as the arena.
    CKeptText Keep(std::string_view text);

private:
    static constexpr std::size_t BlockSize = std::size_t{1} << 18;
    std::vector<std::unique_ptr<char[]>> m_blocks;
    std::size_t m_free = 0;
    char* m_next = nullptr;
};

} // namespace OLMGis::Data
