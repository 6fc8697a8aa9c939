// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/Entity.h"

#include <string_view>
#include <vector>

namespace OLMGis::Topology {

/// What an item knows of a finding beside its text.
struct CFindingNote {
    const CEntity* m_entity; ///< the node or section that the finding names
    double m_value;          ///< what was found
    double m_limit;          ///< the limit that it broke
    std::string_view m_unit; ///< of both, empty for a count; lives as long as the item
};

/// The numbers behind the findings of one run of one item: the record of a finding (CFAMsg) is fixed and has only
/// texts. Code that keeps findings opens the notes for the run; the item adds one note per finding, in the same order.
/// An item that adds none gives findings without numbers.
class CFindingNotes {
public:
    CFindingNotes();
    ~CFindingNotes();
    CFindingNotes(const CFindingNotes&) = delete;
    CFindingNotes& operator=(const CFindingNotes&) = delete;

    /// The notes that were opened last, null while none are open.
    static CFindingNotes* Active();

    void Add(const CFindingNote& note) { m_notes.push_back(note); }
    const std::vector<CFindingNote>& Get() const { return m_notes; }

private:
    CFindingNotes* m_former;
    std::vector<CFindingNote> m_notes;
};

} // namespace OLMGis::Topology
