// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <boost/make_shared.hpp>
#include <boost/shared_ptr.hpp>

#include <cstddef>
#include <memory>
#include <new>
#include <utility>

namespace OLMGis::Topology {

/// Makes entities of one kind side by side in memory, so that a loop over a network reads memory in a row and an entity
/// carries no count of its own. A slab lives until the topology and the last pointer to any of its entities let it go.
/// The pointers of a slab share one owner: order and hash them by address, never by boost::shared_ptr's own "<".
template <class Entity>
class CEntitySlabs {
public:
    template <class... Args>
    boost::shared_ptr<Entity> Make(Args&&... args) {
        if (!m_slab || m_slab->IsFull())
            m_slab = boost::make_shared<CSlab>();
        return {m_slab, m_slab->Make(std::forward<Args>(args)...)};
    }

private:
    class CSlab {
    public:
        CSlab() = default;
        CSlab(const CSlab&) = delete;
        CSlab& operator=(const CSlab&) = delete;
        ~CSlab() {
            while (m_count > 0)
                std::destroy_at(Place(--m_count));
        }

        bool IsFull() const { return m_count == Capacity; }

        template <class... Args>
        Entity* Make(Args&&... args) {
            auto* const made = new (m_memory + m_count * sizeof(Entity)) Entity(std::forward<Args>(args)...);
            ++m_count;
            return made;
        }

    private:
        static constexpr std::size_t Capacity = 512;

        Entity* Place(std::size_t index) {
            return std::launder(reinterpret_cast<Entity*>(m_memory + index * sizeof(Entity)));
        }

        std::size_t m_count = 0;
        alignas(Entity) std::byte m_memory[Capacity * sizeof(Entity)];
    };

    boost::shared_ptr<CSlab> m_slab;
};

} // namespace OLMGis::Topology
