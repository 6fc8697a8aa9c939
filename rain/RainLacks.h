// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/sewage_core/ICalculatorInputs.h"
#include "rain/run/RunStop.h"

#include <string>
#include <vector>

namespace Rain {

class CRunInput;

/// Keys that a run reads, of sections, nodes and catchments.
std::vector<std::string> GetReadKeys();

/// What a run over the sections with these parameters would lack. The form and each section are judged by what the run
/// itself uses: CRainITPParameters and ForEachProblem. Sections without both nodes take no part.
std::vector<OLMGis::Sewage::CLack> FindLacks(const OLMGis::Sewage::CSectionList& sections,
                                             OLMGis::Sewage::CFlowCalculatorParameters& params);

/// What a section lacks whose pipe stopped a run: a group with larger pipes, or a larger pipe of its own. Nothing for
/// other stops.
std::vector<OLMGis::Sewage::CLack> FindStopLacks(const CRunStop& stop, const CRunInput& input);

} // namespace Rain
