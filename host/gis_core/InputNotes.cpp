// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/gis_core/InputNotes.h"

#include "host/gis_core/ProjectContext.h"

namespace OLMGis::Data {

void CInputNotes::NoteOther(std::string_view name, std::string_view detail) {
    m_lastName = name;
    m_lastDetail = detail;
    m_others.emplace(m_lastName, m_lastDetail);
}

CInputNotesScope::CInputNotesScope(CAttributeStore& store, CInputNotes& notes)
    : m_store(store), m_former(store.SetInputNotes(&notes)) {}

CInputNotesScope::~CInputNotesScope() {
    m_store.SetInputNotes(m_former);
}

void NoteInput(std::string_view name, std::string_view detail) {
    if (CInputNotes* const notes = System::CProjectContext::Active().GetAttributes().GetInputNotes(); notes != nullptr)
        notes->Note(name, detail);
}

} // namespace OLMGis::Data
