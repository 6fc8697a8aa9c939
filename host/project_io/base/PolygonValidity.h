// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/Geometry.h"

#include <string>

namespace OLMGis::ProjectIo {

/// Why the area of a polygon would be wrong: "crosses itself", "has a hole outside its outer ring". Empty for
/// a sound one, in whichever direction its rings run; repeated points and spikes change no area and are accepted. The
/// validity of Simple Features (OGC 06-103r4, 6.1.11), without its rule of direction. Linear for a convex ring, n log n
/// for others.
std::string FindPolygonFault(const Topology::CRings& rings);

} // namespace OLMGis::ProjectIo
