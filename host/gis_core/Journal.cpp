// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/gis_core/Journal.h"

#include "host/gis_core/AttributeStore.h"

namespace OLMGis::Data {

/// Exchanges the stored value with the kept one, so that the same list serves both directions.
void CJournal::Swap(CAttributeStore& store, CAttributeChange& change) {
    CAttributeColumn& column = store.GetColumn(*change.m_definition);
    const CStoredValue present = column.GetStored(change.m_row);
    column.SetStored(change.m_row, change.GetBefore());
    change.m_bitsBefore = present.m_bits;
    change.m_wasNotNull = present.m_isNotNull;
}

void CJournal::Undo(CAttributeStore& store) {
    std::size_t step = m_steps.size();
    for (std::size_t change = m_changes.size();; --change) {
        while (step > 0 && m_steps[step - 1].m_place == change)
            m_steps[--step].m_step->Undo();
        if (change == 0)
            break;
        Swap(store, m_changes[change - 1]);
    }
}

void CJournal::Redo(CAttributeStore& store) {
    std::size_t step = 0;
    for (std::size_t change = 0;; ++change) {
        while (step < m_steps.size() && m_steps[step].m_place == change)
            m_steps[step++].m_step->Redo();
        if (change == m_changes.size())
            break;
        Swap(store, m_changes[change]);
    }
}

} // namespace OLMGis::Data
