// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/sewage_calculations/CalculationRun.h"
#include "reports/Remark.h"

#include <string>

namespace Reports {

/// What deserves a second look after a run that ended well, with the numbers concerned: sums without a flow switched
/// on, domestic flow counted twice, amounts at the defaults of the form, partial areas, losses on the way to the ends
/// of the network, values of earlier runs that stayed. The project is as the run left it; projectPath: as commands name
/// it. Linear.
CRemarks MakeRunWarnings(const std::string& calculator, const OLMGis::Sewage::CCalculationOutcome& outcome,
                         const std::string& projectPath);

} // namespace Reports
