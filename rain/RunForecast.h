// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/sewage_core/IFlowCalculator.h"

#include <string>

struct CChainForecast;
struct CVariationForecast;
class CVariationNetwork;

/// What the user is told before a run that may take more than there is.
struct CRunForecast {
    std::string m_text;    ///< behind the question whether to start; empty where the cost is no matter
    std::string m_refusal; ///< why the run is not started, with the numbers; empty when it may start
};

/// The forecast of a run over sections with a choice of PARTIAL_AREA_EFFECT (see RainChoices); empty for 0. The host's
/// own policy around the calculation: what never ends, and what the free memory or the disk of the installation's
/// folder can't hold, is refused before it begins; what only takes long is the user's to decide.
CRunForecast ForecastRun(const OLMGis::Sewage::CSectionList& sections, int partialAreaEffect);

/// The same for a search whose forecast is at hand.
CRunForecast TellForecast(const CVariationNetwork& network, const CVariationForecast& forecast);
