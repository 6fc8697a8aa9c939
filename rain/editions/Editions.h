// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "rain/curves/Rainfall.h"
#include "rain/editions/DesignStandard.h"

#include <memory>
#include <vector>

/// The registry of what national editions bring: rainfall sources and design standards. To add one: its file beside
/// this, a line in Editions.cpp, its texts.
namespace Rain {

/// New objects with default parameters, in the order in which the form offers them.
std::vector<std::unique_ptr<CRainfall>> MakeRainfalls();
std::vector<std::unique_ptr<CDesignStandard>> MakeStandards();

/// The one that the form stores as this number; null for an unknown one.
std::unique_ptr<CRainfall> MakeRainfall(int mode);
std::unique_ptr<CDesignStandard> MakeStandard(int code);

} // namespace Rain
