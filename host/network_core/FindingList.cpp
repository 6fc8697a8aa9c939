// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_core/FindingList.h"

#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/Utility.h"

#include <boost/make_shared.hpp>

namespace OLMGis::Topology {

using Utility::CUtility;
using Utility::Msg;

void CFindingList::Add(const CEntity& entity, int message, const CMeasured& measured) {
    AddText(entity, Msg(message), measured);
}

void CFindingList::AddWithValue(const CEntity& entity, int message, const CMeasured& measured) {
    AddText(entity, CUtility::Format("%s (%.2f)", Msg(message), measured.m_value), measured);
}

void CFindingList::AddWithCount(const CEntity& entity, int message, std::size_t count) {
    AddText(entity, CUtility::Format("%s (%s)", Msg(message), std::to_string(count)),
            {static_cast<double>(count), 0.0, {}});
}

void CFindingList::AddText(const CEntity& entity, std::string text, const CMeasured& measured) {
    const auto finding = boost::make_shared<CFAMsg>();
    finding->m_guid = entity.GetGuid();
    finding->m_text = std::move(text);
    m_messages.push_back(finding);
    if (m_notes != nullptr)
        m_notes->Add({&entity, measured.m_value, measured.m_limit, measured.m_unit});
}

} // namespace OLMGis::Topology
