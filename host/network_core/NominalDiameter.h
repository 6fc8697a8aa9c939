// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

namespace OLMGis::Topology {

class CCatalogItem;

/// The nominal diameter of a pipe (mm): the number behind "DN", "DN/OD" or "DN/ID" in its name, as in "DN/OD 315";
/// without one the inside width. Makers call pipes by it: the inside of a DN/OD 315 is less than 315 mm. 0 for an entry
/// that is no pipe.
double NominalDiameter(const CCatalogItem& pipe);

} // namespace OLMGis::Topology
