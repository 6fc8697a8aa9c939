// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/gis_core/TextPool.h"

#include "host/gis_core/HashTableGrowth.h"

#include <algorithm>

namespace OLMGis::Data {

std::uint32_t CTextPool::Intern(std::string_view text) {
    if (!m_texts.empty() && m_texts[m_last] == text)
        return m_last;
    const auto found = m_ids.find(text);
    if (found != m_ids.end()) {
        m_last = found->second;
        return m_last;
    }
    Utility::MakeRoomForOne(m_ids);
    m_last = static_cast<std::uint32_t>(m_texts.size());
    m_ids.emplace(m_texts.emplace_back(text), m_last);
    return m_last;
}

CKeptText CTextArena::Keep(std::string_view text) {
    if (text.empty())
        return {};
    const auto length = static_cast<std::uint32_t>(text.size());
    const std::size_t needed = sizeof length + text.size();
    if (needed > m_free) {
        const std::size_t size = std::max(BlockSize, needed);
        m_blocks.push_back(std::make_unique<char[]>(size));
        m_next = m_blocks.back().get();
        m_free = size;
    }
    char* const kept = m_next;
    std::memcpy(kept, &length, sizeof length);
    std::memcpy(kept + sizeof length, text.data(), text.size());
    m_next += needed;
    m_free -= needed;
    return CKeptText(kept);
}

} // namespace OLMGis::Data
