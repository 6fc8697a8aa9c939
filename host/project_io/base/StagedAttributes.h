// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/AttributeStore.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace OLMGis::ProjectIo {

/// Values of attributes that wait, by the place of their record, until the whole file is known to be good. Kept in
/// columns as the store keeps them, so that they take no more memory than there.
class CStagedAttributes {
public:
    /// Keeps a value for a record; a null is not kept.
    void Set(const Data::CDataDefinition& definition, std::uint32_t record, const Data::CDataBox& box);

    bool IsNotNull(const Data::CDataDefinition& definition, std::uint32_t record) const;
    bool Read(const Data::CDataDefinition& definition, std::uint32_t record, Data::CDataBox& box) const;

    /// Writes all values of one kind of entity into the store and removes them here; rows[record] is the row of a
    /// record in the store. Linear in values and in records per column.
    void Store(Data::CAttributeStore& store, Data::enmEntityKind kind, const std::vector<std::uint32_t>& rows);

private:
    struct CColumn {
        const Data::CDataDefinition* m_definition = nullptr;
        std::unique_ptr<Data::CAttributeColumn> m_values;
    };

    Data::CTextPool m_texts;
    std::vector<CColumn> m_columns; ///< by index of the definition
};

} // namespace OLMGis::ProjectIo
