// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace OLMGis::ProjectIo {

/// Something that an import noticed on single objects and tells once for all of them.
struct CImportNote {
    std::string m_what;      ///< what was noticed, without the object; the same words for every object
    std::size_t m_count = 0; ///< on how many objects
    std::string m_first;     ///< line, record or name of the first one; may be empty
};

/// What an import brought and what it noticed on the way. Whatever the size of the source, it stays small.
struct CImportSummary {
    /// More kinds of notes than this stand under one of their own, so that a hostile source cannot fill the screen.
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

    /// Counts an occurrence of what; where is kept of the first one only. Cost: the number of kinds of notes.
    void Count(std::string_view what, std::string_view where, std::size_t count = 1);

    /// For display: what was brought, then the warnings, then the notes; one text a line, without line ends.
    std::vector<std::string> ToLines() const;
};

} // namespace OLMGis::ProjectIo
