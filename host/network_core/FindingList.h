// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/Entity.h"
#include "host/network_core/FAMsg.h"
#include "host/network_core/FindingNotes.h"

#include <boost/shared_ptr.hpp>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace OLMGis::Topology {

/// What a check measured and the limit that it broke; the text of a finding shows the value at most.
struct CMeasured {
    double m_value;
    double m_limit;
    std::string_view m_unit; ///< of both, empty for a count; a constant of the check
};

/// Appends the findings of one run of one check to the caller's list, and their numbers to the open notes.
class CFindingList {
public:
    /// Keeps a reference to messages.
    explicit CFindingList(std::vector<boost::shared_ptr<CFAMsg>>& messages)
        : m_messages(messages), m_notes(CFindingNotes::Active()) {}

    /// Adds a finding with the text of a message. entity: the node or section that the finding names.
    void Add(const CEntity& entity, int message, const CMeasured& measured);

    /// The same with the value after the text, in brackets with two decimals.
    void AddWithValue(const CEntity& entity, int message, const CMeasured& measured);

    /// The same with a count after the text, in brackets; it is the measured value, with the limit 0.
    void AddWithCount(const CEntity& entity, int message, std::size_t count);

    /// Adds a finding with a complete text.
    void AddText(const CEntity& entity, std::string text, const CMeasured& measured);

private:
    std::vector<boost::shared_ptr<CFAMsg>>& m_messages;
    CFindingNotes* m_notes; ///< null while none are open
};

} // namespace OLMGis::Topology
