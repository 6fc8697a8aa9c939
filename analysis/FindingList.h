// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/RunTrace.h"
#include "host/network_core/Entity.h"
#include "host/network_core/FAMsg.h"
#include "host/network_core/FindingNotes.h"

#include <boost/shared_ptr.hpp>

#include <string_view>
#include <vector>

namespace Analysis {

using OLMGis::Topology::CEntity;
using CMessages = std::vector<boost::shared_ptr<OLMGis::Topology::CFAMsg>>;

/// What a check measured and what it held it against. For notes and trace: texts tell the value at most.
struct CMeasured {
    double m_value;
    double m_limit;
    std::string_view m_unit; ///< of both, empty for a count; a constant of the item
};

/// Where one run of one item puts its findings: behind what stands in the caller's list and, while a trace is open,
/// with their numbers in its table of findings.
class CFindingList {
public:
    /// item: the key. The list is borrowed.
    CFindingList(std::string_view item, CMessages& messages);

    /// A finding whose text is that of the message alone. culprit: the node or section that it names.
    void Add(const CEntity& culprit, int message, const CMeasured& measured);

    /// The same with the value behind the text, two decimals, in brackets.
    void AddWithValue(const CEntity& culprit, int message, const CMeasured& measured);

private:
    void Append(const CEntity& culprit, std::string text, const CMeasured& measured);
    void Trace(const CEntity& culprit, const CMeasured& measured) const;

    std::string_view m_item;
    CMessages& m_messages;
    OLMGis::Topology::CFindingNotes* m_notes; ///< null while none are open
    OLMGis::Utility::CTraceTable* m_trace;    ///< null while no trace is open
};

} // namespace Analysis
