// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/RunTrace.h"
#include "reports/Remark.h"
#include "reports/Table.h"

namespace Reports {

/// Key of the calculator whose sections are listed one by one.
inline constexpr const char* RainCalculator = "001_RAIN_ITP";

/// The sections that got results from a rain run, in the order of the network: own and effective area, concentration
/// time, intensity, flow, the pipe that was chosen with its filling and velocity, and the pipe of the section before
/// the run and after it. Borrows the trace of the run; reads the active project.
CTable MakeRainTable(const OLMGis::Utility::CRunTrace& trace);

/// What is no result of a rain run: sections that it did not reach, the one that did not converge, files that it wrote.
CRemarks GetRainRemarks(const OLMGis::Utility::CRunTrace& trace);

} // namespace Reports
