// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/Entity.h"

#include <boost/shared_ptr.hpp>

#include <vector>

namespace OLMGis::Selection {

/// Entities that were picked or gathered, in that order.
class CSelectionSet {
public:
    /// A null is kept out.
    void Add(const boost::shared_ptr<Topology::CEntity>& entity) {
        if (entity)
            m_entities.push_back(entity);
    }
    void Clear() { m_entities.clear(); }
    void Reserve(std::size_t count) { m_entities.reserve(count); }

    /// No nulls; as long as entities were added, repeats included.
    const std::vector<boost::shared_ptr<Topology::CEntity>>& GetEntities() const { return m_entities; }
    bool IsEmpty() const { return m_entities.empty(); }

private:
    std::vector<boost::shared_ptr<Topology::CEntity>> m_entities;
};

} // namespace OLMGis::Selection
