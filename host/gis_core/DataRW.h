// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/AttributeStore.h"
#include "host/gis_core/DataBox.h"
#include "host/gis_core/DataConfiguration.h"

#include <boost/shared_ptr.hpp>

#include <string_view>

namespace OLMGis::System {
class CGisSystem;
}

namespace OLMGis::Data {

/// Moves a box to and from an attribute of an entity. By definition there is no search, by id one hash look-up: loops
/// over many entities fetch the definition once.
///
/// Read: non-zero only when the box was filled; a null entity, a null attribute, an unknown key and a key of another
/// kind of entity leave the box null and answer 0. Write: non-zero when stored; 0 and no change for a null entity, an
/// unknown key, a key of another kind and a read-only entity. Mode and system are the interface's; every caller passes
/// 0 and null.
class CDataRW {
public:
    static int Read(const CDataDefinition* definition, const CAttributeOwner* entity, CDataBox& box, int /*mode*/,
                    const System::CGisSystem* /*system*/) {
        box.Clear();
        if (entity == nullptr || definition == nullptr || definition->m_entityKind != entity->GetEntityKind())
            return 0;
        return entity->GetStore().Read(*definition, entity->GetRow(), box) ? 1 : 0;
    }

    static int Write(const CDataDefinition* definition, const CAttributeOwner* entity, const CDataBox& box,
                     const System::CGisSystem* /*system*/) {
        if (entity == nullptr || definition == nullptr || definition->m_entityKind != entity->GetEntityKind() ||
            entity->IsReadOnly())
            return 0;
        return entity->GetStore().Write(*definition, entity->GetRow(), box) ? 1 : 0;
    }

    static int Read(std::string_view key, const CAttributeOwner* entity, CDataBox& box, int mode,
                    const System::CGisSystem* system) {
        return Read(CDataConfiguration::Instance()->GetDataDefinitionByID(key), entity, box, mode, system);
    }

    static int Write(std::string_view key, const CAttributeOwner* entity, const CDataBox& box,
                     const System::CGisSystem* system) {
        return Write(CDataConfiguration::Instance()->GetDataDefinitionByID(key), entity, box, system);
    }

    template <class Key, class Entity>
    static int Read(const Key& key, const boost::shared_ptr<Entity>& entity, CDataBox& box, int mode,
                    const System::CGisSystem* system) {
        return Read(key, static_cast<const CAttributeOwner*>(entity.get()), box, mode, system);
    }

    template <class Key, class Entity>
    static int Write(const Key& key, const boost::shared_ptr<Entity>& entity, const CDataBox& box,
                     const System::CGisSystem* system) {
        return Write(key, static_cast<const CAttributeOwner*>(entity.get()), box, system);
    }
};

} // namespace OLMGis::Data
