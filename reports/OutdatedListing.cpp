// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "reports/OutdatedListing.h"

#include "reports/ShownText.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace Reports {

using OLMGis::Sewage::COutdatedResult;

std::string DescribeOutdated(const COutdatedResult& result, const std::string& project) {
    std::vector<std::string> commands;
    for (const std::string& calculator : result.m_renewal)
        commands.push_back(calculator == OLMGis::Sewage::HydraulicsOrigin
                               ? fmt::format("drenova hydraulics {}", project)
                               : fmt::format("drenova run {} {} --last", project, calculator));
    return OnOneLine(fmt::format("{} is outdated: changed since it was calculated: {}. Renew it: {}",
                                 result.m_result->m_id, fmt::join(result.m_changed, ", "), fmt::join(commands, "; ")));
}

CRemarks MakeOutdatedRemarks(const std::vector<COutdatedResult>& results, const std::string& project) {
    CRemarks remarks;
    for (const COutdatedResult& result : results)
        remarks.push_back({CRemark::enmKind::Warning, DescribeOutdated(result, project)});
    return remarks;
}

} // namespace Reports
