// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/DataDefinition.h"
#include "reports/Listing.h"

#include <optional>

namespace Reports {

/// Every attribute in the order of its definition: key, on, label, unit, decimals, possible and usual range, the
/// calculators that write it in any edition, and the calculators and checks that read it; hydraulics are "hydraulics".
/// kind: only those of one kind of entity. The loaded module's calculators and checks count.
CListing MakeKeyListing(std::optional<OLMGis::Data::enmEntityKind> kind);

} // namespace Reports
