// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/PropertiesEx.h"
#include "reports/Listing.h"

#include <string>

namespace Reports {

/// The calculators of the loaded module in ascending order of key.
CListing MakeCalculatorListing();

/// The checks of the loaded module in the order of registration, with the tags of their forms.
CTable MakeCheckTable();

/// A form in its present state: categories, tags, values, defaults, choices. Copies what it shows. title: first line.
CListing MakeFormListing(std::string title, const OLMGis::Topology::CPropertiesEx& form);

} // namespace Reports
