// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/Entity.h"

#include <functional>
#include <string_view>
#include <vector>

namespace OLMGis::Topology {

/// What an item knows of a finding beside its text.
struct CFindingNote {
    const CEntity* m_culprit; ///< the node or section that the finding names
    double m_value;           ///< what was found
    double m_limit;           ///< what it was held against
    std::string_view m_unit;  ///< of both, empty for a count; lives as long as the item
};

/// Takes the notes of one run of one item, each right behind its finding. Whoever keeps findings opens it: notes cost
/// no text and no look-up, and there may be a million of them. An item that leaves none gives findings without numbers.
class CFindingNotes {
public:
    /// onBatch is called whenever a batch of notes is in, so that findings may be taken over before they fill the
    /// memory; it takes the notes away.
    explicit CFindingNotes(std::function<void()> onBatch);
    ~CFindingNotes();
    CFindingNotes(const CFindingNotes&) = delete;
    CFindingNotes& operator=(const CFindingNotes&) = delete;

    /// The ones that were opened last, null while none are.
    static CFindingNotes* Active();

    void Add(const CFindingNote& note) {
        m_notes.push_back(note);
        if (m_notes.size() >= Batch)
            m_onBatch();
    }
    const std::vector<CFindingNote>& Get() const { return m_notes; }
    void Clear() { m_notes.clear(); }

private:
    static constexpr std::size_t Batch = 128; ///< few enough that all of them stay at hand

    std::function<void()> m_onBatch;
    CFindingNotes* m_former;
    std::vector<CFindingNote> m_notes;
};

} // namespace OLMGis::Topology
