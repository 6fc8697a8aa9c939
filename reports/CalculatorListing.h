// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "reports/Listing.h"

namespace Reports {

/// The calculators of the loaded module in ascending order of key.
CListing MakeCalculatorListing();

/// The checks of the loaded module in the order of registration, with the tags of their forms.
CTable MakeCheckTable();

} // namespace Reports
