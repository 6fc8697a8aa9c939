// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/base/StagedAttributes.h"

namespace OLMGis::ProjectIo {

using Data::CDataBox;
using Data::CDataDefinition;

void CStagedAttributes::Set(const CDataDefinition& definition, std::uint32_t record, const CDataBox& box) {
    if (definition.m_index >= m_columns.size())
        m_columns.resize(definition.m_index + 1);
    CColumn& column = m_columns[definition.m_index];
    if (!column.m_values) {
        column.m_definition = &definition;
        column.m_values = std::make_unique<Data::CAttributeColumn>(definition.m_type, m_texts);
    }
    column.m_values->SetStored(record, column.m_values->ToStored(box));
}

bool CStagedAttributes::IsNotNull(const CDataDefinition& definition, std::uint32_t record) const {
    return definition.m_index < m_columns.size() && m_columns[definition.m_index].m_values != nullptr &&
           m_columns[definition.m_index].m_values->IsNotNull(record);
}

bool CStagedAttributes::Read(const CDataDefinition& definition, std::uint32_t record, CDataBox& box) const {
    return IsNotNull(definition, record) && m_columns[definition.m_index].m_values->Read(record, box);
}

void CStagedAttributes::Store(Data::CAttributeStore& store, Data::enmEntityKind kind,
                              const std::vector<std::uint32_t>& rows) {
    CDataBox box;
    for (CColumn& column : m_columns) {
        if (!column.m_values || column.m_definition->m_entityKind != kind)
            continue;
        for (std::uint32_t record = 0; record < column.m_values->GetRowCount(); ++record)
            if (column.m_values->Read(record, box))
                store.Write(*column.m_definition, rows[record], box);
        column.m_values.reset();
    }
}

} // namespace OLMGis::ProjectIo
