// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <string>
#include <utility>

namespace OLMGis::ProjectIo {

/// Who an entity will be.
struct CIdentity {
    std::string m_guid;
    std::string m_name;
};

/// Makes the identities of a series of entities some steps ahead of their use: make(index) gives the next one from 0
/// on, fetch(identity) has fetched what entering it will look at. In a network of a million sections each entity
/// otherwise waits for places in memory that no entity before it has touched.
class CIdentityQueue {
public:
    using CMake = std::function<CIdentity(std::size_t index)>;
    using CFetch = std::function<void(const CIdentity& identity)>;

    CIdentityQueue(std::size_t count, CMake make, CFetch fetch)
        : m_count(count), m_make(std::move(make)), m_fetch(std::move(fetch)) {
        while (m_made < Ahead && m_made < m_count)
            MakeNext();
    }

    /// The next identity; as many times as there are. Valid until the next call.
    const CIdentity& Take() {
        std::swap(m_taken, m_ahead[m_takenCount++ % Ahead]);
        if (m_made < m_count)
            MakeNext();
        return m_taken;
    }

private:
    static constexpr std::size_t Ahead = 8;

    void MakeNext() {
        CIdentity& identity = m_ahead[m_made % Ahead];
        identity = m_make(m_made);
        ++m_made;
        m_fetch(identity);
    }

    std::array<CIdentity, Ahead> m_ahead;
    CIdentity m_taken;
    std::size_t m_count;
    std::size_t m_made = 0;
    std::size_t m_takenCount = 0;
    CMake m_make;
    CFetch m_fetch;
};

} // namespace OLMGis::ProjectIo
