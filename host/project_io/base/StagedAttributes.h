// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/AttributeStore.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace OLMGis::ProjectIo {

/// Values of attributes on their way into a project: they wait here, by the place of their record, until everything is
/// known to be good. Columns like those of the store, so that waiting costs no more than being stored.
class CStagedAttributes {
public:
    /// Keeps a value for a record; a null is kept as none.
    void Set(const Data::CDataDefinition& definition, std::uint32_t record, const Data::CDataBox& box);

    bool IsNotNull(const Data::CDataDefinition& definition, std::uint32_t record) const;
    bool Read(const Data::CDataDefinition& definition, std::uint32_t record, Data::CDataBox& box) const;

    /// Writes all values of a kind of entity, which are forgotten here; rows[record] is the row of a record in the
    /// store. Cost: values and, a 64th each, records a column.
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
