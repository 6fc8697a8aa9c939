// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "analysis/FindingList.h"

#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/Utility.h"

#include <boost/make_shared.hpp>

#include <string>

namespace Analysis {

using OLMGis::Topology::CEntity;
using OLMGis::Topology::CFAMsg;
using OLMGis::Utility::CUtility;
using OLMGis::Utility::Msg;

void CFindingList::Add(const CEntity& entity, int message, const CMeasured& measured) {
    Append(entity, CUtility::Format("%s", Msg(message)), measured);
}

void CFindingList::AddWithValue(const CEntity& entity, int message, const CMeasured& measured) {
    Append(entity, CUtility::Format("%s (%.2f)", Msg(message), measured.m_value), measured);
}

void CFindingList::Append(const CEntity& entity, std::string text, const CMeasured& measured) {
    const auto finding = boost::make_shared<CFAMsg>();
    finding->m_guid = entity.GetGuid();
    finding->m_text = std::move(text);
    m_messages.push_back(finding);
    if (m_notes != nullptr)
        m_notes->Add({&entity, measured.m_value, measured.m_limit, measured.m_unit});
}

} // namespace Analysis
