// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/Finding.h"
#include "reports/Table.h"

#include <vector>

namespace Reports {

using CFindingsByItem = std::vector<OLMGis::Topology::CItemFindings>;

std::size_t CountFindings(const CFindingsByItem& items);

/// One row per finding, with its place on the map; the order is that of the items and, within each, of its findings.
/// Borrows the findings.
CTable MakeFindingTable(const CFindingsByItem& items);

/// One row per check with its number of findings. The names of checks come from the registry.
CTable MakeFindingCountTable(const CFindingsByItem& items);

} // namespace Reports
