// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <boost/shared_ptr.hpp>
#include <tsl/robin_set.h>

#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

namespace OLMGis::Topology {

/// Finds entities by a text that they carry (GUID or name), keeping only their rows: a few bytes an entity.
/// TextOf gives the text of an entity, Hash and Equal decide what counts as the same.
template <class Entity, auto TextOf, class Hash, class Equal>
class CEntityIndex {
public:
    explicit CEntityIndex(const std::vector<boost::shared_ptr<Entity>>& rows)
        : m_rows(8, ByRowHash{&rows}, ByRowEqual{&rows}), m_entities(&rows) {}

    /// Enters an entity; false when one with the same text is there already, which then stays.
    bool Insert(std::uint32_t row) { return m_rows.insert(row).second; }

    /// Takes out the entry of exactly this row.
    void Erase(std::uint32_t row) {
        const auto found = m_rows.find(Text(row, m_entities));
        if (found != m_rows.end() && *found == row)
            m_rows.erase(found);
    }

    const boost::shared_ptr<Entity>* Find(std::string_view text) const {
        const auto found = m_rows.find(text);
        return found == m_rows.end() ? nullptr : &(*m_entities)[*found];
    }

    void Reserve(std::size_t count) { m_rows.reserve(count); }

private:
    using CEntities = const std::vector<boost::shared_ptr<Entity>>*;

    static std::string_view Text(std::uint32_t row, CEntities entities) { return ((*entities)[row].get()->*TextOf)(); }

    struct ByRowHash {
        CEntities m_entities;
        std::size_t operator()(std::uint32_t row) const { return Hash()(Text(row, m_entities)); }
        std::size_t operator()(std::string_view text) const { return Hash()(text); }
    };
    struct ByRowEqual {
        using is_transparent = void;
        CEntities m_entities;
        bool operator()(std::uint32_t a, std::uint32_t b) const {
            return Equal()(Text(a, m_entities), Text(b, m_entities));
        }
        bool operator()(std::string_view a, std::uint32_t b) const { return Equal()(a, Text(b, m_entities)); }
        bool operator()(std::uint32_t a, std::string_view b) const { return Equal()(Text(a, m_entities), b); }
    };

    tsl::robin_set<std::uint32_t, ByRowHash, ByRowEqual, std::allocator<std::uint32_t>, true> m_rows;
    CEntities m_entities;
};

} // namespace OLMGis::Topology
