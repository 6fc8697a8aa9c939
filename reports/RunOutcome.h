// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/sewage_calculations/CalculationRun.h"
#include "reports/Listing.h"

namespace Reports {

/// What a run stored: key and name of the calculator, then one row per attribute key with count, least and greatest
/// value, sum and unit.
CListing MakeOutcomeListing(OLMGis::Sewage::IFlowCalculator& calculator,
                            const OLMGis::Sewage::CCalculationOutcome& outcome);

/// The pairs of label and value of a preview, in their order.
CTable MakePreviewTable(const OLMGis::Sewage::CReport& report);

} // namespace Reports
