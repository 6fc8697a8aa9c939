// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"
#include "host/network_core/PropertiesEx.h"

namespace Bench {

/// Enters the group of pipes that FillRainForm names into the active project, once: circles of 0.2 to 250 m, each 12 %
/// wider than the one before, so that no invented network runs out of them.
OLMGis::Utility::Status AddRainPipes();

/// Fills in what a rain calculation by intensities can't do without: the formula, and the pipes. Other forms stay.
void FillRainForm(OLMGis::Topology::CPropertiesEx& form);

} // namespace Bench
