// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/base/ImportSummary.h"

#include <fmt/format.h>

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

std::vector<std::string> CImportSummary::ToLines() const {
    std::string brought = fmt::format("{}: {} nodes, {} sections, {} catchments", m_format, m_nodeCount, m_sectionCount,
                                      m_catchmentCount);
    if (m_mainOutletCount > 0)
        brought += fmt::format(", {} main outlets", m_mainOutletCount);
    if (m_pipeCount > 0)
        brought += fmt::format(", {} pipes for the catalogue", m_pipeCount);
    std::vector<std::string> lines{std::move(brought)};
    for (const std::string& warning : m_warnings)
        lines.push_back("warning: " + warning);
    for (const CImportNote& note : m_notes) {
        const std::string_view opening = note.m_count > 1 ? "first " : "";
        const std::string where = note.m_first.empty() ? "" : fmt::format(" ({}{})", opening, note.m_first);
        lines.push_back(fmt::format("{} x {}{}", note.m_count, note.m_what, where));
    }
    return lines;
}

} // namespace OLMGis::ProjectIo
