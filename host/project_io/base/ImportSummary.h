// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace OLMGis::ProjectIo {

/// Something that an import noticed on several objects, reported once with their number.
struct CImportNote {
    std::string m_what;      ///< what was noticed, without the object; the same text for every object
    std::size_t m_count = 0; ///< on how many objects
    std::string m_first;     ///< line, record or name of the first one; may be empty
};

/// Counts of what an import read, and what it noticed. Its size is limited for any source.
struct CImportSummary {
    /// Further kinds of notes are counted as FurtherNotes, so that a bad source cannot fill the screen.
    static constexpr std::size_t MostNotes = 100;
    static constexpr std::string_view FurtherNotes = "further notes of other kinds";

    std::string m_format; ///< name of the format that was read
    std::size_t m_nodeCount = 0;
    std::size_t m_sectionCount = 0;
    std::size_t m_catchmentCount = 0;
    std::size_t m_mainOutletCount = 0;
    std::size_t m_pipeCount = 0;         ///< pipes that the import entered into the project's own catalogue
    std::vector<CImportNote> m_notes;    ///< in the order in which they were noticed first
    std::vector<std::string> m_warnings; ///< whole sentences, in order
    std::vector<std::string> m_readings; ///< how each file was read, where that had to be found out: whole sentences

    /// Counts occurrences of what; where: line, record or name, kept of the first occurrence only. Cost: the number of
    /// kinds of notes.
    void Count(std::string_view what, std::string_view where, std::size_t count = 1);
};

} // namespace OLMGis::ProjectIo
