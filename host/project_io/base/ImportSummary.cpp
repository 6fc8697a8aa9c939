// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/base/ImportSummary.h"

#include <algorithm>

namespace OLMGis::ProjectIo {

void CImportSummary::Count(std::string_view what, std::string_view where, std::size_t count) {
    const auto find = [this](std::string_view text) {
        return std::find_if(m_notes.begin(), m_notes.end(), [text](const auto& note) { return note.m_what == text; });
    };
    auto note = find(what);
    if (note == m_notes.end() && m_notes.size() >= MostNotes)
        note = find(what = FurtherNotes);
    if (note == m_notes.end())
        note = m_notes.insert(note, CImportNote{std::string(what), 0, std::string(where)});
    note->m_count += count;
}

} // namespace OLMGis::ProjectIo
