// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "reports/OutdatedListing.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace Reports {

using OLMGis::Sewage::COutdatedResult;

std::string DescribeOutdated(const COutdatedResult& result) {
    const bool isHydraulics = result.m_calculator == OLMGis::Sewage::HydraulicsOrigin;
    return fmt::format("{} is outdated: changed since it was calculated: {}. Renew it: drenova {}",
                       result.m_result->m_id, fmt::join(result.m_changed, ", "),
                       isHydraulics ? "hydraulics PROJECT" : fmt::format("run PROJECT {}", result.m_calculator));
}

CRemarks MakeOutdatedRemarks(const std::vector<COutdatedResult>& results) {
    CRemarks remarks;
    for (const COutdatedResult& result : results)
        remarks.push_back({CRemark::enmKind::Warning, DescribeOutdated(result)});
    return remarks;
}

} // namespace Reports
