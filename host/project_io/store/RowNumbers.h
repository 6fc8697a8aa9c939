// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/DataDefinition.h"

#include <array>
#include <cstdint>
#include <vector>

namespace OLMGis::ProjectIo {

/// The keys (fid) of rows in the layers of the project file, kept from one save to the next: tables of other programs
/// refer to them. One per project context.
class CRowNumbers {
public:
    static CRowNumbers* Instance();

    /// Notes the key of an entity, by its row in the attribute store.
    void Note(Data::enmEntityKind kind, std::uint32_t row, std::int64_t key);

    /// The noted key; a new entity gets the next one above all noted ones, which is noted. Keys start at 1.
    std::int64_t GetKey(Data::enmEntityKind kind, std::uint32_t row);

private:
    struct CKeys {
        std::vector<std::int64_t> m_ofRow; ///< 0 for none
        std::int64_t m_greatest = 0;
    };

    std::array<CKeys, Data::EntityKindCount> m_keys;
};

} // namespace OLMGis::ProjectIo
