// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/sewage_calculations/OutdatedResults.h"
#include "reports/Remark.h"

#include <string>
#include <vector>

namespace Reports {

/// One sentence: the result, what changed, and the commands that renew it. project: path, as commands name it.
std::string DescribeOutdated(const OLMGis::Sewage::COutdatedResult& result, const std::string& project);

/// A warning for each.
CRemarks MakeOutdatedRemarks(const std::vector<OLMGis::Sewage::COutdatedResult>& results, const std::string& project);

} // namespace Reports
