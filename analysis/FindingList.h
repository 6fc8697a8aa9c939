// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/Entity.h"
#include "host/network_core/FAMsg.h"
#include "host/network_core/FindingNotes.h"

#include <boost/shared_ptr.hpp>

#include <string_view>
#include <vector>

namespace Analysis {

using CMessages = std::vector<boost::shared_ptr<OLMGis::Topology::CFAMsg>>;

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
    explicit CFindingList(CMessages& messages)
        : m_messages(messages), m_notes(OLMGis::Topology::CFindingNotes::Active()) {}

    /// Adds a finding with the text of a message. entity: the node or section that the finding names.
    void Add(const OLMGis::Topology::CEntity& entity, int message, const CMeasured& measured);

    /// The same with the value after the text, in brackets with two decimals.
    void AddWithValue(const OLMGis::Topology::CEntity& entity, int message, const CMeasured& measured);

private:
    void Append(const OLMGis::Topology::CEntity& entity, std::string text, const CMeasured& measured);

    CMessages& m_messages;
    OLMGis::Topology::CFindingNotes* m_notes; ///< null while none are open
};

} // namespace Analysis
