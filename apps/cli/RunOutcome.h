// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "apps/cli/WordFormEditor.h"
#include "host/gis_core/Result.h"
#include "host/sewage_calculations/CalculationRun.h"

#include <ostream>

namespace Cli {

/// What a run stored: a line with the calculator, then per key the count, the range and the sum with its unit.
void PrintOutcome(std::ostream& results, OLMGis::Sewage::IFlowCalculator& calculator,
                  const OLMGis::Sewage::CCalculationOutcome& outcome);

/// Why a run ended early; Done for one that ended well, whatever it stored.
OLMGis::Utility::Status CheckEnd(const OLMGis::Sewage::CCalculationOutcome& outcome, const CWordFormEditor& editor);

} // namespace Cli
