// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/AttributeStore.h"

#include <string_view>

namespace OLMGis::Topology {

class CTopologyStorage;

/// Lets only the topology make entities.
class CEntityKey {
    friend class CTopologyStorage;
    CEntityKey() = default;
};

/// Anything of the network that has an identity and attributes. Made once by the topology, held by shared pointers;
/// its row never changes and is never given to another. A deleted entity is a tombstone: it stays valid for those who
/// still hold it, but the topology no longer lists or finds it.
class CEntity : public Data::CAttributeOwner {
public:
    virtual ~CEntity() = default;
    CEntity(const CEntity&) = delete;
    CEntity& operator=(const CEntity&) = delete;

    /// As the source gave it; valid as long as the topology. Never empty.
    std::string_view GetGuid() const { return m_guid; }
    std::string_view GetName() const { return m_name; }
    bool IsDeleted() const { return m_isDeleted; }

    CTopologyStorage& GetTopology() const { return *m_topology; }

protected:
    CEntity(CTopologyStorage& topology, Data::CAttributeStore& store, Data::enmEntityKind kind, std::string_view guid,
            std::string_view name)
        : CAttributeOwner(store, kind), m_topology(&topology), m_guid(guid), m_name(name) {}

private:
    friend class CTopologyStorage;

    CTopologyStorage* m_topology;
    std::string_view m_guid; ///< kept by the topology's arena
    std::string_view m_name;
    bool m_isDeleted = false;
};

} // namespace OLMGis::Topology
