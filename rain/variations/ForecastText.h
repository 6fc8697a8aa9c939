// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "rain/variations/VariationForecast.h"

#include <string>

namespace Rain {

/// Why a run by this forecast is not started, with the numbers: it never ends, a section has more combinations than can
/// be numbered, or free memory is too small. Empty when it may start; what only takes long is for the user to decide.
std::string WhySearchIsRefused(const CVariationNetwork& network, const CVariationForecast& forecast);
std::string WhyChainsAreRefused(const CVariationNetwork& network, const CVariationForecast& forecast);

/// What a search will take, shown after the question whether to start it; empty where nothing is tried.
std::string ShowForecast(const CVariationNetwork& network, const CVariationForecast& forecast);

} // namespace Rain
