// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/gis_core/AttributeStore.h"

#include "host/gis_core/DataConfiguration.h"

namespace OLMGis::Data {

CAttributeStore::CAttributeStore() : m_columns(CDataConfiguration::Instance()->GetDataDefinitions().size()) {}

bool CAttributeStore::Write(const CDataDefinition& definition, std::uint32_t row, const CDataBox& box) {
    if (m_isWatched && m_guard != nullptr && !m_guard->IsWriteAllowed(definition, row))
        return false;
    CAttributeColumn& column = GetColumn(definition);
    if (m_isWatched && m_journal != nullptr)
        m_journal->NoteAttribute(definition, row, column.GetStored(row));
    column.SetStored(row, column.ToStored(box));
    return true;
}

CAttributeColumn& CAttributeStore::GetColumn(const CDataDefinition& definition) {
    if (definition.m_index >= m_columns.size())
        m_columns.resize(definition.m_index + 1);
    auto& column = m_columns[definition.m_index];
    if (!column) {
        column = std::make_unique<CAttributeColumn>(definition.m_type, m_texts);
        column->Reserve(m_expectedCounts[static_cast<std::size_t>(definition.m_entityKind)]);
    }
    return *column;
}

void CAttributeStore::Expect(enmEntityKind kind, std::uint32_t rows) {
    m_expectedCounts[static_cast<std::size_t>(kind)] = rows;
    for (const auto& definition : CDataConfiguration::Instance()->GetDataDefinitions())
        if (definition->m_entityKind == kind && definition->m_index < m_columns.size() &&
            m_columns[definition->m_index])
            m_columns[definition->m_index]->Reserve(rows);
}

std::vector<const CDataDefinition*> CAttributeStore::GetUsedDefinitions(enmEntityKind kind) const {
    std::vector<const CDataDefinition*> used;
    for (const auto& definition : CDataConfiguration::Instance()->GetDataDefinitions()) {
        if (definition->m_entityKind != kind)
            continue;
        const CAttributeColumn* column = FindColumn(*definition);
        if (column != nullptr && column->CountNotNull() > 0)
            used.push_back(definition.get());
    }
    return used;
}

CJournal* CAttributeStore::SetJournal(CJournal* journal) {
    CJournal* const former = m_journal;
    m_journal = journal;
    m_isWatched = m_journal != nullptr || m_guard != nullptr;
    return former;
}

void CAttributeStore::SetWriteGuard(IWriteGuard* guard) {
    m_guard = guard;
    m_isWatched = m_journal != nullptr || m_guard != nullptr;
}

} // namespace OLMGis::Data
