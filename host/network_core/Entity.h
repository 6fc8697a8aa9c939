// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/AttributeStore.h"
#include "host/gis_core/TextPool.h"

#include <string_view>

namespace OLMGis::Topology {

class CTopologyStorage;

/// Lets only the topology make entities.
class CEntityKey {
    friend class CTopologyStorage;
    CEntityKey() = default;
};

/// Anything of the network that has an identity and attributes. Made once by the topology, owned by shared pointers;
/// its row never changes and is never given to another. A deleted entity is a tombstone: it stays valid for those who
/// still have a pointer to it, but the topology no longer lists or finds it.
class CEntity : public Data::CAttributeOwner {
public:
    virtual ~CEntity() = default;
    CEntity(const CEntity&) = delete;
    CEntity& operator=(const CEntity&) = delete;

    /// As the source gave it; valid as long as the topology. Never empty.
    std::string_view GetGuid() const { return m_guid.View(); }
    std::string_view GetName() const { return m_name.View(); }
    bool IsDeleted() const { return m_isDeleted; }

    CTopologyStorage& GetTopology() const { return *m_topology; }

protected:
    CEntity(CTopologyStorage& topology, Data::CAttributeStore& store, Data::enmEntityKind kind, Data::CKeptText guid,
            Data::CKeptText name)
        : CAttributeOwner(store, kind), m_topology(&topology), m_guid(guid), m_name(name) {}

private:
    friend class CTopologyStorage;

    bool m_isDeleted = false;
    CTopologyStorage* m_topology;
    Data::CKeptText m_guid;
    Data::CKeptText m_name;
};

} // namespace OLMGis::Topology
