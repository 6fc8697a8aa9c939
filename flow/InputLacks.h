// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/sewage_core/ICalculatorInputs.h"

#include <string>
#include <vector>

/// What several calculators may lack; each adds to a list. Cost: linear.
namespace Flow::InputLacks {

using CLackList = std::vector<OLMGis::Sewage::CLack>;

/// Nodes at which a walk needs a main outlet and has none, in the order of the network.
void AddMainOutlets(const OLMGis::Sewage::CSectionList& sections, CLackList& lacks);

/// Household catchments of the sections that have an area above 0 and no population density.
void AddDensities(const OLMGis::Sewage::CSectionList& sections, CLackList& lacks);

/// A form whose switches are all off: its run stores nothing but zeros. The lack has the first tag.
void AddNothingSwitchedOn(const OLMGis::Topology::CPropertiesEx& form, const std::vector<std::string>& tags,
                          CLackList& lacks);

} // namespace Flow::InputLacks
