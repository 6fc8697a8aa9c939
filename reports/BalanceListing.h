// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "reports/Balance.h"
#include "reports/Listing.h"
#include "reports/Remark.h"

#include <string>
#include <vector>

namespace Reports {

/// One row per end of the network. Borrows the rows.
CListing MakeBalanceListing(const std::vector<CBalanceRow>& rows);

/// One warning: how much is lost of how much, the nodes with their amounts, and the main outlets to choose, or that no
/// choice helps. projectPath: as commands name it.
CRemark DescribeLoss(const CLoss& loss, const std::vector<COutletChoice>& choices, const std::string& projectPath);

/// Warnings after a run of the calculator: losses of the quantities that it carries. Empty for other calculators.
CRemarks MakeLossRemarks(const std::string& calculator, const std::string& projectPath);

} // namespace Reports
