// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/sewage_calculations/PipeSizing.h"
#include "reports/Listing.h"
#include "reports/Remark.h"

#include <string>
#include <vector>

namespace Reports {

/// Why a section was not sized; empty for one that was.
std::string DescribeSizing(const OLMGis::Sewage::CSizedSection& sized, const OLMGis::Sewage::CSizingRules& rules);

/// One row per section in the order of the network: flow, slope, old and new pipe, the hydraulics in the new one, and
/// the reason where no pipe was chosen. Borrows both.
CTable MakeSizingTable(const std::vector<OLMGis::Sewage::CSizedSection>& sections,
                       const OLMGis::Sewage::CSizingRules& rules);

/// Warnings: the sections that were not sized, by reason, without those that the rules keep; and those that keep a pipe
/// narrower than one upstream.
CRemarks MakeSizingRemarks(const std::vector<OLMGis::Sewage::CSizedSection>& sections,
                           const OLMGis::Sewage::CSizingRules& rules);

} // namespace Reports
